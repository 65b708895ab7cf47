#include "controls/ControlTestHost.h"

#include "controls/combobox/combobox_variants.h"

#include <QPainter>
#include <QSignalSpy>
#include <QtTest>
#include "support/Render.h"
#include "support/PaintRecorder.h"
#include "support/Pixels.h"

using Input::mouse;
using Input::wheel;

namespace {

const QColor panel(10, 20, 30);

int countNear(const QImage &image, const QColor &colour, const QRect &area, int tolerance = 60)
{
    return Pixels::countNear(image, colour, area, tolerance);
}

void sendKey(QWidget *w, int k, Qt::KeyboardModifiers mods = Qt::NoModifier, const QString &text = QString(),
             bool autoRepeat = false)
{
    QKeyEvent e(QEvent::KeyPress, k, mods, text, autoRepeat);
    QApplication::sendEvent(w, &e);
}

const QVariantMap input{{"prmAddr", "Ch/Input"}, {"dev_uniq_id", "dev1"}};

} // namespace

class tst_ComboBox : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;

    void setInput(const QString &val, const QString &str, const QString &options = QStringLiteral("Mic|Line|USB"))
    {
        host.setParameter(QStringLiteral("Ch/Input"), val, str);
        host.parameters[QStringLiteral("dev1|Ch/Input")].insert(QStringLiteral("ui_prm_option"), options);
    }
    template <class W = ComboBox>
    W *combo(const QString &extra = QString())
    {
        return host.make<W>(QStringLiteral("<Rect x=\"10\" y=\"10\" width=\"120\" height=\"22\"/>"
                                           "<Address prmAddr=\"Ch/Input\"/>")
                            + extra);
    }
    ComboBox *variant(const QString &type, const QString &extra);

private slots:
    void init();
    void options_data();
    void options();
    void openAndChoose_data();
    void openAndChoose();
    void choosingTheCurrentOptionSendsNothing();
    void escapeClosesWithoutRequest();
    void keysAndWheelStep_data();
    void keysAndWheelStep();
    void modifierPresses_data();
    void modifierPresses();
    void readOnlyTakesNoInput_data();
    void readOnlyTakesNoInput();
    void popupNavigation_data();
    void popupNavigation();
    void longListsScroll();
    void openPopupFollowsTheParameter();
    void textChangesRepaintOnlyWhenTheTextChanges();
    void painting_data();
    void painting();
    void popupPainting();
    void valueTextList_data();
    void valueTextList();
    void variants_data();
    void variants();
};

void tst_ComboBox::init()
{
    host.clear();
    setInput(QStringLiteral("0.5"), QStringLiteral("Line"));
}

void tst_ComboBox::options_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("str");
    QTest::addColumn<QString>("parameterOptions");
    QTest::addColumn<QStringList>("labels");
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");

    const QStringList host3{"Mic", "Line", "USB"};
    QTest::newRow("from the parameter") << "" << "USB" << "Mic|Line|USB" << host3 << host3 << 2 << "USB";
    QTest::newRow("unknown text shown as it is") << "" << "Network" << "Mic|Line|USB" << host3 << host3 << -1 << "Network";
    QTest::newRow("no options anywhere") << "" << "Line" << "" << QStringList() << QStringList() << -1 << "Line";
    QTest::newRow("items by label") << "<Items><Item>A</Item><Item>B</Item></Items>" << "B" << "Mic|Line|USB"
                                    << QStringList{"A", "B"} << QStringList{"A", "B"} << 1 << "B";
    QTest::newRow("items rename by value")
        << "<Items><Item value=\"Mic\">Microphone</Item><Item value=\"Line\">Line level</Item></Items>" << "Line"
        << "Mic|Line|USB" << QStringList{"Microphone", "Line level"} << QStringList{"Mic", "Line"} << 1
        << "Line level";
    QTest::newRow("value wins over an equal label")
        << "<Items><Item value=\"x\">Line</Item><Item value=\"Line\">Other</Item></Items>" << "Line" << ""
        << QStringList{"Line", "Other"} << QStringList{"x", "Line"} << 1 << "Other";
}

