#include "ControlTestHost.h"

#include "controls/button/button_variants.h"
#include "controls/common/ImageSource.h"
#include "controls/common/WheelSteps.h"
#include "controls/dial/Dial.h"
#include "controls/meter/Meter.h"
#include "controls/misc/ColorBox.h"
#include "controls/numberbox/NumberBox.h"
#include "controls/numberbox/numberbox_variants.h"
#include "controls/scale/scale_variants.h"
#include "controls/text/HexTextBox.h"
#include "core/Saturating.h"
#include "graphs/graph/GraphControlPoint.h"
#include "graphs/graph/GraphCurves.h"
#include "graphs/grid/grid_variants.h"
#include "panels/PageBuilder.h"

#include <QtTest>

#include <limits>

using Input::key;
using Input::mouse;

namespace {

const char *const address = "<Address><prmAddr>Ch/Gain</prmAddr></Address>";
constexpr int intMax = std::numeric_limits<int>::max();
constexpr int intMin = std::numeric_limits<int>::min();

class MeterProbe : public Meter
{
public:
    using Meter::Meter;
    using Meter::meterImage;
};

bool insidePixels(const QPolygon &points)
{
    for (const QPoint &p : points) {
        if (qAbs(p.x()) > Saturating::maxPixels || qAbs(p.y()) > Saturating::maxPixels)
            return false;
    }
    return true;
}

} // namespace

/*
    Inputs a careless panel author or a misbehaving device can send: every
    one of them once made a control overflow, read freed memory or hang.
*/
class tst_HostileInput : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;

    template <class W>
    W *control(const QString &val, const QString &str = QString(), const QString &extra = QString())
    {
        host.reset();
        host.zoom = 1.0f;
        host.setParameter(QStringLiteral("Ch/Gain"), val, str);
        return host.make<W>(QStringLiteral("<Rect x=\"10\" y=\"10\" width=\"80\" height=\"40\"/>") + QLatin1String(address)
                            + extra);
    }

private slots:
    void positionSteps_data();
    void positionSteps();
    void integersReadAsQtReadsThem_data();
    void integersReadAsQtReadsThem();
    void dragStartsInsideTheRange_data();
    void dragStartsInsideTheRange();
    void hugeBeamStep();
    void curvesStayInsidePixels_data();
    void curvesStayInsidePixels();
    void rectAtTheIntLimit_data();
    void rectAtTheIntLimit();
    void scaleAtExtremeZoom();
    void hexBoxDestroyedWhileEditing();
    void colourBoxStartsWithItsDefault();
    void wheelNotches_data();
    void wheelNotches();
    void matrixCellLimit();
    void imagesHaveBoundedPixels_data();
    void imagesHaveBoundedPixels();
    void pageCycles_data();
    void pageCycles();
};

void tst_HostileInput::positionSteps_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("steps");
    QTest::addColumn<int>("expected");
    QTest::addColumn<bool>("off");

    QTest::newRow("half") << "0.5" << 300 << 150 << false;
    QTest::newRow("rounds up") << "0.9999" << 10 << 10 << false;
    QTest::newRow("1e10") << "1e10" << 300 << intMax << false;
    QTest::newRow("-1e10") << "-1e10" << 300 << intMin << true;
    QTest::newRow("1e308 negative steps") << "1e308" << -5 << intMin << false;
    QTest::newRow("inf") << "inf" << 300 << 0 << true;
    QTest::newRow("-inf") << "-inf" << 300 << 0 << true;
    QTest::newRow("nan") << "nan" << 300 << 0 << true;
    QTest::newRow("not a number") << "loud" << 300 << 0 << true;
}

