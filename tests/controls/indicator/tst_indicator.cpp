#include "controls/ControlTestHost.h"

#include "controls/indicator/indicator_variants.h"

#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>
#include "support/Pixels.h"
#include "support/Render.h"
#include "support/PaintRecorder.h"

namespace {

const QColor panel(10, 20, 30);

bool near(const QColor &a, const QColor &b, int tolerance = 12)
{
    return Pixels::near(a, b, tolerance);
}

int countNear(const QImage &image, const QColor &colour, const QRect &area, int tolerance = 60)
{
    return Pixels::countNear(image, colour, area, tolerance);
}

} // namespace

class tst_Indicator : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;
    QTemporaryDir imageDir;

    Indicator *make(const QString &type, const QString &extra);
    Indicator *lamp(const QString &extra = QString())
    {
        return make(QStringLiteral("Indicator"), QStringLiteral("<Address prmAddr=\"Dev/Lock\"/>") + extra);
    }

private slots:
    void initTestCase();
    void init();
    void onState_data();
    void onState();
    void changesRepaintOnlyWhenTheStateChanges();
    void painting_data();
    void painting();
    void roundLamp();
    void images_data();
    void images();
    void text_data();
    void text();
};

Indicator *tst_Indicator::make(const QString &type, const QString &extra)
{
    const QString xml = QStringLiteral("<Rect x=\"10\" y=\"10\" width=\"40\" height=\"20\"/>") + extra;
    return host.make<Indicator>(type, xml);
}

void tst_Indicator::initTestCase()
{
    QVERIFY(imageDir.isValid());
    const QList<QPair<QString, QColor>> files{{"red.png", QColor(220, 0, 0)}, {"blue.png", QColor(0, 0, 220)}};
    for (const auto &f : files) {
        QImage image(8, 8, QImage::Format_ARGB32);
        image.fill(f.second);
        QVERIFY(image.save(imageDir.filePath(f.first)));
    }
    host.imagePath = imageDir.path();
}

void tst_Indicator::init()
{
    host.parameters.clear();
    host.requests.clear();
}

void tst_Indicator::onState_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QStringList>("values"); // "ui_prm_val" of A, B, C; "-" leaves the parameter unknown
    QTest::addColumn<bool>("on");

    const QString one = QStringLiteral("<Address prmAddr=\"A\"/>");
    const QString two = QStringLiteral("<AddressList><Address prmAddr=\"A\"/><Address prmAddr=\"B\"/></AddressList>");
    const QString three = QStringLiteral("<AddressList><Address prmAddr=\"A\"/><Address prmAddr=\"B\"/>"
                                         "<Address prmAddr=\"C\"/></AddressList>");

    QTest::newRow("on") << "Indicator" << one << QStringList{"1"} << true;
    QTest::newRow("half way is on") << "Indicator" << one << QStringList{"0.5"} << true;
    QTest::newRow("off") << "Indicator" << one << QStringList{"0"} << false;
    QTest::newRow("not a number is off") << "Indicator" << one << QStringList{"online"} << false;
    QTest::newRow("unknown parameter is off") << "Indicator" << one << QStringList{"-"} << false;
    QTest::newRow("no address is off") << "Indicator" << "" << QStringList() << false;
    QTest::newRow("only the first address counts") << "Indicator" << two << QStringList{"0", "1"} << false;
    for (const char *type : {"LockIndicator", "SrcIndicator", "WordClockIndicator", "FbsIndicator",
                             "TuningZoneIndicator"}) {
        QTest::newRow(qPrintable(QStringLiteral("%1 on").arg(type))) << type << one << QStringList{"1"} << true;
        QTest::newRow(qPrintable(QStringLiteral("%1 off").arg(type))) << type << one << QStringList{"0"} << false;
    }

    QTest::newRow("redundant: none") << "RedundantIndicator" << two << QStringList{"0", "0"} << false;
    QTest::newRow("redundant: second") << "RedundantIndicator" << two << QStringList{"0", "1"} << true;
    QTest::newRow("redundant: both") << "RedundantIndicator" << two << QStringList{"1", "1"} << true;
    QTest::newRow("or: none") << "TuningZoneOrIndicator" << three << QStringList{"0", "0", "0"} << false;
    QTest::newRow("or: last") << "TuningZoneOrIndicator" << three << QStringList{"0", "0", "1"} << true;
    QTest::newRow("or: all") << "TuningZoneOrIndicator" << three << QStringList{"1", "1", "1"} << true;
    QTest::newRow("xor: none") << "TuningZoneXorIndicator" << three << QStringList{"0", "0", "0"} << false;
    QTest::newRow("xor: one") << "TuningZoneXorIndicator" << three << QStringList{"0", "1", "0"} << true;
    QTest::newRow("xor: two") << "TuningZoneXorIndicator" << three << QStringList{"1", "0", "1"} << false;
    QTest::newRow("xor: unknown counts off") << "TuningZoneXorIndicator" << three << QStringList{"-", "1", "x"} << true;

    QTest::newRow("channel select follows the number")
        << "ChannelSelectIndicator" << "<Address prmAddr=\"In{ChNum}/On\"/><ChNum>2</ChNum>" << QStringList() << true;
    QTest::newRow("channel select unbound is off")
        << "ChannelSelectIndicator" << "<Address prmAddr=\"In{ChNum}/On\"/>" << QStringList() << false;
    QTest::newRow("band sharing") << "BandSharingIndicator" << "<Address prmAddr=\"In{Band}/On\"/><BandNum>2</BandNum>"
                                  << QStringList() << true;
    QTest::newRow("speaker") << "SpeakerIndicator" << "<Address prmAddr=\"{BaseAddress}/On\"/><DEFAULT>In2</DEFAULT>"
                             << QStringList() << true;
    QTest::newRow("channel number") << "ChannelNumberIndicator" << one << QStringList{"0.25"} << true;
}

