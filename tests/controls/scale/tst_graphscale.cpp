#include "controls/ControlTestHost.h"

#include "controls/scale/scale_variants.h"
#include "graphs/graph/GraphBack.h"

#include <QtTest>
#include "support/Pixels.h"
#include "support/Render.h"

#include <cmath>

namespace {

const QColor ink(255, 255, 0);

//! The span of columns (or rows) holding anything but black.
QPair<int, int> inkSpan(const QImage &image, Qt::Orientation along)
{
    int first = -1, last = -1;
    const int n = along == Qt::Horizontal ? image.width() : image.height();
    const int m = along == Qt::Horizontal ? image.height() : image.width();
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < m; ++j) {
            const QRgb p = along == Qt::Horizontal ? image.pixel(i, j) : image.pixel(j, i);
            if (qRed(p) + qGreen(p) + qBlue(p) > 60) {
                if (first < 0)
                    first = i;
                last = i;
                break;
            }
        }
    }
    return {first, last};
}

GraphScale *makeScale(ControlTestHost &host, const QString &type, const QSize &size, const QString &extra = QString())
{
    const QString xml = QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"%1\" height=\"%2\"/>").arg(size.width()).arg(size.height())
        + extra;
    return host.make<GraphScale>(type, xml);
}

} // namespace

class tst_GraphScale : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;

private slots:
    void init() { host.zoom = 1.0f; }
    void frequencyRule_data();
    void frequencyRule();
    void positionsMeetTheDrawnGrid_data();
    void positionsMeetTheDrawnGrid();
    void labels_data();
    void labels();
    void paintedLabelsSitOnTheirLines_data();
    void paintedLabelsSitOnTheirLines();
    void overlappingLabelsAreLeftOut();
    void tagsAndClassChain();
};

void tst_GraphScale::frequencyRule_data()
{
    QTest::addColumn<double>("hertz");
    QTest::addColumn<int>("line");

    // Lines of the background's table: the rule lands within a pixel of each.
    const int lines[] = {39, 67, 88, 106, 120, 133, 145, 155, 221, 260, 288, 309, 326, 341, 354, 365, 375,
                         442, 481, 508, 530, 547, 562, 575, 586, 596};
    const double hertz[] = {30, 40, 50, 60, 70, 80, 90, 100, 200, 300, 400, 500, 600, 700, 800, 900, 1000,
                            2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000};
    for (int i = 0; i < int(sizeof lines / sizeof *lines); ++i)
        QTest::newRow(qPrintable(QString::number(hertz[i]))) << hertz[i] << lines[i];
}

void tst_GraphScale::frequencyRule()
{
    QFETCH(double, hertz);
    QFETCH(int, line);
    GraphScale *s = makeScale(host, QStringLiteral("GraphSppHScale"), QSize(700, 20));
    const double rule = 155.0 + 220.5 * std::log10(hertz / 100.0);
    QCOMPARE(s->rulePosition(hertz), rule);
    QVERIFY2(std::abs(rule - line) < 1.0, qPrintable(QString::number(rule)));
    QCOMPARE(s->designPosition(hertz), double(line));
}

void tst_GraphScale::positionsMeetTheDrawnGrid_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<float>("zoom");

    for (const char *type : {"GraphSppHScale", "GraphSppVScalePhase", "GraphSppVScaleSP", "GraphSppVScalePEQ"}) {
        for (float zoom : {1.0f, 1.5f, 0.75f, 2.0f})
            QTest::newRow(qPrintable(QStringLiteral("%1 at %2").arg(type).arg(zoom))) << type << zoom;
    }
}

void tst_GraphScale::positionsMeetTheDrawnGrid()
{
    QFETCH(QString, type);
    QFETCH(float, zoom);
    host.zoom = zoom;
    const QSize design(700, 163);
    GraphScale *s = makeScale(host, type, design);
    const bool horizontal = s->orientation() == Qt::Horizontal;
    QCOMPARE(horizontal, type == QLatin1String("GraphSppHScale"));

    // The background as the graph draws it at this zoom.
    const QSize size(int(design.width() * zoom), int(design.height() * zoom));
    QImage back(size, QImage::Format_ARGB32);
    {
        QPainter p(&back);
        EqualizerGrid::paint(p, size, zoom);
    }
    const int probe = horizontal ? int(3 * zoom) : int(5 * zoom); // a row (column) away from other lines
    int onLines = 0;
    for (double v : s->marks()) {
        const int at = s->pixelOf(v);
        const double rule = s->rulePosition(v);
        const double design = s->designPosition(v);
        QVERIFY(std::abs(design - rule) <= 1.0);
        QCOMPARE(at, int(design * zoom));
        // Inside the grid every labelled value has its line; the range's ends lie beyond it.
        const bool inside = horizontal ? rule > 38 && rule < 597 : rule > 12 && rule < 149;
        if (!inside)
            continue;
        ++onLines;
        const QRgb p = horizontal ? back.pixel(at, probe) : back.pixel(probe, at);
        QVERIFY2(qRed(p) > 40, qPrintable(QStringLiteral("%1 at %2 has no line").arg(v).arg(at)));
    }
    QVERIFY(onLines >= s->marks().size() - 2);
}

