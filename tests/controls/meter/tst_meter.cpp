#include "controls/ControlTestHost.h"

#include "controls/meter/Meter.h"
#include "controls/meter/meter_variants.h"
#include "controls/scale/scale_variants.h"

#include <QPaintEvent>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>
#include "support/PaintRecorder.h"
#include "support/Render.h"

namespace {

// The meter alone on a clear ground, premultiplied.
const RenderOptions alone{Qt::transparent, QWidget::RenderFlags(), QImage::Format_ARGB32_Premultiplied};

const QString levelAddr = QStringLiteral("Meter:Ch1/Level");
const QString switchAddr = QStringLiteral("Ch1/Meter/PeakHold");
const QString onlineAddr = QStringLiteral("Dev/Online");

// Upper half blue, lower half red: tells which part of the image a row shows.
const char twoBands[] =
    "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"10\" height=\"100\" viewBox=\"0 0 10 100\">"
    "<rect x=\"0\" y=\"0\" width=\"10\" height=\"50\" fill=\"#0000ff\"/>"
    "<rect x=\"0\" y=\"50\" width=\"10\" height=\"50\" fill=\"#ff0000\"/></svg>";

// The same bands, the upper one half transparent.
const char halfClear[] =
    "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"10\" height=\"100\" viewBox=\"0 0 10 100\">"
    "<rect x=\"0\" y=\"0\" width=\"10\" height=\"50\" fill=\"#0000ff\" fill-opacity=\"0.5\"/>"
    "<rect x=\"0\" y=\"50\" width=\"10\" height=\"50\" fill=\"#ff0000\"/></svg>";

class ProbeMeter : public Meter
{
public:
    using Meter::Meter;
    using Meter::meterImage;
};

// Rows drawn opaque in the middle column.
QList<int> litRows(const QImage &image)
{
    QList<int> rows;
    for (int y = 0; y < image.height(); ++y) {
        if (image.pixelColor(image.width() / 2, y).alpha() > 200)
            rows.append(y);
    }
    return rows;
}

QList<int> range(int first, int last)
{
    QList<int> rows;
    for (int y = first; y <= last; ++y)
        rows.append(y);
    return rows;
}

QString addressList(const QString &type)
{
    QString xml = QStringLiteral("<AddressList><Address prmAddr=\"%1\"/>").arg(levelAddr);
    if (type == QLatin1String("PeakMeter"))
        xml += QStringLiteral("<Address prmAddr=\"%1\"/>").arg(switchAddr);
    return xml + QStringLiteral("<Address prmAddr=\"%1\"/></AddressList>").arg(onlineAddr);
}

} // namespace

class tst_Meter : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;
    QTemporaryDir images;

    Meter *make(const QString &type, const QString &xml)
    {
        if (type == QLatin1String("ProbeMeter"))
            return host.make<ProbeMeter>(xml);
        if (Meter *m = host.make<Meter>(type, xml))
            return m;
        qFatal("unknown meter type");
        return nullptr;
    }

    MeterScale *scale(const QString &type, int height, const QString &extra = QString())
    {
        host.window.reset();
        const QString xml = QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"30\" height=\"%1\"/>").arg(height) + extra;
        if (MeterScale *s = host.make<MeterScale>(type, xml))
            return s;
        return host.make<MeterScale>(xml); // the plain scale has no type name of its own
    }

    //! A meter of \a type, \a height pixels high, bound to level, (peak switch,) online; the device online.
    Meter *meter(const QString &type, int height = 40, const QString &extra = QString())
    {
        host.window.reset();
        host.parameters.clear();
        host.imagePath = images.path();
        host.setParameter(levelAddr, QStringLiteral("0"), QStringLiteral("-inf"));
        host.setParameter(switchAddr, QStringLiteral("1"), QStringLiteral("On"));
        host.setParameter(onlineAddr, QStringLiteral("online"), QStringLiteral("online"));
        // The built-in bar makes the level visible without artwork unless
        // the test says otherwise.
        const QString bar = extra.contains(QLatin1String("<BuiltInBar>")) ? QString()
                                                                         : QStringLiteral("<BuiltInBar>true</BuiltInBar>");
        return make(type, QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"10\" height=\"%1\"/>").arg(height)
                              + addressList(type) + bar + extra);
    }

    void set(BaseWidget *w, const QString &prmAddr, const QString &val, const QString &prak = QString())
    {
        host.setParameter(prmAddr, val, val);
        if (!prak.isNull())
            host.parameters[QLatin1String("dev1|") + prmAddr].insert(QStringLiteral("ui_prm_prak"), prak);
        w->notifyValueChanged({{"prmAddr", prmAddr}, {"dev_uniq_id", "dev1"}});
    }

    void writeImage(const QString &name, const QByteArray &content)
    {
        QFile f(images.filePath(name));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(content);
    }

