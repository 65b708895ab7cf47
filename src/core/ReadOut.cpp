#include "ReadOut.h"

#include "BaseWidget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>

namespace {

bool hasReadOut(const QObject *control)
{
    return control->inherits("Dial") || control->inherits("Fader") || control->inherits("NumberBox")
        || control->inherits("GraphControlPoint") || control->inherits("PadArea");
}

QPointer<ReadOut> &theReadOut()
{
    static QPointer<ReadOut> readOut;
    return readOut;
}

} // namespace

// Watches the application's events from the start, and makes the read-out,
// a top-level label, only when a control first wants one: a program that
// never points at a control keeps no window of it.
class ReadOutWatcher : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        ReadOut *readOut = theReadOut();
        if (!readOut) {
            switch (event->type()) {
            case QEvent::MouseButtonPress:
            case QEvent::Wheel:
            case QEvent::KeyPress:
            case QEvent::Enter:
                break;
            default:
                return false;
            }
            if (!watched->isWidgetType() || !ReadOut::wanted(static_cast<QWidget *>(watched)))
                return false;
            readOut = ReadOut::instance();
            if (!readOut)
                return false;
        }
        // From now on the read-out watches by itself.
        QCoreApplication::instance()->installEventFilter(readOut);
        QCoreApplication::instance()->removeEventFilter(this);
        deleteLater();
        return readOut->eventFilter(watched, event);
    }
};

