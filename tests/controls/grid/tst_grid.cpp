#include "controls/ControlTestHost.h"

#include "graphs/grid/MatrixGrid.h"
#include "graphs/grid/grid_variants.h"
#include "plugin/WidgetFactory.h"

#include <QPaintEvent>
#include <QtTest>
#include "support/PaintRecorder.h"
#include "support/Pixels.h"
#include "support/Render.h"

namespace {

// The control alone on a clear ground.
const RenderOptions alone{Qt::transparent, QWidget::RenderFlags()};

QColor colourAt(const QImage &image, const QRect &cell)
{
    // Off the centre, where a cell's text would be.
    return image.pixelColor(cell.topLeft() + QPoint(3, 3));
}

const QString mixForm = QStringLiteral("<AddressForm prmAddr=\"Mix/In{y}/Out{x}/On\"/>");
const QString routeForm = QStringLiteral("<AddressForm prmAddr=\"Route/Out{x}/Src\"/>");

} // namespace

class tst_Grid : public QObject
{
    Q_OBJECT

private slots:
    void roomCombineChecker_data();
    void roomCombineChecker();
    void addresses_data();
    void addresses();
    void lateForm();
    void toggle_data();
    void toggle();
    void stroke_data();
    void stroke();
    void strokeEndsWithModifier();
    void modifierClickSelectsWithoutRequest();
    void keyboard_data();
    void keyboard();
    void routerSelect_data();
    void routerSelect();
    void routerStroke();
    void painting_data();
    void painting();
    void valueChangeRepaintsOneCell_data();
    void valueChangeRepaintsOneCell();
    void headersAndZoom();
    void delayDrag_data();
    void delayDrag();
    void delayEdit_data();
    void delayEdit();
    void delayTextAndWheel();
    void settersAndTags();
};

void tst_Grid::addresses_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("mixer, index row x columns + column")
        << "MatrixMixer" << mixForm + "<Rows>2</Rows><Columns>3</Columns>"
        << QStringList{"Mix/In1/Out1/On", "Mix/In1/Out2/On", "Mix/In1/Out3/On",
                       "Mix/In2/Out1/On", "Mix/In2/Out2/On", "Mix/In2/Out3/On"};
    QTest::newRow("offsets, form last")
        << "PallasMatrixMixer" << "<Rows>2</Rows><Columns>2</Columns><XOffset>0</XOffset><YOffset>9</YOffset>" + mixForm
        << QStringList{"Mix/In9/Out0/On", "Mix/In9/Out1/On", "Mix/In10/Out0/On", "Mix/In10/Out1/On"};
    QTest::newRow("router: one per column")
        << "Router" << routeForm + "<Rows>8</Rows><Columns>3</Columns>"
        << QStringList{"Route/Out1/Src", "Route/Out2/Src", "Route/Out3/Src"};
    QTest::newRow("patch keeps the router's addressing")
        << "QuaySlotPatch" << "<Columns>2</Columns><XOffset>5</XOffset>" + routeForm
        << QStringList{"Route/Out5/Src", "Route/Out6/Src"};
    QTest::newRow("delay matrix")
        << "OstraDelayMatrix" << "<AddressForm prmAddr=\"Dly/{y}-{x}\"/><Rows>1</Rows><Columns>2</Columns>"
        << QStringList{"Dly/1-1", "Dly/1-2"};
    QTest::newRow("no form, no cells") << "MatrixMixer" << "<Rows>2</Rows><Columns>2</Columns>" << QStringList();
}

void tst_Grid::addresses()
{
    QFETCH(QString, type);
    QFETCH(QString, xml);
    QFETCH(QStringList, expected);
    ControlTestHost host;
    MatrixGrid *w = host.make<MatrixGrid>(type, xml);
    QVERIFY(w);
    QStringList bound;
    for (int i = 0; i < w->addressCount(); ++i)
        bound << w->addressAt(i).prmAddr();
    QCOMPARE(bound, expected);
    QCOMPARE(w->cellsBound(), !expected.isEmpty());
    // Every cell is registered as any control's address is.
    ParameterManagementBase *manager = host.registry.manager(QStringLiteral("Prm"), QStringLiteral("dev1"));
    QCOMPARE(manager != nullptr, !expected.isEmpty());
    for (const QString &a : expected)
        QVERIFY(manager->registrations().contains(a, static_cast<IWidgetCore *>(w)));
}

