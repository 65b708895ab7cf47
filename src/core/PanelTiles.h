#ifndef CORVANE_PANELTILES_H
#define CORVANE_PANELTILES_H

#include <QPoint>
#include <QRect>

class QWidget;

/*
    A host may group a large page's controls into tiles (see
    panelTileProperty in IPanelFactory.h). These answer, for a control, the
    page it belongs to and where its tile sits on that page.
*/
namespace PanelTiles {

bool isTile(const QWidget *w);
//! The nearest ancestor of \a w that is not a tile.
QWidget *pageOf(const QWidget *w);
//! Where the parent of \a w sits on the page: its tile's position, or nothing.
QPoint originOf(const QWidget *w);
//! \a pageRect in the coordinates of the parent of \a w.
inline QRect fromPage(const QWidget *w, const QRect &pageRect) { return pageRect.translated(-originOf(w)); }
//! Gives \a w the place \a pageRect on its page; a tile it leaves or that masks itself is told.
void place(QWidget *w, const QRect &pageRect);

} // namespace PanelTiles

#endif
