#include "controls/ControlTestHost.h"

#include "controls/dial/Dial.h"
#include "controls/dial/dial_variants.h"

#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QPainter>
#include <QTemporaryDir>
#include <QtMath>
#include <QtTest>

#include <cmath>
#include "support/Gesture.h"
#include "support/PaintRecorder.h"
#include "support/Files.h"
#include "support/Render.h"

using Input::key;
using Input::mouse;

namespace {

// Clockwise from 12 o'clock, in degrees.
double clockAngle(const QPointF &d)
{
    return std::atan2(d.x(), -d.y()) * 180.0 / M_PI;
}

} // namespace

class tst_Dial : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;

    Dial *dial(const QString &val = QStringLiteral("0.5"), const QString &extra = QString(),
               const QString &type = QStringLiteral("Dial"), int side = 60)
    {
        host.reset();
        host.setParameter(QStringLiteral("Ch1/Gain"), val, QStringLiteral("g"));
        host.setParameter(QStringLiteral("Ch/Show"), QStringLiteral("0"), QStringLiteral("shown"));
        const QString rect = QStringLiteral("<Rect x=\"10\" y=\"10\" width=\"%1\" height=\"%1\"/>").arg(side);
        const QString own = QStringLiteral("<Address prmAddr=\"Ch1/Gain\"/>");
        // The variants that find their address another way are bound to the same parameter.
        QString bind = own;
        if (type == QLatin1String("ChannelSelectDial"))
            bind = QStringLiteral("<Address prmAddr=\"Ch{ChNum}/Gain\"/><ChNum>1</ChNum>");
        else if (type == QLatin1String("DelayMatrixDial"))
            bind = QStringLiteral("<AddressForm prmAddr=\"Ch{x}/Gain\"/><XIndex>1</XIndex>");
        else if (type == QLatin1String("TuningZoneDial"))
            bind = QStringLiteral("<Zone>z1</Zone>") + own;
        Dial *d = host.make<Dial>(type, rect + bind + extra);
        if (!d)
            qFatal("%s is no dial type", qPrintable(type));
        d->setFocus();
        return d;
    }

    QStringList sent() const { return Gestures::described(host, Gestures::describeFor(QStringLiteral("Ch1/Gain"))); }

private slots:
    void beam_data();
    void beam();
    void description_data();
    void description();
    void levelList();
    void drag_data();
    void drag();
    void controlClicks();
    void keys_data();
    void keys();
    void wheel_data();
    void wheel();
    void wheelInScrollArea_data();
    void wheelInScrollArea();
    void contextMenu_data();
    void contextMenu();
    void valueRepaintsOnlyWhenThePositionMoves();
    void pointer_data();
    void pointer();
    void indicator_data();
    void indicator();
    void images();
    void gates();
};

void tst_Dial::description_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("expected");

    QTest::newRow("default index image") << "" << "indexImage" << QVariant("Widget/Dial/index.svg");
    QTest::newRow("no knob image") << "" << "knobImage" << QVariant("");
    QTest::newRow("no indicator") << "" << "indicatorShown" << QVariant(false);
    QTest::newRow("indicator width 2") << "" << "indicatorWidth" << QVariant(2);
    QTest::newRow("index image") << "<Image type=\"index\">a/ptr.svg</Image>" << "indexImage" << QVariant("a/ptr.svg");
    QTest::newRow("knob image") << "<Image type=\"knob\">k.svg</Image>" << "knobImage" << QVariant("k.svg");
    QTest::newRow("any other type is the knob") << "<Image type=\"base\">k.png</Image>" << "knobImage"
                                                << QVariant("k.png");
    QTest::newRow("untyped is the knob") << "<Image>k.png</Image>" << "knobImage" << QVariant("k.png");
    QTest::newRow("colour") << "<Color>10,20,30,40</Color>" << "color" << QVariant(QColor(10, 20, 30, 40));
    QTest::newRow("bad colour keeps the default") << "<Color>10,20</Color>" << "color" << QVariant(Dial::defaultColor);
    QTest::newRow("round") << "<Round x=\"4\" y=\"5\" width=\"30\" height=\"31\"/>" << "faceRect"
                           << QVariant(QRect(4, 5, 30, 31));
    QTest::newRow("round is the knob") << "<Round x=\"4\" y=\"5\" width=\"30\" height=\"31\"/>" << "knobRect"
                                       << QVariant(QRect(4, 5, 30, 31));
    QTest::newRow("bare indicator shows") << "<Indicator/>" << "indicatorShown" << QVariant(true);
    QTest::newRow("bare indicator rect follows the height") << "<Indicator/>" << "indicatorRect"
                                                            << QVariant(QRect(1, 1, 58, 58));
    const QString full = QStringLiteral("<Indicator><Color>1,2,3</Color><Start>150</Start><Width>5</Width>"
                                        "<Rect x=\"2\" y=\"3\" width=\"40\" height=\"41\"/></Indicator>");
    QTest::newRow("indicator colour") << full << "indicatorColor" << QVariant(QColor(1, 2, 3));
    QTest::newRow("indicator start") << full << "indicatorStart" << QVariant(150);
    QTest::newRow("indicator width") << full << "indicatorWidth" << QVariant(5);
    QTest::newRow("indicator rect") << full << "indicatorRect" << QVariant(QRect(2, 3, 40, 41));
    QTest::newRow("knob inside the arc") << "<Indicator><Width>4</Width></Indicator>" << "knobRect"
                                         << QVariant(QRect(8, 8, 44, 44));
}