private slots:
    void initTestCase();
    void levelPixels_data();
    void levelPixels();
    void online_data();
    void online();
    void selectorIsNoOnlineState();
    void peak_data();
    void peak();
    void peakSwitch_data();
    void peakSwitch();
    void peakKeptWhileHidden();
    void painting_data();
    void painting();
    void fallback_data();
    void fallback();
    void missingImagePaintsNothing_data();
    void missingImagePaintsNothing();
    void repaintsOnlyChanges();
    void dirtyRows_data();
    void dirtyRows();
    void neverOpaque_data();
    void neverOpaque();
    void trackOnlyWhereUnlit_data();
    void trackOnlyWhereUnlit();
    void zoomRescales();
    void imagePath_data();
    void imagePath();
    void renderingIsShared();
    void border();
    void scaleMeetsMeter_data();
    void scaleMeetsMeter();
    void scaleDescription_data();
    void scaleDescription();
    void scalePainting_data();
    void scalePainting();
};

void tst_Meter::initTestCase()
{
    QVERIFY(images.isValid());
    writeImage(QStringLiteral("bands.svg"), twoBands);
    writeImage(QStringLiteral("broken.svg"), "<svg this is not");
    writeImage(QStringLiteral("halfclear.svg"), halfClear);
}

void tst_Meter::levelPixels_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("height");
    QTest::addColumn<QString>("val");
    QTest::addColumn<int>("pixels");

    QTest::newRow("half of 31 rounds up") << "Meter" << 31 << "0.5" << 16;
    QTest::newRow("full scale") << "Meter" << 40 << "1" << 40;
    QTest::newRow("just under half a pixel") << "Meter" << 40 << "0.012" << 0;
    QTest::newRow("exactly half a pixel") << "Meter" << 4 << "0.125" << 1;
    QTest::newRow("not a number") << "Meter" << 40 << "-inf dB" << 0;
    QTest::newRow("negative") << "Meter" << 40 << "-0.5" << 0;
    QTest::newRow("over full scale") << "Meter" << 40 << "1.5" << 40;
    QTest::newRow("peak meter") << "PeakMeter" << 31 << "0.5" << 16;
    QTest::newRow("gain reduction") << "GRMeter" << 31 << "0.5" << 16;
    QTest::newRow("indicator, a trace") << "IndicatorStyleMeter" << 40 << "0.001" << 40;
    QTest::newRow("indicator, nothing") << "IndicatorStyleMeter" << 40 << "0" << 0;
    QTest::newRow("indicator, not a number") << "IndicatorStyleMeter" << 40 << "nan" << 0;
}

void tst_Meter::levelPixels()
{
    QFETCH(QString, type);
    QFETCH(int, height);
    QFETCH(QString, val);
    QFETCH(int, pixels);

    Meter *m = meter(type, height);
    set(m, levelAddr, QStringLiteral("0.7"));
    QVERIFY(m->level() > 0);
    set(m, levelAddr, val);
    QCOMPARE(m->level(), pixels);
    QCOMPARE(m->property("level").toInt(), pixels);
}

void tst_Meter::online_data()
{
    QTest::addColumn<QString>("type");
    QTest::newRow("meter") << "Meter";
    QTest::newRow("peak meter") << "PeakMeter";
    QTest::newRow("gain reduction") << "GRMeter";
    QTest::newRow("channel select") << "ChannelSelectMeter";
}

void tst_Meter::online()
{
    QFETCH(QString, type);
    Meter *m = meter(type);
    auto *peakMeter = qobject_cast<PeakMeter *>(m);
    set(m, levelAddr, QStringLiteral("0.5"), QStringLiteral("0.75"));
    QVERIFY(m->isOnline());
    QCOMPARE(m->level(), 20);
    if (peakMeter)
        QCOMPARE(peakMeter->peak(), 30);

    QSignalSpy levels(m, &Meter::levelChanged);
    set(m, onlineAddr, QStringLiteral("offline"));
    QVERIFY(!m->isOnline());
    QCOMPARE(m->level(), 0);
    QCOMPARE(levels.count(), 1);
    if (peakMeter)
        QCOMPARE(peakMeter->peak(), 0);

    // The value is read again when the device returns.
    set(m, onlineAddr, QStringLiteral("online"));
    QVERIFY(m->isOnline());
    QCOMPARE(m->level(), 20);
    if (peakMeter)
        QCOMPARE(peakMeter->peak(), 30);

    // Only the exact word counts.
    set(m, onlineAddr, QStringLiteral("Online"));
    QCOMPARE(m->level(), 0);

    // A level that arrives while offline still shows: index 0 is not gated.
    set(m, levelAddr, QStringLiteral("0.25"), QStringLiteral("0.25"));
    QCOMPARE(m->level(), 10);
}