void tst_Grid::lateForm()
{
    // Rows and columns are fixed once the cells are bound; a second form is refused.
    ControlTestHost host;
    auto *w = host.make<MatrixMixer>(mixForm + "<Rows>2</Rows><Columns>2</Columns>");
    w->setRows(5);
    w->setColumns(1);
    QCOMPARE(w->rows(), 2);
    QCOMPARE(w->columns(), 2);
    w->configure(Xml::widget(QStringLiteral("<AddressForm prmAddr=\"Other/{x}\"/><Rows>4</Rows>")));
    QCOMPARE(w->addressCount(), 4);
    QCOMPARE(w->addressForm(), QStringLiteral("Mix/In{y}/Out{x}/On"));
    QCOMPARE(w->rows(), 2);
}

void tst_Grid::toggle_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("sent"); // empty: nothing sent

    QTest::newRow("mixer off -> on") << "MatrixMixer" << 1 << 2 << "0" << "1";
    QTest::newRow("mixer on -> off") << "BrioMatrixMixer" << 0 << 1 << "1" << "0";
    QTest::newRow("not a number counts as off") << "VelaMatrixMixer" << 2 << 0 << "x" << "1";
    QTest::newRow("room above the diagonal") << "RoomCombine" << 0 << 2 << "0" << "1";
    QTest::newRow("room on the diagonal") << "RoomCombine" << 1 << 1 << "0" << "";
    QTest::newRow("room below the diagonal") << "RoomCombine" << 2 << 1 << "1" << "";
    QTest::newRow("zone group") << "BrioZoneGroup" << 2 << 2 << "0.5" << "0";
    QTest::newRow("ostra zone group") << "OstraZoneGroup" << 0 << 0 << "0" << "1";
}

void tst_Grid::toggle()
{
    QFETCH(QString, type);
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(QString, before);
    QFETCH(QString, sent);
    ControlTestHost host;
    host.setParameter(QStringLiteral("Mix/In%1/Out%2/On").arg(row + 1).arg(column + 1), before, before);
    MatrixGrid *w = host.make<MatrixGrid>(type, mixForm + "<Rows>3</Rows><Columns>3</Columns>");
    QVERIFY(w);
    const QPoint at = w->cellRect(row, column).center();
    Input::mouse(w, QEvent::MouseButtonPress, at);
    Input::mouse(w, QEvent::MouseButtonRelease, at);
    QCOMPARE(w->focusCell(), QPoint(column, row));
    if (sent.isEmpty()) {
        QVERIFY(host.requests.isEmpty());
        return;
    }
    QCOMPARE(host.requests.size(), 1);
    const auto &r = host.requests.first();
    QCOMPARE(r.kind, 0);
    QCOMPARE(r.index, row * 3 + column);
    QCOMPARE(r.arg("ui_prm_val"), sent);
    QCOMPARE(r.arg("set_prm_type"), QStringLiteral("0"));
    // The press selects the cell it hit.
    QCOMPARE(w->currentAddressIndex(), row * 3 + column);
    QCOMPARE(host.selections.size(), 1);
}

void tst_Grid::stroke_data()
{
    QTest::addColumn<QString>("start");  // state of (0,0)
    QTest::addColumn<QString>("middle"); // state of (0,1)
    QTest::addColumn<QList<int>>("indexes");
    QTest::addColumn<QString>("sent");

    // Stroke along row 0 from column 0 to 3, then down to (1,3).
    QTest::newRow("painting on skips cells already on") << "0" << "1" << QList<int>{0, 2, 3, 7} << "1";
    QTest::newRow("painting off skips cells already off") << "1" << "1" << QList<int>{0, 1} << "0";
}