void tst_Dial::description()
{
    QFETCH(QString, xml);
    QFETCH(QString, property);
    QFETCH(QVariant, expected);

    Dial *d = dial(QStringLiteral("0.5"), xml);
    QCOMPARE(d->property(property.toLatin1().constData()), expected);
    for (const char *tag : {"Image", "Color", "Round", "Indicator", "LevelList", "Rect", "Address"})
        QVERIFY2(d->handledTags().contains(QLatin1String(tag)), tag);
}

void tst_Dial::levelList()
{
    Dial *d = dial(QStringLiteral("0.5"),
                   QStringLiteral("<LevelList><Level text=\"Max\">10</Level><Level>skipped</Level>"
                                  "<Level text=\"\">skipped too</Level><Level text=\"Off\">-inf</Level></LevelList>"));
    QCOMPARE(d->levels(), (QStringList{"Max:10", "Off:-inf"}));
    d->configure(Xml::widget(QStringLiteral("<LevelList><Level text=\"Unity\">0</Level></LevelList>")));
    QCOMPARE(d->levels(), QStringList{"Unity:0"});
}

void tst_Dial::drag_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("val");
    QTest::addColumn<Gesture>("gesture");

    using namespace Step;
    const Qt::KeyboardModifiers controlAlt = Qt::ControlModifier | Qt::AltModifier;
    QTest::newRow("click sends nothing") << "Dial" << "0.5" << Gesture{press(30, 30), release(30, 30)};
    QTest::newRow("ten up") << "Dial" << "0.5"
                            << Gesture{press(30, 30), move(30, 20, {"pos 0.533333 1"}),
                                       release(30, 20, {"pos 0.533333 0"})};
    QTest::newRow("back at the press height still sends")
        << "Dial" << "0.5"
        << Gesture{press(30, 30), move(30, 25, {"pos 0.516667 1"}), move(30, 30, {"pos 0.5 1"}),
                   release(30, 30, {"pos 0.5 0"})};
    QTest::newRow("only vertical movement counts")
        << "Dial" << "0.5" << Gesture{press(30, 30), move(90, 27, {"pos 0.51 1"}), release(-40, 27, {"pos 0.51 0"})};
    QTest::newRow("400 up tops out") << "Dial" << "0.2"
                                     << Gesture{press(30, 30), move(30, -370, {"pos 1 1"}),
                                                release(30, -370, {"pos 1 0"})};
    QTest::newRow("far down bottoms out") << "Dial" << "0.2"
                                          << Gesture{press(30, 30), move(30, 200, {"pos 0 1"}),
                                                     release(30, 201, {"pos 0 0"})};
    QTest::newRow("start rounds to the scale") << "Dial" << "0.4983"
                                               << Gesture{press(30, 30), move(30, 29, {"pos 0.5 1"})};
    QTest::newRow("start adds a half before truncating") << "Dial" << "0.4985"
                                                         << Gesture{press(30, 30), move(30, 29, {"pos 0.503333 1"})};
    QTest::newRow("control before alt: the core's click")
        << "Dial" << "0.5" << Gesture{press(30, 30).with(controlAlt), release(30, 30).with(controlAlt)};
    QTest::newRow("not a number starts at 0") << "Dial" << "n/a"
                                              << Gesture{press(30, 30), move(30, 27, {"pos 0.01 1"})};
    QTest::newRow("alt-click asks for the default")
        << "Dial" << "0.5" << Gesture{press(30, 30, {"kind 3"}).with(Qt::AltModifier), move(30, 10), release(30, 10)};
    QTest::newRow("a modifier ends the drag")
        << "Dial" << "0.5"
        << Gesture{press(30, 30), move(30, 29, {"pos 0.503333 1"}), move(30, 20).with(Qt::ShiftModifier),
                   move(30, 10), release(30, 10)};
    QTest::newRow("channel select") << "ChannelSelectDial" << "0.5"
                                    << Gesture{press(30, 30), move(30, 27, {"pos 0.51 1"}),
                                               release(30, 27, {"pos 0.51 0"})};
    QTest::newRow("matrix cell") << "DelayMatrixDial" << "0.5" << Gesture{press(30, 30), move(30, 33, {"pos 0.49 1"})};
    // A direction turns endlessly: past either end the drag goes on from the other.
    QTest::newRow("direction over the top") << "DirectionDial" << "0.9"
                                            << Gesture{press(30, 30), move(30, 0, {"pos 0 1"}),
                                                       release(30, -30, {"pos 0.1 0"})};
    QTest::newRow("direction below 0") << "DirectionDial" << "0.05"
                                       << Gesture{press(30, 30), move(30, 60, {"pos 0.95 1"})};
    QTest::newRow("direction inside the travel") << "DirectionDial" << "0.5"
                                                 << Gesture{press(30, 30), move(30, 27, {"pos 0.51 1"})};
    QTest::newRow("beam convert alt-click") << "BeamConvertDial" << "0.5"
                                            << Gesture{press(30, 30, {"kind 3"}).with(Qt::AltModifier)};
}