void tst_ComboBox::options()
{
    QFETCH(QString, xml);
    QFETCH(QString, str);
    QFETCH(QString, parameterOptions);
    QFETCH(QStringList, labels);
    QFETCH(QStringList, values);
    QFETCH(int, index);
    QFETCH(QString, text);

    setInput(QStringLiteral("0.5"), str, parameterOptions);
    ComboBox *c = combo(xml);
    QCOMPARE(c->options(), labels);
    QCOMPARE(c->optionValues(), values);
    QCOMPARE(c->currentIndex(), index);
    QCOMPARE(c->currentText(), text);
    QCOMPARE(c->property("currentText").toString(), text);
    QCOMPARE(c->showPopup(), !labels.isEmpty());
    QCOMPARE(c->isPopupOpen(), !labels.isEmpty());
    if (!labels.isEmpty()) {
        QCOMPARE(c->popup()->items(), labels);
        QCOMPARE(c->popup()->checkedRow(), index);
    }
    c->hidePopup();
}

void tst_ComboBox::openAndChoose_data()
{
    QTest::addColumn<QString>("opener");
    QTest::addColumn<QString>("chooser");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("sent");

    QTest::newRow("click, click a row") << "click" << "mouse" << 2 << "USB";
    QTest::newRow("space, Return") << "space" << "return" << 0 << "Mic";
    QTest::newRow("Return, Enter") << "return" << "enter" << 2 << "USB";
    QTest::newRow("Alt+Down, Return") << "altdown" << "return" << 0 << "Mic";
    QTest::newRow("F4, space") << "f4" << "space" << 2 << "USB";
    QTest::newRow("click, keys sent to the box") << "click" << "boxreturn" << 0 << "Mic";
}

void tst_ComboBox::openAndChoose()
{
    QFETCH(QString, opener);
    QFETCH(QString, chooser);
    QFETCH(int, row);
    QFETCH(QString, sent);

    ComboBox *c = combo();
    QSignalSpy open(c, &ComboBox::popupOpenChanged);
    QSignalSpy activated(c, &ComboBox::activated);
    if (opener == "click") {
        mouse(c, QEvent::MouseButtonPress, QPoint(20, 10));
        mouse(c, QEvent::MouseButtonRelease, QPoint(20, 10));
    } else if (opener == "space") {
        sendKey(c, Qt::Key_Space, Qt::NoModifier, " ");
    } else if (opener == "return") {
        sendKey(c, Qt::Key_Return);
    } else if (opener == "altdown") {
        sendKey(c, Qt::Key_Down, Qt::AltModifier);
    } else {
        sendKey(c, Qt::Key_F4);
    }
    QVERIFY(c->isPopupOpen());
    QCOMPARE(open.count(), 1);
    QVERIFY(host.requests.isEmpty()); // opening sends nothing, nor does the release of the opening click
    ComboBoxPopup *p = c->popup();
    QCOMPARE(p->highlightedRow(), 1);
    QVERIFY(p->geometry().top() >= c->mapToGlobal(QPoint(0, c->height())).y());
    QVERIFY(p->width() >= c->width());

    if (chooser == "mouse") {
        const QPoint at = p->rowRect(row).center();
        QVERIFY(!at.isNull());
        mouse(p, QEvent::MouseMove, at);
        QCOMPARE(p->highlightedRow(), row);
        mouse(p, QEvent::MouseButtonPress, at);
        mouse(p, QEvent::MouseButtonRelease, at);
    } else {
        const int key = row > 1 ? Qt::Key_Down : Qt::Key_Up;
        QWidget *target = chooser == "boxreturn" ? static_cast<QWidget *>(c) : p;
        sendKey(target, key);
        QCOMPARE(p->highlightedRow(), row);
        if (chooser == "space")
            sendKey(target, Qt::Key_Space, Qt::NoModifier, " ");
        else
            sendKey(target, chooser == "enter" ? Qt::Key_Enter : Qt::Key_Return);
    }
    QVERIFY(!c->isPopupOpen());
    QCOMPARE(open.count(), 2);
    QCOMPARE(open.at(1).at(0).toBool(), false);
    QCOMPARE(activated.count(), 1);
    QCOMPARE(activated.first().first().toInt(), row);
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.first().kind, 1);
    QCOMPARE(host.requests.first().index, 0);
    QCOMPARE(host.requests.first().arguments, (QMap<QString, QString>{{"ui_prm_str", sent}}));
}