void tst_Meter::selectorIsNoOnlineState()
{
    // Without an online address the channel selector takes its place.
    host.window.reset();
    host.parameters.clear();
    host.setParameter(QStringLiteral("Meter:Ch2/Level"), QStringLiteral("0.25"), QString());
    host.setParameter(QStringLiteral("Meter:Ch3/Level"), QStringLiteral("0.75"), QString());
    host.setParameter(QStringLiteral("Sel/Ch"), QStringLiteral("0.1"), QStringLiteral("2"));
    Meter *m = make(QStringLiteral("ChannelSelectMeter"),
                    QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"10\" height=\"40\"/>"
                                   "<Address prmAddr=\"Meter:Ch{ChNum}/Level\"/><ChNum prmAddr=\"Sel/Ch\"/>"));
    QCOMPARE(m->addressCount(), 2);
    QVERIFY(m->isOnline());
    QCOMPARE(m->level(), 10);

    host.setParameter(QStringLiteral("Sel/Ch"), QStringLiteral("0.2"), QStringLiteral("3"));
    m->notifyValueChanged({{"prmAddr", "Sel/Ch"}, {"dev_uniq_id", "dev1"}});
    QCOMPARE(m->addressAt(0).prmAddr(), QStringLiteral("Meter:Ch3/Level"));
    QCOMPARE(m->level(), 30);
}

void tst_Meter::peak_data()
{
    QTest::addColumn<QString>("val");
    QTest::addColumn<QString>("prak");
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("peak");

    // 40 pixels: 0.49 lights 20 rows (19.6 rounded) but marks row 19 (truncated).
    QTest::newRow("peak has no half pixel") << "0.49" << "0.49" << 20 << 19;
    QTest::newRow("full scale") << "1" << "1" << 40 << 40;
    QTest::newRow("peak above the level") << "0.3" << "0.8" << 12 << 32;
    QTest::newRow("peak not a number") << "0.5" << "abc" << 20 << 0;
    QTest::newRow("no peak entry") << "0.5" << QString() << 20 << 0;
}

void tst_Meter::peak()
{
    QFETCH(QString, val);
    QFETCH(QString, prak);
    QFETCH(int, level);
    QFETCH(int, peak);

    auto *m = static_cast<PeakMeter *>(meter(QStringLiteral("PeakMeter")));
    set(m, levelAddr, val, prak);
    QCOMPARE(m->level(), level);
    QCOMPARE(m->peak(), peak);
    QCOMPARE(m->property("peak").toInt(), peak);
}

void tst_Meter::peakSwitch_data()
{
    QTest::addColumn<QString>("val");
    QTest::addColumn<bool>("shown");

    QTest::newRow("on") << "1" << true;
    QTest::newRow("a fraction") << "0.5" << true;
    QTest::newRow("off") << "0" << false;
    QTest::newRow("negative") << "-1" << false;
    QTest::newRow("a word") << "On" << false;
    QTest::newRow("empty") << "" << false;
}

void tst_Meter::peakSwitch()
{
    QFETCH(QString, val);
    QFETCH(bool, shown);

    auto *m = static_cast<PeakMeter *>(meter(QStringLiteral("PeakMeter")));
    // The switch is read as the control binds it.
    QVERIFY(m->isPeakShown());
    set(m, switchAddr, QStringLiteral("0"));
    QVERIFY(!m->isPeakShown());
    QSignalSpy spy(m, &PeakMeter::peakShownChanged);
    set(m, switchAddr, val);
    QCOMPARE(m->isPeakShown(), shown);
    QCOMPARE(spy.count(), shown ? 1 : 0);
}