void tst_Grid::stroke()
{
    QFETCH(QString, start);
    QFETCH(QString, middle);
    QFETCH(QList<int>, indexes);
    QFETCH(QString, sent);
    ControlTestHost host;
    for (int r = 1; r <= 2; ++r)
        for (int c = 1; c <= 4; ++c)
            host.setParameter(QStringLiteral("Mix/In%1/Out%2/On").arg(r).arg(c), "0", "Off");
    host.setParameter("Mix/In1/Out1/On", start, start);
    host.setParameter("Mix/In1/Out2/On", middle, middle);
    if (sent == "0")
        host.setParameter("Mix/In1/Out3/On", "0", "Off"); // already off: skipped
    auto *w = host.make<MatrixMixer>(mixForm + "<Rows>2</Rows><Columns>4</Columns>");
    Input::mouse(w, QEvent::MouseButtonPress, w->cellRect(0, 0).center());
    QVERIFY(w->isStroking());
    for (int c = 0; c < 4; ++c) {
        // Two moves inside each cell: a cell is painted once.
        Input::mouse(w, QEvent::MouseMove, w->cellRect(0, c).center());
        Input::mouse(w, QEvent::MouseMove, w->cellRect(0, c).center() + QPoint(1, 1));
    }
    Input::mouse(w, QEvent::MouseMove, w->cellRect(1, 3).center());
    Input::mouse(w, QEvent::MouseButtonRelease, w->cellRect(1, 3).center());
    QVERIFY(!w->isStroking());
    QList<int> got;
    for (const auto &r : host.requests) {
        QCOMPARE(r.arg("ui_prm_val"), sent);
        QCOMPARE(r.arg("set_prm_type"), QStringLiteral("0"));
        got << r.index;
    }
    QCOMPARE(got, indexes);
}

void tst_Grid::strokeEndsWithModifier()
{
    ControlTestHost host;
    auto *w = host.make<MatrixMixer>(mixForm + "<Rows>1</Rows><Columns>3</Columns>");
    Input::mouse(w, QEvent::MouseButtonPress, w->cellRect(0, 0).center());
    Input::mouse(w, QEvent::MouseMove, w->cellRect(0, 1).center(), Qt::LeftButton, Qt::ShiftModifier);
    Input::mouse(w, QEvent::MouseMove, w->cellRect(0, 2).center());
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.first().index, 0);
}

void tst_Grid::modifierClickSelectsWithoutRequest()
{
    ControlTestHost host;
    auto *w = host.make<MatrixMixer>(mixForm + "<Rows>2</Rows><Columns>2</Columns>");
    Input::mouse(w, QEvent::MouseButtonPress, w->cellRect(1, 0).center(), Qt::LeftButton, Qt::ControlModifier);
    QVERIFY(host.requests.isEmpty());
    QVERIFY(w->highlight());
    QCOMPARE(w->currentAddressIndex(), 2);
}

void tst_Grid::keyboard_data()
{
    QTest::addColumn<QList<int>>("keys");
    QTest::addColumn<QPoint>("focus");
    QTest::addColumn<int>("kind"); // -1: nothing sent
    QTest::addColumn<QString>("value");

    QTest::newRow("right, down") << QList<int>{Qt::Key_Right, Qt::Key_Down} << QPoint(1, 1) << -1 << "";
    QTest::newRow("bounded at the edges")
        << QList<int>{Qt::Key_Left, Qt::Key_Up, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right} << QPoint(2, 0) << -1 << "";
    QTest::newRow("space toggles the focus cell") << QList<int>{Qt::Key_Down, Qt::Key_Space} << QPoint(0, 1) << 0 << "1";
    QTest::newRow("shift+up steps") << QList<int>{Qt::Key_Right, int(Qt::Key_Up | Qt::ShiftModifier)} << QPoint(1, 0)
                                    << 2 << "1";
    QTest::newRow("shift+down steps") << QList<int>{int(Qt::Key_Down | Qt::ShiftModifier)} << QPoint(0, 0) << 2 << "-1";
}