void tst_Indicator::onState()
{
    QFETCH(QString, type);
    QFETCH(QString, xml);
    QFETCH(QStringList, values);
    QFETCH(bool, on);

    const QStringList names{"A", "B", "C"};
    for (int i = 0; i < values.size(); ++i) {
        if (values.at(i) != "-")
            host.setParameter(names.at(i), values.at(i), values.at(i));
    }
    host.setParameter(QStringLiteral("In2/On"), QStringLiteral("1"), QStringLiteral("On"));
    host.setParameter(QStringLiteral("In1/On"), QStringLiteral("0"), QStringLiteral("Off"));

    Indicator *w = make(type, xml);
    QVERIFY(w);
    QCOMPARE(w->metaObject()->className(), type.toLatin1().constData());
    QCOMPARE(w->isOn(), on);
    QCOMPARE(w->property("on").toBool(), on);
    const QColor shown = render(w, panel).pixelColor(20, 10);
    QVERIFY(near(shown, on ? Indicator::defaultOnColor : Indicator::defaultOffColor));

    // Setting every parameter to the other state turns single and "any" lamps over, in one change.
    if (!values.isEmpty() && type != "TuningZoneXorIndicator" && !values.contains("-")) {
        QSignalSpy changed(w, &Indicator::onChanged);
        for (int i = 0; i < values.size(); ++i) {
            host.deliver(w, names.at(i), on ? "0" : "1", QString());
        }
        QCOMPARE(w->isOn(), !on);
        QCOMPARE(changed.count(), 1);
    }
}

void tst_Indicator::changesRepaintOnlyWhenTheStateChanges()
{
    host.setParameter(QStringLiteral("Dev/Lock"), QStringLiteral("0.5"), QStringLiteral("Locked"));
    Indicator *w = lamp();
    PaintRecorder counter;
    QVERIFY(counter.watchSettled(w));
    QSignalSpy changed(w, &Indicator::onChanged);

    host.setParameter(QStringLiteral("Dev/Lock"), QStringLiteral("1"), QStringLiteral("Locked hard"));
    w->notifyValueChanged(RecordingHost::parameterKeys("Dev/Lock"));
    w->setOffColor(QColor(1, 2, 3)); // not shown while on
    w->setOnColor(w->onColor());
    w->setText(QString());
    // A notification that matched repaints once, changed or not; the rest paints nothing.
    QCOMPARE(counter.paintsNow(), 1);
    counter.clear();
    QCOMPARE(changed.count(), 0);

    host.setParameter(QStringLiteral("Dev/Lock"), QStringLiteral("0"), QStringLiteral("Unlocked"));
    w->notifyValueChanged(RecordingHost::parameterKeys("Dev/Lock"));
    QTRY_VERIFY(counter.paints > 0);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.first().first().toBool(), false);
    QVERIFY(near(render(w, panel).pixelColor(20, 10), QColor(1, 2, 3)));
}

void tst_Indicator::painting_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("val");
    QTest::addColumn<QColor>("fill");

    QTest::newRow("default on") << "" << "1" << Indicator::defaultOnColor;
    QTest::newRow("default off") << "" << "0" << Indicator::defaultOffColor;
    QTest::newRow("OnColor") << "<OnColor>255,0,0</OnColor><OffColor>0,0,255</OffColor>" << "1" << QColor(255, 0, 0);
    QTest::newRow("OffColor") << "<OnColor>255,0,0</OnColor><OffColor>0,0,255</OffColor>" << "0" << QColor(0, 0, 255);
    QTest::newRow("bad colour keeps the default") << "<OnColor>red</OnColor>" << "1" << Indicator::defaultOnColor;
    QTest::newRow("missing image falls back") << "<OnImage>nothing.png</OnImage>" << "1" << Indicator::defaultOnColor;
}

