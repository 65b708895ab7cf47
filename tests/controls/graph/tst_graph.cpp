#include "controls/ControlTestHost.h"

#include "graphs/graph/Graph.h"
#include "graphs/graph/GraphBack.h"
#include "graphs/graph/GraphControlPoint.h"
#include "graphs/graph/graph_variants.h"
#include "plugin/WidgetFactory.h"

#include <QPaintEvent>
#include <QtTest>
#include "support/Render.h"
#include "support/PaintRecorder.h"

namespace {

// The control alone on a clear ground.
const RenderOptions alone{Qt::transparent, QWidget::RenderFlags()};

const QString curveAddr = QStringLiteral("Graph:EQ/Curve");
const QString secondAddr = QStringLiteral("Graph:EQ/Curve2");
const QString switchAddr = QStringLiteral("EQ/Sum");
const QString pointAddr = QStringLiteral("EQ/Band1/Point");
const QString bandAddr = QStringLiteral("EQ/Band1/Gain");
const QString thirdAddr = QStringLiteral("EQ/Band1/On");

// The recording host with a settable mode and state (3, 1).
class GraphHost : public ControlTestHost
{
public:
    int mode() const override { return hostMode; }
    int state(int group, int item) const override
    {
        stateQueries.append({group, item});
        return stateAnswer;
    }

    int hostMode = 1;
    int stateAnswer = 0;
    mutable QList<QPair<int, int>> stateQueries;
};

bool near(const QColor &a, const QColor &b)
{
    return qAbs(a.red() - b.red()) <= 2 && qAbs(a.green() - b.green()) <= 2 && qAbs(a.blue() - b.blue()) <= 2
        && qAbs(a.alpha() - b.alpha()) <= 2;
}

QString rect(int w, int h)
{
    return Xml::rect(0, 0, w, h);
}

using Xml::address;
using Xml::addressList;

QString points(const QPolygon &p)
{
    return GraphCurves::pointsText(p);
}

QString pointsOf(QWidget *w)
{
    if (auto *g = qobject_cast<Graph *>(w))
        return points(g->points());
    return w->property("curve").toString();
}

} // namespace

class tst_Graph : public QObject
{
    Q_OBJECT

private:
    GraphHost host;

    BaseWidget *make(const QString &type, const QString &xml)
    {
        if (BaseWidget *w = host.make(type, xml))
            return w;
        qFatal("unknown graph type");
        return nullptr;
    }

    // A handle over a 101 x 101 area at (0, 0) whose point is (50, 50).
    template <class P = GraphControlPoint>
    P *makePoint(const QString &extra = QString(), const QString &value = QStringLiteral("0:100/0:100/50:50"))
    {
        host.setParameter(pointAddr, QString(), value);
        host.setParameter(bandAddr, QStringLiteral("0.5"), QStringLiteral("0 dB"));
        host.setParameter(thirdAddr, QStringLiteral("1"), QStringLiteral("On"));
        host.requests.clear();
        host.selections.clear();
        return host.make<P>(QStringLiteral("<ControlRect x=\"0\" y=\"0\" width=\"101\" height=\"101\"/>")
                            + addressList({pointAddr, bandAddr, thirdAddr}) + extra);
    }

    // Mouse at (x, y) in the handle's parent.
    static void mouse(QWidget *p, QEvent::Type type, int x, int y, Qt::KeyboardModifiers mods = Qt::NoModifier)
    {
        Input::mouse(p, type, QPoint(x, y) - p->pos(), Qt::LeftButton, mods);
    }

    // A Brio graph with two curves of equal length (or none second) and the sum switch at \a sum.
    BrioParametricEqualizerGraph *brioGraph(const QString &sum,
                                            const QString &second = QStringLiteral("0:10/0:160/0:100/10:60"))
    {
        host.hostMode = 0;
        host.setParameter(curveAddr, QString(), QStringLiteral("0:10/0:160/0:80/10:80"));
        host.setParameter(secondAddr, QString(), second);
        host.setParameter(switchAddr, sum, QString());
        return host.make<BrioParametricEqualizerGraph>(
            rect(11, 162) + addressList({curveAddr, secondAddr, switchAddr}));
    }

private slots:
    void init()
    {
        host.hostMode = 1;
        host.stateAnswer = 0;
        host.stateQueries.clear();
        host.zoom = 1.0f;
        host.parameters.clear();
    }

    // Hosts and style sheets rely on the class chain the panel format documents.
    void hierarchy()
    {
        const char *rows[][2] = {
            {"Graph", "BaseWidget"}, {"ParametricEqualizerGraph", "BaseWidget"},
            {"BrioParametricEqualizerGraph", "BaseWidget"}, {"GraphicEqualizerGraph", "Graph"},
            {"ParametricEqualizerGraphBack", "BaseWidget"}, {"GraphControlPoint", "BaseWidget"},
            {"PeqGraphControlPoint", "GraphControlPoint"}, {"HpfGraphControlPoint", "GraphControlPoint"},
            {"TuningZoneGraphControlPoint", "GraphControlPoint"}, {"SpeakerGraphControlPoint", "BaseWidget"},
            {"SpeakerProcessorGraph", "BaseWidget"}, {"SpeakerProcessorPeqPhaseGraph", "BaseWidget"},
            {"ProtectSpeakerProcessorPhaseGraph", "BaseWidget"}, {"SpeakerEditorPeqGraph", "BaseWidget"},
            {"SpeakerProcessorPhaseGraphBack", "BaseWidget"},
        };
        WidgetFactory factory;
        QWidget parent;
        for (const auto &r : rows) {
            IWidgetCore *core = factory.create(QLatin1String(r[0]), &parent, &host, &host.registry);
            QVERIFY2(core, r[0]);
            const QMetaObject *m = core->widgetMetaObject();
            QCOMPARE(m->className(), r[0]);
            QCOMPARE(m->superClass()->className(), r[1]);
        }
    }