void tst_ComboBox::choosingTheCurrentOptionSendsNothing()
{
    ComboBox *c = combo("<Items><Item value=\"Mic\">Microphone</Item><Item value=\"Line\">Line in</Item></Items>");
    QVERIFY(!c->choose(1));
    QVERIFY(!c->choose(7));
    QVERIFY(host.requests.isEmpty());
    QVERIFY(c->choose(0));
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.first().arg("ui_prm_str"), QStringLiteral("Mic")); // the value, not the label
}

void tst_ComboBox::escapeClosesWithoutRequest()
{
    ComboBox *c = combo();
    for (int key : {int(Qt::Key_Escape), int(Qt::Key_F4)}) {
        QVERIFY(c->showPopup());
        sendKey(c->popup(), Qt::Key_Down);
        sendKey(c->popup(), key);
        QVERIFY(!c->isPopupOpen());
    }
    // A press outside the list closes it, as on any popup.
    QVERIFY(c->showPopup());
    mouse(c->popup(), QEvent::MouseButtonPress, QPoint(-5, -5));
    QVERIFY(!c->isPopupOpen());
    QVERIFY(host.requests.isEmpty());
}

void tst_ComboBox::keysAndWheelStep_data()
{
    using Step::key;
    QTest::addColumn<Gesture>("gesture");

    QTest::newRow("Up") << Gesture{key(Qt::Key_Up, {"step 1 0.5"})};
    QTest::newRow("Down") << Gesture{key(Qt::Key_Down, {"step -1 0.5"})};
    QTest::newRow("Alt+Up steps nothing") << Gesture{key(Qt::Key_Up).with(Qt::AltModifier)};
    Gestures::addWheelNotchRows(QPoint(20, 10), QStringLiteral("0.5"));
}

void tst_ComboBox::keysAndWheelStep()
{
    QFETCH(Gesture, gesture);

    ComboBox *c = combo();
    const Gestures::Result r = Gestures::play(c, host, gesture, Gestures::describeFor(QStringLiteral("Ch/Input")));
    QVERIFY(!c->isPopupOpen());
    QCOMPARE(r.sent, r.expected);
}

void tst_ComboBox::modifierPresses_data()
{
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("highlight");
    QTest::addColumn<int>("selections");
    QTest::addColumn<QString>("action");

    QTest::newRow("Control") << int(Qt::ControlModifier) << true << 1 << "";
    QTest::newRow("Control+Shift") << int(Qt::ControlModifier | Qt::ShiftModifier) << false << 0
                                   << "Add to Parameter Link Group";
    QTest::newRow("Shift selects only") << int(Qt::ShiftModifier) << false << 1 << "";
    QTest::newRow("Alt selects only") << int(Qt::AltModifier) << false << 1 << "";
}

void tst_ComboBox::modifierPresses()
{
    QFETCH(int, modifiers);
    QFETCH(bool, highlight);
    QFETCH(int, selections);
    QFETCH(QString, action);

    ComboBox *c = combo();
    mouse(c, QEvent::MouseButtonPress, QPoint(20, 10), Qt::LeftButton, Qt::KeyboardModifiers(modifiers));
    mouse(c, QEvent::MouseButtonRelease, QPoint(20, 10), Qt::LeftButton, Qt::KeyboardModifiers(modifiers));
    QVERIFY(!c->isPopupOpen());
    QCOMPARE(c->highlight(), highlight);
    QCOMPARE(host.selections.size(), selections);
    QCOMPARE(host.actions.size(), action.isEmpty() ? 0 : 1);
    if (!action.isEmpty())
        QCOMPARE(host.actions.first().text, action);
    QVERIFY(host.requests.isEmpty());
}

void tst_ComboBox::readOnlyTakesNoInput_data()
{
    QTest::addColumn<bool>("prmView");
    QTest::newRow("ReadOnly tag") << false;
    QTest::newRow("PrmViewComboBox") << true;
}