void tst_Grid::keyboard()
{
    QFETCH(QList<int>, keys);
    QFETCH(QPoint, focus);
    QFETCH(int, kind);
    QFETCH(QString, value);
    ControlTestHost host;
    auto *w = host.make<OstraMatrixMixer>(mixForm + "<Rows>2</Rows><Columns>3</Columns>");
    w->setFocus();
    for (int k : keys)
        Input::key(w, k & ~Qt::KeyboardModifierMask, Qt::KeyboardModifiers(k & Qt::KeyboardModifierMask));
    QCOMPARE(w->focusCell(), focus);
    if (kind < 0) {
        QVERIFY(host.requests.isEmpty());
        return;
    }
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.first().kind, kind);
    QCOMPARE(host.requests.first().index, focus.y() * 3 + focus.x());
    QCOMPARE(host.requests.first().arg(kind == 2 ? "ui_prm_step" : "ui_prm_val"), value);
}

void tst_Grid::routerSelect_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("current"); // position of column 1
    QTest::addColumn<int>("row");         // clicked in column 1
    QTest::addColumn<QString>("sent");

    QTest::newRow("first row is 0") << "Router" << 5 << "1" << 0 << "0";
    QTest::newRow("middle row") << "BrioRouter" << 5 << "0" << 2 << "0.5";
    QTest::newRow("last row is 1") << "FenRouter" << 4 << "0" << 3 << "1";
    QTest::newRow("thirds") << "KiteRouter" << 4 << "0" << 1 << "0.333333";
    QTest::newRow("selected row again: nothing") << "BrioOscillatorRouter" << 4 << "0.666667" << 2 << "";
    QTest::newRow("patch") << "BrioOutputPatch" << 3 << "0" << 1 << "0.5";
    // A value not known (yet) lights no row, so row 0 can still be chosen.
    QTest::newRow("unknown value: row 0 clickable") << "Router" << 4 << "" << 0 << "0";
    QTest::newRow("text value: row 0 clickable") << "FenRouter" << 4 << "n/a" << 0 << "0";
}

void tst_Grid::routerSelect()
{
    QFETCH(QString, type);
    QFETCH(int, rows);
    QFETCH(QString, current);
    QFETCH(int, row);
    QFETCH(QString, sent);
    ControlTestHost host;
    host.setParameter("Route/Out2/Src", current, current);
    auto *w = static_cast<RouterGrid *>(
        host.make<MatrixGrid>(type, routeForm + QStringLiteral("<Rows>%1</Rows><Columns>3</Columns>").arg(rows)));
    QVERIFY(qobject_cast<RouterGrid *>(w));
    bool known = false;
    current.toDouble(&known);
    if (!known) {
        QCOMPARE(w->selectedRow(1), -1);
        for (int r = 0; r < rows; ++r)
            QVERIFY(!w->cellLit(r, 1));
    }
    Input::mouse(w, QEvent::MouseButtonPress, w->cellRect(row, 1).center());
    Input::mouse(w, QEvent::MouseButtonRelease, w->cellRect(row, 1).center());
    if (sent.isEmpty()) {
        QVERIFY(host.requests.isEmpty());
        QCOMPARE(w->selectedRow(1), row);
        return;
    }
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.first().index, 1);
    QCOMPARE(host.requests.first().kind, 0);
    QCOMPARE(host.requests.first().arg("ui_prm_val"), sent);
    QCOMPARE(host.requests.first().arg("set_prm_type"), QStringLiteral("0"));

    // Delivered back, the position selects exactly that row.
    host.deliver(w, "Route/Out2/Src", sent, sent);
    QCOMPARE(w->selectedRow(1), row);
    for (int r = 0; r < rows; ++r)
        QCOMPARE(w->cellLit(r, 1), r == row);
}