void tst_Meter::peakKeptWhileHidden()
{
    auto *m = static_cast<PeakMeter *>(meter(QStringLiteral("PeakMeter")));
    m->setImage(QStringLiteral("bands.svg"));
    set(m, levelAddr, QStringLiteral("0.25"), QStringLiteral("0.8"));
    QVERIFY(litRows(render(m, alone)).contains(8));

    set(m, switchAddr, QStringLiteral("0"));
    QCOMPARE(m->peak(), 32);
    QCOMPARE(litRows(render(m, alone)), range(30, 39));

    set(m, switchAddr, QStringLiteral("1"));
    QCOMPARE(litRows(render(m, alone)), QList<int>{8} + range(30, 39));

    // Offline while hidden: back online the mark stays down until the next level.
    set(m, switchAddr, QStringLiteral("0"));
    set(m, onlineAddr, QStringLiteral("offline"));
    set(m, onlineAddr, QStringLiteral("online"));
    QCOMPARE(m->peak(), 0);
    QCOMPARE(m->level(), 10);
    set(m, levelAddr, QStringLiteral("0.25"), QStringLiteral("0.5"));
    QCOMPARE(m->peak(), 20);
}

void tst_Meter::painting_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("val");
    QTest::addColumn<QString>("prak");
    QTest::addColumn<QList<int>>("lit");
    QTest::addColumn<int>("probeRow");
    QTest::addColumn<QColor>("probeColour");

    const QColor red(255, 0, 0), blue(0, 0, 255);
    QTest::newRow("quarter") << "Meter" << "0.25" << "0" << range(30, 39) << 30 << red;
    // The image covers the whole meter: the upper half shows only above the middle.
    QTest::newRow("three quarters") << "Meter" << "0.75" << "0" << range(10, 39) << 10 << blue;
    QTest::newRow("nothing") << "Meter" << "0" << "0" << QList<int>() << -1 << QColor();
    QTest::newRow("full") << "Meter" << "1" << "0" << range(0, 39) << 39 << red;
    QTest::newRow("gain reduction from the top") << "GRMeter" << "0.25" << "0" << range(0, 9) << 9 << blue;
    QTest::newRow("pallas gain reduction") << "PallasGRMeter" << "0.5" << "0" << range(0, 19) << 0 << blue;
    QTest::newRow("indicator") << "IndicatorStyleMeter" << "0.01" << "0" << range(0, 39) << 0 << blue;
    QTest::newRow("peak mark") << "PeakMeter" << "0.25" << "0.9" << QList<int>{4} + range(30, 39) << 4 << blue;
    QTest::newRow("peak inside the bar") << "PeakMeter" << "0.5" << "0.25" << range(20, 39) << 30 << red;
    QTest::newRow("peak at the top") << "PeakMeter" << "0" << "1" << QList<int>{0} << 0 << blue;
}

void tst_Meter::painting()
{
    QFETCH(QString, type);
    QFETCH(QString, val);
    QFETCH(QString, prak);
    QFETCH(QList<int>, lit);
    QFETCH(int, probeRow);
    QFETCH(QColor, probeColour);

    Meter *m = meter(type, 40, QStringLiteral("<Image>bands.svg</Image>"));
    set(m, levelAddr, val, prak);
    const QImage image = render(m, alone);
    QVERIFY(m->isImageLoaded());
    QCOMPARE(litRows(image), lit);
    if (probeRow >= 0)
        QCOMPARE(image.pixelColor(5, probeRow), probeColour);
}

void tst_Meter::fallback_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("image");

    QTest::newRow("no image") << "Meter" << "";
    QTest::newRow("missing file") << "Meter" << "<Image>nowhere.svg</Image>";
    QTest::newRow("broken file") << "Meter" << "<Image>broken.svg</Image>";
    QTest::newRow("gain reduction") << "GRMeter" << "";
    QTest::newRow("peak meter") << "PeakMeter" << "<Image>nowhere.png</Image>";
}

void tst_Meter::fallback()
{
    QFETCH(QString, type);
    QFETCH(QString, image);

    Meter *m = meter(type, 40, image);
    const bool down = type.contains(QLatin1String("GR"));
    set(m, levelAddr, QStringLiteral("0.5"), QStringLiteral("0"));
    QImage shown = render(m, alone);
    QVERIFY(!m->isImageLoaded());
    QCOMPARE(litRows(shown), down ? range(0, 19) : range(20, 39));

    // The unlit part is a dim track, not empty.
    const QColor track = shown.pixelColor(5, down ? 30 : 10);
    QVERIFY2(track.alpha() > 10 && track.alpha() < 100, qPrintable(QString::number(track.alpha())));

    if (!down) {
        // Green at the bottom, red at the top.
        set(m, levelAddr, QStringLiteral("1"));
        shown = render(m, alone);
        const QColor bottom = shown.pixelColor(5, 39), top = shown.pixelColor(5, 0);
        QVERIFY(bottom.green() > 2 * bottom.red());
        QVERIFY(top.red() > 2 * top.green());
    }
}