void tst_ComboBox::readOnlyTakesNoInput()
{
    QFETCH(bool, prmView);
    ComboBox *c = prmView ? combo<PrmViewComboBox>() : combo("<ReadOnly>TRUE</ReadOnly>");
    QVERIFY(c->isReadOnly());
    QCOMPARE(c->focusPolicy(), prmView ? Qt::NoFocus : Qt::StrongFocus);
    QCOMPARE(c->currentText(), QStringLiteral("Line"));
    QVERIFY(c->arrowRect().isEmpty());
    mouse(c, QEvent::MouseButtonPress, QPoint(20, 10));
    sendKey(c, Qt::Key_Space, Qt::NoModifier, " ");
    sendKey(c, Qt::Key_Down, Qt::AltModifier);
    sendKey(c, Qt::Key_Up);
    wheel(c, 120);
    QVERIFY(!c->showPopup());
    QVERIFY(!c->isPopupOpen());
    QVERIFY(host.requests.isEmpty());
    // Selection still works on a display.
    mouse(c, QEvent::MouseButtonPress, QPoint(20, 10), Qt::LeftButton, Qt::ControlModifier);
    QVERIFY(c->highlight());
}

void tst_ComboBox::popupNavigation_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<int>("highlighted");

    // Options: Alpha, Beta, Gamma, Bravo, Delta; current Beta (1).
    QTest::newRow("starts at the current") << "" << 1;
    QTest::newRow("Down") << "Down" << 2;
    QTest::newRow("Down stops at the end") << "Down,Down,Down,Down,Down" << 4;
    QTest::newRow("Up stops at the top") << "Up,Up,Up" << 0;
    QTest::newRow("End") << "End" << 4;
    QTest::newRow("Home") << "End,Home" << 0;
    QTest::newRow("Page Down keeps one row in view") << "PageDown" << 3;
    QTest::newRow("Page Down stops at the end") << "PageDown,PageDown" << 4;
    QTest::newRow("typing a letter") << "d" << 4;
    QTest::newRow("same letter again cycles") << "b,b" << 1;
    QTest::newRow("first letter after the current") << "b" << 3;
    QTest::newRow("two letters") << "g,a" << 2;
    QTest::newRow("no match stays") << "z" << 1;
}

void tst_ComboBox::popupNavigation()
{
    QFETCH(QString, keys);
    QFETCH(int, highlighted);

    ComboBox *c = combo("<Items><Item>Alpha</Item><Item>Beta</Item><Item>Gamma</Item><Item>Bravo</Item>"
                        "<Item>Delta</Item></Items>");
    setInput(QStringLiteral("0.25"), QStringLiteral("Beta"));
    c->notifyValueChanged(input);
    QCOMPARE(c->currentIndex(), 1);
    QVERIFY(c->showPopup());
    ComboBoxPopup *p = c->popup();
    p->setMaxVisibleRows(3);
    for (const QString &k : keys.split(',', Qt::SkipEmptyParts)) {
        if (k == "Down")
            sendKey(p, Qt::Key_Down);
        else if (k == "Up")
            sendKey(p, Qt::Key_Up);
        else if (k == "End")
            sendKey(p, Qt::Key_End);
        else if (k == "Home")
            sendKey(p, Qt::Key_Home);
        else if (k == "PageDown")
            sendKey(p, Qt::Key_PageDown);
        else
            sendKey(p, Qt::Key_A + (k.at(0).toLatin1() - 'a'), Qt::NoModifier, k);
    }
    QCOMPARE(p->highlightedRow(), highlighted);
    // The highlighted row is always in view.
    QVERIFY(!p->rowRect(highlighted).isEmpty());
    QVERIFY(c->isPopupOpen());
    QVERIFY(host.requests.isEmpty());
    c->hidePopup();
}

