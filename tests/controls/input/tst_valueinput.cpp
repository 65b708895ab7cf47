#include "controls/ControlTestHost.h"

#include "controls/dial/Dial.h"
#include "controls/fader/Fader.h"
#include "controls/numberbox/NumberBox.h"
#include "graphs/grid/grid_variants.h"

#include <QtTest>

#include <limits>

namespace {

// One input event of a gesture. Mouse positions are offsets from the
// family's press point.
struct Step
{
    enum Kind { Press, Move, Release, Key, Wheel } kind;
    int dx = 0;
    int dy = 0;
    Qt::KeyboardModifiers mods = Qt::NoModifier;
    Qt::MouseButton button = Qt::LeftButton;
    Qt::MouseButtons held = Qt::LeftButton; // buttons down after the event (before it for a move)
    int key = 0;
    int wheel = 0; // angle delta

    static Step press(Qt::KeyboardModifiers mods = Qt::NoModifier)
    {
        Step s{Press};
        s.mods = mods;
        return s;
    }
    static Step move(int dy, int dx = 0, Qt::KeyboardModifiers mods = Qt::NoModifier,
                     Qt::MouseButtons held = Qt::LeftButton)
    {
        Step s{Move, dx, dy, mods};
        s.held = held;
        return s;
    }
    static Step release(int dy, Qt::KeyboardModifiers mods = Qt::NoModifier, Qt::MouseButton button = Qt::LeftButton,
                        Qt::MouseButtons held = Qt::NoButton)
    {
        Step s{Release, 0, dy, mods, button, held};
        return s;
    }
    static Step keyPress(int key)
    {
        Step s{Key};
        s.key = key;
        return s;
    }
    static Step turn(int delta)
    {
        Step s{Wheel};
        s.wheel = delta;
        return s;
    }
};

QString describe(const RecordingHost::Request &r)
{
    switch (r.kind) {
    case 0:
        return r.arg("ui_prm_val") + QLatin1Char('/') + r.arg("set_prm_type");
    case 2:
        return QStringLiteral("step ") + r.arg("ui_prm_step");
    case 3:
        return QStringLiteral("default");
    default:
        return QStringLiteral("kind %1").arg(r.kind);
    }
}

enum Family { DialFamily, FaderFamily, NumberBoxFamily, DelayCellFamily };
const char *const familyNames[] = {"dial", "fader", "number box", "delay cell"};

// A dial that counts its gestures.
class CountingDial : public Dial
{
public:
    using Dial::Dial;
    int started = 0;
    int ended = 0;

protected:
    void gestureStarted() override { ++started; }
    void gestureEnded() override { ++ended; }
};

// The core alone, recording what it would send.
class RecordingInput : public AbstractValueInput
{
public:
    using AbstractValueInput::AbstractValueInput;
    using AbstractValueInput::beginDrag;
    using AbstractValueInput::dragTo;
    using AbstractValueInput::finishDrag;
    QStringList sent;

protected:
    void sendDragPosition(int position, bool held) override
    {
        sent << QStringLiteral("%1/%2").arg(position).arg(held ? 1 : 0);
    }
};

} // namespace

Q_DECLARE_METATYPE(QList<Step>)

