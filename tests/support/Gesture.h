#ifndef CORVANE_TESTS_GESTURE_H
#define CORVANE_TESTS_GESTURE_H

#include "support/RecordingHost.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMetaType>
#include <QMouseEvent>
#include <QStringList>
#include <QWheelEvent>
#include <QWidget>
#include <QtTest>

#include <functional>
#include <optional>

namespace Input {

/*!
    Sends a mouse event to \a w; true when it was accepted. \a held are the
    buttons down after the event (during it, for a move); by default the
    button until it is released.
*/
inline bool mouse(QWidget *w, QEvent::Type type, const QPoint &pos, Qt::MouseButton button = Qt::LeftButton,
                  Qt::KeyboardModifiers modifiers = Qt::NoModifier, std::optional<Qt::MouseButtons> held = {})
{
    if (!held)
        held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
    QMouseEvent e(type, pos, w->mapToGlobal(pos), type == QEvent::MouseMove ? Qt::NoButton : button, *held,
                  modifiers);
    QApplication::sendEvent(w, &e);
    return e.isAccepted();
}

//! Sends a key to the focus widget inside \a w, or to \a w; true when it was accepted.
inline bool key(QWidget *w, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString &text = QString(),
                bool autoRepeat = false)
{
    QWidget *focus = QApplication::focusWidget();
    QWidget *target = focus && w->isAncestorOf(focus) ? focus : w;
    QKeyEvent e(QEvent::KeyPress, key, modifiers, text, autoRepeat);
    QApplication::sendEvent(target, &e);
    return e.isAccepted();
}

//! Turns the wheel by \a delta eighths of a degree over \a pos of \a w; true when it was accepted.
inline bool wheel(QWidget *w, int delta, const QPoint &pos = QPoint(5, 5),
                  Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWheelEvent e(QPointF(pos), QPointF(w->mapToGlobal(pos)), QPoint(), QPoint(0, delta), Qt::NoButton, modifiers,
                  Qt::NoScrollPhase, false);
    QApplication::sendEvent(w, &e);
    return e.isAccepted();
}

} // namespace Input

/*
    A gesture as a list of input steps, each with the requests it is
    expected to send right after it, and a runner that plays the steps on a
    control and lists what each one sent. Comparing per step tells a drag
    that sends at the wrong moment from one that sends the wrong value.
*/
struct GestureStep
{
    enum Kind { Press, Move, Release, Key, Wheel };

    Kind kind = Press;
    QPoint pos;                       // mouse and wheel steps
    int code = 0;                     // Key: the key; Wheel: the vertical angle delta
    Qt::KeyboardModifiers modifiers;
    Qt::MouseButton button = Qt::LeftButton;
    QStringList sends;                // the requests expected right after this step
    std::optional<Qt::MouseButtons> held; // mouse steps: the buttons down after it, if not the usual

    GestureStep with(Qt::KeyboardModifiers m) const
    {
        GestureStep s = *this;
        s.modifiers = m;
        return s;
    }
    //! The step with \a buttons down after it (during it, for a move).
    GestureStep holding(Qt::MouseButtons buttons) const
    {
        GestureStep s = *this;
        s.held = buttons;
        return s;
    }
    QString name() const
    {
        static const char *const names[] = {"press", "move", "release", "key", "wheel"};
        if (kind == Key)
            return QStringLiteral("key %1").arg(code, 0, 16);
        if (kind == Wheel)
            return QStringLiteral("wheel %1 at %2,%3").arg(code).arg(pos.x()).arg(pos.y());
        return QStringLiteral("%1 %2,%3").arg(QLatin1String(names[kind])).arg(pos.x()).arg(pos.y());
    }
};
using Gesture = QList<GestureStep>;
Q_DECLARE_METATYPE(Gesture)

namespace Step {
inline GestureStep press(int x, int y, const QStringList &sends = {})
{
    return {GestureStep::Press, QPoint(x, y), 0, Qt::NoModifier, Qt::LeftButton, sends, std::nullopt};
}
inline GestureStep move(int x, int y, const QStringList &sends = {})
{
    return {GestureStep::Move, QPoint(x, y), 0, Qt::NoModifier, Qt::LeftButton, sends, std::nullopt};
}
inline GestureStep release(int x, int y, const QStringList &sends = {})
{
    return {GestureStep::Release, QPoint(x, y), 0, Qt::NoModifier, Qt::LeftButton, sends, std::nullopt};
}
inline GestureStep press(const QPoint &p, const QStringList &sends = {}) { return press(p.x(), p.y(), sends); }
inline GestureStep move(const QPoint &p, const QStringList &sends = {}) { return move(p.x(), p.y(), sends); }
inline GestureStep release(const QPoint &p, const QStringList &sends = {}) { return release(p.x(), p.y(), sends); }
//! A release of \a button while \a held stay down.
inline GestureStep release(const QPoint &p, Qt::MouseButton button, Qt::MouseButtons held,
                           const QStringList &sends = {})
{
    return {GestureStep::Release, p, 0, Qt::NoModifier, button, sends, held};
}
inline GestureStep key(int key, const QStringList &sends = {})
{
    return {GestureStep::Key, QPoint(), key, Qt::NoModifier, Qt::NoButton, sends, std::nullopt};
}
inline GestureStep wheel(int delta, const QPoint &at, const QStringList &sends = {})
{
    return {GestureStep::Wheel, at, delta, Qt::NoModifier, Qt::NoButton, sends, std::nullopt};
}
} // namespace Step