void tst_Grid::routerStroke()
{
    // Dragging selects the pointer's row in each column it enters.
    ControlTestHost host;
    for (int c = 1; c <= 3; ++c)
        host.setParameter(QStringLiteral("Route/Out%1/Src").arg(c), "0", "In 1");
    auto *w = host.make<Router>(routeForm + "<Rows>3</Rows><Columns>3</Columns>");
    Input::mouse(w, QEvent::MouseButtonPress, w->cellRect(2, 0).center());
    Input::mouse(w, QEvent::MouseMove, w->cellRect(2, 1).center());
    Input::mouse(w, QEvent::MouseMove, w->cellRect(1, 1).center());
    Input::mouse(w, QEvent::MouseMove, w->cellRect(0, 2).center()); // row 0 already selected there
    Input::mouse(w, QEvent::MouseButtonRelease, w->cellRect(0, 2).center());
    QStringList got;
    for (const auto &r : host.requests)
        got << QStringLiteral("%1:%2").arg(r.index).arg(r.arg("ui_prm_val"));
    QCOMPARE(got, (QStringList{"0:1", "1:1", "1:0.5"}));
}

void tst_Grid::painting_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("form");
    QTest::addColumn<QString>("prmAddr");
    QTest::addColumn<QString>("val");
    QTest::addColumn<QPoint>("lit"); // (column, row); (-1, -1): none

    QTest::newRow("mixer crosspoint") << "MatrixMixer" << mixForm << "Mix/In2/Out3/On" << "1" << QPoint(2, 1);
    QTest::newRow("mixer all off") << "MatrixMixer" << mixForm << "Mix/In2/Out3/On" << "0" << QPoint(-1, -1);
    QTest::newRow("router: one per column") << "Router" << routeForm << "Route/Out2/Src" << "1" << QPoint(1, 2);
    QTest::newRow("zone group") << "OstraZoneGroup" << mixForm << "Mix/In1/Out2/On" << "1" << QPoint(1, 0);
    QTest::newRow("room below the diagonal never lights") << "RoomCombine" << mixForm << "Mix/In3/Out1/On" << "1"
                                                          << QPoint(-1, -1);
    QTest::newRow("delay cells never light") << "DelayMatrix" << mixForm << "Mix/In1/Out1/On" << "1" << QPoint(-1, -1);
}

void tst_Grid::painting()
{
    QFETCH(QString, type);
    QFETCH(QString, form);
    QFETCH(QString, prmAddr);
    QFETCH(QString, val);
    QFETCH(QPoint, lit);
    ControlTestHost host;
    // Router columns other than the one set sit at row 0.
    for (int c = 1; c <= 3; ++c)
        host.setParameter(QStringLiteral("Route/Out%1/Src").arg(c), "0", "");
    host.setParameter(prmAddr, val, "");
    MatrixGrid *w = host.make<MatrixGrid>(type,
                               form + "<Rect x=\"0\" y=\"0\" width=\"100\" height=\"80\"/><Rows>3</Rows><Columns>3</Columns>"
                                      "<OnColor>0,200,0</OnColor><OffColor>0,0,120</OffColor>");
    QVERIFY(w);
    const QImage image = render(w, alone);
    const QColor on(0, 200, 0), off(0, 0, 120);
    const bool router = qobject_cast<RouterGrid *>(w);
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) {
            const QColor got = colourAt(image, w->cellRect(r, c));
            bool expectOn = lit == QPoint(c, r) || (router && c != lit.x() && r == 0);
            if (!w->cellEnabled(r, c)) {
                QCOMPARE(got, off.darker(160));
                continue;
            }
            QVERIFY2(got == (expectOn ? on : off),
                     qPrintable(QStringLiteral("cell %1,%2: %3").arg(r).arg(c).arg(got.name())));
        }
    }
    // Grid lines in the default colour on the cell boundaries.
    const QRect first = w->cellRect(0, 0);
    QCOMPARE(image.pixelColor(first.x(), first.center().y()), MatrixGrid::defaultGridColor);
}

void tst_Grid::valueChangeRepaintsOneCell_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("form");
    QTest::addColumn<QString>("prmAddr");
    QTest::addColumn<QRect>("cells"); // the cells expected in the repaint: (column, row, w, h) in cells

    QTest::newRow("mixer: the cell") << "MatrixMixer" << mixForm << "Mix/In2/Out3/On" << QRect(2, 1, 1, 1);
    QTest::newRow("router: the column") << "Router" << routeForm << "Route/Out2/Src" << QRect(1, 0, 1, 3);
}