ReadOut::ReadOut() : QLabel(nullptr, Qt::ToolTip | Qt::FramelessWindowHint)
{
    setObjectName(QStringLiteral("readOut"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAlignment(Qt::AlignCenter);
    setMargin(3);
    setAutoFillBackground(true);
    setStyleSheet(QStringLiteral("QLabel#readOut { background: rgba(24, 24, 24, 235); color: rgb(230, 230, 230);"
                                 " border: 1px solid rgb(110, 110, 110); }"));
    m_hoverTimer.setSingleShot(true);
    m_hoverTimer.setInterval(hoverDelay);
    connect(&m_hoverTimer, &QTimer::timeout, this, [this] {
        if (m_hovered && m_hovered->underMouse() && !m_held && wanted(m_hovered))
            showFor(m_hovered);
    });
    m_lingerTimer.setSingleShot(true);
    m_lingerTimer.setInterval(lingerTime);
    connect(&m_lingerTimer, &QTimer::timeout, this, [this] {
        if (!m_held && (!m_subject || m_hovered != m_subject || !m_subject->underMouse()))
            hide();
    });
}

ReadOut *ReadOut::existing()
{
    return theReadOut();
}

ReadOut *ReadOut::instance()
{
    QPointer<ReadOut> &readOut = theReadOut();
    // The label is a widget: only a widget application can have one.
    QApplication *app = qobject_cast<QApplication *>(QCoreApplication::instance());
    if (!readOut && app) {
        readOut = new ReadOut;
        // The label is a top-level window: it goes with the application.
        QObject::connect(app, &QCoreApplication::aboutToQuit, readOut.data(), &QObject::deleteLater);
    }
    return readOut;
}

void ReadOut::install()
{
    static bool installed = false;
    QApplication *app = qobject_cast<QApplication *>(QCoreApplication::instance());
    if (installed || !app)
        return;
    installed = true;
    app->installEventFilter(new ReadOutWatcher(app));
}

bool ReadOut::wanted(const QWidget *control)
{
    if (!control || !hasReadOut(control) || !control->isEnabled())
        return false;
    for (const QWidget *w = control; w; w = w->parentWidget()) {
        const QVariant on = w->property("readOuts");
        if (on.isValid() && !on.toBool())
            return false;
    }
    return true;
}

QString ReadOut::bandText(const BaseWidget *handle)
{
    // A handle is bound to its band's point ("Ch1/EQ/Band2/Point"); the
    // band's frequency and gain sit beside it ("…/Freq", "…/Gain").
    const ParameterAddress &point = handle->addressAt(0);
    const QString address = point.prmAddr();
    const int slash = address.lastIndexOf(QLatin1Char('/'));
    IHostCore *host = handle->hostCore();
    if (slash < 0 || !host)
        return QString();
    QStringList parts;
    for (const char *name : {"Freq", "Gain"}) {
        ParameterAddress sibling(point.keys());
        sibling.keys().insert(QStringLiteral("prmAddr"), address.left(slash + 1) + QLatin1String(name));
        Value value;
        QMap<QString, QString> attributes;
        if (host->readParameter(sibling, value, attributes)) {
            const QString text = value.text(QStringLiteral("ui_prm_str"));
            if (!text.isEmpty())
                parts.append(text);
        }
    }
    return parts.join(QLatin1String("  "));
}

QString ReadOut::textFor(const BaseWidget *control)
{
    const QVariant own = control->property("readOutText");
    if (own.isValid())
        return own.toString();
    if (control->inherits("GraphControlPoint")) {
        const QString band = bandText(control);
        if (!band.isEmpty())
            return band;
    }
    if (control->inherits("PadArea")) {
        QStringList parts{control->displayText(0), control->displayText(1)};
        parts.removeAll(QString());
        return parts.join(QLatin1String(", "));
    }
    const QVariant shown = control->property("shownText");
    if (shown.isValid() && !shown.toString().isEmpty())
        return shown.toString();
    const QString text = control->displayText(0);
    return text.isEmpty() ? control->positionText(0) : text;
}

void ReadOut::showFor(BaseWidget *control)
{
    const QString text = control ? textFor(control) : QString();
    if (text.isEmpty() || !control->isVisible()) {
        hide();
        return;
    }
    m_subject = control;
    setFont(control->font());
    setText(text);
    adjustSize();
    place();
    show();
}

void ReadOut::hideFor(const QWidget *control)
{
    if (m_subject == control) {
        m_lingerTimer.stop();
        hide();
    }
}

void ReadOut::place()
{
    if (!m_subject)
        return;
    // Above the control, centred on it; below when there is no room above.
    const QRect box(m_subject->mapToGlobal(QPoint(0, 0)), m_subject->size());
    const int gap = 4;
    QPoint at(box.center().x() - width() / 2, box.top() - height() - gap);
    const QScreen *screen = m_subject->screen();
    const QRect area = screen ? screen->availableGeometry() : QRect();
    if (area.isValid()) {
        if (at.y() < area.top())
            at.setY(box.bottom() + gap);
        at.setX(qBound(area.left(), at.x(), qMax(area.left(), area.right() - width())));
    }
    move(at);
}

void ReadOut::refreshLater(BaseWidget *control, bool linger)
{
    // After the control handled the event: its request has been answered by then.
    QPointer<BaseWidget> guarded(control);
    QTimer::singleShot(0, this, [this, guarded, linger] {
        if (!guarded || !wanted(guarded))
            return;
        showFor(guarded);
        if (linger)
            m_lingerTimer.start();
        else
            m_lingerTimer.stop();
    });
}

bool ReadOut::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::Hide:
    case QEvent::EnabledChange:
    case QEvent::FocusOut:
        break;
    default:
        return false;
    }
    auto *control = qobject_cast<BaseWidget *>(watched);
    if (!control)
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        if (mouse->button() == Qt::LeftButton && mouse->modifiers() == Qt::NoModifier && wanted(control)) {
            m_held = control;
            m_hoverTimer.stop();
            refreshLater(control, false);
        }
        break;
    }
    case QEvent::MouseMove:
        if (m_held == control)
            refreshLater(control, false);
        break;
    case QEvent::MouseButtonRelease:
        if (m_held == control) {
            m_held = nullptr;
            refreshLater(control, true);
        }
        break;
    case QEvent::Wheel:
        if (wanted(control))
            refreshLater(control, true);
        break;
    case QEvent::KeyPress: {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if ((key == Qt::Key_Up || key == Qt::Key_Down) && wanted(control))
            refreshLater(control, true);
        else if (m_subject == control && !m_held)
            hide();
        break;
    }
    case QEvent::Enter:
        if (wanted(control) && !QApplication::mouseButtons()) {
            m_hovered = control;
            m_hoverTimer.start();
        }
        break;
    case QEvent::Leave:
        if (m_hovered == control) {
            m_hovered = nullptr;
            m_hoverTimer.stop();
        }
        if (m_subject == control && !m_held && !m_lingerTimer.isActive())
            hide();
        break;
    case QEvent::Hide:
    case QEvent::EnabledChange:
    case QEvent::FocusOut:
        if (!control->isVisible() || !control->isEnabled())
            hideFor(control);
        break;
    default:
        break;
    }
    return false;
}
