#include "FocusRing.h"

#include "BaseWidget.h"
#include "Saturating.h"

#include <QApplication>
#include <QFocusEvent>
#include <QPainter>
#include <QPointer>

namespace {

// Only one widget holds the focus at a time.
QPointer<QWidget> keyboardFocused;

class FocusWatcher : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const QEvent::Type type = event->type();
        if ((type != QEvent::FocusIn && type != QEvent::FocusOut) || !qobject_cast<BaseWidget *>(watched))
            return false;
        auto *widget = static_cast<QWidget *>(watched);
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        // A popup that opens and closes over the control keeps its ring as it was.
        if (reason == Qt::PopupFocusReason)
            return false;
        const bool wasShown = keyboardFocused == widget;
        const bool keyboard = type == QEvent::FocusIn
            && (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason
                || reason == Qt::ShortcutFocusReason);
        if (keyboard)
            keyboardFocused = widget;
        else if (wasShown)
            keyboardFocused = nullptr;
        if (keyboard != wasShown)
            widget->update();
        return false;
    }
};

} // namespace

namespace FocusRing {

void install()
{
    static QPointer<FocusWatcher> watcher;
    // Focus exists only in a widget application; qApp would assume one.
    QApplication *app = qobject_cast<QApplication *>(QCoreApplication::instance());
    if (watcher || !app)
        return;
    watcher = new FocusWatcher(app);
    app->installEventFilter(watcher);
}

bool shown(const QWidget *widget)
{
    return widget && keyboardFocused == widget && widget->hasFocus();
}

void paint(QPainter &painter, const QWidget *widget)
{
    if (!shown(widget))
        return;
    QColor ring = widget->property("textColor").value<QColor>();
    if (!ring.isValid())
        ring = QColor(204, 204, 204);
    ring.setAlpha(150);
    const auto *control = qobject_cast<const BaseWidget *>(widget);
    const int inset = qMax(2, Saturating::pixels(2, control ? control->zoomFactor() : 1.0f));
    const QRectF box = QRectF(widget->rect()).adjusted(inset + 0.5, inset + 0.5, -inset - 0.5, -inset - 0.5);
    if (box.width() <= 0 || box.height() <= 0)
        return;
    painter.save();
    painter.resetTransform();
    painter.setClipping(false);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ring, 1, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(box);
    painter.restore();
}

} // namespace FocusRing
