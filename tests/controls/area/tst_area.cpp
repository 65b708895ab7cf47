#include "controls/ControlTestHost.h"

#include "graphs/area/area_variants.h"

#include <QtTest>
#include "support/Gesture.h"
#include "support/Pixels.h"
#include "support/Render.h"

using Input::mouse;

namespace {

bool near(const QColor &a, const QColor &b, int tolerance = 40)
{
    return Pixels::near(a, b, tolerance);
}

} // namespace

class tst_Area : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;

    PadArea *pad(const QString &type, const QString &extra = QString())
    {
        // 201 × 101: a pixel is 1/200 across and 1/100 up.
        const QString xml = QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"201\" height=\"101\"/>"
                                           "<Address prmAddr=\"Pos/X\"/><Address prmAddr=\"Pos/Y\"/>")
            + extra;
        return host.make<PadArea>(type, xml);
    }

private slots:
    void init();
    void handleFollowsTheParameters_data();
    void handleFollowsTheParameters();
    void drag_data();
    void drag();
    void pressesOffTheHandleOrWithControl_data();
    void pressesOffTheHandleOrWithControl();
    void beamPainting_data();
    void beamPainting();
    void propertiesAndTags();
};

void tst_Area::init()
{
    host.clear();
    host.zoom = 1.0f;
    host.setParameter(QStringLiteral("Pos/X"), QStringLiteral("0.5"), QStringLiteral("0"));
    host.setParameter(QStringLiteral("Pos/Y"), QStringLiteral("0.5"), QStringLiteral("0"));
}

void tst_Area::handleFollowsTheParameters_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("x");
    QTest::addColumn<QString>("y");
    QTest::addColumn<QPoint>("centre");

    for (const char *type : {"TrackingArea", "BeamArea"}) {
        QTest::newRow(qPrintable(QStringLiteral("%1 bottom left").arg(type))) << type << "0" << "0" << QPoint(0, 100);
        QTest::newRow(qPrintable(QStringLiteral("%1 top right").arg(type))) << type << "1" << "1" << QPoint(200, 0);
        QTest::newRow(qPrintable(QStringLiteral("%1 quarter, three quarters up").arg(type)))
            << type << "0.25" << "0.75" << QPoint(50, 25);
        QTest::newRow(qPrintable(QStringLiteral("%1 beyond the range").arg(type))) << type << "1.5" << "-2" << QPoint(200, 100);
    }
}

void tst_Area::handleFollowsTheParameters()
{
    QFETCH(QString, type);
    QFETCH(QString, x);
    QFETCH(QString, y);
    QFETCH(QPoint, centre);

    PadArea *a = pad(type, QStringLiteral("<HandleColor>255,0,255</HandleColor><BackgroundColor>0,0,0</BackgroundColor>"));
    QCOMPARE(a->handleCentre(), QPointF(100, 50));
    host.setParameter(QStringLiteral("Pos/X"), x, QStringLiteral("0"));
    host.setParameter(QStringLiteral("Pos/Y"), y, QStringLiteral("0"));
    a->notifyValueChanged({{"prmAddr", "Pos/X"}, {"dev_uniq_id", "dev1"}});
    a->notifyValueChanged({{"prmAddr", "Pos/Y"}, {"dev_uniq_id", "dev1"}});
    QCOMPARE(a->handleCentre().toPoint(), centre);
    const QImage image = render(a);
    QVERIFY(near(image.pixelColor(centre), QColor(255, 0, 255)));
    // The old place is clear again.
    QVERIFY(!near(image.pixelColor(100, 50), QColor(255, 0, 255)));
}