class tst_ValueInput : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;

    /*
        Each family at position 0.5 on a scale where one pixel is one
        300th: the dial, number box and delay cell by their drag scale,
        the fader by a travel of 300 pixels. \a at is the press point.
    */
    QWidget *make(Family family, QPoint *at)
    {
        host.window.reset();
        host.requests.clear();
        host.parameters.clear();
        host.setParameter(QStringLiteral("Ch1/Gain"), QStringLiteral("0.5"), QStringLiteral("0 dB"));
        host.setParameter(QStringLiteral("Dly/1-1"), QStringLiteral("0.5"), QStringLiteral("10 ms"));
        const QString own = QStringLiteral("<Address prmAddr=\"Ch1/Gain\"/>");
        QWidget *w = nullptr;
        switch (family) {
        case DialFamily:
            w = host.make<Dial>("<Rect x=\"10\" y=\"10\" width=\"60\" height=\"60\"/>" + own);
            *at = QPoint(30, 30);
            break;
        case FaderFamily: {
            auto *f = host.make<Fader>("<Rect x=\"0\" y=\"0\" width=\"30\" height=\"310\"/>"
                                       "<KnobSize width=\"20\" height=\"10\"/>" + own);
            *at = f->knobRect().center();
            w = f;
            break;
        }
        case NumberBoxFamily:
            w = host.make<NumberBox>("<Rect x=\"10\" y=\"10\" width=\"80\" height=\"24\"/>" + own);
            *at = QPoint(40, 12);
            break;
        case DelayCellFamily: {
            auto *g = host.make<DelayMatrix>("<AddressForm prmAddr=\"Dly/{y}-{x}\"/><Rows>1</Rows><Columns>1</Columns>"
                                             "<CellSize width=\"40\" height=\"30\"/>");
            *at = g->cellRect(0, 0).center();
            w = g;
            break;
        }
        }
        // Moves without a button reach the control only when it tracks the mouse.
        w->setMouseTracking(true);
        w->setFocus();
        return w;
    }

    static void play(QWidget *w, const QPoint &at, const QList<Step> &steps)
    {
        for (const Step &s : steps) {
            const QPoint pos = at + QPoint(s.dx, s.dy);
            switch (s.kind) {
            case Step::Press:
            case Step::Move:
            case Step::Release: {
                const QEvent::Type type = s.kind == Step::Press  ? QEvent::MouseButtonPress
                                          : s.kind == Step::Move ? QEvent::MouseMove
                                                                 : QEvent::MouseButtonRelease;
                QMouseEvent e(type, pos, w->mapToGlobal(pos), s.kind == Step::Move ? Qt::NoButton : s.button, s.held,
                              s.mods);
                QApplication::sendEvent(w, &e);
                break;
            }
            case Step::Key:
                Input::key(w, s.key);
                break;
            case Step::Wheel: {
                QWheelEvent e(QPointF(at), QPointF(w->mapToGlobal(at)), QPoint(), QPoint(0, s.wheel), Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
                QApplication::sendEvent(w, &e);
                break;
            }
            }
        }
    }

private slots:
    void gestures_data();
    void gestures();
    void gestureHooks_data();
    void gestureHooks();
    void farCoordinates_data();
    void farCoordinates();
    void shortStartCoordinate_data();
    void shortStartCoordinate();
};