    void descriptionTags()
    {
        auto *g = host.make<BrioParametricEqualizerGraph>(
            rect(50, 50) + QStringLiteral("<LineColor>10,20,30,40</LineColor><FillColor>1,2,3</FillColor>"));
        QCOMPARE(g->property("LineColor").value<QColor>(), QColor(10, 20, 30, 40));
        QCOMPARE(g->property("FillColor").value<QColor>(), QColor(1, 2, 3, 255));
        QVERIFY(g->handledTags().contains(QStringLiteral("LineColor")));

        auto *p = host.make<GraphControlPoint>(QStringLiteral(
            "<ControlRect x=\"5\" y=\"6\" width=\"70\" height=\"80\"/><Color>9,8,7,6</Color>"
            "<Direction>Horizontal</Direction><Text>Band 1</Text><Value max=\"4\">2</Value>"));
        QCOMPARE(p->property("ControlRect").toRect(), QRect(5, 6, 70, 80));
        QCOMPARE(p->property("Color").value<QColor>(), QColor(9, 8, 7, 6));
        QCOMPARE(p->property("Direction").toString(), QStringLiteral("Horizontal"));
        QCOMPARE(p->property("Text").toString(), QStringLiteral("Band 1"));
        QCOMPARE(p->toolTip(), QStringLiteral("Band 1"));
        QCOMPARE(p->property("Value").toString(), QStringLiteral("2,4"));
        QCOMPARE(p->cursor().shape(), Qt::SizeHorCursor);

        auto *q = host.make<SpeakerGraphControlPoint>(QStringLiteral("<Value>3</Value>"));
        QCOMPARE(q->property("Value").toString(), QStringLiteral("3,1"));
        for (const char *tag : {"ControlRect", "Color", "Direction", "Text", "Value", "ModelToBaseAddressMap"})
            QVERIFY2(q->handledTags().contains(QLatin1String(tag)), tag);
    }

    void scaling_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");

        QTest::newRow("graph ends") << "Graph" << QSize(101, 11) << "a:100/b:10/0:0/100:10/50:5"
                                    << "0,10 100,0 50,5";
        // 1 x 9 / 4 = 2.25 and 1 x 9 / 3 = 3.
        QTest::newRow("graph truncates") << "Graph" << QSize(10, 10) << "0:4/0:3/1:1" << "2,6";
        QTest::newRow("graph fractions") << "Graph" << QSize(10, 10) << "0:1/0:1/0.5:0.5" << "4,5";
        QTest::newRow("graph no points") << "Graph" << QSize(10, 10) << "0:1/0:1" << "";
        QTest::newRow("graph unreadable point") << "Graph" << QSize(10, 10) << "0:1/0:1/abc:def" << "0,9";
        QTest::newRow("graph second section only") << "Graph" << QSize(11, 11) << "0:10:99/0:10/5:5:7" << "5,5";

        // H 162: 80 x 161 / 160 = 80.5 -> 80; closing row 161 div 2 + 1.
        QTest::newRow("peq rows") << "ParametricEqualizerGraph" << QSize(101, 162) << "0:100/0:160/0:80/100:160"
                                  << "0,81 100,0 100,81 0,81";
        QTest::newRow("peq two items") << "ParametricEqualizerGraph" << QSize(101, 162) << "0:100/0:160"
                                       << "100,81 0,81";
        // (15 x 10) div 100 = 1, plus a half, truncated: 1, where rounding gives 2.
        QTest::newRow("peq half after division") << "ParametricEqualizerGraph" << QSize(11, 11)
                                                 << "0:100/0:10/15:10/19:10" << "1,0 1,0 10,6 0,6";
        // -150 div 100 = -1, and -1 + 0.5 truncates to 0; -250 div 100 = -2 gives -1.
        QTest::newRow("peq negative quotient") << "ParametricEqualizerGraph" << QSize(11, 11)
                                               << "0:100/0:10/-15:0/-25:0" << "0,10 -1,10 10,6 0,6";
        QTest::newRow("peq integers only") << "ParametricEqualizerGraph" << QSize(11, 11) << "0:10/0:10/5.5:10"
                                           << "0,0 10,6 0,6";