void tst_Grid::valueChangeRepaintsOneCell()
{
    QFETCH(QString, type);
    QFETCH(QString, form);
    QFETCH(QString, prmAddr);
    QFETCH(QRect, cells);
    ControlTestHost host;
    host.setParameter(prmAddr, "0", "");
    MatrixGrid *w = host.make<MatrixGrid>(type, form + "<Rect x=\"0\" y=\"0\" width=\"100\" height=\"80\"/>"
                                                  "<Rows>3</Rows><Columns>3</Columns>");
    QVERIFY(w);
    QTest::qWait(20);
    PaintRecorder recorder(w);
    host.deliver(w, prmAddr, "1", "");
    QTRY_VERIFY(!recorder.painted().isEmpty());
    const QRect expected = w->cellRect(cells.y(), cells.x())
                               .united(w->cellRect(cells.bottom(), cells.right()))
                               .adjusted(-1, -1, 1, 1)
                               .intersected(w->rect());
    QCOMPARE(recorder.painted().boundingRect(), expected);

    // The same value again paints nothing.
    recorder.clear();
    w->notifyValueChanged(RecordingHost::parameterKeys(prmAddr));
    QTest::qWait(20);
    QVERIFY(recorder.painted().isEmpty());
}

void tst_Grid::headersAndZoom()
{
    ControlTestHost host;
    auto *w = host.make<MatrixMixer>(mixForm + "<Rect x=\"0\" y=\"0\" width=\"120\" height=\"90\"/>"
                                               "<Rows>2</Rows><Columns>2</Columns><CellSize width=\"16\" height=\"12\"/>"
                                               "<HeaderSize>30</HeaderSize><RowLabels>Mic, Line</RowLabels>"
                                               "<ColumnLabels>L,R</ColumnLabels><TextColor>250,0,0</TextColor>");
    QCOMPARE(w->rowLabels(), (QStringList{"Mic", "Line"}));
    QCOMPARE(w->cellRect(1, 1), QRect(30 + 16, 30 + 12, 16, 12));
    QCOMPARE(w->cellAt(QPoint(10, 40)), QPoint(-1, -1)); // the row header
    Input::mouse(w, QEvent::MouseButtonPress, QPoint(40, 10)); // the column header
    QVERIFY(host.requests.isEmpty());

    const QImage image = render(w, alone);
    int red = 0;
    for (int y = 0; y < 30; ++y)
        for (int x = 30; x < 62; ++x)
            red += image.pixelColor(x, y) == QColor(250, 0, 0);
    QVERIFY2(red > 0, "column labels drawn in the text colour");

    host.zoom = 2.0f;
    QVERIFY(w->setZoom(2.0f));
    QCOMPARE(w->cellRect(1, 1), QRect(60 + 32, 60 + 24, 32, 24));
    Input::mouse(w, QEvent::MouseButtonPress, QPoint(60 + 40, 60 + 5));
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.first().index, 1);
}

void tst_Grid::delayDrag_data()
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<QList<int>>("moves"); // vertical offsets from the press, the last one is the release
    QTest::addColumn<QStringList>("sent"); // "value/type"

    QTest::newRow("up ten pixels") << "0.5" << QList<int>{-4, -10} << QStringList{"0.513333/1", "0.533333/0"};
    QTest::newRow("down from the bottom stays at 0") << "0.01" << QList<int>{5, 6}
                                                       << QStringList{"0/1", "0/0"};
    QTest::newRow("rounded start") << "0.4985" << QList<int>{-1, -1}
                                   << QStringList{"0.503333/1", "0.503333/0"}; // 150 + 1, not 149 + 1
    QTest::newRow("no movement: nothing") << "0.5" << QList<int>{0, 0} << QStringList();
    QTest::newRow("back to the start still releases") << "0.5" << QList<int>{-3, 0}
                                                        << QStringList{"0.51/1", "0.5/0"};
}

