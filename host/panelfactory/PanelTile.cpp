#include "PanelTile.h"

#include <corvane/IPanelFactory.h>

#include <QEvent>

namespace {

template<typename F>
void forEachControl(const QObject *tile, F f)
{
    for (QObject *o : tile->children()) {
        if (o->isWidgetType() && !static_cast<QWidget *>(o)->isWindow())
            f(static_cast<QWidget *>(o));
    }
}

} // namespace

PanelTile::PanelTile(QWidget *page)
    : QWidget(page)
{
    setProperty(panelTileProperty, true);
    setFocusPolicy(Qt::NoFocus);
    if (page)
        setGeometry(page->rect());
}

void PanelTile::spread()
{
    m_spread = true;
    clearMask();
    if (QWidget *page = parentWidget())
        reshape(QRect(-pos(), page->size()));
}

void PanelTile::fit()
{
    m_spread = false;
    QRect area;
    forEachControl(this, [&](QWidget *w) { area |= w->geometry(); });
    if (!area.isNull())
        reshape(area);
    updateMask();
}

// Makes the tile cover \a area, given in its own coordinates, and moves the
// controls by the opposite amount so that they stay where they are.
void PanelTile::reshape(const QRect &area)
{
    const QPoint shift = area.topLeft();
    if (!shift.isNull())
        forEachControl(this, [&](QWidget *w) { w->move(w->pos() - shift); });
    setGeometry(QRect(pos() + shift, area.size()));
}

// Tiles of a page may overlap. Qt gives a click to the topmost child whose
// area holds the point, so where the tile lies over what was placed before
// it, it takes only what its shown controls cover and lets the rest reach
// the tiles beneath. Elsewhere it keeps its whole area: a mask of many
// pieces would make every repaint of the page slower.
void PanelTile::updateMask()
{
    QWidget *page = parentWidget();
    if (!page)
        return;
    const QRect own = geometry();
    QRegion area(rect());
    bool overlaps = false;
    for (QObject *o : page->children()) {
        if (o == this)
            break;
        if (!o->isWidgetType() || static_cast<QWidget *>(o)->isHidden())
            continue;
        const QRect below = static_cast<QWidget *>(o)->geometry();
        if (below.intersects(own)) {
            area -= below.translated(-pos());
            overlaps = true;
        }
    }
    if (!overlaps) {
        clearMask();
        return;
    }
    forEachControl(this, [&](QWidget *w) {
        if (!w->isHidden())
            area += w->geometry();
    });
    // An empty mask would mean no mask; a pixel outside takes nothing.
    setMask(area.isEmpty() ? QRegion(-1, -1, 1, 1) : area & rect());
}

// Tiles stacked above this one mask themselves against it.
void PanelTile::updateMasksAbove()
{
    QWidget *page = parentWidget();
    if (!page)
        return;
    bool above = false;
    for (QObject *o : page->children()) {
        if (o == this)
            above = true;
        else if (auto *tile = qobject_cast<PanelTile *>(o); above && tile && !tile->m_spread)
            tile->updateMask();
    }
}

// Keeps the tile around its controls and its mask up to date. The
// library's controls send a layout request when they move beyond the tile
// or inside a masked one, and Qt posts one when a control is shown or
// hidden on a shown page; what changed while the page was hidden is seen
// when the tile is shown.
void PanelTile::settle()
{
    if (m_spread)
        return;
    QRect area = rect();
    forEachControl(this, [&](QWidget *w) { area |= w->geometry(); });
    if (area != rect()) {
        reshape(area);
        updateMask();
        updateMasksAbove();
    } else {
        updateMask();
    }
}

bool PanelTile::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Show) {
        settle();
        if (event->type() == QEvent::LayoutRequest)
            return true;
    }
    return QWidget::event(event);
}