void tst_Area::drag_data()
{
    QTest::addColumn<Gesture>("gesture"); // after a press at (102, 50)

    // The handle starts at (100, 50); presses land 2 px right of it. Each move sends both axes.
    using namespace Step;
    const Qt::KeyboardModifiers shift = Qt::ShiftModifier;
    QTest::newRow("click without movement") << Gesture{release(102, 50)};
    QTest::newRow("move back to the start") << Gesture{move(102, 50), release(102, 50)};
    QTest::newRow("free drag") << Gesture{move(152, 40, {"0:0.75:1", "1:0.6:1"}), move(202, 0, {"0:1:1", "1:1:1"}),
                                          release(202, 0, {"0:1:0", "1:1:0"})};
    QTest::newRow("clamped outside") << Gesture{move(-50, 300, {"0:0:1", "1:0:1"}),
                                                release(-50, 300, {"0:0:0", "1:0:0"})};
    QTest::newRow("Shift locks across first")
        << Gesture{move(112, 50, {"0:0.55:1", "1:0.5:1"}).with(shift),
                   move(142, 10, {"0:0.7:1", "1:0.5:1"}).with(shift),
                   release(142, 10, {"0:0.7:0", "1:0.5:0"}).with(shift)};
    QTest::newRow("Shift locks up first")
        << Gesture{move(102, 30, {"0:0.5:1", "1:0.7:1"}).with(shift), move(180, 20, {"0:0.5:1", "1:0.8:1"}).with(shift),
                   release(180, 20, {"0:0.5:0", "1:0.8:0"}).with(shift)};
    QTest::newRow("letting Shift go frees it")
        << Gesture{move(102, 30, {"0:0.5:1", "1:0.7:1"}).with(shift), move(180, 20, {"0:0.89:1", "1:0.8:1"}),
                   release(180, 20, {"0:0.89:0", "1:0.8:0"})};
    QTest::newRow("near the corner")
        << Gesture{move(2 + 2, 50 - 17, {"0:0.01:1", "1:0.67:1"}), release(2 + 2, 50 - 17, {"0:0.01:0", "1:0.67:0"})};
}

void tst_Area::drag()
{
    QFETCH(Gesture, gesture);

    const auto text = [](const RecordingHost::Request &r) {
        QString t = QStringLiteral("%1:%2:%3").arg(r.index).arg(r.arg("ui_prm_val"), r.arg("set_prm_type"));
        if (r.kind != 0)
            t += QStringLiteral(" kind %1").arg(r.kind);
        return t;
    };
    for (const char *type : {"TrackingArea", "BeamArea"}) {
        PadArea *a = pad(QLatin1String(type));
        host.requests.clear();
        mouse(a, QEvent::MouseButtonPress, QPoint(102, 50));
        QVERIFY(a->isDragging());
        QCOMPARE(host.requests.size(), 0);
        const Gestures::Result r = Gestures::play(a, host, gesture, text);
        QVERIFY(!a->isDragging());
        QCOMPARE(a->axisLock(), 0);
        QCOMPARE(r.sent, r.expected);
    }
}

void tst_Area::pressesOffTheHandleOrWithControl_data()
{
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("highlight");
    QTest::addColumn<int>("actions");

    QTest::newRow("away from the handle") << QPoint(20, 20) << int(Qt::NoModifier) << false << 0;
    QTest::newRow("Control on the handle") << QPoint(100, 50) << int(Qt::ControlModifier) << true << 0;
    QTest::newRow("Control+Shift on the handle") << QPoint(100, 50) << int(Qt::ControlModifier | Qt::ShiftModifier)
                                                 << false << 1;
}

void tst_Area::pressesOffTheHandleOrWithControl()
{
    QFETCH(QPoint, at);
    QFETCH(int, modifiers);
    QFETCH(bool, highlight);
    QFETCH(int, actions);

    PadArea *a = pad(QStringLiteral("TrackingArea"));
    mouse(a, QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::KeyboardModifiers(modifiers));
    QVERIFY(!a->isDragging());
    mouse(a, QEvent::MouseMove, QPoint(150, 80), Qt::LeftButton, Qt::KeyboardModifiers(modifiers));
    mouse(a, QEvent::MouseButtonRelease, QPoint(150, 80), Qt::LeftButton, Qt::KeyboardModifiers(modifiers));
    QVERIFY(host.requests.isEmpty());
    QCOMPARE(a->highlight(), highlight);
    QCOMPARE(host.actions.size(), actions);
}