        // 1.5 x 100 x 50 / 100 = 75, less 100 div 2 when centred.
        QTest::newRow("geq centred") << "GraphicEqualizerGraph" << QSize(101, 100) << "0:100/0:100/50:50/100:0"
                                     << "50,74 100,149 100,49 0,49";
        QTest::newRow("speaker integer") << "SpeakerProcessorGraph" << QSize(11, 11) << "0:100/0:10/15:10"
                                         << "1,0 10,6 0,6";
    }

    void scaling()
    {
        QFETCH(QString, type);
        QFETCH(QSize, size);
        QFETCH(QString, text);
        QFETCH(QString, expected);
        host.setParameter(curveAddr, QString(), text);
        BaseWidget *w = make(type, rect(size.width(), size.height()) + address(curveAddr));
        QCOMPARE(w->size(), size);
        QCOMPARE(pointsOf(w), expected);
    }

    void rejectedTextKeepsCurve_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("text");
        for (const char *type : {"Graph", "ParametricEqualizerGraph", "GraphicEqualizerGraph"}) {
            QTest::addRow("%s empty", type) << type << "";
            QTest::addRow("%s one item", type) << type << "0:10";
            QTest::addRow("%s zero x range", type) << type << "0:0/0:10/1:1";
            QTest::addRow("%s zero y range", type) << type << "0:10/0:0/1:1";
            QTest::addRow("%s unreadable range", type) << type << "0:10/0:ten/1:1";
            QTest::addRow("%s empty parts", type) << type << "//";
        }
        QTest::newRow("integer range of a fraction") << "ParametricEqualizerGraph" << "0:0.5/0:10/1:1";
    }

    void rejectedTextKeepsCurve()
    {
        QFETCH(QString, type);
        QFETCH(QString, text);
        host.setParameter(curveAddr, QString(), QStringLiteral("0:10/0:10/0:0/10:10"));
        BaseWidget *w = make(type, rect(21, 21) + address(curveAddr));
        const QString before = pointsOf(w);
        QVERIFY(!before.isEmpty());
        PaintRecorder counter(w);
        host.deliver(w, curveAddr, QString(), text);
        QCOMPARE(pointsOf(w), before);
        if (qobject_cast<Graph *>(w)) {
            // Repainted for the match, with the old curve.
            QApplication::processEvents();
            QCOMPARE(counter.paints, 1);
        }
    }

    void sum_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("switchOn");
        QTest::addColumn<QString>("second");
        QTest::addColumn<QString>("expected");

        // H 162, mid 80. A: both points on row 81. B: rows 61 and 101.
        const QString a = QStringLiteral("0,81 10,81 10,81 0,81");
        const QString b = QStringLiteral("0:10/0:160/0:100/10:60");
        QTest::newRow("sum") << 0 << true << b << "0,62 10,102 10,82 0,82";
        QTest::newRow("online shows own") << 1 << true << b << a;
        QTest::newRow("switch off shows own") << 0 << false << b << a;
        // Different lengths leave S as the first curve made it (A, with the switch off).
        QTest::newRow("lengths differ") << 0 << true << "0:10/0:160/0:100" << a;
        // The first point's x differs (5 against 0): it keeps A's value.
        QTest::newRow("x differs") << 0 << true << "0:10/0:160/5:100/10:60" << "0,81 10,102 10,82 0,82";
    }

    void sum()
    {
        QFETCH(int, mode);
        QFETCH(bool, switchOn);
        QFETCH(QString, second);
        QFETCH(QString, expected);
        auto *g = brioGraph(QStringLiteral("0"), QString());
        QCOMPARE(g->property("curve").toString(), QStringLiteral("0,81 10,81 10,81 0,81"));
        host.hostMode = mode;
        host.deliver(g, switchAddr, switchOn ? QStringLiteral("1") : QStringLiteral("0"), QString());
        QCOMPARE(g->isSumOn(), switchOn);
        host.deliver(g, secondAddr, QString(), second);
        QCOMPARE(g->property("curve").toString(), expected);
        QCOMPARE(points(g->ownCurve()), QStringLiteral("0,81 10,81 10,81 0,81"));
    }

    // Without a second curve the plain graph shows its curve only online.
    void plainGraphSumPath()
    {
        host.hostMode = 0;
        host.setParameter(curveAddr, QString(), QStringLiteral("0:10/0:10/0:5"));
        auto *g = host.make<ParametricEqualizerGraph>(rect(11, 11) + address(curveAddr));
        QCOMPARE(points(g->ownCurve()), QStringLiteral("0,5 10,6 0,6"));
        QCOMPARE(points(g->shownCurve()), QString());
        host.hostMode = 1;
        host.deliver(g, curveAddr, QString(), QStringLiteral("0:10/0:10/0:10"));
        QCOMPARE(points(g->shownCurve()), QStringLiteral("0,0 10,6 0,6"));
    }

    void speakerGraphAddsSecondCurve()
    {
        host.hostMode = 0;
        host.setParameter(curveAddr, QString(), QStringLiteral("0:10/0:10/0:5"));
        host.setParameter(secondAddr, QString(), QStringLiteral("0:10/0:10/0:10"));
        auto *one = host.make<SpeakerProcessorGraph>(rect(11, 11) + address(curveAddr));
        QCOMPARE(one->property("curve").toString(), QStringLiteral("0,5 10,6 0,6"));
        auto *two = host.make<SpeakerProcessorGraph>(
            rect(11, 11) + addressList({curveAddr, secondAddr}));
        QCOMPARE(two->property("curve").toString(), QStringLiteral("0,0 10,7 0,7"));
    }

    void brioRepaints_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("curveChanges");
        QTest::newRow("same polygon") << 0 << "0:20/0:10/0:5" << false;
        QTest::newRow("new polygon") << 0 << "0:10/0:10/0:0" << true;
        QTest::newRow("other index") << 3 << "x" << false;
    }

    void brioRepaints()
    {
        QFETCH(int, index);
        QFETCH(QString, text);
        QFETCH(bool, curveChanges);
        const QString other = QStringLiteral("EQ/Other");
        host.setParameter(curveAddr, QString(), QStringLiteral("0:10/0:10/0:5"));
        auto *g = host.make<BrioParametricEqualizerGraph>(
            rect(11, 11) + addressList({curveAddr, secondAddr, switchAddr, other}));
        const QString before = g->property("curve").toString();
        QApplication::processEvents();
        PaintRecorder counter(g);
        host.deliver(g, index == 0 ? curveAddr : other, QString(), text);
        QApplication::processEvents();
        QCOMPARE(counter.paints, 1);
        QCOMPARE(g->property("curve").toString() != before, curveChanges);
    }

    void graphicEqualizerAnchor()
    {
        host.setParameter(curveAddr, QString(), QStringLiteral("0:100/0:100/50:50"));
        host.setParameter(secondAddr, QStringLiteral("0"), QString());
        auto *g = host.make<GraphicEqualizerGraph>(
            rect(101, 100) + addressList({curveAddr, secondAddr, switchAddr}));
        QCOMPARE(points(g->points()), QStringLiteral("50,74 100,49 0,49"));
        host.stateQueries.clear();

        // Other addresses are ignored: no query, no new points (the matched
        // notification repaints, as every match does).
        QApplication::processEvents();
        PaintRecorder counter(g);
        host.deliver(g, switchAddr, QStringLiteral("1"), QString());
        QApplication::processEvents();
        QCOMPARE(counter.paints, 1);
        QCOMPARE(points(g->points()), QStringLiteral("50,74 100,49 0,49"));
        QVERIFY(host.stateQueries.isEmpty());

        host.stateAnswer = 3;
        host.deliver(g, secondAddr, QStringLiteral("1"), QString());
        QCOMPARE(host.stateQueries, (QList<QPair<int, int>>{{3, 1}}));
        QVERIFY(g->isBottomAnchored());
        QCOMPARE(points(g->points()), QStringLiteral("50,24 100,0 0,0"));

        host.stateAnswer = 2;
        host.deliver(g, secondAddr, QStringLiteral("0"), QString());
        QVERIFY(!g->isBottomAnchored());
        QCOMPARE(points(g->points()), QStringLiteral("50,74 100,49 0,49"));
    }

    void paintGraph_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<QColor>("fill");
        const QColor none(Qt::transparent);
        QTest::newRow("graph") << "Graph" << true << none;
        QTest::newRow("graph disabled") << "Graph" << false << none;
        // Row 5 for both: 19 - int(15 x 19 / 20), and 19 - (20 x 1.5 x 24 / 30 - 10), over the mid line, row 9.
        QTest::newRow("graphic") << "GraphicEqualizerGraph" << true << QColor(0, 255, 0, 153);
        QTest::newRow("graphic disabled") << "GraphicEqualizerGraph" << false << QColor(0, 255, 0, 153);
    }

    void paintGraph()
    {
        QFETCH(QString, type);
        QFETCH(bool, enabled);
        QFETCH(QColor, fill);
        const bool graphic = type != QLatin1String("Graph");
        host.setParameter(curveAddr, QString(), graphic ? QStringLiteral("0:20/0:30/0:24/20:24")
                                                        : QStringLiteral("0:20/0:20/0:15/20:15"));
        BaseWidget *g = make(type, rect(21, 20) + address(curveAddr) + QStringLiteral("<LineColor>255,0,0</LineColor>"));
        g->setEnabled(enabled);
        const QImage image = render(g, alone);
        // The disabled pen is translucent grey, over the fill where there is one.
        const QColor edge = image.pixelColor(10, 5);
        if (enabled)
            QVERIFY(near(edge, QColor(255, 0, 0)));
        else
            QVERIFY(edge.red() > 0 && qAbs(edge.red() - edge.blue()) <= 2 && edge.alpha() >= 153);
        QVERIFY(near(image.pixelColor(10, 7), fill));
        QCOMPARE(image.pixelColor(10, 2).alpha(), 0);
        QCOMPARE(image.pixelColor(10, 15).alpha(), 0);
    }

    void paintParametric_data()
    {
        QTest::addColumn<bool>("active");
        QTest::addColumn<bool>("hostActive");
        QTest::addColumn<int>("mode");
        QTest::addColumn<QColor>("line");
        QTest::addColumn<QColor>("fill");
        const QColor grey(153, 153, 153, 153);
        QTest::newRow("active") << true << false << 1 << QColor(255, 0, 0) << QColor(0, 0, 255);
        QTest::newRow("active panel of the host") << false << true << 1 << QColor(255, 0, 0) << QColor(0, 0, 255);
        QTest::newRow("inactive") << false << false << 1 << grey << grey;
        // Active off line, the plain graph shows S, which nothing filled.
        QTest::newRow("active, design mode") << true << false << 0 << QColor(Qt::transparent)
                                             << QColor(Qt::transparent);
        QTest::newRow("inactive, design mode") << false << false << 0 << grey << grey;
    }

    void paintParametric()
    {
        QFETCH(bool, active);
        QFETCH(bool, hostActive);
        QFETCH(int, mode);
        QFETCH(QColor, line);
        QFETCH(QColor, fill);
        host.hostMode = mode;
        host.active = hostActive;
        // A plateau on row 5 over a 21 x 21 graph closed on row 11.
        host.setParameter(curveAddr, QString(), QStringLiteral("0:20/0:20/0:15/20:15"));
        auto *g = host.make<ParametricEqualizerGraph>(
            rect(21, 21) + address(curveAddr)
            + QStringLiteral("<LineColor>255,0,0</LineColor><FillColor>0,0,255</FillColor>"));
        g->setActive(active);
        const QImage image = render(g, alone);
        // The outline lies over the edge of the fill; a translucent pen shows both.
        const QColor edge = image.pixelColor(10, 5);
        QVERIFY(near(QColor(edge.red(), edge.green(), edge.blue(), line.alpha()), line));
        QVERIFY(edge.alpha() >= line.alpha());
        QVERIFY(near(image.pixelColor(10, 8), fill));
        QCOMPARE(image.pixelColor(10, 2).alpha(), 0);
        QCOMPARE(image.pixelColor(10, 15).alpha(), 0);
    }

    void paintPhaseBreaksAtWrap()
    {
        // Rows 1, 1, 19, 19: a jump of 18 rows on a 21-pixel graph is a wrap.
        host.setParameter(curveAddr, QString(), QStringLiteral("0:20/0:20/0:19/10:19/11:1/20:1"));
        auto *g = host.make<SpeakerProcessorPhaseGraph>(rect(21, 21) + address(curveAddr)
                                                        + QStringLiteral("<LineColor>255,0,0</LineColor>"));
        g->setActive(true);
        const QImage image = render(g, alone);
        QVERIFY(near(image.pixelColor(5, 1), QColor(255, 0, 0)));
        QVERIFY(near(image.pixelColor(15, 19), QColor(255, 0, 0)));
        for (int y = 3; y < 18; ++y) {
            QCOMPARE(image.pixelColor(10, y).alpha(), 0);
            QCOMPARE(image.pixelColor(11, y).alpha(), 0);
        }
    }

    void grid_data()
    {
        QTest::addColumn<float>("zoom");
        QTest::addColumn<QPoint>("at");
        QTest::addColumn<int>("grey");
        QTest::newRow("field") << 1.0f << QPoint(5, 5) << 0;
        QTest::newRow("dark level") << 1.0f << QPoint(5, 13) << 51;
        QTest::newRow("mid level") << 1.0f << QPoint(5, 27) << 102;
        QTest::newRow("mid line") << 1.0f << QPoint(5, 81) << 179;
        QTest::newRow("30 Hz") << 1.0f << QPoint(39, 5) << 51;
        QTest::newRow("50 Hz") << 1.0f << QPoint(88, 5) << 102;
        QTest::newRow("100 Hz") << 1.0f << QPoint(155, 5) << 179;
        QTest::newRow("10 kHz") << 1.0f << QPoint(596, 100) << 179;
        // Vertical groups are drawn after the horizontal ones.
        QTest::newRow("30 Hz over the mid line") << 1.0f << QPoint(39, 81) << 51;
        QTest::newRow("100 Hz over a dark level") << 1.0f << QPoint(155, 13) << 179;
        QTest::newRow("zoomed mid line") << 2.0f << QPoint(5, 162) << 179;
        // 13 x 1.5 = 19.5 and 155 x 1.5 = 232.5 are truncated.
        QTest::newRow("truncated level") << 1.5f << QPoint(5, 19) << 51;
        QTest::newRow("below truncated level") << 1.5f << QPoint(5, 20) << 0;
        QTest::newRow("truncated 100 Hz") << 1.5f << QPoint(232, 5) << 179;
    }

    void grid()
    {
        QFETCH(float, zoom);
        QFETCH(QPoint, at);
        QFETCH(int, grey);
        host.zoom = zoom;
        auto *b = host.make<SpeakerProcessorPeqGraphBack>(rect(610, 170));
        QCOMPARE(b->width(), int(610 * zoom));
        const QImage image = render(b, alone);
        QCOMPARE(image.pixelColor(at), QColor(grey, grey, grey));
    }

    // Every level row and every frequency column, each with its grey, and
    // nothing else.
    void gridLines()
    {
        host.zoom = 1.0f;
        auto *b = host.make<SpeakerProcessorPeqGraphBack>(rect(610, 170));
        const QImage image = render(b, alone);
        QMap<int, int> rows, columns;
        for (int y : {13, 40, 67, 94, 121, 148})
            rows[y] = 51;
        for (int y : {27, 54, 107, 134})
            rows[y] = 102;
        rows[81] = 179;
        for (int x : {39, 67, 106, 120, 133, 145, 260, 288, 326, 341, 354, 365, 481, 508, 547, 562, 575, 586})
            columns[x] = 51;
        for (int x : {88, 221, 309, 442, 530})
            columns[x] = 102;
        for (int x : {155, 375, 596})
            columns[x] = 179;
        for (int y = 0; y < 170; ++y) {
            const int grey = rows.value(y, 0);
            QVERIFY2(image.pixelColor(5, y) == QColor(grey, grey, grey), qPrintable(QStringLiteral("row %1").arg(y)));
        }
        for (int x = 0; x < 610; ++x) {
            const int grey = columns.value(x, 0);
            QVERIFY2(image.pixelColor(x, 5) == QColor(grey, grey, grey), qPrintable(QStringLiteral("column %1").arg(x)));
        }
    }

    void placement_data()
    {
        QTest::addColumn<float>("zoom");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QRect>("geometry");
        // ControlRect (10, 20, 101, 51).
        QTest::newRow("centre") << 1.0f << "0:100/0:50/50:25" << QRect(58, 43, 5, 5);
        QTest::newRow("top right") << 1.0f << "0:100/0:50/100:50" << QRect(108, 18, 5, 5);
        QTest::newRow("bottom left") << 1.0f << "0:100/0:50/0:0" << QRect(8, 68, 5, 5);
        QTest::newRow("zoom 2") << 2.0f << "0:100/0:50/50:25" << QRect(117, 87, 10, 10);
        QTest::newRow("zoom 1.5") << 1.5f << "0:100/0:50/50:25" << QRect(87, 65, 7, 7);
        QTest::newRow("two items") << 1.0f << "0:100/0:50" << QRect(1, 2, 3, 4);
        QTest::newRow("four items") << 1.0f << "0:100/0:50/1:1/2:2" << QRect(1, 2, 3, 4);
        QTest::newRow("zero range") << 1.0f << "0:0/0:50/50:25" << QRect(1, 2, 3, 4);
    }

    void placement()
    {
        QFETCH(float, zoom);
        QFETCH(QString, value);
        QFETCH(QRect, geometry);
        host.zoom = zoom;
        host.setParameter(pointAddr, QString(), value);
        auto *p = host.make<GraphControlPoint>(
            QStringLiteral("<Rect x=\"1\" y=\"2\" width=\"3\" height=\"4\"/>"
                           "<ControlRect x=\"10\" y=\"20\" width=\"101\" height=\"51\"/>")
            + address(pointAddr));
        if (zoom != 1.0f) // the host zooms after configuring
            p->setZoom(zoom);
        QCOMPARE(p->geometry(), geometry);
    }

    void dragSends_data()
    {
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<QString>("text");
        QTest::newRow("centre") << QPoint(50, 50) << "0.5:0.5";
        QTest::newRow("corner") << QPoint(100, 0) << "1:1";
        QTest::newRow("clamped") << QPoint(-20, 300) << "0:0";
        QTest::newRow("quarters") << QPoint(25, 75) << "0.25:0.25";
    }

    void dragSends()
    {
        QFETCH(QPoint, to);
        QFETCH(QString, text);
        auto *p = makePoint();
        QCOMPARE(p->geometry(), QRect(48, 48, 5, 5));
        mouse(p, QEvent::MouseButtonPress, 50, 50);
        QVERIFY(p->isDragging());
        QVERIFY(host.requests.isEmpty());
        mouse(p, QEvent::MouseMove, to.x(), to.y());
        mouse(p, QEvent::MouseButtonRelease, to.x(), to.y());
        QVERIFY(!p->isDragging());
        QCOMPARE(host.requests.size(), 2);
        for (int i = 0; i < 2; ++i) {
            const RecordingHost::Request &r = host.requests.at(i);
            QCOMPARE(r.index, 0);
            QCOMPARE(r.kind, 1);
            QCOMPARE(r.arg("ui_prm_str"), text);
            QCOMPARE(r.arg("set_prm_type"), QString::number(1 - i));
            QCOMPARE(r.arguments.size(), 2);
        }
        // Shortest form that reads back: neither 6 digits nor 17.
        QCOMPARE(ControlPointState::fractionText({1, 2}, QRect(0, 0, 4, 4)),
                 QStringLiteral("0.3333333333333333:0.33333333333333337"));
    }

    void axisLock_data()
    {
        // Moves from a press at (50, 50): x, y and whether Shift is held;
        // then the locks and the texts sent after each move.
        QTest::addColumn<QList<QPoint>>("moves");
        QTest::addColumn<QList<bool>>("shift");
        QTest::addColumn<QList<int>>("locks");
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("vertical first") << QList<QPoint>{{50, 60}, {70, 20}} << QList<bool>{true, true}
                                        << QList<int>{2, 2} << QStringList{"0.5:0.4", "0.5:0.8"};
        QTest::newRow("tiny sideways") << QList<QPoint>{{51, 90}, {51, 10}, {0, 0}} << QList<bool>{true, true, true}
                                       << QList<int>{1, 1, 1} << QStringList{"0.51:0.5", "0.51:0.5", "0:0.5"};
        QTest::newRow("still, then sideways") << QList<QPoint>{{50, 50}, {60, 50}} << QList<bool>{true, true}
                                              << QList<int>{0, 1} << QStringList{"0.5:0.5", "0.6:0.5"};
        QTest::newRow("vertical lock kept sideways")
            << QList<QPoint>{{50, 60}, {90, 60}} << QList<bool>{true, true} << QList<int>{2, 2}
            << QStringList{"0.5:0.4", "0.5:0.4"};
        QTest::newRow("shift let go") << QList<QPoint>{{50, 60}, {70, 60}, {70, 20}}
                                      << QList<bool>{true, false, true} << QList<int>{2, 0, 2}
                                      << QStringList{"0.5:0.4", "0.7:0.4", "0.7:0.8"};
        QTest::newRow("relock afresh") << QList<QPoint>{{50, 60}, {70, 60}, {80, 20}}
                                       << QList<bool>{true, false, true} << QList<int>{2, 0, 1}
                                       << QStringList{"0.5:0.4", "0.7:0.4", "0.8:0.4"};
    }

    void axisLock()
    {
        QFETCH(QList<QPoint>, moves);
        QFETCH(QList<bool>, shift);
        QFETCH(QList<int>, locks);
        QFETCH(QStringList, texts);
        auto *p = makePoint(QStringLiteral("<Direction>HorizontalVertical</Direction>"));
        mouse(p, QEvent::MouseButtonPress, 50, 50);
        for (int i = 0; i < moves.size(); ++i) {
            mouse(p, QEvent::MouseMove, moves.at(i).x(), moves.at(i).y(), shift.at(i) ? Qt::ShiftModifier : Qt::NoModifier);
            QCOMPARE(p->axisLock(), locks.at(i));
            QCOMPARE(host.requests.last().arg("ui_prm_str"), texts.at(i));
            const Qt::CursorShape cursor = locks.at(i) == 1 ? Qt::SizeHorCursor
                : locks.at(i) == 2                          ? Qt::SizeVerCursor
                                                            : Qt::SizeAllCursor;
            if (!shift.at(i) || locks.at(i))
                QCOMPARE(p->cursor().shape(), cursor);
        }
        QCOMPARE(host.requests.size(), moves.size());

        // Released with Shift: the same pinning, then everything resets.
        const QPoint last = moves.last();
        mouse(p, QEvent::MouseButtonRelease, last.x() + 3, last.y() + 3, Qt::ShiftModifier);
        const RecordingHost::Request &r = host.requests.last();
        QCOMPARE(r.arg("set_prm_type"), QStringLiteral("0"));
        if (locks.last() == 1)
            QCOMPARE(r.arg("ui_prm_str").section(QLatin1Char(':'), 1), texts.last().section(QLatin1Char(':'), 1));
        else if (locks.last() == 2)
            QCOMPARE(r.arg("ui_prm_str").section(QLatin1Char(':'), 0, 0), texts.last().section(QLatin1Char(':'), 0, 0));
        QCOMPARE(p->axisLock(), 0);
        QVERIFY(!p->isDragging());
        QCOMPARE(p->cursor().shape(), Qt::SizeAllCursor);
    }

    void direction_data()
    {
        QTest::addColumn<QString>("direction");
        QTest::addColumn<int>("cursor");
        QTest::newRow("horizontal") << "Horizontal" << int(Qt::SizeHorCursor);
        QTest::newRow("vertical") << "OnlyVertical" << int(Qt::SizeVerCursor);
        QTest::newRow("both") << "Vertical|Horizontal" << int(Qt::SizeAllCursor);
        QTest::newRow("neither") << "Free" << int(Qt::ArrowCursor);
        QTest::newRow("case matters") << "horizontal" << int(Qt::ArrowCursor);
    }

    void direction()
    {
        QFETCH(QString, direction);
        QFETCH(int, cursor);
        auto *p = makePoint();
        p->setProperty("Direction", direction);
        QCOMPARE(int(p->cursor().shape()), cursor);
        // A plain move while dragging shows it again after a lock.
        mouse(p, QEvent::MouseButtonPress, 50, 50);
        mouse(p, QEvent::MouseMove, 60, 50, Qt::ShiftModifier);
        QCOMPARE(p->cursor().shape(), Qt::SizeHorCursor);
        mouse(p, QEvent::MouseMove, 60, 50);
        QCOMPARE(int(p->cursor().shape()), cursor);
    }

    void pressSelects_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("selected");
        QTest::newRow("default") << "" << 0;
        QTest::newRow("second") << "<Value max=\"3\">1</Value>" << 1;
        QTest::newRow("outside the list") << "<Value>7</Value>" << -1;
    }

    void pressSelects()
    {
        QFETCH(QString, value);
        QFETCH(int, selected);
        auto *p = makePoint(value);
        mouse(p, QEvent::MouseButtonPress, 50, 50);
        QCOMPARE(host.selections.size(), selected < 0 ? 0 : 1);
        QCOMPARE(p->currentAddressIndex(), qMax(0, selected));
        mouse(p, QEvent::MouseButtonRelease, 50, 50);
    }

    void controlClickIsNoDrag()
    {
        auto *p = makePoint();
        mouse(p, QEvent::MouseButtonPress, 50, 50, Qt::ControlModifier);
        QVERIFY(!p->isDragging());
        QVERIFY(p->highlight());
        mouse(p, QEvent::MouseMove, 70, 70, Qt::ControlModifier);
        mouse(p, QEvent::MouseButtonRelease, 70, 70, Qt::ControlModifier);
        QVERIFY(host.requests.isEmpty());
    }

    void valueMovesHandle()
    {
        auto *p = makePoint();
        QApplication::processEvents();
        PaintRecorder counter(p);
        host.deliver(p, pointAddr, QString(), QStringLiteral("0:100/0:100/100:0"));
        QCOMPARE(p->point(), QPoint(100, 100));
        QCOMPARE(p->geometry(), QRect(98, 98, 5, 5));
        QApplication::processEvents();
        QCOMPARE(counter.paints, 1);
        // The same point in other units moves nothing; the match repaints.
        host.deliver(p, pointAddr, QString(), QStringLiteral("0:10/0:10/10:0"));
        QApplication::processEvents();
        QCOMPARE(p->geometry(), QRect(98, 98, 5, 5));
        QCOMPARE(counter.paints, 2);
    }

    void peqBand()
    {
        auto *p = makePoint<PeqGraphControlPoint>(QStringLiteral("<Color>255,0,0</Color>"));
        QVERIFY(p->isBandOn());
        QVERIFY(near(render(p, alone).pixelColor(2, 2), QColor(255, 0, 0)));
        host.deliver(p, thirdAddr, QStringLiteral("0"), QStringLiteral("Off"));
        QVERIFY(!p->isBandOn());
        const QImage hollow = render(p, alone);
        QVERIFY(near(hollow.pixelColor(0, 0), QColor(255, 0, 0)));
        QCOMPARE(hollow.pixelColor(2, 2).alpha(), 0);
        // Still draggable.
        mouse(p, QEvent::MouseButtonPress, 50, 50);
        mouse(p, QEvent::MouseButtonRelease, 60, 50);
        QCOMPARE(host.requests.size(), 1);
    }

    void integerSwitches_data()
    {
        QTest::addColumn<QString>("val");
        QTest::addColumn<bool>("sumOn");
        QTest::addColumn<bool>("hpfOn");
        QTest::newRow("1") << "1" << true << true;
        QTest::newRow("0") << "0" << false << false;
        QTest::newRow("a fraction is integer 0") << "0.5" << false << false;
        QTest::newRow("-1: not above 0, but not 0") << "-1" << false << true;
        QTest::newRow("not a number") << "On" << false << false;
    }

    // Index 2 of the Brio graph and of the high-pass handle reads the
    // position as an integer: > 0 for the sum switch, != 0 for the filter.
    void integerSwitches()
    {
        QFETCH(QString, val);
        QFETCH(bool, sumOn);
        QFETCH(bool, hpfOn);
        auto *g = brioGraph(QStringLiteral("1"));
        host.deliver(g, switchAddr, val, QString());
        QCOMPARE(g->isSumOn(), sumOn);

        auto *p = makePoint<HpfGraphControlPoint>();
        host.deliver(p, thirdAddr, val, QString());
        QCOMPARE(p->isFilterEnabled(), hpfOn);
        QCOMPARE(p->isEnabled(), hpfOn);
    }

    // The sum switch takes effect with the next curve, not by itself.
    void brioSwitchDoesNotResum()
    {
        auto *g = brioGraph(QStringLiteral("0"));
        const QString own = QStringLiteral("0,81 10,81 10,81 0,81");
        QCOMPARE(g->property("curve").toString(), own);
        host.deliver(g, switchAddr, QStringLiteral("1"), QString());
        QVERIFY(g->isSumOn());
        QCOMPARE(g->property("curve").toString(), own);
        host.deliver(g, curveAddr, QString(), QStringLiteral("0:10/0:160/0:81/10:80"));
        QCOMPARE(g->property("curve").toString(), QStringLiteral("0,61 10,102 10,82 0,82"));
    }

    void hpfEnabled()
    {
        auto *p = makePoint<HpfGraphControlPoint>(QStringLiteral("<Color>255,0,0</Color>"));
        QVERIFY(p->isEnabled());
        host.deliver(p, thirdAddr, QStringLiteral("0"), QStringLiteral("Off"));
        QVERIFY(!p->isFilterEnabled());
        QVERIFY(!p->isEnabled());
        QVERIFY(near(render(p, alone).pixelColor(2, 2), QColor(153, 153, 153, 153)));
        QTest::mouseClick(p, Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
        QVERIFY(host.requests.isEmpty());
        host.deliver(p, thirdAddr, QStringLiteral("1"), QStringLiteral("On"));
        QVERIFY(p->isEnabled());
        // Index 1 does not touch the flag.
        host.deliver(p, bandAddr, QStringLiteral("0"), QStringLiteral("-inf"));
        QVERIFY(p->isEnabled());
    }
    void tuningZoneHandle_data()
    {
        QTest::addColumn<QPoint>("press");          // in the parent
        QTest::addColumn<QList<QPoint>>("moves");   // then released at the last
        QTest::addColumn<QStringList>("sent");      // "text held"

        QTest::newRow("a click only selects") << QPoint(52, 48) << QList<QPoint>{} << QStringList{};
        QTest::newRow("a tremor is no drag") << QPoint(50, 50) << QList<QPoint>{{51, 50}} << QStringList{};
        QTest::newRow("grabbed at the centre") << QPoint(50, 50) << QList<QPoint>{{75, 25}}
                                               << QStringList{"0.75:0.75 1", "0.75:0.75 0"};
        // Pressed 4 pixels right of the point: the point stays 4 pixels left of the pointer.
        QTest::newRow("grabbed off the centre, no jump") << QPoint(54, 50) << QList<QPoint>{{79, 75}}
                                                         << QStringList{"0.75:0.25 1", "0.75:0.25 0"};
        QTest::newRow("clamped at the edge") << QPoint(50, 50) << QList<QPoint>{{500, -40}}
                                             << QStringList{"1:1 1", "1:1 0"};
    }

    void tuningZoneHandle()
    {
        QFETCH(QPoint, press);
        QFETCH(QList<QPoint>, moves);
        QFETCH(QStringList, sent);

        host.editor.insert("zone_uniq_id", "zoneA");
        auto *p = makePoint<TuningZoneGraphControlPoint>(QStringLiteral("<Text>3</Text><Color>0,160,255</Color>"));
        host.editor.remove("zone_uniq_id");
        // A disc of its own, centred on the point.
        const int side = TuningZoneGraphControlPoint::discSide(1.0f);
        QCOMPARE(p->geometry(), QRect(50 - side / 2, 50 - side / 2, side, side));
        QVERIFY(side > 5);
        const QImage image = render(p, Qt::transparent);
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);                   // round: the corner is empty
        QCOMPARE(image.pixelColor(side / 2, 1).alpha(), 255);            // the disc
        QVERIFY(image.pixelColor(side / 2, 1).blue() > 200);

        mouse(p, QEvent::MouseButtonPress, press.x(), press.y());
        QVERIFY(p->isDragging());
        QCOMPARE(host.selections.size(), 1);
        for (const QPoint &m : moves)
            mouse(p, QEvent::MouseMove, m.x(), m.y());
        const QPoint end = moves.isEmpty() ? press : moves.last();
        mouse(p, QEvent::MouseButtonRelease, end.x(), end.y());
        QVERIFY(!p->isDragging());
        QStringList got;
        for (const RecordingHost::Request &r : host.requests)
            got << r.arg("ui_prm_str") + QLatin1Char(' ') + r.arg("set_prm_type");
        QCOMPARE(got, sent);
        for (const RecordingHost::Request &r : host.requests)
            QCOMPARE(r.address.value("zone_uniq_id").toString(), QStringLiteral("zoneA"));
    }
    void halo3DLayers_data()
    {
        QTest::addColumn<QString>("depth");
        QTest::addColumn<int>("shift");   // total depth of two layers behind the front, pixels

        QTest::newRow("default depth") << QString() << 16;
        QTest::newRow("given depth") << QStringLiteral("<Depth>20</Depth>") << 40;
        QTest::newRow("flat") << QStringLiteral("<Depth>0</Depth>") << 0;
        QTest::newRow("refused depth keeps the default") << QStringLiteral("<Depth>-3</Depth>") << 16;
    }

    void halo3DLayers()
    {
        QFETCH(QString, depth);
        QFETCH(int, shift);
        const QString line = QStringLiteral("0:100/0:100/0:0/100:100");   // bottom-left to top-right
        host.setParameter("L0", "0", line);
        host.setParameter("L1", "0", line);
        host.setParameter("L2", "0", QStringLiteral("0:100/0:0/1:2"));  // rejected: zero range
        auto *g = host.make<Halo3DGraph>(rect(201, 101) + addressList({"L0", "L1", "L2"}) + depth);
        QCOMPARE(g->layerCount(), 2);                 // the third never read
        QVERIFY(g->layer(2).isEmpty());
        host.deliver(g, "L2", "0", line);
        QCOMPARE(g->layerCount(), 3);
        // The front layer at the bottom left, each farther one up and to the right.
        const QPolygon front = g->layer(0);
        const QPolygon back = g->layer(2);
        QCOMPARE(front.first(), QPoint(0, 100));
        QCOMPARE(back.first(), QPoint(shift, 100 - shift));
        QCOMPARE(back.last(), QPoint(200, 0));
        QCOMPARE(g->layer(1).first(), QPoint(shift / 2, 100 - shift / 2));
        // A text a layer cannot read keeps it.
        host.deliver(g, "L1", "0", QStringLiteral("nonsense"));
        QCOMPARE(g->layer(1).first(), QPoint(shift / 2, 100 - shift / 2));
        // Farther layers are fainter: the front is drawn in the full line colour.
        const QImage image = render(g, Qt::black);
        QCOMPARE(image.pixelColor(front.first()), QColor(0, 255, 0));
        if (shift > 0)
            QVERIFY(image.pixelColor(back.first()).green() < 200);
    }
};

QTEST_MAIN(tst_Graph)
#include "tst_graph.moc"