void tst_Meter::missingImagePaintsNothing_data()
{
    fallback_data();
}

void tst_Meter::missingImagePaintsNothing()
{
    QFETCH(QString, type);
    QFETCH(QString, image);

    Meter *m = meter(type, 40, image + QStringLiteral("<BuiltInBar>false</BuiltInBar>"));
    set(m, levelAddr, QStringLiteral("1"), QStringLiteral("1"));
    QCOMPARE(m->level(), 40);
    QVERIFY(!m->isImageLoaded());
    const QImage shown = render(m, alone);
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x)
            QCOMPARE(shown.pixelColor(x, y).alpha(), 0);
    }
}

void tst_Meter::repaintsOnlyChanges()
{
    auto *m = static_cast<PeakMeter *>(meter(QStringLiteral("PeakMeter")));
    QTest::qWait(0);
    PaintRecorder painted(m);
    QSignalSpy levels(m, &Meter::levelChanged);
    QSignalSpy peaks(m, &PeakMeter::peakChanged);

    set(m, levelAddr, QStringLiteral("0.25"), QStringLiteral("0"));
    QCoreApplication::processEvents();
    QCOMPARE(levels.count(), 1);
    QCOMPARE(painted.regions.size(), 1);
    QCOMPARE(painted.regions.at(0), QRegion(0, 0, 10, 40));

    // A new display text that moves nothing paints nothing.
    painted.regions.clear();
    host.deliver(m, levelAddr, QStringLiteral("0.25"), QStringLiteral("-12 dB"));
    set(m, switchAddr, QStringLiteral("1"));
    QCoreApplication::processEvents();
    QCOMPARE(painted.regions.size(), 0);
    QCOMPARE(levels.count(), 1);
    QCOMPARE(peaks.count(), 0);

    // A peak that moves while the level stays paints its row, not the meter.
    painted.regions.clear();
    set(m, levelAddr, QStringLiteral("0.25"), QStringLiteral("0.75"));
    QCoreApplication::processEvents();
    QCOMPARE(painted.regions.size(), 1);
    QCOMPARE(painted.regions.at(0), QRegion(0, 10, 10, 1));
    QCOMPARE(peaks.count(), 1);
    QCOMPARE(levels.count(), 1);

    // A hidden peak moves without painting.
    set(m, switchAddr, QStringLiteral("0"));
    QCoreApplication::processEvents();
    painted.regions.clear();
    set(m, levelAddr, QStringLiteral("0.25"), QStringLiteral("0.25"));
    QCoreApplication::processEvents();
    QCOMPARE(painted.regions.size(), 0);
    QCOMPARE(m->peak(), 10);
}

void tst_Meter::dirtyRows_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QRect>("rows");

    const QRect whole(0, 0, 10, 40);
    QTest::newRow("rising") << "Meter" << "0.25" << "0.5" << whole;
    QTest::newRow("falling") << "Meter" << "0.75" << "0.25" << whole;
    QTest::newRow("to nothing") << "Meter" << "0.5" << "0" << whole;
    QTest::newRow("full from nothing") << "Meter" << "0" << "1" << whole;
    QTest::newRow("from the top, rising") << "GRMeter" << "0.25" << "0.5" << whole;
    QTest::newRow("from the top, falling") << "GRMeter" << "1" << "0.75" << whole;
    // Less than half a row apart: the same lit height.
    QTest::newRow("within a row") << "Meter" << "0.5" << "0.51" << QRect();
}

void tst_Meter::dirtyRows()
{
    QFETCH(QString, type);
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QRect, rows);

    // In a shown window, so that updates reach the backing store as on a panel.
    Meter *m = meter(type, 40, QStringLiteral("<Image>bands.svg</Image>"));
    set(m, levelAddr, from);
    QVERIFY(QTest::qWaitForWindowExposed(host.window.get()));
    QCoreApplication::processEvents();
    PaintRecorder painted(m);
    set(m, levelAddr, to);
    QCoreApplication::processEvents();
    // The whole meter in one rectangle, so that the rectangles of meters
    // side by side merge into one band of the window's region; or nothing.
    if (rows.isEmpty()) {
        QCOMPARE(painted.regions.size(), 0);
        return;
    }
    QCOMPARE(painted.regions.size(), 1);
    QCOMPARE(painted.regions.at(0).rectCount(), 1);
    QCOMPARE(painted.regions.at(0), QRegion(rows));
}