void tst_ComboBox::longListsScroll()
{
    QStringList many;
    for (int i = 0; i < 20; ++i)
        many << QStringLiteral("Option %1").arg(i);
    setInput(QStringLiteral("0.8"), QStringLiteral("Option 15"), many.join('|'));
    ComboBox *c = combo();
    c->setMaxVisibleItems(5);
    QVERIFY(c->showPopup());
    ComboBoxPopup *p = c->popup();
    QCOMPARE(p->visibleRows(), 5);
    QCOMPARE(p->height(), 5 * p->rowHeight() + 2);
    QCOMPARE(p->firstVisibleRow(), 11); // the current option shows at the bottom
    QVERIFY(!p->rowRect(15).isEmpty());
    QCOMPARE(p->rowAt(p->rowRect(15).center()), 15);

    wheel(p, 240);
    QCOMPARE(p->firstVisibleRow(), 9);
    wheel(p, -120 * 30);
    QCOMPARE(p->firstVisibleRow(), 15); // no further than the last page
    sendKey(p, Qt::Key_Home);
    QCOMPARE(p->firstVisibleRow(), 0);
    QCOMPARE(p->rowAt(p->rowRect(3).center()), 3);
    mouse(p, QEvent::MouseMove, p->rowRect(3).center());
    mouse(p, QEvent::MouseButtonRelease, p->rowRect(3).center());
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.first().arg("ui_prm_str"), QStringLiteral("Option 3"));
}

void tst_ComboBox::openPopupFollowsTheParameter()
{
    ComboBox *c = combo();
    QVERIFY(c->showPopup());
    ComboBoxPopup *p = c->popup();
    QCOMPARE(p->checkedRow(), 1);
    setInput(QStringLiteral("1"), QStringLiteral("USB"));
    c->notifyValueChanged(input);
    QCOMPARE(p->checkedRow(), 2);
    QVERIFY(c->isPopupOpen());

    setInput(QStringLiteral("1"), QStringLiteral("USB"), QStringLiteral("USB|AES"));
    c->notifyValueChanged(input);
    QCOMPARE(p->items(), (QStringList{"USB", "AES"}));
    QCOMPARE(p->checkedRow(), 0);

    // Nothing left to choose: the list goes.
    setInput(QStringLiteral("1"), QStringLiteral("USB"), QString());
    c->notifyValueChanged(input);
    QVERIFY(!c->isPopupOpen());
}

void tst_ComboBox::textChangesRepaintOnlyWhenTheTextChanges()
{
    ComboBox *c = combo();
    PaintRecorder counter;
    QVERIFY(counter.watchSettled(c));
    QSignalSpy changed(c, &ComboBox::currentTextChanged);

    setInput(QStringLiteral("0.51"), QStringLiteral("Line"));
    c->notifyValueChanged(input);
    // A notification that matched repaints once, changed or not; the rest paints nothing.
    QCOMPARE(counter.paintsNow(), 1);
    counter.clear();
    QCOMPARE(changed.count(), 0);

    setInput(QStringLiteral("0"), QStringLiteral("Mic"));
    c->notifyValueChanged(input);
    QTRY_VERIFY(counter.paints > 0);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.first().first().toString(), QStringLiteral("Mic"));
    QCOMPARE(c->currentIndex(), 0);

    // Setters return early when nothing changes.
    QTest::qWait(30);
    counter.clear();
    c->setTextColor(c->textColor());
    c->setBackgroundColor(c->backgroundColor());
    c->setReadOnly(false);
    QTest::qWait(30);
    QCOMPARE(counter.paints, 0);
}

void tst_ComboBox::painting_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("text");
    QTest::addColumn<bool>("arrow");

    QTest::newRow("defaults") << "" << ComboBox::defaultBackgroundColor << ComboBox::defaultTextColor << true;
    QTest::newRow("colours") << "<BackgroundColor>0,0,120</BackgroundColor><TextColor>255,255,0</TextColor>"
                             << QColor(0, 0, 120) << QColor(255, 255, 0) << true;
    QTest::newRow("read only has no arrow") << "<ReadOnly>true</ReadOnly>" << ComboBox::defaultBackgroundColor
                                            << ComboBox::defaultTextColor << false;
}