void tst_Dial::drag()
{
    QFETCH(QString, type);
    QFETCH(QString, val);
    QFETCH(Gesture, gesture);

    Dial *d = dial(val, QString(), type);
    const Gestures::Result r = Gestures::play(d, host, gesture, Gestures::describeFor(QStringLiteral("Ch1/Gain")));
    QCOMPARE(r.sent, r.expected);
    if (gesture.last().kind == GestureStep::Release)
        QVERIFY(!d->isDragging());
}

void tst_Dial::controlClicks()
{
    Dial *d = dial();
    host.selections.clear();
    mouse(d, QEvent::MouseButtonPress, QPoint(30, 30), Qt::LeftButton, Qt::ControlModifier);
    mouse(d, QEvent::MouseMove, QPoint(30, 10));
    mouse(d, QEvent::MouseButtonRelease, QPoint(30, 10), Qt::LeftButton, Qt::ControlModifier);
    QVERIFY(host.requests.isEmpty());
    QVERIFY(d->highlight());
    QCOMPARE(host.selections.size(), 1);

    mouse(d, QEvent::MouseButtonPress, QPoint(30, 30), Qt::LeftButton, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(host.requests.isEmpty());
    QCOMPARE(host.actions.size(), 1);
    QCOMPARE(host.actions.at(0).text, QStringLiteral("Add to Parameter Link Group"));

    // The right button neither drags nor asks.
    mouse(d, QEvent::MouseButtonPress, QPoint(30, 30), Qt::RightButton);
    mouse(d, QEvent::MouseMove, QPoint(30, 10));
    QVERIFY(!d->isDragging());
    QVERIFY(host.requests.isEmpty());
}

void tst_Dial::keys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("visible");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("val");

    QTest::newRow("up") << int(Qt::Key_Up) << true << QStringList{"step 1 0.25"} << true << "" << "";
    // A direction steps across an end by going round.
    QTest::newRow("direction up at the top") << int(Qt::Key_Up) << true << QStringList{"pos 0.00333333 0"} << true
                                             << "DirectionDial" << "1";
    QTest::newRow("direction down at 0") << int(Qt::Key_Down) << true << QStringList{"pos 0.996667 0"} << true
                                         << "DirectionDial" << "0";
    QTest::newRow("direction inside steps") << int(Qt::Key_Down) << true << QStringList{"step -1 1"} << true
                                            << "DirectionDial" << "1";
    QTest::newRow("down") << int(Qt::Key_Down) << true << QStringList{"step -1 0.25"} << true << "" << "";
    QTest::newRow("return passes on") << int(Qt::Key_Return) << true << QStringList() << false << "" << "";
    QTest::newRow("escape passes on") << int(Qt::Key_Escape) << true << QStringList() << false << "" << "";
    QTest::newRow("right passes on") << int(Qt::Key_Right) << true << QStringList() << false << "" << "";
    QTest::newRow("hidden ignores up") << int(Qt::Key_Up) << false << QStringList() << false << "" << "";
}