void tst_Grid::delayDrag()
{
    QFETCH(QString, start);
    QFETCH(QList<int>, moves);
    QFETCH(QStringList, sent);
    ControlTestHost host;
    host.setParameter("Dly/2-2", start, "");
    auto *w = host.make<PallasDelayMatrix>("<AddressForm prmAddr=\"Dly/{y}-{x}\"/><Rows>2</Rows><Columns>2</Columns>"
                                           "<CellSize width=\"40\" height=\"30\"/>");
    const QPoint at = w->cellRect(1, 1).center();
    Input::mouse(w, QEvent::MouseButtonPress, at);
    QCOMPARE(w->dragIndex(), 3);
    for (int i = 0; i < moves.size(); ++i) {
        const QPoint p = at + QPoint(i, moves.at(i)); // sideways drift does not count
        Input::mouse(w, i + 1 < moves.size() ? QEvent::MouseMove : QEvent::MouseButtonRelease, p);
    }
    QStringList got;
    for (const auto &r : host.requests) {
        QCOMPARE(r.index, 3);
        QCOMPARE(r.kind, 0);
        got << r.arg("ui_prm_val") + "/" + r.arg("set_prm_type");
    }
    QCOMPARE(got, sent);
    QCOMPARE(w->dragIndex(), -1);
}

void tst_Grid::delayEdit_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::addColumn<int>("closeKey");
    QTest::addColumn<bool>("committed");

    QTest::newRow("double-click, Return") << false << int(Qt::Key_Return) << true;
    QTest::newRow("Return, Enter") << true << int(Qt::Key_Enter) << true;
    QTest::newRow("double-click, Escape") << false << int(Qt::Key_Escape) << false;
    QTest::newRow("Return, Up discards") << true << int(Qt::Key_Up) << false;
}

void tst_Grid::delayEdit()
{
    QFETCH(bool, byKeyboard);
    QFETCH(int, closeKey);
    QFETCH(bool, committed);
    ControlTestHost host;
    host.setParameter("Dly/1-2", "0.1", "12.50 ms");
    auto *w = host.make<OstraDelayMatrix>("<AddressForm prmAddr=\"Dly/{y}-{x}\"/><Rows>2</Rows><Columns>2</Columns>"
                                          "<CellSize width=\"50\" height=\"20\"/>");
    if (byKeyboard) {
        w->setFocus();
        Input::key(w, Qt::Key_Right);
        Input::key(w, Qt::Key_Return);
    } else {
        QTest::mouseDClick(w, Qt::LeftButton, Qt::NoModifier, w->cellRect(0, 1).center());
    }
    QVERIFY(w->isEditing());
    QCOMPARE(w->editIndex(), 1);
    QCOMPARE(w->editor()->text(), QStringLiteral("12.50 ms"));
    QCOMPARE(w->editor()->geometry(), w->cellRect(0, 1));
    w->editor()->setText(QStringLiteral("20"));
    Input::key(w, closeKey);
    QVERIFY(!w->isEditing());
    // The double-click's presses started drags without movement: nothing else was sent.
    if (!committed) {
        QVERIFY(host.requests.isEmpty());
        return;
    }
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.first().kind, 1);
    QCOMPARE(host.requests.first().index, 1);
    QCOMPARE(host.requests.first().arg("ui_prm_str"), QStringLiteral("20"));
}

void tst_Grid::delayTextAndWheel()
{
    ControlTestHost host;
    host.setParameter("Dly/1-1", "0.1", "12.50 ms");
    host.setParameter("Dly/1-2", "0.25", "");
    auto *w = host.make<DelayMatrix>("<AddressForm prmAddr=\"Dly/{y}-{x}\"/><Rows>1</Rows><Columns>3</Columns>");
    QCOMPARE(w->cellText(0, 0), QStringLiteral("12.50 ms"));
    QCOMPARE(w->cellText(0, 1), QStringLiteral("0.25")); // no display text: the position
    QCOMPARE(w->cellText(0, 2), QString());              // unknown to the host
    Input::wheel(w, -120, w->cellRect(0, 1).center());
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.first().kind, 2);
    QCOMPARE(host.requests.first().index, 1);
    QCOMPARE(host.requests.first().arg("ui_prm_step"), QStringLiteral("-1"));
    // A click on a delay cell is not a toggle.
    Input::mouse(w, QEvent::MouseButtonPress, w->cellRect(0, 0).center());
    Input::mouse(w, QEvent::MouseButtonRelease, w->cellRect(0, 0).center());
    QCOMPARE(host.requests.size(), 1);
}