void tst_Indicator::painting()
{
    QFETCH(QString, xml);
    QFETCH(QString, val);
    QFETCH(QColor, fill);

    host.setParameter(QStringLiteral("Dev/Lock"), val, QString());
    Indicator *w = lamp(xml);
    QVERIFY(w->currentImage().isEmpty());
    const QImage image = render(w, panel);
    const QRect inner = w->rect().adjusted(2, 2, -2, -2);
    QCOMPARE(countNear(image, fill, inner, 12), inner.width() * inner.height());

    w->setEnabled(false);
    const QColor dim = render(w, panel).pixelColor(20, 10);
    QVERIFY(!near(dim, fill));
}

void tst_Indicator::roundLamp()
{
    host.setParameter(QStringLiteral("Dev/Lock"), QStringLiteral("1"), QString());
    Indicator *w = lamp(QStringLiteral("<Shape>Round</Shape>"));
    QVERIFY(w->isRound());
    const QImage image = render(w, panel);
    // A 20-pixel circle in the middle of the 40x20 lamp: lit in the centre, panel in the corners and at the sides.
    QVERIFY(near(image.pixelColor(20, 10), Indicator::defaultOnColor));
    QVERIFY(near(image.pixelColor(11, 1), panel));
    QVERIFY(near(image.pixelColor(2, 10), panel));
    QVERIFY(near(image.pixelColor(37, 10), panel));
    QVERIFY(near(image.pixelColor(28, 10), Indicator::defaultOnColor));
}

void tst_Indicator::images_data()
{
    QTest::addColumn<QString>("val");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QColor>("centre");

    QTest::newRow("on image") << "1" << "red.png" << QColor(220, 0, 0);
    QTest::newRow("off image") << "0" << "blue.png" << QColor(0, 0, 220);
}

void tst_Indicator::images()
{
    QFETCH(QString, val);
    QFETCH(QString, shown);
    QFETCH(QColor, centre);

    host.setParameter(QStringLiteral("Dev/Lock"), val, QString());
    Indicator *w = lamp(QStringLiteral("<OnImage>red.png</OnImage><OffImage>blue.png</OffImage>"));
    QCOMPARE(w->currentImage(), shown);
    const QImage image = render(w, panel);
    // The image is stretched over the whole lamp.
    for (const QPoint p : {QPoint(0, 0), QPoint(20, 10), QPoint(39, 19)})
        QVERIFY(near(image.pixelColor(p), centre));
}

void tst_Indicator::text_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("str");
    QTest::addColumn<QString>("shown");

    QTest::newRow("lamp text") << "Indicator" << "<Text>LOCK</Text>" << "12" << "LOCK";
    QTest::newRow("lamp without text") << "Indicator" << "" << "12" << "";
    QTest::newRow("channel number") << "ChannelNumberIndicator" << "" << "12" << "12";
    QTest::newRow("channel number framed") << "ChannelNumberIndicator" << "<Text>Ch %1</Text>" << "12" << "Ch 12";
    QTest::newRow("channel number before a value") << "ChannelNumberIndicator" << "<Text>none</Text>" << "" << "none";
}

void tst_Indicator::text()
{
    QFETCH(QString, type);
    QFETCH(QString, xml);
    QFETCH(QString, str);
    QFETCH(QString, shown);

    host.setParameter(QStringLiteral("Dev/Lock"), QStringLiteral("0"), str);
    Indicator *w = make(type, QStringLiteral("<Address prmAddr=\"Dev/Lock\"/><TextColor>255,255,0</TextColor>") + xml);
    QCOMPARE(w->shownText(), shown);
    const QImage image = render(w, panel);
    const int ink = countNear(image, QColor(255, 255, 0), w->rect(), 90);
    QCOMPARE(ink > 5, !shown.isEmpty());
    if (!shown.isEmpty()) {
        // Centred: about as much ink left of the middle as right of it.
        const int left = countNear(image, QColor(255, 255, 0), QRect(0, 0, 20, 20), 90);
        QVERIFY2(qAbs(2 * left - ink) <= ink / 3 + 2, qPrintable(QStringLiteral("%1 of %2").arg(left).arg(ink)));
    }

    if (type == "ChannelNumberIndicator") {
        host.setParameter(QStringLiteral("Dev/Lock"), QStringLiteral("0"), QStringLiteral("7"));
        w->notifyValueChanged(RecordingHost::parameterKeys("Dev/Lock"));
        QVERIFY(w->shownText().contains("7"));
    }
}

QTEST_MAIN(tst_Indicator)
#include "tst_indicator.moc"