void tst_Dial::keys()
{
    QFETCH(int, key);
    QFETCH(bool, visible);
    QFETCH(QStringList, expected);
    QFETCH(bool, accepted);
    QFETCH(QString, type);
    QFETCH(QString, val);

    Dial *d = type.isEmpty() ? dial(QStringLiteral("0.25")) : dial(val, QString(), type);
    d->setVisible(visible);
    QCOMPARE(Input::key(d, key), accepted);
    QCOMPARE(sent(), expected);
}

void tst_Dial::wheel_data()
{
    QTest::addColumn<Gesture>("gesture");
    Gestures::addWheelNotchRows(QPoint(30, 30), QStringLiteral("0.5"));
}

void tst_Dial::wheel()
{
    QFETCH(Gesture, gesture);

    const Gestures::Result r = Gestures::play(dial(), host, gesture, Gestures::describeFor(QStringLiteral("Ch1/Gain")));
    QCOMPARE(r.sent, r.expected);
    QCOMPARE(r.ignored, QStringList());
}

void tst_Dial::wheelInScrollArea_data()
{
    QTest::addColumn<bool>("inArea");
    QTest::addColumn<bool>("bound");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("focused");
    QTest::addColumn<bool>("rested");
    QTest::addColumn<bool>("dialTakes");

    QTest::newRow("area: pointer just arrived") << true << true << true << false << false << false;
    QTest::newRow("area: focused") << true << true << true << true << false << true;
    QTest::newRow("area: pointer rested") << true << true << true << false << true << true;
    QTest::newRow("area: unbound, focused") << true << false << true << true << true << false;
    QTest::newRow("area: disabled, rested") << true << true << false << false << true << false;
    QTest::newRow("no area: no focus") << false << true << true << false << false << true;
    QTest::newRow("no area: unbound") << false << false << true << true << false << false;
}

void tst_Dial::wheelInScrollArea()
{
    QFETCH(bool, inArea);
    QFETCH(bool, bound);
    QFETCH(bool, enabled);
    QFETCH(bool, focused);
    QFETCH(bool, rested);
    QFETCH(bool, dialTakes);

    Dial *d = dial(QStringLiteral("0.5"), QString(), QStringLiteral("Dial"));
    if (!bound)
        d->updateAddresses({{{"prmAddr", ""}}});
    QScrollArea *area = nullptr;
    if (inArea) {
        area = new QScrollArea(host.window.get());
        area->setGeometry(0, 0, 200, 150);
        auto *content = new QWidget;
        content->resize(180, 1000);
        d->setParent(content);
        d->move(10, 10);
        area->setWidget(content);
        area->show();
        d->show();
        QVERIFY(area->verticalScrollBar()->maximum() > 0);
        area->verticalScrollBar()->setValue(100);
    }
    d->setEnabled(enabled);
    auto *other = new QWidget(host.window.get());
    other->setFocusPolicy(Qt::StrongFocus);
    other->show();
    if (focused)
        d->setFocus();
    else
        other->setFocus();
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(d, &enter);
    if (rested)
        QTest::qWait(WheelPolicy::restMs + 50);

    const bool taken = Input::wheel(d, -120, QPoint(30, 30));
    QCOMPARE(sent().size(), dialTakes ? 1 : 0);
    QCOMPARE(taken, dialTakes);
    if (area && !taken) {
        // Qt passes an ignored (spontaneous) wheel event on to the parents;
        // the area's viewport scrolls.
        Input::wheel(area->viewport(), -120, QPoint(40, 40));
        QVERIFY(area->verticalScrollBar()->value() != 100);
    }
}