namespace Gestures {

/*!
    Data rows of a "gesture" column for a value control turned by the wheel
    over \a at while its position text is \a val: each whole notch (120)
    is a step, several at once are several steps, and parts of a notch add up.
*/
inline void addWheelNotchRows(const QPoint &at, const QString &val)
{
    using Step::wheel;
    const QString up = QStringLiteral("step 1 ") + val;
    const QString down = QStringLiteral("step -1 ") + val;
    QTest::newRow("one notch up") << Gesture{wheel(120, at, {up})};
    QTest::newRow("two notches down at once") << Gesture{wheel(-240, at, {down, down})};
    QTest::newRow("half notches add up") << Gesture{wheel(60, at), wheel(30, at), wheel(30, at, {up})};
    QTest::newRow("a half notch sends nothing") << Gesture{wheel(60, at)};
}

//! \a gesture with every position moved by \a by, for gestures written relative to a press point.
inline Gesture offset(Gesture gesture, const QPoint &by)
{
    for (GestureStep &s : gesture)
        s.pos += by;
    return gesture;
}

using RequestText = std::function<QString(const RecordingHost::Request &)>;

//! "pos VAL TYPE" for a position, "text STR", "step STEP VAL", otherwise "kind N".
inline QString describe(const RecordingHost::Request &r)
{
    switch (r.kind) {
    case 0:
        return QStringLiteral("pos %1 %2").arg(r.arg("ui_prm_val"), r.arg("set_prm_type"));
    case 1:
        return QStringLiteral("text %1").arg(r.arg("ui_prm_str"));
    case 2:
        return QStringLiteral("step %1 %2").arg(r.arg("ui_prm_step"), r.arg("ui_prm_val"));
    default:
        return QStringLiteral("kind %1").arg(r.kind);
    }
}

//! describe(), marking a request that is not for the control's own parameter \a prmAddr.
inline RequestText describeFor(const QString &prmAddr)
{
    return [prmAddr](const RecordingHost::Request &r) {
        QString text = describe(r);
        if (r.index != 0 || r.address.value(QStringLiteral("prmAddr")).toString() != prmAddr)
            text += QStringLiteral(" (wrong address)");
        return text;
    };
}

//! Every request \a host received, as \a text writes them.
inline QStringList described(const RecordingHost &host, const RequestText &text = describe)
{
    QStringList out;
    for (const RecordingHost::Request &r : host.requests)
        out << text(r);
    return out;
}

//! Sends one step to \a w; true when the control accepted it.
inline bool send(QWidget *w, const GestureStep &s)
{
    switch (s.kind) {
    case GestureStep::Press:
        return Input::mouse(w, QEvent::MouseButtonPress, s.pos, s.button, s.modifiers, s.held);
    case GestureStep::Move:
        return Input::mouse(w, QEvent::MouseMove, s.pos, s.button, s.modifiers, s.held);
    case GestureStep::Release:
        return Input::mouse(w, QEvent::MouseButtonRelease, s.pos, s.button, s.modifiers, s.held);
    case GestureStep::Key:
        return Input::key(w, s.code, s.modifiers);
    case GestureStep::Wheel:
        return Input::wheel(w, s.code, s.pos, s.modifiers);
    }
    return false;
}

struct Result
{
    QStringList sent;     // "N STEP: REQUEST", one line a request, in order
    QStringList expected; // the same from the steps' expectations
    QStringList ignored;  // the steps whose event the control did not accept
};

//! Plays \a gesture on \a w and lists the requests \a host received after each step next to those expected.
inline Result play(QWidget *w, const RecordingHost &host, const Gesture &gesture,
                   const RequestText &text = describe)
{
    Result result;
    for (int i = 0; i < gesture.size(); ++i) {
        const GestureStep &s = gesture.at(i);
        const QString prefix = QStringLiteral("%1 %2: ").arg(i).arg(s.name());
        const int before = host.requests.size();
        if (!send(w, s))
            result.ignored << QString::number(i) + QLatin1Char(' ') + s.name();
        for (int r = before; r < host.requests.size(); ++r)
            result.sent << prefix + text(host.requests.at(r));
        for (const QString &e : s.sends)
            result.expected << prefix + e;
    }
    return result;
}

} // namespace Gestures

#endif