void tst_GraphScale::labels_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QStringList>("texts");

    QTest::newRow("frequency") << "GraphSppHScale"
                               << QStringList{"20", "50", "100", "200", "500", "1k", "2k", "5k", "10k", "20k"};
    QTest::newRow("phase") << "GraphSppVScalePhase" << QStringList{"+180", "+90", "0", "-90", "-180"};
    QTest::newRow("speaker processor") << "GraphSppVScaleSP" << QStringList{"+36", "+24", "+12", "0", "-12", "-24", "-36"};
    QTest::newRow("parametric EQ") << "GraphSppVScalePEQ" << QStringList{"+18", "+12", "+6", "0", "-6", "-12", "-18"};
}

void tst_GraphScale::labels()
{
    QFETCH(QString, type);
    QFETCH(QStringList, texts);
    GraphScale *s = makeScale(host, type, QSize(700, 163));
    QStringList got;
    for (double v : s->marks())
        got << s->label(v);
    QCOMPARE(got, texts);
    // Zero on the mid line, the ends on the edges of a 162-row graph.
    if (s->orientation() == Qt::Vertical) {
        QCOMPARE(s->pixelOf(0), 81);
        QCOMPARE(s->pixelOf(s->marks().first()), 0);
        QCOMPARE(s->pixelOf(s->marks().last()), 162);
    } else {
        QCOMPARE(s->pixelOf(100), 155);
        QCOMPARE(s->pixelOf(20), 0);
        QCOMPARE(s->pixelOf(20000), 662);
    }
}

void tst_GraphScale::paintedLabelsSitOnTheirLines_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<double>("value");
    QTest::addColumn<float>("zoom");
    QTest::addColumn<int>("centre");

    QTest::newRow("1k at 1") << "GraphSppHScale" << 1000.0 << 1.0f << 375;
    QTest::newRow("2k at 1") << "GraphSppHScale" << 2000.0 << 1.0f << 442;
    QTest::newRow("50 at 1.5") << "GraphSppHScale" << 50.0 << 1.5f << 132;
    QTest::newRow("10k at 2") << "GraphSppHScale" << 10000.0 << 2.0f << 1192;
    QTest::newRow("PEQ +6 at 1") << "GraphSppVScalePEQ" << 6.0 << 1.0f << 54;
    QTest::newRow("PEQ -6 at 1.5") << "GraphSppVScalePEQ" << -6.0 << 1.5f << 160;
    QTest::newRow("SP -24 at 1") << "GraphSppVScaleSP" << -24.0 << 1.0f << 134;
    QTest::newRow("phase +90 at 2") << "GraphSppVScalePhase" << 90.0 << 2.0f << 80;
}

void tst_GraphScale::paintedLabelsSitOnTheirLines()
{
    QFETCH(QString, type);
    QFETCH(double, value);
    QFETCH(float, zoom);
    QFETCH(int, centre);
    host.zoom = zoom;
    const bool horizontal = type == QLatin1String("GraphSppHScale");
    const QSize design = horizontal ? QSize(700, 20) : QSize(40, 163);
    GraphScale *s = makeScale(host, type, design,
                              QStringLiteral("<Marks>%1</Marks><Color>255,255,0</Color>").arg(value));
    s->resize(int(design.width() * zoom), int(design.height() * zoom));
    const QImage image = render(s);
    const QPair<int, int> span = inkSpan(image, horizontal ? Qt::Horizontal : Qt::Vertical);
    QVERIFY(span.first >= 0);
    const double mid = (span.first + span.second) / 2.0;
    QVERIFY2(std::abs(mid - centre) <= 2.0,
             qPrintable(QStringLiteral("ink %1..%2, line %3").arg(span.first).arg(span.second).arg(centre)));
    // Drawn in the Color given.
    QVERIFY(Pixels::countNear(image, ink, image.rect(), 0) > 0);
}

void tst_GraphScale::overlappingLabelsAreLeftOut()
{
    // Every tenth of a line at a small zoom: most would overlap.
    host.zoom = 0.5f;
    GraphScale *s = makeScale(host, QStringLiteral("GraphSppVScalePEQ"), QSize(40, 163),
                              QStringLiteral("<Marks>0,0.3,0.6,0.9,1.2,1.5,1.8</Marks>"));
    s->resize(20, 81);
    const QImage crowded = render(s);
    s->setMarks({0});
    const QImage single = render(s);
    // The first mark wins; the others would all overlap it.
    QCOMPARE(inkSpan(crowded, Qt::Vertical), inkSpan(single, Qt::Vertical));
}

void tst_GraphScale::tagsAndClassChain()
{
    GraphScale *s = makeScale(host, QStringLiteral("GraphSppVScaleSP"), QSize(40, 163),
                              QStringLiteral("<Color>1,2,3</Color><BackgroundColor>4,5,6</BackgroundColor>"
                                             "<Align>left</Align><Address prmAddr=\"Ch/Level\"/>"));
    QCOMPARE(s->metaObject()->superClass()->className(), "GraphScale");
    QCOMPARE(s->color(), QColor(1, 2, 3));
    QCOMPARE(s->property("backgroundColor").value<QColor>(), QColor(4, 5, 6));
    QCOMPARE(s->property("alignment").toString(), QStringLiteral("Left"));
    QVERIFY(s->labelRect(0).left() < 5);
    s->setAlignment(Qt::AlignRight);
    QVERIFY(s->labelRect(0).right() > 30);
    QCOMPARE(render(s).pixelColor(20, 5), QColor(4, 5, 6));
    QVERIFY(s->handledTags().contains(QStringLiteral("Marks")));
    QVERIFY(!s->handledTags().contains(QStringLiteral("Side")));
}

QTEST_MAIN(tst_GraphScale)
#include "tst_graphscale.moc"