void tst_ComboBox::painting()
{
    QFETCH(QString, xml);
    QFETCH(QColor, background);
    QFETCH(QColor, text);
    QFETCH(bool, arrow);

    setInput(QStringLiteral("0.5"), QStringLiteral("WWWW"));
    ComboBox *c = combo(xml);
    const QImage image = render(c, panel);
    const QRect inside = c->rect().adjusted(2, 2, -2, -2);
    QVERIFY(countNear(image, background, inside, 10) > inside.width() * inside.height() / 2);

    // The text sits at the left, vertically centred; the arrow in its own area at the right.
    const int arrowWidth = qBound(8, 16, c->width() / 2);
    const QRect textArea(0, 0, c->width() / 2, c->height());
    const QRect arrowArea(c->width() - arrowWidth, 0, arrowWidth, c->height());
    QVERIFY(countNear(image, text, textArea, 60) > 10);
    QCOMPARE(countNear(image, text, QRect(c->width() / 2, 0, c->width() / 2 - arrowWidth, c->height()), 60), 0);
    QCOMPARE(countNear(image, text, arrowArea, 60) > 5, arrow);
    if (arrow) {
        QCOMPARE(c->arrowRect(), arrowArea);
        // The arrow points down: wider at its top row than at its bottom row.
        int top = -1, bottom = -1;
        for (int y = 0; y < c->height(); ++y) {
            if (countNear(image, text, QRect(arrowArea.left(), y, arrowWidth, 1), 60)) {
                if (top < 0)
                    top = y;
                bottom = y;
            }
        }
        QVERIFY(countNear(image, text, QRect(arrowArea.left(), top, arrowWidth, 1), 60)
                > countNear(image, text, QRect(arrowArea.left(), bottom, arrowWidth, 1), 60));
    }

    // Disabled: everything at half strength, so the full text colour is gone.
    c->setEnabled(false);
    QCOMPARE(countNear(render(c, panel), text, textArea, 30), 0);
}

void tst_ComboBox::popupPainting()
{
    ComboBox *c = combo();
    QVERIFY(c->showPopup());
    ComboBoxPopup *p = c->popup();
    sendKey(p, Qt::Key_Down); // highlight USB, the checked row stays Line
    const QImage image = render(p, panel);
    const QRect line = p->rowRect(1);
    const QRect usb = p->rowRect(2);
    QVERIFY(countNear(image, ComboBoxPopup::highlightColor, usb, 10) > usb.width() * usb.height() / 2);
    QCOMPARE(countNear(image, ComboBoxPopup::highlightColor, line, 10), 0);
    // The check mark sits left of the texts, in the checked row only.
    const QRect markArea(line.left(), line.top(), p->rowHeight(), line.height());
    QVERIFY(countNear(image, ComboBox::defaultTextColor, markArea, 60) > 3);
    QCOMPARE(countNear(image, ComboBox::defaultTextColor, QRect(0, p->rowRect(0).top(), p->rowHeight(), line.height()), 60),
             0);
    // Each text is drawn in its row.
    for (int row = 0; row < 3; ++row) {
        const QRect r = p->rowRect(row);
        QVERIFY(countNear(image, ComboBox::defaultTextColor, r.adjusted(p->rowHeight(), 0, 0, 0), 60) > 5);
    }
    // The open box shows its frame in the highlight colour.
    QVERIFY(countNear(render(c, panel), ComboBoxPopup::highlightColor, QRect(c->width() / 2, 0, 1, 1), 30) == 1);
    c->hidePopup();
}

void tst_ComboBox::valueTextList_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("val");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("choose");
    QTest::addColumn<QString>("sent");

    const QString children = QStringLiteral("<ValueTextList><Text>Low</Text><Text>Mid</Text><Text>High</Text></ValueTextList>");
    QTest::newRow("middle") << children << "0.5" << 1 << "Mid" << 2 << "1";
    QTest::newRow("rounds to the nearest") << children << "0.74" << 1 << "Mid" << 0 << "0";
    QTest::newRow("top") << children << "1" << 2 << "High" << 1 << "0.5";
    QTest::newRow("comma list") << "<ValueTextList>Off, Slow ,Fast,Auto</ValueTextList>" << "0.333333" << 1 << "Slow" << 3
                                << "1";
    QTest::newRow("not a number shows the text") << children << "x" << -1 << "Line" << 0 << "0";
}