void tst_ValueInput::gestures_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<QList<Step>>("steps");
    QTest::addColumn<QStringList>("sent");

    const QStringList none;
    // The gesture, then what each family sends: dial, fader, number box, delay cell.
    struct Gesture
    {
        const char *name;
        QList<Step> steps;
        QStringList sent[4];
    };
    const Qt::KeyboardModifiers alt = Qt::AltModifier;
    const Qt::KeyboardModifiers altControl = Qt::AltModifier | Qt::ControlModifier;
    const QList<Gesture> gestures = {
        {"click", {Step::press(), Step::release(0)}, {none, none, none, none}},
        // What the press height sends.
        {"up and back to the press height",
         {Step::press(), Step::move(-10), Step::move(0), Step::release(0)},
         {{"0.533333/1", "0.5/1", "0.5/0"},
          {"0.533333/1", "0.5/1", "0.5/0"},
          {"0.533333/1"},
          {"0.533333/1", "0.5/1", "0.5/0"}}},
        {"sideways first, then up",
         {Step::press(), Step::move(0, 3), Step::move(-10), Step::release(-10)},
         {{"0.5/1", "0.533333/1", "0.533333/0"},
          {"0.5/1", "0.533333/1", "0.533333/0"},
          {"0.533333/1", "0.533333/0"},
          {"0.533333/1", "0.533333/0"}}},
        {"release away without a move",
         {Step::press(), Step::release(-10)},
         {none, none, {"0.533333/0"}, {"0.533333/0"}}},
        // Both ends of the scale hold.
        {"far beyond the top",
         {Step::press(), Step::move(-400), Step::release(-400)},
         {{"1/1", "1/0"}, {"1/1", "1/0"}, {"1/1", "1/0"}, {"1/1", "1/0"}}},
        {"far below the bottom",
         {Step::press(), Step::move(400), Step::release(400)},
         {{"0/1", "0/0"}, {"0/1", "0/0"}, {"0/1", "0/0"}, {"0/1", "0/0"}}},
        {"a modifier during the drag ends it",
         {Step::press(), Step::move(-10), Step::move(-20, 0, Qt::ShiftModifier), Step::release(-20)},
         {{"0.533333/1"}, {"0.533333/1"}, {"0.533333/1"}, {"0.533333/1"}}},
        // Alt, and where it stands against Control.
        {"Alt-click, released higher",
         {Step::press(alt), Step::release(-10, alt)},
         {{"default"}, {"default"}, {"0.533333/0"}, none}},
        {"Alt+Control-click",
         {Step::press(altControl), Step::release(0, altControl)},
         {none, {"default"}, none, none}},
        // Buttons.
        {"a move without the button held",
         {Step::press(), Step::move(-10, 0, Qt::NoModifier, Qt::NoButton), Step::release(-10)},
         {{"0.533333/1", "0.533333/0"},
          {"0.533333/1", "0.533333/0"},
          {"0.533333/1", "0.533333/0"},
          {"0.533333/0"}}},
        {"another button comes up mid-drag",
         {Step::press(), Step::move(-10), Step::release(-10, Qt::NoModifier, Qt::RightButton, Qt::LeftButton),
          Step::release(-20)},
         {{"0.533333/1", "0.566667/0"},
          {"0.533333/1", "0.566667/0"},
          {"0.533333/1", "0.533333/0"},
          {"0.533333/1", "0.566667/0"}}},
        // Keys and wheel.
        {"Up, Down",
         {Step::keyPress(Qt::Key_Up), Step::keyPress(Qt::Key_Down)},
         {{"step 1", "step -1"}, {"step 1", "step -1"}, {"step 1", "step -1"}, none}},
        {"Left, Right", {Step::keyPress(Qt::Key_Left), Step::keyPress(Qt::Key_Right)}, {none, none, none, none}},
        {"wheel a notch up, two down",
         {Step::turn(120), Step::turn(-240)},
         {{"step 1", "step -1", "step -1"},
          {"step 1", "step -1", "step -1"},
          {"step 1", "step -1", "step -1"},
          {"step 1", "step -1", "step -1"}}},
        {"wheel half a notch twice", {Step::turn(60), Step::turn(60)}, {{"step 1"}, {"step 1"}, {"step 1"}, {"step 1"}}},
    };
    for (const Gesture &g : gestures) {
        for (int f = DialFamily; f <= DelayCellFamily; ++f)
            QTest::addRow("%s: %s", familyNames[f], g.name) << f << g.steps << g.sent[f];
    }
}

void tst_ValueInput::gestures()
{
    QFETCH(int, family);
    QFETCH(QList<Step>, steps);
    QFETCH(QStringList, sent);
    QPoint at;
    QWidget *w = make(Family(family), &at);
    play(w, at, steps);
    QStringList got;
    for (const auto &r : host.requests)
        got << describe(r);
    QCOMPARE(got, sent);
    // Every gesture above ends with no drag running.
    if (family == DelayCellFamily)
        QCOMPARE(w->property("dragIndex").toInt(), -1);
    else
        QVERIFY(!w->property("dragging").toBool());
}

