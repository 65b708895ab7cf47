#include "panels_variants.h"
#include "core/Saturating.h"

#include <QScrollArea>
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
