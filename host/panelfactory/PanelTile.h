#ifndef CORVANE_HOST_PANELTILE_H
#define CORVANE_HOST_PANELTILE_H

#include <QWidget>

/*!
    \class PanelTile
    \brief A group of consecutive controls of a large page.

    Qt repaints a changed control by going through every sibling of it,
    twice: to subtract the opaque ones stacked above and to paint those it
    overlaps. On a page of thousands of controls that walk, not the
    painting, is the cost of a frame. Tiles of a few dozen controls keep
    each walk short.

    A tile paints nothing and takes no input of its own, so the page looks
    and behaves as if the controls were on it. It is created spread over
    the whole page, so that controls placed while the page is built land
    where they belong; fit() then shrinks it around them. A control that
    later moves or grows beyond the tile makes the tile grow with it (see
    panelTileProperty for how the tile hears of it).
*/
class PanelTile : public QWidget
{
    Q_OBJECT

public:
    explicit PanelTile(QWidget *page);

    //! Covers the whole page again, the controls keeping their place on it.
    Q_INVOKABLE void spread();
    //! Shrinks to the controls' bounding rectangle, the controls keeping their place.
    Q_INVOKABLE void fit();

protected:
    bool event(QEvent *event) override;

private:
    void reshape(const QRect &area);
    void settle();
    void updateMask();
    void updateMasksAbove();

    bool m_spread = true;
};

#endif