void tst_Area::beamPainting_data()
{
    QTest::addColumn<QString>("x");
    QTest::addColumn<QString>("y");
    QTest::addColumn<double>("angle");
    QTest::addColumn<QPoint>("probe");
    QTest::addColumn<bool>("lit");

    // Origin (100, 100). Straight up: (100, 30) is on the axis; (70, 30) is 23 degrees off it.
    QTest::newRow("up, on the axis") << "0.5" << "1" << 30.0 << QPoint(100, 30) << true;
    QTest::newRow("up, 23 degrees off, 30 wide") << "0.5" << "1" << 30.0 << QPoint(70, 30) << false;
    QTest::newRow("up, 23 degrees off, 60 wide") << "0.5" << "1" << 60.0 << QPoint(70, 30) << true;
    QTest::newRow("toward the top left") << "0" << "1" << 20.0 << QPoint(40, 40) << true;
    QTest::newRow("toward the top left, 18 degrees off") << "0" << "1" << 20.0 << QPoint(40, 70) << false;
    QTest::newRow("no width, no beam") << "0.5" << "1" << 0.0 << QPoint(100, 30) << false;
    QTest::newRow("behind the origin nothing") << "0.5" << "1" << 90.0 << QPoint(100, 100) << false;
}

void tst_Area::beamPainting()
{
    QFETCH(QString, x);
    QFETCH(QString, y);
    QFETCH(double, angle);
    QFETCH(QPoint, probe);
    QFETCH(bool, lit);

    host.setParameter(QStringLiteral("Pos/X"), x, QStringLiteral("0"));
    host.setParameter(QStringLiteral("Pos/Y"), y, QStringLiteral("0"));
    auto *b = static_cast<BeamArea *>(pad(QStringLiteral("BeamArea"),
                                          QStringLiteral("<Angle>%1</Angle><BeamColor>0,255,0</BeamColor>"
                                                         "<BackgroundColor>0,0,0</BackgroundColor>").arg(angle)));
    QCOMPARE(b->angle(), angle);
    const QImage image = render(b);
    QCOMPARE(near(image.pixelColor(probe), QColor(0, 255, 0)), lit);
    // A tracking pad draws no beam at all.
    PadArea *t = pad(QStringLiteral("TrackingArea"), QStringLiteral("<BackgroundColor>0,0,0</BackgroundColor>"));
    QVERIFY(!near(render(t).pixelColor(probe), QColor(0, 255, 0)));
}

void tst_Area::propertiesAndTags()
{
    auto *b = static_cast<BeamArea *>(pad(QStringLiteral("BeamArea"), QStringLiteral("<Angle>400</Angle>")));
    QCOMPARE(b->metaObject()->superClass()->className(), "BaseWidget");
    QCOMPARE(b->property("angle").toDouble(), 360.0);
    QCOMPARE(b->property("horizontal").toDouble(), 0.5);
    QCOMPARE(b->property("dragging").toBool(), false);
    QVERIFY(b->handledTags().contains(QStringLiteral("Angle")));
    PadArea *t = pad(QStringLiteral("TrackingArea"));
    QCOMPARE(t->metaObject()->superClass()->className(), "BaseWidget");
    QVERIFY(!t->handledTags().contains(QStringLiteral("Angle")));
    QVERIFY(t->handledTags().contains(QStringLiteral("HandleColor")));
    QVERIFY(t->setProperty("handleColor", QColor(1, 2, 3)));
    QCOMPARE(t->handleColor(), QColor(1, 2, 3));
}

QTEST_MAIN(tst_Area)
#include "tst_area.moc"