void tst_Meter::neverOpaque_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("extra");
    QTest::addColumn<QString>("val");
    QTest::addColumn<bool>("covers");

    const QString bands = QStringLiteral("<Image>bands.svg</Image>");
    const QString clear = QStringLiteral("<Image>halfclear.svg</Image>");
    QTest::newRow("opaque image, full") << "Meter" << bands << "1" << true;
    QTest::newRow("opaque image, three quarters") << "Meter" << bands << "0.75" << false;
    QTest::newRow("translucent image, full") << "Meter" << clear << "1" << false;
    QTest::newRow("built-in bar, full") << "Meter" << QString() << "1" << true;
    QTest::newRow("built-in bar, half") << "Meter" << QString() << "0.5" << false;
    QTest::newRow("from the top, full") << "GRMeter" << QString() << "1" << true;
    QTest::newRow("lamp lit") << "IndicatorStyleMeter" << bands << "0.01" << true;
    QTest::newRow("lamp dark") << "IndicatorStyleMeter" << bands << "0" << false;
}

void tst_Meter::neverOpaque()
{
    QFETCH(QString, type);
    QFETCH(QString, extra);
    QFETCH(QString, val);
    QFETCH(bool, covers);

    // A meter lit over its whole height covers every pixel, but only until
    // the level drops: it never tells Qt it is opaque, so that the panel
    // below is painted into unlit rows and the attribute does not change
    // with every level.
    Meter *m = meter(type, 40, extra);
    set(m, levelAddr, val, QStringLiteral("0"));
    const QImage shown = render(m, alone);
    bool everyPixel = true;
    for (int y = 0; y < shown.height() && everyPixel; ++y) {
        for (int x = 0; x < shown.width() && everyPixel; ++x)
            everyPixel = shown.pixelColor(x, y).alpha() == 255;
    }
    QCOMPARE(everyPixel, covers);
    QVERIFY(!m->testAttribute(Qt::WA_OpaquePaintEvent));
}

void tst_Meter::trackOnlyWhereUnlit_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("litRow");
    QTest::addColumn<int>("unlitRow");

    QTest::newRow("from the bottom") << "Meter" << 30 << 10;
    QTest::newRow("from the top") << "GRMeter" << 10 << 30;
}

void tst_Meter::trackOnlyWhereUnlit()
{
    QFETCH(QString, type);
    QFETCH(int, litRow);
    QFETCH(int, unlitRow);

    // The bar fully lit gives the colours a lit row must show.
    Meter *m = meter(type, 40);
    set(m, levelAddr, QStringLiteral("1"));
    const QImage full = render(m, alone);
    set(m, levelAddr, QStringLiteral("0"));
    const QImage dark = render(m, alone);
    set(m, levelAddr, QStringLiteral("0.5"));
    const QImage half = render(m, alone);
    for (int x = 0; x < half.width(); ++x) {
        QCOMPARE(half.pixel(x, litRow), full.pixel(x, litRow));
        QCOMPARE(half.pixel(x, unlitRow), dark.pixel(x, unlitRow));
    }
    QVERIFY(dark.pixelColor(5, unlitRow).alpha() < 100);
}

void tst_Meter::zoomRescales()
{
    auto *m = static_cast<PeakMeter *>(meter(QStringLiteral("PeakMeter"), 30));
    set(m, levelAddr, QStringLiteral("0.49"), QStringLiteral("0.49"));
    QCOMPARE(m->level(), 15);
    QCOMPARE(m->peak(), 14);
    QVERIFY(m->setZoom(2.0f));
    QCOMPARE(m->height(), 60);
    QCOMPARE(m->level(), 29);
    QCOMPARE(m->peak(), 29);

    // An offline meter stays dark at any size.
    set(m, onlineAddr, QStringLiteral("offline"));
    QVERIFY(m->setZoom(1.0f));
    QCOMPARE(m->level(), 0);
    QCOMPARE(m->peak(), 0);
}

void tst_Meter::imagePath_data()
{
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file");

    QTest::newRow("in the image folder") << "images" << "bands.svg" << "bands.svg";
    QTest::newRow("folder with a slash") << "images/" << "bands.svg" << "bands.svg";
    QTest::newRow("backslashes") << "images" << "sub\\deep.svg" << "sub/deep.svg";
    QTest::newRow("absolute") << "" << "images/bands.svg" << "bands.svg";
    QTest::newRow("missing") << "images" << "nowhere.svg" << "";
}