void tst_Dial::contextMenu_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<bool>("bound");
    QTest::addColumn<QStringList>("items");

    const QString levels = QStringLiteral("<LevelList><Level text=\"Unity\">0dB</Level>"
                                          "<Level text=\"Off\">-inf</Level></LevelList>");
    const QStringList host{"Add to Parameter Set", "Add New Parameter Set", "Add to Remote Control List",
                           "Add to Parameter Link Group", "Add New Group"};
    QTest::newRow("host entries only") << QString() << true << host;
    QTest::newRow("levels after a separator") << levels << true << (host + QStringList{"|", "Unity", "Off"});
    QTest::newRow("no separator on an empty menu") << levels << false << QStringList{"Unity", "Off"};
    QTest::newRow("no menu at all") << QString() << false << QStringList();
}

void tst_Dial::contextMenu()
{
    QFETCH(QString, xml);
    QFETCH(bool, bound);
    QFETCH(QStringList, items);

    host.window.reset();
    host.requests.clear();
    host.actions.clear();
    host.setParameter(QStringLiteral("Ch1/Gain"), QStringLiteral("0.5"), QStringLiteral("g"));
    Dial *d = host.make<Dial>((bound ? QStringLiteral("<Address prmAddr=\"Ch1/Gain\"/>") : QString()) + xml);
    std::unique_ptr<QMenu> menu(d->createContextMenu());
    QStringList texts;
    if (menu) {
        for (QAction *a : menu->actions())
            texts << (a->isSeparator() ? QStringLiteral("|") : a->text());
    }
    QCOMPARE(texts, items);
    if (!menu)
        return;

    for (QAction *a : menu->actions()) {
        if (a->text() == QLatin1String("Off"))
            a->trigger();
        if (a->text() == QLatin1String("Add New Group"))
            a->trigger();
    }
    if (items.contains(QStringLiteral("Off"))) {
        // Without an address there is nothing to send to.
        QCOMPARE(sent(), bound ? QStringList{"text -inf"} : QStringList());
    } else {
        QVERIFY(host.requests.isEmpty());
    }
    QCOMPARE(host.actions.size(), bound ? 1 : 0);
}

void tst_Dial::valueRepaintsOnlyWhenThePositionMoves()
{
    Dial *d = dial(QStringLiteral("0.5"));
    PaintRecorder counter;
    QVERIFY(counter.watchSettled(d));
    const QVariantMap parameter{{"prmAddr", "Ch1/Gain"}, {"dev_uniq_id", "dev1"}};

    host.setParameter(QStringLiteral("Ch1/Gain"), QStringLiteral("0.5"), QStringLiteral("another text"));
    d->notifyValueChanged(parameter);
    // A notification that matched repaints once, changed or not; the rest paints nothing.
    QCOMPARE(counter.paintsNow(), 1);
    counter.clear();
    QCOMPARE(d->shownPosition(), 0.5);

    host.setParameter(QStringLiteral("Ch1/Gain"), QStringLiteral("0.75"), QStringLiteral("more"));
    d->notifyValueChanged(parameter);
    QTRY_VERIFY(counter.paints > 0);
    QCOMPARE(d->shownPosition(), 0.75);
    QCOMPARE(d->angle(), 75.0);
}

