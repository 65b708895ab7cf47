#include "controls/ControlTestHost.h"

#include "controls/misc/misc_variants.h"

#include <QColorDialog>
#include <QSignalSpy>
#include <QtTest>
#include "support/Pixels.h"
#include "support/Render.h"
#include "support/ModalWatch.h"
#include "support/PaintRecorder.h"

using Input::mouse;
using Input::wheel;

namespace {

const QVariantMap colour{{"prmAddr", "Ch/Colour"}, {"dev_uniq_id", "dev1"}};
const QVariantMap devices{{"prmAddr", "Pair/List"}, {"dev_uniq_id", "dev1"}};
const QVariantMap paired{{"prmAddr", "Pair/Device"}, {"dev_uniq_id", "dev1"}};

} // namespace

class tst_Misc : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;

    ColorBox *box(const QString &extra = QString())
    {
        return host.make<ColorBox>(QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"40\" height=\"20\"/>"
                                                          "<Address prmAddr=\"Ch/Colour\"/>")
                                           + extra);
    }
    PairDeviceList *list(const QString &text, int height = 200,
                         const QString &choice = QStringLiteral("<Address prmAddr=\"Pair/Device\"/>"))
    {
        host.setParameter(QStringLiteral("Pair/List"), QStringLiteral("0"), text);
        return host.make<PairDeviceList>(QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"120\" height=\"%1\"/>"
                                                        "<Address prmAddr=\"Pair/List\"/>")
                                             .arg(height)
                                         + choice
                                         + QStringLiteral(
                                                        "<SelectedColor>255,0,0</SelectedColor>"
                                                        "<BackgroundColor>0,0,0</BackgroundColor>"));
    }

private slots:
    void init();
    void colourOfTheText_data();
    void colourOfTheText();
    void clickSendsTheChosenColour_data();
    void clickSendsTheChosenColour();
    void colourRepaintsOnlyOnChange();
    void clickWithoutHostAnswerNeverBlocks();
    void rowsOfTheText_data();
    void rowsOfTheText();
    void clickSelectsAndSends();
    void disabledTextFollowsThePalette();
    void wheelScrollsLongLists_data();
    void wheelScrollsLongLists();
};

void tst_Misc::init()
{
    host.clear();
}

void tst_Misc::colourOfTheText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("defaultTag");
    QTest::addColumn<QColor>("shown");

    QTest::newRow("R,G,B") << "10,200,30" << "" << QColor(10, 200, 30);
    QTest::newRow("R,G,B,A") << "10, 200, 30, 128" << "" << QColor(10, 200, 30, 128);
    QTest::newRow("#rrggbb") << "#ff8000" << "" << QColor(255, 128, 0);
    QTest::newRow("out of range") << "10,300,30" << "<DefaultColor>1,2,3</DefaultColor>" << QColor(1, 2, 3);
    QTest::newRow("two fields") << "10,20" << "<DefaultColor>#010203</DefaultColor>" << QColor(1, 2, 3);
    QTest::newRow("short hex") << "#f80" << "<DefaultColor>1,2,3</DefaultColor>" << QColor(1, 2, 3);
    QTest::newRow("words, built-in default") << "red" << "" << QColor(128, 128, 128);
}

void tst_Misc::colourOfTheText()
{
    QFETCH(QString, text);
    QFETCH(QString, defaultTag);
    QFETCH(QColor, shown);

    host.setParameter(QStringLiteral("Ch/Colour"), QStringLiteral("0"), text);
    ColorBox *b = box(defaultTag);
    QCOMPARE(b->color(), shown);
    const QImage image = render(b);
    QColor drawn = image.pixelColor(20, 10);
    if (shown.alpha() == 255)
        QCOMPARE(drawn, shown);
    else
        QVERIFY(drawn.red() < shown.red() && drawn.green() < shown.green()); // blended over black
}

void tst_Misc::clickSendsTheChosenColour_data()
{
    QTest::addColumn<QColor>("answer");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("asked");
    QTest::addColumn<QString>("sent");

    QTest::newRow("a new colour") << QColor(1, 2, 3) << int(Qt::NoModifier) << true << "1,2,3";
    QTest::newRow("alpha is not sent") << QColor(250, 0, 5, 100) << int(Qt::NoModifier) << true << "250,0,5";
    QTest::newRow("cancelled") << QColor() << int(Qt::NoModifier) << true << "";
    QTest::newRow("the colour shown") << QColor(10, 20, 30) << int(Qt::NoModifier) << true << "";
    QTest::newRow("Control selects instead") << QColor(1, 2, 3) << int(Qt::ControlModifier) << false << "";
}