void tst_HostileInput::integersReadAsQtReadsThem_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("ok");

    QTest::newRow("plain") << "120" << 120 << true;
    QTest::newRow("negative") << "-35" << -35 << true;
    QTest::newRow("minus zero") << "-0" << 0 << true;
    QTest::newRow("leading zeros") << "007" << 7 << true;
    QTest::newRow("nine digits") << "999999999" << 999999999 << true;
    QTest::newRow("ten digits") << "2147483647" << 2147483647 << true;
    QTest::newRow("too large") << "2147483648" << 0 << false;
    QTest::newRow("most negative") << "-2147483648" << int(0x80000000u) << true;
    QTest::newRow("plus sign") << "+5" << 5 << true;
    QTest::newRow("blanks around") << " 12 " << 12 << true;
    QTest::newRow("empty") << "" << 0 << false;
    QTest::newRow("minus alone") << "-" << 0 << false;
    QTest::newRow("two minus") << "--5" << 0 << false;
    QTest::newRow("trailing letter") << "12px" << 0 << false;
    QTest::newRow("fraction") << "1.5" << 0 << false;
    QTest::newRow("exponent") << "1e3" << 0 << false;
    QTest::newRow("hexadecimal") << "0x10" << 0 << false;
    QTest::newRow("other digits") << QString::fromUtf8("\u0661\u0662") << 0 << false;
    QTest::newRow("full-width digits") << QString::fromUtf8("\uff11\uff12") << 0 << false;
}

void tst_HostileInput::integersReadAsQtReadsThem()
{
    QFETCH(QString, text);
    QFETCH(int, value);
    QFETCH(bool, ok);
    bool parsed = !ok;
    const int v = Saturating::parseInt(text, &parsed);
    QCOMPARE(parsed, ok);
    if (ok)
        QCOMPARE(v, value);
    // What QString::toInt() makes of it, whichever way it was read.
    bool qtOk = false;
    const int qt = text.toInt(&qtOk);
    QCOMPARE(parsed, qtOk);
    QCOMPARE(v, qt);
}

void tst_HostileInput::positionSteps()
{
    QFETCH(QString, text);
    QFETCH(int, steps);
    QFETCH(int, expected);
    QFETCH(bool, off);

    auto *button = control<SelectButton>(text, QString(), QStringLiteral("<Value steps=\"10\">3</Value>"));
    QCOMPARE(button->stepOfPosition(steps, 0), expected);
    QCOMPARE(button->isOff(0), off);
    QCOMPARE(Saturating::stepsOf(text, steps), expected);
    // Only a position that really is step 3 of 10 lights the button.
    QCOMPARE(button->isOn(), text.toDouble() > 0.25 && text.toDouble() < 0.35);
}

void tst_HostileInput::dragStartsInsideTheRange_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("sent");

    // A drag of ten pixels up from the current position, on a range of 300.
    for (const char *type : {"NumberBox", "Dial"}) {
        QTest::addRow("%s 0.5", type) << type << "0.5" << "0.533333";
        QTest::addRow("%s 1e10", type) << type << "1e10" << "1";
        QTest::addRow("%s -1e10", type) << type << "-1e10" << "0.0333333";
        QTest::addRow("%s inf", type) << type << "inf" << "0.0333333";
        QTest::addRow("%s -inf", type) << type << "-inf" << "0.0333333";
        QTest::addRow("%s nan", type) << type << "nan" << "0.0333333";
    }
}

void tst_HostileInput::dragStartsInsideTheRange()
{
    QFETCH(QString, type);
    QFETCH(QString, text);
    QFETCH(QString, sent);

    QWidget *w = type == QLatin1String("Dial") ? static_cast<QWidget *>(control<Dial>(text))
                                               : static_cast<QWidget *>(control<NumberBox>(text));
    mouse(w, QEvent::MouseButtonPress, QPoint(20, 20));
    mouse(w, QEvent::MouseMove, QPoint(20, 10));
    QVERIFY(!host.requests.isEmpty());
    QCOMPARE(host.requests.last().arg("ui_prm_val"), sent);
    mouse(w, QEvent::MouseButtonRelease, QPoint(20, 10));
}

void tst_HostileInput::hugeBeamStep()
{
    auto *box = control<BeamNumberBox>(QStringLiteral("0.5"), QStringLiteral("1e301"));
    box->setFocus();
    key(box, Qt::Key_Up);
    QCOMPARE(host.requests.size(), 1);
    bool ok = false;
    const double v = host.requests.last().arg("ui_prm_str").toDouble(&ok);
    QVERIFY(ok);
    QVERIFY2(v > 1e300, qPrintable(host.requests.last().arg("ui_prm_str").left(40)));
}