void tst_Dial::pointer_data()
{
    QTest::addColumn<QString>("val");
    QTest::addColumn<double>("angle");
    QTest::addColumn<QString>("type");

    QTest::newRow("minimum at 7 o'clock") << "0" << -150.0 << "Dial";
    QTest::newRow("quarter") << "0.25" << -75.0 << "Dial";
    QTest::newRow("half points up") << "0.5" << 0.0 << "Dial";
    QTest::newRow("maximum at 5 o'clock") << "1" << 150.0 << "Dial";
    QTest::newRow("above 1 stays at the maximum") << "1.7" << 150.0 << "Dial";
    QTest::newRow("not a number is the minimum") << "-" << -150.0 << "Dial";
    // A direction goes once round: 0 up, a quarter at 3 o'clock, a half down.
    QTest::newRow("direction 0 points up") << "0" << 0.0 << "DirectionDial";
    QTest::newRow("direction quarter") << "0.25" << 90.0 << "DirectionDial";
    QTest::newRow("direction half points down") << "0.5" << 180.0 << "DirectionDial";
    QTest::newRow("direction three quarters") << "0.75" << -90.0 << "DirectionDial";
    QTest::newRow("direction 1 is 0 again") << "1" << 0.0 << "DirectionDial";
}

void tst_Dial::pointer()
{
    QFETCH(QString, val);
    QFETCH(double, angle);
    QFETCH(QString, type);

    Dial *d = dial(val, QString(), type, 100);
    const QImage image = render(d);
    const QPointF centre = QRectF(d->knobRect()).center();
    // The pointer is the only near-white thing on the knob.
    QPointF sum;
    int n = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (c.red() > 225 && c.green() > 225 && c.blue() > 225) {
                sum += QPointF(x + 0.5, y + 0.5) - centre;
                ++n;
            }
        }
    }
    QVERIFY2(n > 20, qPrintable(QString::number(n)));
    const double drawn = clockAngle(sum / n);
    const double off = std::remainder(drawn - angle, 360.0);
    QVERIFY2(std::abs(off) < 6, qPrintable(QStringLiteral("drawn at %1").arg(drawn)));
}

void tst_Dial::indicator_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<QString>("val");
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");

    QTest::newRow("from the minimum") << 0 << "0.5" << -150.0 << 0.0;
    QTest::newRow("pan right") << 150 << "0.75" << 0.0 << 75.0;
    QTest::newRow("pan left") << 150 << "0.25" << -75.0 << 0.0;
    QTest::newRow("from the maximum, all the way") << 300 << "0" << -150.0 << 150.0;
    QTest::newRow("nothing at the start") << 0 << "0" << 0.0 << 0.0;
}

void tst_Dial::indicator()
{
    QFETCH(int, start);
    QFETCH(QString, val);
    QFETCH(double, from);
    QFETCH(double, to);

    Dial *d = dial(val,
                   QStringLiteral("<Indicator><Color>255,0,0</Color><Width>6</Width><Start>%1</Start></Indicator>")
                       .arg(start),
                   QStringLiteral("Dial"), 100);
    const QImage image = render(d);
    const QPointF centre = QRectF(d->indicatorRect()).center();
    int n = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (c.red() < 220 || c.green() > 40 || c.blue() > 40)
                continue;
            ++n;
            const double a = clockAngle(QPointF(x + 0.5, y + 0.5) - centre);
            QVERIFY2(a > from - 4 && a < to + 4, qPrintable(QStringLiteral("red at %1,%2 (%3)").arg(x).arg(y).arg(a)));
        }
    }
    // A 6-pixel line along a radius of about 46 pixels.
    const double expected = (to - from) * M_PI / 180 * 46 * 6;
    QVERIFY2(n >= expected * 0.6 && n <= expected * 1.4 + 6, qPrintable(QString::number(n)));
}