void tst_Grid::settersAndTags()
{
    ControlTestHost host;
    auto *w = host.make<MatrixGrid>("<Rows>0</Rows><Columns>x</Columns><OnColor>300,0,0</OnColor>"
                                    "<GridColor>1,2,3,4</GridColor><CellSize width=\"0\" height=\"5\"/>");
    QCOMPARE(w->rows(), 1);
    QCOMPARE(w->columns(), 1);
    QCOMPARE(w->onColor(), MatrixGrid::defaultOnColor);
    QCOMPARE(w->gridColor(), QColor(1, 2, 3, 4));
    QCOMPARE(w->cellSize(), QSize(20, 20));
    for (const char *tag : {"Rows", "Columns", "CellSize", "HeaderSize", "RowLabels", "ColumnLabels", "AddressForm",
                            "XOffset", "YOffset", "OnColor", "OffColor", "GridColor", "TextColor", "Rect"})
        QVERIFY2(w->handledTags().contains(QLatin1String(tag)), tag);

    PaintRecorder recorder(w);
    QTest::qWait(20);
    recorder.clear();
    w->setOnColor(MatrixGrid::defaultOnColor);
    w->setFocusCell(QPoint(5, 5)); // bounded to the only cell, which it already is
    w->setGridColor(QColor(1, 2, 3, 4));
    QTest::qWait(20);
    QVERIFY(recorder.painted().isEmpty());
    w->setOffColor(Qt::red);
    QTRY_VERIFY(!recorder.painted().isEmpty());
}

void tst_Grid::roomCombineChecker_data()
{
    QTest::addColumn<QString>("current");
    QTest::addColumn<QString>("sent");
    QTest::addColumn<bool>("checked");

    QTest::newRow("separate rooms: a click combines") << "0" << "1" << false;
    QTest::newRow("combined rooms: a click separates") << "1" << "0" << true;
    QTest::newRow("no value yet: separate") << "" << "1" << false;
}

void tst_Grid::roomCombineChecker()
{
    QFETCH(QString, current);
    QFETCH(QString, sent);
    QFETCH(bool, checked);
    ControlTestHost host;
    host.setParameter("Room/1-2/Combine", current, current);
    auto *w = host.make<RoomCombineChecker>(QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"80\" height=\"20\"/>"
                                                           "<Address prmAddr=\"Room/1-2/Combine\"/>"));
    QCOMPARE(w->isOn(), checked);
    // The check mark is drawn only while combined: lit pixels inside the box.
    const QImage image = render(w, Qt::black);
    const QRect box = w->boxRect().adjusted(2, 2, -2, -2);
    int lit = 0;
    for (int y = box.top(); y <= box.bottom(); ++y)
        for (int x = box.left(); x <= box.right(); ++x)
            lit += image.pixelColor(x, y) != image.pixelColor(box.center().x(), box.top()) ? 1 : 0;
    QCOMPARE(lit > 5, checked);
    // Nothing beside the box without a Text: no stray display text.
    const QRect beside(QPoint(w->boxRect().right() + 3, 0), w->rect().bottomRight());
    QCOMPARE(Pixels::countNear(image, Qt::black, beside, 0), beside.width() * beside.height());

    QTest::mouseClick(w, Qt::LeftButton, Qt::NoModifier, QPoint(5, 10));
    QCOMPARE(Gestures::described(host), QStringList{"pos " + sent + " 0"});
}

QTEST_MAIN(tst_Grid)
#include "tst_grid.moc"
