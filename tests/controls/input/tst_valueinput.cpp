#include "controls/ControlTestHost.h"

#include "controls/dial/Dial.h"
#include "controls/fader/Fader.h"
#include "controls/numberbox/NumberBox.h"
#include "graphs/grid/grid_variants.h"

#include <QtTest>

#include <limits>

namespace {

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
        host.reset();
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

private slots:
    void gestures_data();
    void gestures();
    void gestureHooks_data();
    void gestureHooks();
    void dragCoordinates_data();
    void dragCoordinates();
};

void tst_ValueInput::gestures_data()
{
    using namespace Step;
    QTest::addColumn<int>("family");
    QTest::addColumn<Gesture>("steps");
    QTest::addColumn<QStringList>("sent");

    const QStringList none;
    // Positions are offsets from the family's press point. The gesture,
    // then what each family sends: dial, fader, number box, delay cell.
    struct Row
    {
        const char *name;
        Gesture steps;
        QStringList sent[4];
    };
    const Qt::KeyboardModifiers alt = Qt::AltModifier;
    const Qt::KeyboardModifiers altControl = Qt::AltModifier | Qt::ControlModifier;
    const QList<Row> rows = {
        {"click", {press(0, 0), release(0, 0)}, {none, none, none, none}},
        // What the press height sends.
        {"up and back to the press height",
         {press(0, 0), move(0, -10), move(0, 0), release(0, 0)},
         {{"pos 0.533333 1", "pos 0.5 1", "pos 0.5 0"},
          {"pos 0.533333 1", "pos 0.5 1", "pos 0.5 0"},
          {"pos 0.533333 1"},
          {"pos 0.533333 1", "pos 0.5 1", "pos 0.5 0"}}},
        {"sideways first, then up",
         {press(0, 0), move(3, 0), move(0, -10), release(0, -10)},
         {{"pos 0.5 1", "pos 0.533333 1", "pos 0.533333 0"},
          {"pos 0.5 1", "pos 0.533333 1", "pos 0.533333 0"},
          {"pos 0.533333 1", "pos 0.533333 0"},
          {"pos 0.533333 1", "pos 0.533333 0"}}},
        {"release away without a move",
         {press(0, 0), release(0, -10)},
         {none, none, {"pos 0.533333 0"}, {"pos 0.533333 0"}}},
        // Both ends of the scale hold.
        {"far beyond the top",
         {press(0, 0), move(0, -400), release(0, -400)},
         {{"pos 1 1", "pos 1 0"}, {"pos 1 1", "pos 1 0"}, {"pos 1 1", "pos 1 0"}, {"pos 1 1", "pos 1 0"}}},
        {"far below the bottom",
         {press(0, 0), move(0, 400), release(0, 400)},
         {{"pos 0 1", "pos 0 0"}, {"pos 0 1", "pos 0 0"}, {"pos 0 1", "pos 0 0"}, {"pos 0 1", "pos 0 0"}}},
        {"a modifier during the drag ends it",
         {press(0, 0), move(0, -10), move(0, -20).with(Qt::ShiftModifier), release(0, -20)},
         {{"pos 0.533333 1"}, {"pos 0.533333 1"}, {"pos 0.533333 1"}, {"pos 0.533333 1"}}},
        {"a Control release ends the drag",
         {press(0, 0), move(0, -10), release(0, -10).with(Qt::ControlModifier), move(0, -20).holding(Qt::NoButton)},
         {{"pos 0.533333 1"}, {"pos 0.533333 1"}, {"pos 0.533333 1"}, {"pos 0.533333 1", "pos 0.533333 0"}}},
        // Alt, and where it stands against Control; kind 3 asks for the default.
        {"Alt-click, released higher",
         {press(0, 0).with(alt), release(0, -10).with(alt)},
         {{"kind 3"}, {"kind 3"}, {"pos 0.533333 0"}, none}},
        {"Alt+Control-click",
         {press(0, 0).with(altControl), release(0, 0).with(altControl)},
         {none, {"kind 3"}, none, none}},
        // Buttons.
        {"a move without the button held",
         {press(0, 0), move(0, -10).holding(Qt::NoButton), release(0, -10)},
         {{"pos 0.533333 1", "pos 0.533333 0"},
          {"pos 0.533333 1", "pos 0.533333 0"},
          {"pos 0.533333 1", "pos 0.533333 0"},
          {"pos 0.533333 0"}}},
        {"another button comes up mid-drag",
         {press(0, 0), move(0, -10), release(QPoint(0, -10), Qt::RightButton, Qt::LeftButton), release(0, -20)},
         {{"pos 0.533333 1", "pos 0.566667 0"},
          {"pos 0.533333 1", "pos 0.566667 0"},
          {"pos 0.533333 1", "pos 0.533333 0"},
          {"pos 0.533333 1", "pos 0.566667 0"}}},
        // Keys and wheel.
        {"Up, Down",
         {key(Qt::Key_Up), key(Qt::Key_Down)},
         {{"step 1 0.5", "step -1 0.5"}, {"step 1 0.5", "step -1 0.5"}, {"step 1 0.5", "step -1 0.5"}, none}},
        {"Left, Right", {key(Qt::Key_Left), key(Qt::Key_Right)}, {none, none, none, none}},
        {"wheel a notch up, two down",
         {wheel(120, QPoint()), wheel(-240, QPoint())},
         {{"step 1 0.5", "step -1 0.5", "step -1 0.5"},
          {"step 1 0.5", "step -1 0.5", "step -1 0.5"},
          {"step 1 0.5", "step -1 0.5", "step -1 0.5"},
          {"step 1 0.5", "step -1 0.5", "step -1 0.5"}}},
        {"wheel half a notch twice",
         {wheel(60, QPoint()), wheel(60, QPoint())},
         {{"step 1 0.5"}, {"step 1 0.5"}, {"step 1 0.5"}, {"step 1 0.5"}}},
    };
    for (const Row &g : rows) {
        for (int f = DialFamily; f <= DelayCellFamily; ++f)
            QTest::addRow("%s: %s", familyNames[f], g.name) << f << g.steps << g.sent[f];
    }
}

