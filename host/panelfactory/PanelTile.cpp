#include "PanelTile.h"

#include <corvane/IPanelFactory.h>

#include <QChildEvent>
#include <QCoreApplication>

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
    m_reshaping = true;
    if (!shift.isNull())
        forEachControl(this, [&](QWidget *w) { w->move(w->pos() - shift); });
    setGeometry(QRect(pos() + shift, area.size()));
    m_reshaping = false;
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
    QRegion area(rect());
    for (QObject *o : page->children()) {
        if (o == this)
            break;
        if (o->isWidgetType() && !static_cast<QWidget *>(o)->isHidden())
            area -= static_cast<QWidget *>(o)->geometry().translated(-pos());
    }
    if (area == QRegion(rect())) {
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

bool PanelTile::event(QEvent *event)
{
    if (event->type() == QEvent::ChildAdded) {
        QObject *child = static_cast<QChildEvent *>(event)->child();
        if (child->isWidgetType())
            child->installEventFilter(this);
    } else if (event->type() == QEvent::ChildRemoved) {
        static_cast<QChildEvent *>(event)->child()->removeEventFilter(this);
    } else if (event->type() == QEvent::LayoutRequest && m_maskPending) {
        m_maskPending = false;
        if (!m_spread)
            updateMask();
        return true;
    }
    return QWidget::event(event);
}

bool PanelTile::eventFilter(QObject *watched, QEvent *event)
{
    // A hidden control's geometry changes are told when it is shown.
    const QEvent::Type type = event->type();
    if (!m_reshaping && !m_spread && watched->parent() == this
        && (type == QEvent::Move || type == QEvent::Resize || type == QEvent::ShowToParent
            || type == QEvent::HideToParent)) {
        auto *w = static_cast<QWidget *>(watched);
        if (!w->isWindow()) {
            if (!rect().contains(w->geometry())) {
                reshape(rect() | w->geometry());
                updateMask();
                updateMasksAbove();
            } else if (!m_maskPending && !mask().isEmpty()) {
                // Controls that move inside the tile change its mask; a
                // page shown for the first time moves them all.
                m_maskPending = true;
                QCoreApplication::postEvent(this, new QEvent(QEvent::LayoutRequest));
            }
        }
    }
    return QWidget::eventFilter(watched, event);
}