void tst_HostileInput::curvesStayInsidePixels_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("huge coordinates") << "0:1/0:1/1e300:1e300/-1e300:-1e300/1e18:5";
    QTest::newRow("tiny ranges") << "0:1e-300/0:1e-300/1:1/-1:-1";
    QTest::newRow("infinite fields") << "0:1/0:1/inf:nan/-inf:1";
    QTest::newRow("integral extremes") << "0:1/0:1/2147483647:-2147483648/-2147483648:2147483647";
    QTest::newRow("integral negative range") << "0:-1/0:-1/-2147483648:-2147483648";
}

void tst_HostileInput::curvesStayInsidePixels()
{
    QFETCH(QString, text);
    const QSize size(400, 300);
    GraphCurves::FloatCurve curve;
    QVERIFY(GraphCurves::parse(text, &curve));
    QVERIFY(insidePixels(GraphCurves::scaleOpen(curve, size)));
    QVERIFY(insidePixels(GraphCurves::scaleExaggerated(curve, size, false)));
    QVERIFY(insidePixels(GraphCurves::scaleExaggerated(curve, size, true)));
    GraphCurves::IntCurve integral;
    if (GraphCurves::parse(text, &integral))
        QVERIFY(insidePixels(GraphCurves::scaleIntegral(integral, size)));

    // One point, as a control point reads it.
    const QString single = text.section(QLatin1Char('/'), 0, 2);
    QPoint p;
    QVERIFY(ControlPointState::pointOf(single, QRect(Saturating::maxPixels, -Saturating::maxPixels, 400, 300), &p));
    QVERIFY(insidePixels(QPolygon({p})));
}

void tst_HostileInput::rectAtTheIntLimit_data()
{
    QTest::addColumn<QString>("rect");
    QTest::addColumn<QRect>("expected");
    QTest::newRow("x at the limit") << "x=\"2147483647\" y=\"0\" width=\"120\" height=\"20\""
                                    << QRect(Saturating::maxPixels, 0, 120, 20);
    QTest::newRow("everything at the limit")
        << "x=\"2147483647\" y=\"2147483647\" width=\"2147483647\" height=\"2147483647\""
        << QRect(Saturating::maxPixels, Saturating::maxPixels, Saturating::maxPixels, Saturating::maxPixels);
    QTest::newRow("negative") << "x=\"-2147483648\" y=\"-5\" width=\"-3\" height=\"7\""
                              << QRect(-Saturating::maxPixels, -5, 0, 7);
    QTest::newRow("beyond the int range") << "x=\"99999999999\" y=\"-99999999999\" width=\"4294967296\" height=\"1\""
                                          << QRect(Saturating::maxPixels, -Saturating::maxPixels, Saturating::maxPixels, 1);
    QTest::newRow("plain") << "x=\"1\" y=\"2\" width=\"3\" height=\"4\"" << QRect(1, 2, 3, 4);
}

void tst_HostileInput::rectAtTheIntLimit()
{
    QFETCH(QString, rect);
    QFETCH(QRect, expected);
    QDomDocument doc;
    QVERIFY(doc.setContent(QStringLiteral("<Rect %1/>").arg(rect)));
    const QRect r = BaseWidget::parseRect(doc.documentElement());
    QCOMPARE(r, expected);
    QVERIFY(qint64(r.x()) + r.width() <= intMax);
}

void tst_HostileInput::scaleAtExtremeZoom()
{
    auto *scale = control<GraphSppHScale>(QStringLiteral("0.5"));
    const int normal = scale->pixelOf(1000.0);
    host.zoom = 1e30f;
    QVERIFY(scale->setZoom(host.zoom));
    const int huge = scale->pixelOf(1000.0);
    QVERIFY(huge >= normal);
    QVERIFY(huge <= Saturating::maxPixels);
    QVERIFY(scale->width() <= Saturating::maxPixels);
    QImage image(200, 40, QImage::Format_ARGB32_Premultiplied);
    scale->render(&image);
}

void tst_HostileInput::hexBoxDestroyedWhileEditing()
{
    auto *box = control<HexTextBox>(QStringLiteral("0"), QStringLiteral("0a 0b"));
    box->edit()->setFocus();
    QVERIFY(box->edit()->hasFocus());
    QTest::keyClick(box->edit(), Qt::Key_1);
    host.requests.clear();
    delete box;
    QVERIFY(host.requests.isEmpty());
}