void tst_Meter::imagePath()
{
    QFETCH(QString, base);
    QFETCH(QString, name);
    QFETCH(QString, file);

    const QString root = images.path() + QLatin1Char('/');
    QDir(images.path()).mkpath(QStringLiteral("sub"));
    writeImage(QStringLiteral("sub/deep.svg"), twoBands);
    base.replace(QLatin1String("images/"), root).replace(QLatin1String("images"), images.path());
    name.replace(QLatin1String("images/"), root);

    Meter *m = meter(QStringLiteral("Meter"));
    host.imagePath = base;
    QCOMPARE(m->imagePath(), QString());
    m->configure(Xml::widget(QStringLiteral("<Image> %1 </Image>").arg(name)));
    QCOMPARE(m->image(), name);
    QCOMPARE(m->imagePath().isEmpty(), file.isEmpty());
    if (!file.isEmpty())
        QCOMPARE(QFileInfo(m->imagePath()).canonicalFilePath(), QFileInfo(root + file).canonicalFilePath());
    QCOMPARE(m->isImageLoaded(), !file.isEmpty());
}

void tst_Meter::renderingIsShared()
{
    const QString path = images.filePath(QStringLiteral("bands.svg"));
    auto *m = static_cast<ProbeMeter *>(meter(QStringLiteral("ProbeMeter"), 40,
                                              QStringLiteral("<Image>bands.svg</Image>")));
    const qint64 rendered = m->meterImage().cacheKey();
    QCOMPARE(ImageSource::render(path, m->size(), m->devicePixelRatioF()).cacheKey(), rendered);

    for (const char *v : {"0.1", "0.9", "0.4"})
        set(m, levelAddr, QLatin1String(v));
    render(m, alone);
    QCOMPARE(m->meterImage().cacheKey(), rendered);

    QVERIFY(m->setZoom(1.5f));
    QCOMPARE(m->meterImage().size(), QSize(15, 60));
    QVERIFY(m->meterImage().cacheKey() != rendered);

    // Meters without an image share their bar as well.
    Meter *plain = meter(QStringLiteral("ProbeMeter"));
    const qint64 bar = static_cast<ProbeMeter *>(plain)->meterImage().cacheKey();
    auto *other = new ProbeMeter(&host, &host.registry, host.window.get());
    QDomDocument bar_;
    bar_.setContent(QStringLiteral("<BuiltInBar>true</BuiltInBar>"));
    QVERIFY(other->readBuiltInBar(bar_.documentElement()));
    other->resize(plain->size());
    QCOMPARE(other->meterImage().cacheKey(), bar);
}

void tst_Meter::border()
{
    Meter *m = meter(QStringLiteral("BorderMeter"), 40,
                     QStringLiteral("<Image>bands.svg</Image><BorderColor>10,200,30</BorderColor>"
                                    "<BorderWidth>2</BorderWidth>"));
    auto *b = static_cast<BorderMeter *>(m);
    QCOMPARE(b->borderColor(), QColor(10, 200, 30));
    QCOMPARE(b->borderWidth(), 2);

    set(m, levelAddr, QStringLiteral("0.5"));
    const QImage image = render(m, alone);
    const QColor border(10, 200, 30);
    for (const QPoint &p : {QPoint(0, 0), QPoint(1, 10), QPoint(9, 39), QPoint(5, 38), QPoint(8, 25)})
        QCOMPARE(image.pixelColor(p), border);
    // Inside the frame the meter shows as usual.
    QCOMPARE(image.pixelColor(5, 10).alpha(), 0);
    QCOMPARE(image.pixelColor(5, 30), QColor(255, 0, 0));

    // The frame follows the zoom.
    QVERIFY(m->setZoom(0.5f));
    QCOMPARE(render(m, alone).pixelColor(0, 5), border);
    QCOMPARE(render(m, alone).pixelColor(1, 5).alpha(), 0);
}

void tst_Meter::scaleMeetsMeter_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("meterType");
    QTest::addColumn<int>("height");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("position");

    QTest::newRow("top of a level scale") << "MeterScale" << "Meter" << 60 << 0.0 << 1.0;
    QTest::newRow("-6 on a level scale") << "MeterScale" << "Meter" << 61 << -6.0 << 0.9;
    QTest::newRow("-45 on a level scale") << "MeterScale" << "Meter" << 31 << -45.0 << 0.25;
    QTest::newRow("3 dB of reduction") << "MeterScaleGR" << "GRMeter" << 40 << 3.0 << 0.1;
    QTest::newRow("20 dB of reduction") << "MeterScaleGR" << "GRMeter" << 33 << 20.0 << 2.0 / 3.0;
    QTest::newRow("+4 dBu") << "MeterScaleVoltage" << "Meter" << 90 << 4.0 << 40.0 / 60.0;
}