void tst_Misc::clickSendsTheChosenColour()
{
    QFETCH(QColor, answer);
    QFETCH(int, modifiers);
    QFETCH(bool, asked);
    QFETCH(QString, sent);

    host.setParameter(QStringLiteral("Ch/Colour"), QStringLiteral("0"), QStringLiteral("10,20,30"));
    host.answersColors = true;
    host.colorAnswer = answer;
    host.colorsAsked.clear();
    ColorBox *b = box();
    mouse(b, QEvent::MouseButtonPress, QPoint(5, 5), Qt::LeftButton, Qt::KeyboardModifiers(modifiers));
    mouse(b, QEvent::MouseButtonRelease, QPoint(5, 5), Qt::LeftButton, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(host.colorsAsked.size(), asked ? 1 : 0);
    if (asked)
        QCOMPARE(host.colorsAsked.first(), QColor(10, 20, 30));
    QVERIFY(!b->dialog());
    if (sent.isEmpty()) {
        QVERIFY(host.requests.isEmpty());
        return;
    }
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.first().kind, 1);
    QCOMPARE(host.requests.first().arg("ui_prm_str"), sent);
}

void tst_Misc::clickWithoutHostAnswerNeverBlocks()
{
    host.answersColors = false;
    host.setParameter(QStringLiteral("Ch/Colour"), QStringLiteral("0"), QStringLiteral("10,20,30"));
    ColorBox *b = box();
    ModalWatch watch;
    mouse(b, QEvent::MouseButtonPress, QPoint(5, 5));
    mouse(b, QEvent::MouseButtonRelease, QPoint(5, 5));
    QCoreApplication::processEvents();
    QVERIFY(!watch.blocked);
    QPointer<QColorDialog> dialog = b->dialog();
    QVERIFY(dialog);
    QVERIFY(dialog->isVisible());
    QVERIFY(!dialog->isModal());
    QCOMPARE(dialog->currentColor(), QColor(10, 20, 30));

    // A second click reuses the open dialog; choosing in it sends the colour.
    mouse(b, QEvent::MouseButtonPress, QPoint(5, 5));
    QCOMPARE(b->dialog(), dialog.data());
    dialog->setCurrentColor(QColor(40, 50, 60));
    dialog->accept();
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.first().arg("ui_prm_str"), QStringLiteral("40,50,60"));
    QTRY_VERIFY(!dialog);
}

void tst_Misc::colourRepaintsOnlyOnChange()
{
    host.setParameter(QStringLiteral("Ch/Colour"), QStringLiteral("0"), QStringLiteral("10,20,30"));
    ColorBox *b = box();
    QSignalSpy spy(b, &ColorBox::colorChanged);
    PaintRecorder counter;
    QVERIFY(counter.watchSettled(b));
    host.setParameter(QStringLiteral("Ch/Colour"), QStringLiteral("0"), QStringLiteral("#0a141e"));
    b->notifyValueChanged(colour);
    QCoreApplication::processEvents();
    QCOMPARE(spy.count(), 0);
    // A notification that matched repaints once, changed or not; the rest paints nothing.
    QCOMPARE(counter.paints, 1);
    counter.clear();
    host.setParameter(QStringLiteral("Ch/Colour"), QStringLiteral("0"), QStringLiteral("#0a141f"));
    b->notifyValueChanged(colour);
    QCoreApplication::processEvents();
    QCOMPARE(spy.count(), 1);
    QVERIFY(counter.paints > 0);
}

void tst_Misc::rowsOfTheText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("rows");

    QTest::newRow("bars") << "Mic A|Mic B|Speaker 1" << QStringList{"Mic A", "Mic B", "Speaker 1"};
    QTest::newRow("bars keep commas") << "Mic A, left|Mic B" << QStringList{"Mic A, left", "Mic B"};
    QTest::newRow("commas") << "A, B ,C" << QStringList{"A", "B", "C"};
    QTest::newRow("empty parts dropped") << "|A||B|" << QStringList{"A", "B"};
    QTest::newRow("one device") << "Only" << QStringList{"Only"};
    QTest::newRow("nothing") << "" << QStringList();
}

void tst_Misc::rowsOfTheText()
{
    QFETCH(QString, text);
    QFETCH(QStringList, rows);
    PairDeviceList *l = list(text);
    QCOMPARE(l->rows(), rows);
    QCOMPARE(l->property("rows").toStringList(), rows);
}