void tst_HostileInput::colourBoxStartsWithItsDefault()
{
    ColorBox box(&host, &host.registry, nullptr);
    QCOMPARE(box.color(), box.defaultColor());
    QCOMPARE(box.color(), QColor(128, 128, 128, 255));
}

void tst_HostileInput::wheelNotches_data()
{
    QTest::addColumn<QList<int>>("deltas");
    QTest::addColumn<QList<int>>("notches");
    QTest::newRow("one notch") << QList<int>{120} << QList<int>{1};
    QTest::newRow("halves") << QList<int>{60, 60, -30} << QList<int>{0, 1, 0};
    QTest::newRow("largest") << QList<int>{intMax, intMax, 120} << QList<int>{64, 64, 1};
    QTest::newRow("smallest") << QList<int>{intMin, intMin} << QList<int>{-64, -64};
    QTest::newRow("either way") << QList<int>{intMax, intMin, -120} << QList<int>{64, -64, -1};
    QTest::newRow("remainder kept") << QList<int>{intMax, 113} << QList<int>{64, 1};
}

void tst_HostileInput::wheelNotches()
{
    QFETCH(QList<int>, deltas);
    QFETCH(QList<int>, notches);
    WheelSteps wheel;
    QList<int> taken;
    for (int d : deltas)
        taken << wheel.take(d);
    QCOMPARE(taken, notches);
}

void tst_HostileInput::matrixCellLimit()
{
    auto *grid = control<MatrixMixer>(QStringLiteral("0"));
    grid->setColumns(46341);
    grid->setRows(46341);
    QCOMPARE(grid->columns(), 46341);
    QCOMPARE(grid->rows(), 1);
    QVERIFY(grid->cellAddressCount() <= MatrixGrid::maxCells);
    grid->setColumns(512);
    grid->setRows(512);
    QCOMPARE(grid->cellAddressCount(), 512 * 512);
    QVERIFY(grid->sizeHint().width() <= Saturating::maxPixels);
    QVERIFY(grid->cellRect(511, 511).right() <= Saturating::maxPixels);
}

void tst_HostileInput::imagesHaveBoundedPixels_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<qreal>("ratio");
    QTest::newRow("dial 10000 at zoom 8") << QSize(80000, 80000) << qreal(1);
    QTest::newRow("meter 20000") << QSize(20000, 20000) << qreal(2);
    QTest::newRow("long strip") << QSize(16777215, 3) << qreal(1);
    QTest::newRow("small stays sharp") << QSize(300, 200) << qreal(2);
}

void tst_HostileInput::imagesHaveBoundedPixels()
{
    QFETCH(QSize, size);
    QFETCH(qreal, ratio);
    const qreal bounded = ImageSource::boundedPixelRatio(size, ratio);
    QVERIFY(bounded > 0 && bounded <= ratio);
    const QSizeF pixels = QSizeF(size) * bounded;
    QVERIFY(pixels.width() * pixels.height() <= ImageSource::maxImagePixels * 1.001);
    if (qint64(size.width()) * size.height() * ratio * ratio <= ImageSource::maxImagePixels)
        QCOMPARE(bounded, ratio);

    if (size.width() > 30000)
        return;
    auto *meter = control<MeterProbe>(QStringLiteral("0.5"));
    meter->resize(size);
    const QPixmap shown = meter->meterImage();
    QVERIFY(qint64(shown.width()) * shown.height() <= ImageSource::maxImagePixels);
}

void tst_HostileInput::pageCycles_data()
{
    QTest::addColumn<QStringList>("chain");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("cycle");
    QTest::newRow("itself") << QStringList{"main"} << "main.xml" << "main -> main";
    QTest::newRow("through another") << QStringList{"a", "b"} << "a" << "a -> b -> a";
    QTest::newRow("inline pages between") << QStringList{"", "a", "", "b"} << "./a.xml" << "a -> b -> a";
    QTest::newRow("no cycle") << QStringList{"a", "b"} << "c" << "";
    QTest::newRow("inline page") << QStringList{"", "a"} << "" << "";
}

void tst_HostileInput::pageCycles()
{
    QFETCH(QStringList, chain);
    QFETCH(QString, file);
    QFETCH(QString, cycle);
    QCOMPARE(Panels::cycleOf(chain, file), cycle);
}

QTEST_MAIN(tst_HostileInput)
#include "tst_hostileinput.moc"