void tst_Dial::images()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString knob = dir.filePath(QStringLiteral("knob.svg"));
    QVERIFY(writeFile(knob,
                      "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 10 10\">"
                      "<rect width=\"10\" height=\"10\" fill=\"#00ff00\"/></svg>"));
    // A pointer of the image folder wins over the built-in one of the same name.
    QVERIFY(QDir(dir.path()).mkpath(QStringLiteral("Widget/Dial")));
    QVERIFY(writeFile(dir.filePath(QStringLiteral("Widget/Dial/index.svg")),
                      "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 100 100\">"
                      "<rect x=\"45\" y=\"5\" width=\"10\" height=\"30\" fill=\"#0000ff\"/></svg>"));

    host.imagePath = dir.path();
    Dial *d = dial(QStringLiteral("0.5"), QStringLiteral("<Image type=\"knob\">knob.svg</Image>"),
                   QStringLiteral("Dial"), 80);
    QImage image = render(d);
    const QRect k = d->knobRect();
    QCOMPARE(image.pixelColor(k.center()), QColor(0, 255, 0));
    QCOMPARE(image.pixelColor(k.center().x(), k.top() + k.height() / 5), QColor(0, 0, 255));

    // Turned a quarter to the right, the pointer lies right of the centre.
    host.setParameter(QStringLiteral("Ch1/Gain"), QStringLiteral("0.8"), QStringLiteral("g"));
    d->notifyValueChanged({{"prmAddr", "Ch1/Gain"}, {"dev_uniq_id", "dev1"}});
    image = render(d);
    QCOMPARE(image.pixelColor(k.center().x() + k.width() * 3 / 10, k.center().y()), QColor(0, 0, 255));

    // Without the folder the built-in pointer is drawn, on the knob image.
    host.imagePath.clear();
    d = dial(QStringLiteral("0.5"), QStringLiteral("<Image type=\"knob\">") + knob + "</Image>",
             QStringLiteral("Dial"), 80);
    image = render(d);
    const QColor tip = image.pixelColor(k.center().x(), k.top() + k.height() / 4);
    QVERIFY2(tip.red() > 225 && tip.blue() > 225, qPrintable(tip.name()));
}

void tst_Dial::gates()
{
    RejectFocusDial *d = static_cast<RejectFocusDial *>(
        dial(QStringLiteral("0.5"), QStringLiteral("<range>2</range><RejectValue>1</RejectValue>"),
             QStringLiteral("RejectFocusDial")));
    QCOMPARE(d->focusPolicy(), Qt::NoFocus);
    QVERIFY(!d->isEnabled());
    host.setParameter(QStringLiteral("Ch1/Gain"), QStringLiteral("0"), QStringLiteral("g"));
    d->notifyValueChanged({{"prmAddr", "Ch1/Gain"}, {"dev_uniq_id", "dev1"}});
    QVERIFY(d->isEnabled());
    QCOMPARE(d->shownPosition(), 0.0);
}

void tst_Dial::beam_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("val");
    QTest::addColumn<QString>("width");   // BeamWidth tag text
    QTest::addColumn<int>("degrees");     // the width in use
    QTest::addColumn<double>("towards");  // clock angle the beam points at

    QTest::newRow("up") << "BeamDial" << "0.5" << "40" << 40 << 0.0;
    QTest::newRow("right end") << "BeamDial" << "1" << "40" << 40 << 150.0;
    QTest::newRow("left end, converting panel") << "BeamConvertDial" << "0" << "60" << 60 << -150.0;
    QTest::newRow("refused width keeps 30") << "BeamDial" << "0.5" << "400" << 30 << 0.0;
}

void tst_Dial::beam()
{
    QFETCH(QString, type);
    QFETCH(QString, val);
    QFETCH(QString, width);
    QFETCH(int, degrees);
    QFETCH(double, towards);

    auto *d = static_cast<BeamDial *>(
        dial(val, QStringLiteral("<BeamWidth>%1</BeamWidth><BeamColor>0,0,255,255</BeamColor>").arg(width), type, 100));
    QCOMPARE(d->beamWidth(), degrees);
    const QImage image = render(d);
    const QPointF c = QRectF(d->knobRect()).center();
    const double r = d->knobRect().width() / 2.0 * 0.7;
    auto at = [&](double clock) {
        const double a = qDegreesToRadians(clock);
        return image.pixelColor(QPointF(c.x() + r * std::sin(a), c.y() - r * std::cos(a)).toPoint());
    };
    auto beamBlue = [](const QColor &p) { return p.blue() > 200 && p.red() < 60 && p.green() < 60; };
    QVERIFY(beamBlue(at(towards)));
    QVERIFY(!beamBlue(at(towards + 180)));
    // Just inside and just outside the wedge's edge.
    QVERIFY(beamBlue(at(towards + degrees / 2.0 - 4)));
    QVERIFY(!beamBlue(at(towards + degrees / 2.0 + 6)));
}

QTEST_MAIN(tst_Dial)
#include "tst_dial.moc"
