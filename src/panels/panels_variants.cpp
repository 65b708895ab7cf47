#include "panels_variants.h"
#include "core/Saturating.h"

#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

void ScrollPanel::installPanel(QWidget *panel)
{
    m_area = new QScrollArea;
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setWidgetResizable(true);
    // The panel paints its own background; the area shows the container's.
    m_area->viewport()->setAutoFillBackground(false);
    m_area->setWidget(panel);
    applyPanelSize(zoomFactor());
    PanelContainer::installPanel(m_area);
}

bool ScrollPanel::setZoom(float zoom)
{
    if (!PanelContainer::setZoom(zoom))
        return false;
    applyPanelSize(zoom);
    return true;
}

void ScrollPanel::applyPanelSize(float zoom)
{
    QWidget *page = panel();
    if (!page || zoom <= 0)
        return;
    // The panel never shrinks below its design size: past it, the area scrolls.
    const QSize design = page->property("designSize").toSize();
    if (design.isValid() && !design.isEmpty())
        page->setMinimumSize(Saturating::pixels(design.width(), zoom), Saturating::pixels(design.height(), zoom));
}

// ---------------------------------------------------------------------------
// DragPanel

void DragPanel::installPanel(QWidget *panel)
{
    ScrollPanel::installPanel(panel);
    QScrollArea *area = scrollArea();
    if (!area)
        return;
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Presses on the panel's background reach the panel, then the viewport.
    panel->installEventFilter(this);
    area->viewport()->installEventFilter(this);
    // A host may hand the press to the container itself.
    installEventFilter(this);
    updateCursor();
}

QPoint DragPanel::offset() const
{
    QScrollArea *area = scrollArea();
    return area ? QPoint(area->horizontalScrollBar()->value(), area->verticalScrollBar()->value()) : QPoint();
}

bool DragPanel::canMove() const
{
    QScrollArea *area = scrollArea();
    return area && (area->horizontalScrollBar()->maximum() > 0 || area->verticalScrollBar()->maximum() > 0);
}

void DragPanel::updateCursor()
{
    QScrollArea *area = scrollArea();
    if (!area)
        return;
    if (m_dragging)
        area->viewport()->setCursor(Qt::ClosedHandCursor);
    else if (canMove())
        area->viewport()->setCursor(Qt::OpenHandCursor);
    else
        area->viewport()->unsetCursor();
}

bool DragPanel::eventFilter(QObject *watched, QEvent *event)
{
    QScrollArea *area = scrollArea();
    if (!area || (watched != panel() && watched != area->viewport() && watched != this))
        return ScrollPanel::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        auto *e = static_cast<QMouseEvent *>(event);
        if (e->button() != Qt::LeftButton || e->modifiers() != Qt::NoModifier || !canMove())
            break;
        m_dragging = true;
        m_grabPoint = e->globalPos();
        m_grabOffset = offset();
        updateCursor();
        return true;
    }
    case QEvent::MouseMove: {
        if (!m_dragging)
            break;
        auto *e = static_cast<QMouseEvent *>(event);
        // The panel follows the pointer: pulling left shows more of its right.
        const QPoint to = m_grabOffset - (e->globalPos() - m_grabPoint);
        area->horizontalScrollBar()->setValue(to.x());
        area->verticalScrollBar()->setValue(to.y());
        return true;
    }
    case QEvent::MouseButtonRelease:
        if (!m_dragging || static_cast<QMouseEvent *>(event)->button() != Qt::LeftButton)
            break;
        m_dragging = false;
        updateCursor();
        return true;
    case QEvent::Resize:
    case QEvent::LayoutRequest:
        if (!m_dragging)
            updateCursor();
        break;
    default:
        break;
    }
    return ScrollPanel::eventFilter(watched, event);
}

// ---------------------------------------------------------------------------
// AutomixerGroupController

bool AutomixerGroupController::isGroupOn() const
{
    return addressCount() == 0 || !isOff(0);
}

void AutomixerGroupController::applyGroupState()
{
    if (QWidget *page = panel())
        page->setEnabled(isGroupOn());
}

void AutomixerGroupController::installPanel(QWidget *panel)
{
    PanelContainer::installPanel(panel);
    applyGroupState();
}

void AutomixerGroupController::ownValueChanged(int index)
{
    PanelContainer::ownValueChanged(index);
    if (index == 0)
        applyGroupState();
}