void tst_Meter::scaleMeetsMeter()
{
    QFETCH(QString, type);
    QFETCH(QString, meterType);
    QFETCH(int, height);
    QFETCH(double, value);
    QFETCH(double, position);

    // The mark of a value sits on the edge of the bar a meter beside it shows for that value.
    Meter *m = meter(meterType, height);
    set(m, levelAddr, QString::number(position, 'g', 17));
    const QList<int> lit = litRows(render(m, alone));
    QVERIFY(!lit.isEmpty());
    const int edge = meterType == QLatin1String("GRMeter") ? lit.last() + 1 : lit.first();

    MeterScale *s = scale(type, height);
    QCOMPARE(s->rowOf(value), edge);
}

void tst_Meter::scaleDescription_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("xml");
    QTest::addColumn<double>("top");
    QTest::addColumn<double>("bottom");
    QTest::addColumn<QString>("marks");
    QTest::addColumn<QString>("side");
    QTest::addColumn<QString>("topLabel");

    QTest::newRow("level defaults") << "MeterScale" << "" << 0.0 << -60.0 << "0,-6,-12,-18,-24,-36,-48,-60"
                                    << "Right" << "0";
    QTest::newRow("reduction defaults") << "MeterScaleGR" << "" << 0.0 << 30.0 << "0,3,6,10,15,20,30" << "Right"
                                        << "0";
    QTest::newRow("voltage defaults") << "MeterScaleVoltage" << "" << 24.0 << -36.0
                                      << "24,18,12,6,0,-6,-12,-18,-24,-36" << "Right" << "+24";
    QTest::newRow("all tags") << "MeterScaleVoltage"
                              << "<Top>10</Top><Bottom>-20</Bottom><Marks> 10, 0 ,-20</Marks><Side>left</Side>"
                              << 10.0 << -20.0 << "10,0,-20" << "Left" << "+10";
    QTest::newRow("bad texts change nothing") << "MeterScaleGR"
                                              << "<Top>high</Top><Marks>0,x</Marks><Side>middle</Side>"
                                              << 0.0 << 30.0 << "0,3,6,10,15,20,30" << "Right" << "0";
}

void tst_Meter::scaleDescription()
{
    QFETCH(QString, type);
    QFETCH(QString, xml);
    QFETCH(double, top);
    QFETCH(double, bottom);
    QFETCH(QString, marks);
    QFETCH(QString, side);
    QFETCH(QString, topLabel);

    MeterScale *s = scale(type, 60, xml);
    QCOMPARE(s->top(), top);
    QCOMPARE(s->bottom(), bottom);
    QCOMPARE(s->marksText(), marks);
    QCOMPARE(s->side(), side);
    QCOMPARE(s->label(top), topLabel);
}

void tst_Meter::scalePainting_data()
{
    QTest::addColumn<QString>("side");
    QTest::newRow("ticks right") << "Right";
    QTest::newRow("ticks left") << "Left";
}

void tst_Meter::scalePainting()
{
    QFETCH(QString, side);
    const bool left = side == QLatin1String("Left");
    MeterScale *s = scale(QStringLiteral("MeterScale"), 120,
                          QStringLiteral("<Side>%1</Side><Color>0,255,0</Color>").arg(side));
    const QImage image = render(s, alone);
    const int tickColumn = left ? 0 : s->width() - 1;
    const QColor green(0, 255, 0);
    for (double v : s->marks()) {
        const int row = s->rowOf(v);
        QCOMPARE(image.pixelColor(tickColumn, row), green);
    }
    // Between marks the edge stays empty.
    QCOMPARE(image.pixelColor(tickColumn, s->rowOf(-3)).alpha(), 0);

    // Labels sit beside the ticks, not over them, and the top one is not cut off.
    const int tick = qBound(2, s->width() / 4, 8);
    bool labelled = false;
    for (int y = 0; y < QFontMetrics(s->font()).height(); ++y) {
        for (int x = 0; x < s->width(); ++x) {
            const bool inTickBand = left ? x < tick : x >= s->width() - tick;
            if (!inTickBand && image.pixelColor(x, y).alpha() > 0)
                labelled = true;
        }
    }
    QVERIFY(labelled);
}

QTEST_MAIN(tst_Meter)
#include "tst_meter.moc"