void tst_ValueInput::gestures()
{
    QFETCH(int, family);
    QFETCH(Gesture, steps);
    QFETCH(QStringList, sent);
    QPoint at;
    QWidget *w = make(Family(family), &at);
    Gestures::play(w, host, Gestures::offset(steps, at));
    QCOMPARE(Gestures::described(host), sent);
    // Every gesture above ends with no drag running.
    if (family == DelayCellFamily)
        QCOMPARE(w->property("dragIndex").toInt(), -1);
    else
        QVERIFY(!w->property("dragging").toBool());
}

void tst_ValueInput::gestureHooks_data()
{
    using namespace Step;
    QTest::addColumn<Gesture>("steps");
    QTest::addColumn<int>("started");
    QTest::addColumn<int>("ended");
    QTest::addColumn<bool>("dragging");

    QTest::newRow("press") << Gesture{press(0, 0)} << 1 << 0 << true;
    QTest::newRow("drag") << Gesture{press(0, 0), move(0, -5), release(0, -5)} << 1 << 1 << false;
    QTest::newRow("ended by a modifier") << Gesture{press(0, 0), move(0, -5).with(Qt::ShiftModifier)} << 1 << 1
                                         << false;
    QTest::newRow("ended by a Control release")
        << Gesture{press(0, 0), move(0, -5), release(0, -5).with(Qt::ControlModifier)} << 1 << 1 << false;
    QTest::newRow("right button") << Gesture{press(0, 0), release(QPoint(), Qt::RightButton, Qt::LeftButton)} << 1
                                  << 0 << true;
    QTest::newRow("Alt-click is no drag") << Gesture{press(0, 0).with(Qt::AltModifier)} << 0 << 0 << false;
    QTest::newRow("two drags") << Gesture{press(0, 0), release(0, 0), press(0, 0), release(0, -3)} << 2 << 2 << false;
}

void tst_ValueInput::gestureHooks()
{
    QFETCH(Gesture, steps);
    QFETCH(int, started);
    QFETCH(int, ended);
    QFETCH(bool, dragging);
    host.requests.clear();
    host.setParameter(QStringLiteral("Ch1/Gain"), QStringLiteral("0.5"), QStringLiteral("0 dB"));
    auto *d = host.make<CountingDial>(
        QStringLiteral("<Rect x=\"10\" y=\"10\" width=\"60\" height=\"60\"/><Address prmAddr=\"Ch1/Gain\"/>"));
    Gestures::play(d, host, Gestures::offset(steps, QPoint(30, 30)));
    QCOMPARE(d->started, started);
    QCOMPARE(d->ended, ended);
    QCOMPARE(d->isDragging(), dragging);
}

void tst_ValueInput::dragCoordinates_data()
{
    QTest::addColumn<bool>("shortStart");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("sent");

    // Pointer coordinates come from events and can be anything; the
    // distance must not wrap round. Coordinates grow downward: a smaller
    // one is higher and raises the value.
    const int most = std::numeric_limits<int>::max();
    const int least = std::numeric_limits<int>::min();
    QTest::newRow("from the lowest to the highest") << false << most << least << "300/1";
    QTest::newRow("from the highest to the lowest") << false << least << most << "0/1";
    QTest::newRow("highest, one down") << false << least << least + 1 << "149/1";
    QTest::newRow("lowest, a thousand up") << false << most << most - 1000 << "300/1";
    QTest::newRow("full width, one down") << false << 40000 << 40001 << "149/1";
    // 40000 kept in 16 bits is -25536: one pixel further down is far below it.
    QTest::newRow("16 bits, one down") << true << 40000 << 40001 << "0/1";
    QTest::newRow("16 bits, in range") << true << 1000 << 990 << "160/1";
    QTest::newRow("16 bits, negative in range") << true << -1000 << -1010 << "160/1";
}

void tst_ValueInput::dragCoordinates()
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
    input.finishDrag(to);
    QCOMPARE(input.sent.size(), 2);
    QVERIFY(!input.isDragging());
    QCOMPARE(NumberBox::valueInput.shortStart, true);
    QCOMPARE(Dial::valueInput.shortStart, false);
}

QTEST_MAIN(tst_ValueInput)
#include "tst_valueinput.moc"