void tst_Misc::clickSelectsAndSends()
{
    PairDeviceList *l = list(QStringLiteral("A|B|C"));
    const int h = l->rowHeight();
    QVERIFY(h > 0);
    mouse(l, QEvent::MouseButtonPress, QPoint(10, h + h / 2));
    QCOMPARE(l->selectedRow(), 1);
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.first().kind, 1);
    QCOMPARE(host.requests.first().arg("ui_prm_str"), QStringLiteral("B"));
    // The choice goes to its own parameter; the list is never written.
    QCOMPARE(host.requests.first().index, 1);
    QCOMPARE(host.requests.first().address.value("prmAddr").toString(), QStringLiteral("Pair/Device"));

    // The highlight is where the selected row is drawn, nowhere else.
    QImage image = render(l);
    QCOMPARE(image.pixelColor(118, h + h / 2), QColor(255, 0, 0));
    QCOMPARE(image.pixelColor(118, h / 2), QColor(0, 0, 0));

    // Below the last row: nothing.
    mouse(l, QEvent::MouseButtonPress, QPoint(10, 3 * h + 2));
    QCOMPARE(host.requests.size(), 1);

    // A new list keeps the selection by text.
    host.setParameter(QStringLiteral("Pair/List"), QStringLiteral("0"), QStringLiteral("X|A|B"));
    l->notifyValueChanged(devices);
    QCOMPARE(l->selectedRow(), 2);
    image = render(l);
    QCOMPARE(image.pixelColor(118, 2 * h + h / 2), QColor(255, 0, 0));
    QCOMPARE(image.pixelColor(118, h + h / 2), QColor(0, 0, 0));
    host.setParameter(QStringLiteral("Pair/List"), QStringLiteral("0"), QStringLiteral("X|Y"));
    l->notifyValueChanged(devices);
    QCOMPARE(l->selectedRow(), -1);
    QCOMPARE(l->selectedText(), QString());

    // The paired device, as its parameter reports it, is the selection.
    host.setParameter(QStringLiteral("Pair/Device"), QStringLiteral("0"), QStringLiteral("Y"));
    l->notifyValueChanged(paired);
    QCOMPARE(l->selectedText(), QStringLiteral("Y"));

    // Without a parameter for the choice, a click selects and sends nothing.
    host.requests.clear();
    l = list(QStringLiteral("A|B|C"), 200, QString());
    mouse(l, QEvent::MouseButtonPress, QPoint(10, h / 2));
    QCOMPARE(l->selectedRow(), 0);
    QVERIFY(host.requests.isEmpty());
}

void tst_Misc::disabledTextFollowsThePalette()
{
    PairDeviceList *l = list(QStringLiteral("WWWW|WWWW"));
    l->setTextColor(QColor(0, 255, 0));
    QPalette palette = l->palette();
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(255, 0, 255));
    l->setPalette(palette);
    // The second row, away from the highlight of a selection.
    const QRect row(0, l->rowHeight(), l->width(), l->rowHeight());
    QVERIFY(Pixels::countNear(render(l), QColor(0, 255, 0), row, 60) > 0);

    l->setEnabled(false);
    const QImage image = render(l);
    QCOMPARE(Pixels::countNear(image, QColor(0, 255, 0), row, 60), 0);
    QVERIFY(Pixels::countNear(image, QColor(255, 0, 255), row, 60) > 0);
}

void tst_Misc::wheelScrollsLongLists_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QList<int>>("deltas");
    QTest::addColumn<int>("first");

    QTest::newRow("fits: no scrolling") << 3 << QList<int>{-120} << 0;
    QTest::newRow("a notch down") << 20 << QList<int>{-120} << 1;
    QTest::newRow("down and up") << 20 << QList<int>{-360, 120} << 2;
    QTest::newRow("not above the top") << 20 << QList<int>{240} << 0;
    QTest::newRow("not past the end") << 20 << QList<int>{-120 * 40} << -1;
    QTest::newRow("half notches add up") << 20 << QList<int>{-60, -60} << 1;
}

void tst_Misc::wheelScrollsLongLists()
{
    QFETCH(int, count);
    QFETCH(QList<int>, deltas);
    QFETCH(int, first);

    QStringList names;
    for (int i = 0; i < count; ++i)
        names << QStringLiteral("Device %1").arg(i);
    PairDeviceList *l = list(names.join(QLatin1Char('|')), 60);
    const int visible = l->visibleRowCount();
    QVERIFY(visible < 20);
    for (int d : deltas)
        wheel(l, d);
    if (first < 0)
        first = count - visible;
    QCOMPARE(l->firstVisibleRow(), first);
    // A click lands on the row drawn there.
    mouse(l, QEvent::MouseButtonPress, QPoint(10, l->rowHeight() / 2));
    QCOMPARE(host.requests.last().arg("ui_prm_str"), names.at(first));
}

QTEST_MAIN(tst_Misc)
#include "tst_misc.moc"