void tst_ValueInput::gestureHooks_data()
{
    QTest::addColumn<QList<Step>>("steps");
    QTest::addColumn<int>("started");
    QTest::addColumn<int>("ended");
    QTest::addColumn<bool>("dragging");

    QTest::newRow("press") << QList<Step>{Step::press()} << 1 << 0 << true;
    QTest::newRow("drag") << QList<Step>{Step::press(), Step::move(-5), Step::release(-5)} << 1 << 1 << false;
    QTest::newRow("ended by a modifier") << QList<Step>{Step::press(), Step::move(-5, 0, Qt::ShiftModifier)} << 1 << 1
                                         << false;
    QTest::newRow("ended by a Control release")
        << QList<Step>{Step::press(), Step::move(-5), Step::release(-5, Qt::ControlModifier)} << 1 << 1 << false;
    QTest::newRow("right button") << QList<Step>{Step::press(), Step::release(0, Qt::NoModifier, Qt::RightButton,
                                                                              Qt::LeftButton)}
                                  << 1 << 0 << true;
    QTest::newRow("Alt-click is no drag") << QList<Step>{Step::press(Qt::AltModifier)} << 0 << 0 << false;
    QTest::newRow("two drags") << QList<Step>{Step::press(), Step::release(0), Step::press(), Step::release(-3)} << 2
                               << 2 << false;
}

void tst_ValueInput::gestureHooks()
{
    QFETCH(QList<Step>, steps);
    QFETCH(int, started);
    QFETCH(int, ended);
    QFETCH(bool, dragging);
    host.requests.clear();
    host.setParameter(QStringLiteral("Ch1/Gain"), QStringLiteral("0.5"), QStringLiteral("0 dB"));
    auto *d = host.make<CountingDial>(
        QStringLiteral("<Rect x=\"10\" y=\"10\" width=\"60\" height=\"60\"/><Address prmAddr=\"Ch1/Gain\"/>"));
    play(d, QPoint(30, 30), steps);
    QCOMPARE(d->started, started);
    QCOMPARE(d->ended, ended);
    QCOMPARE(d->isDragging(), dragging);
}

void tst_ValueInput::farCoordinates_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("sent");

    const int most = std::numeric_limits<int>::max();
    const int least = std::numeric_limits<int>::min();
    // Coordinates grow downward: a smaller one is higher and raises the value.
    QTest::newRow("from the lowest to the highest") << most << least << "300/1";
    QTest::newRow("from the highest to the lowest") << least << most << "0/1";
    QTest::newRow("highest, one down") << least << least + 1 << "149/1";
    QTest::newRow("lowest, a thousand up") << most << most - 1000 << "300/1";
}

void tst_ValueInput::farCoordinates()
{
    QFETCH(int, start);
    QFETCH(int, to);
    QFETCH(QString, sent);
    // Pointer coordinates come from events and can be anything; the
    // distance must not wrap round.
    RecordingInput input({AbstractValueInput::AltClick::Ignored, AbstractValueInput::PressPoint::Sends, false, true,
                          false, false, false});
    input.beginDrag(0, start, 150);
    input.dragTo(to, true);
    QCOMPARE(input.sent, QStringList{sent});
    input.finishDrag(to);
    QCOMPARE(input.sent.size(), 2);
    QVERIFY(!input.isDragging());
}

void tst_ValueInput::shortStartCoordinate_data()
{
    QTest::addColumn<bool>("shortStart");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("sent");

    QTest::newRow("full width, one down") << false << 40000 << 40001 << "149/1";
    // 40000 kept in 16 bits is -25536: one pixel further down is far below it.
    QTest::newRow("16 bits, one down") << true << 40000 << 40001 << "0/1";
    QTest::newRow("16 bits, in range") << true << 1000 << 990 << "160/1";
    QTest::newRow("16 bits, negative in range") << true << -1000 << -1010 << "160/1";
}

void tst_ValueInput::shortStartCoordinate()
{
    QFETCH(bool, shortStart);
    QFETCH(int, start);
    QFETCH(int, to);
    QFETCH(QString, sent);
    RecordingInput input({AbstractValueInput::AltClick::Ignored, AbstractValueInput::PressPoint::Sends, false, true,
                          false, false, shortStart});
    input.beginDrag(0, start, 150);
    input.dragTo(to, true);
    QCOMPARE(input.sent, QStringList{sent});
    QCOMPARE(NumberBox::valueInput.shortStart, true);
    QCOMPARE(Dial::valueInput.shortStart, false);
}

QTEST_MAIN(tst_ValueInput)
#include "tst_valueinput.moc"
