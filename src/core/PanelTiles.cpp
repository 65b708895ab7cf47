#include "PanelTiles.h"

#include <corvane/IPanelFactory.h>

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace PanelTiles {

bool isTile(const QWidget *w)
{
    return w && !w->isWindow() && w->property(panelTileProperty).toBool();
}

QWidget *pageOf(const QWidget *w)
{
    QWidget *parent = w ? w->parentWidget() : nullptr;
    while (isTile(parent))
        parent = parent->parentWidget();
    return parent;
}

QPoint originOf(const QWidget *w)
{
    const QWidget *parent = w ? w->parentWidget() : nullptr;
    // A parent at the page's corner moves nothing, tile or not; the
    // property lookup is left for the rare tile that has been fitted.
    if (!parent || parent->pos().isNull() || !isTile(parent))
        return QPoint();
    return parent->pos();
}

void place(QWidget *w, const QRect &pageRect)
{
    const QRect r = fromPage(w, pageRect);
    w->setGeometry(r);
    // While the page is built its tiles cover it whole and hold no mask,
    // so this asks nothing of the parent for almost every control.
    QWidget *parent = w->parentWidget();
    if (parent && (!parent->rect().contains(r) || !parent->mask().isEmpty()) && isTile(parent)) {
        QEvent request(QEvent::LayoutRequest);
        QCoreApplication::sendEvent(parent, &request);
    }
}

} // namespace PanelTiles