void tst_ComboBox::valueTextList()
{
    QFETCH(QString, list);
    QFETCH(QString, val);
    QFETCH(int, index);
    QFETCH(QString, text);
    QFETCH(int, choose);
    QFETCH(QString, sent);

    setInput(val, QStringLiteral("Line"));
    auto *c = combo<ValueTextComboBox>(list);
    QCOMPARE(c->currentIndex(), index);
    QCOMPARE(c->currentText(), text);
    QCOMPARE(c->options().size(), c->valueTextList().size());
    QVERIFY(c->choose(choose));
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.first().kind, 0);
    QCOMPARE(host.requests.first().arg("ui_prm_val"), sent);
    QCOMPARE(host.requests.first().arg("set_prm_type"), QStringLiteral("0"));
}

ComboBox *tst_ComboBox::variant(const QString &type, const QString &extra)
{
    const QString xml = QStringLiteral("<Rect x=\"10\" y=\"10\" width=\"120\" height=\"22\"/>") + extra;
return host.make<ComboBox>(type, xml);
}

void tst_ComboBox::variants_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("bound"); // prmAddr of address 0
    QTest::addColumn<bool>("opens");

    const QString plain = QStringLiteral("<Address prmAddr=\"Ch/Input\"/>");
    for (const char *type : {"KeyInMultiComboBox", "ProbeMonitorComboBox", "CardSelector", "BrioAddressComboBox",
                             "VelaAddressComboBox", "SDPlayComboBox", "AlertComboBox", "CategoryComboBox",
                             "PhonesComboBox", "EffectiveMicComboBox", "TuningZoneComboBox",
                             "TuningZoneDeviceComboBox"})
        QTest::newRow(type) << type << plain << "Ch/Input" << true;
    QTest::newRow("ChannelSelectComboBox") << "ChannelSelectComboBox"
                                           << "<Address prmAddr=\"In{ChNum}/Input\"/><ChNum>3</ChNum>"
                                           << "In3/Input" << true;
    QTest::newRow("SpeakerComboBox") << "SpeakerComboBox"
                                     << "<Address prmAddr=\"{BaseAddress}/Input\"/><DEFAULT>Sp</DEFAULT>"
                                     << "Sp/Input" << true;
    QTest::newRow("RejectFocusComboBox accepting") << "RejectFocusComboBox"
                                                   << plain + "<RejectValue>USB</RejectValue><StrValFlg>true</StrValFlg>"
                                                   << "Ch/Input" << true;
    QTest::newRow("RejectFocusComboBox rejecting") << "RejectFocusComboBox"
                                                   << plain + "<RejectValue>Line</RejectValue><StrValFlg>true</StrValFlg>"
                                                   << "Ch/Input" << false;
}

void tst_ComboBox::variants()
{
    QFETCH(QString, type);
    QFETCH(QString, xml);
    QFETCH(QString, bound);
    QFETCH(bool, opens);

    for (const QString &p : {QStringLiteral("In3/Input"), QStringLiteral("Sp/Input")}) {
        host.setParameter(p, QStringLiteral("0.5"), QStringLiteral("Line"));
        host.parameters[QStringLiteral("dev1|") + p].insert(QStringLiteral("ui_prm_option"), QStringLiteral("Mic|Line"));
    }
    ComboBox *c = variant(type, xml);
    QVERIFY(c);
    QCOMPARE(c->metaObject()->className(), type.toLatin1().constData());
    QCOMPARE(c->addressAt(0).prmAddr(), bound);
    QCOMPARE(c->currentText(), QStringLiteral("Line"));
    QCOMPARE(c->options().value(0), QStringLiteral("Mic"));
    mouse(c, QEvent::MouseButtonPress, QPoint(20, 10));
    QCOMPARE(c->isPopupOpen(), opens);
    if (opens) {
        sendKey(c->popup(), Qt::Key_Up);
        sendKey(c->popup(), Qt::Key_Return);
        QCOMPARE(host.requests.size(), 1);
        QCOMPARE(host.requests.first().arg("ui_prm_str"), QStringLiteral("Mic"));
        QCOMPARE(host.requests.first().address.value("prmAddr").toString(), bound);
    } else {
        QVERIFY(!c->isEnabled());
        QVERIFY(host.requests.isEmpty());
    }
}

QTEST_MAIN(tst_ComboBox)
#include "tst_combobox.moc"
