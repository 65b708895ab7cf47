#include "ControlTestHost.h"

#include "controls/text/text_variants.h"

#include <QSignalSpy>
#include <QtTest>
#include "support/Pixels.h"
#include "support/Render.h"

using Input::key;
using Input::mouse;

namespace {

// With the widget's own background, on black.
const RenderOptions withBackground{Qt::black, QWidget::DrawWindowBackground | QWidget::DrawChildren};

} // namespace

class tst_Texts : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;

    void reset()
    {
        host.reset();
    }

private slots:
    void valueText_data();
    void valueText();
    void parameterText_data();
    void parameterText();
    void textLayout_data();
    void textLayout();
    void titleButton();
    void validation_data();
    void validation();
    void hexShowsBytes();
    void hexTyping_data();
    void hexTyping();
    void textEditorEndsOnHide();
};

void tst_Texts::valueText_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("val");
    QTest::addColumn<QString>("str");
    QTest::addColumn<QString>("shown");

    QTest::newRow("display text") << "" << "0.5" << "12" << "12";
    QTest::newRow("with unit") << "<unit>dB</unit>" << "0.5" << "12" << "12dB";
    QTest::newRow("mapped text") << "<ValueText value=\"0\">Off</ValueText><ValueText value=\"1\">On</ValueText>"
                                 << "1" << "1" << "On";
    QTest::newRow("list by position") << "<ValueTextList><Item>Low</Item><Item>Mid</Item><Item>High</Item>"
                                         "</ValueTextList>"
                                      << "0.5" << "x" << "Mid";
    QTest::newRow("list top") << "<ValueTextList>A,B,C</ValueTextList>" << "1" << "x" << "C";
    QTest::newRow("mapping wins over the list")
        << "<ValueTextList>A,B</ValueTextList><ValueText value=\"x\">X</ValueText>" << "0" << "x" << "X";
}

void tst_Texts::valueText()
{
    QFETCH(QString, xml);
    QFETCH(QString, val);
    QFETCH(QString, str);
    QFETCH(QString, shown);

    reset();
    host.setParameter(QStringLiteral("P"), val, str);
    auto *t = host.make<ValueText>(QStringLiteral("<Address prmAddr=\"P\"/>") + xml);
    QCOMPARE(t->shownText(), shown);
}

void tst_Texts::parameterText_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<bool>("editable");

    QTest::newRow("read-only by default") << "" << "Mic 1" << false;
    QTest::newRow("intro text") << "<IntroText>Name: </IntroText>" << "Name: Mic 1" << false;
    QTest::newRow("items") << "<ValueTextItems><Item value=\"Mic 1\">Lectern</Item></ValueTextItems>"
                           << "Lectern" << false;
    QTest::newRow("editable") << "<ReadOnly>false</ReadOnly>" << "Mic 1" << true;
}

void tst_Texts::parameterText()
{
    QFETCH(QString, xml);
    QFETCH(QString, shown);
    QFETCH(bool, editable);

    reset();
    host.setParameter(QStringLiteral("Name"), QStringLiteral("0"), QStringLiteral("Mic 1"));
    auto *t = host.make<ParameterText>(QStringLiteral("<Address prmAddr=\"Name\"/>"
                                                      "<TextColor>255,0,0</TextColor>") + xml);
    t->resize(120, 24);
    QCOMPARE(t->shownText(), shown);
    QVERIFY(Pixels::inkBox(render(t, withBackground), QColor(255, 0, 0), 0).isValid());

    t->setFocus();
    key(t, Qt::Key_Return);
    QCOMPARE(t->isEditing(), editable);
    if (!editable)
        return;
    QCOMPARE(t->editorText(), QStringLiteral("Mic 1"));
    QVERIFY(!t->editor()->inputMethodSwitchedOff());
    t->editor()->setText(QStringLiteral("Podium"));
    key(t, Qt::Key_Return);
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.at(0).kind, 1);
    QCOMPARE(host.requests.at(0).arg("ui_prm_str"), QStringLiteral("Podium"));

    // A double-click opens it too; Up throws the text away.
    mouse(t, QEvent::MouseButtonDblClick, QPoint(5, 5));
    QVERIFY(t->isEditing());
    key(t, Qt::Key_Up);
    QVERIFY(!t->isEditing());
    QCOMPARE(host.requests.size(), 1);
}

void tst_Texts::textLayout_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<int>("alignment");
    QTest::addColumn<QString>("where");

    QTest::newRow("default left") << "" << int(Qt::AlignLeft | Qt::AlignVCenter) << "left";
    QTest::newRow("right bottom") << "<TextAlignment>Right,Bottom</TextAlignment>"
                                  << int(Qt::AlignRight | Qt::AlignBottom) << "right";
    QTest::newRow("hcenter") << "<TextAlignment>HCenter</TextAlignment>" << int(Qt::AlignHCenter | Qt::AlignVCenter)
                             << "middle";
    QTest::newRow("padded") << "<PadLeft>60</PadLeft>" << int(Qt::AlignLeft | Qt::AlignVCenter) << "padded";
    QTest::newRow("upward") << "<TextDirection>Upward</TextDirection>" << int(Qt::AlignLeft | Qt::AlignVCenter)
                            << "tall";
    QTest::newRow("downward") << "<TextDirection>Downward</TextDirection>"
                              << int(Qt::AlignLeft | Qt::AlignVCenter) << "tall";
}

void tst_Texts::textLayout()
{
    QFETCH(QString, xml);
    QFETCH(int, alignment);
    QFETCH(QString, where);

    reset();
    auto *t = host.make<Text>(QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"200\" height=\"200\"/>"
                                             "<Text>Output</Text><TextColor>0,255,0</TextColor>"
                                             "<FontSize>12</FontSize>") + xml);
    QCOMPARE(t->shownText(), QStringLiteral("Output"));
    QCOMPARE(int(t->textAlignment()), alignment);
    const QRect ink = Pixels::inkBox(render(t, withBackground), QColor(0, 255, 0), 0);
    QVERIFY(ink.isValid());
    if (where == QLatin1String("left")) {
        QVERIFY(ink.left() < 10);
    } else if (where == QLatin1String("right")) {
        QVERIFY(ink.right() > 190);
        QVERIFY(ink.bottom() > 190);
    } else if (where == QLatin1String("middle")) {
        QVERIFY(qAbs(ink.center().x() - 100) < 10);
    } else if (where == QLatin1String("padded")) {
        QVERIFY(ink.left() >= 60 && ink.left() < 70);
    } else {
        QVERIFY2(ink.height() > ink.width(), "turned text is taller than wide");
    }
}

void tst_Texts::titleButton()
{
    reset();
    auto *t = host.make<TitleText>(QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"200\" height=\"20\"/>"
                                                  "<Text>Input</Text><WithButton>true</WithButton>"));
    QVERIFY(t->withButton());
    QSignalSpy clicked(t, &TitleText::buttonClicked);
    mouse(t, QEvent::MouseButtonPress, QPoint(10, 10));
    QCOMPARE(clicked.count(), 0);
    mouse(t, QEvent::MouseButtonPress, t->buttonRect().center());
    QCOMPARE(clicked.count(), 1);
    // The button is drawn in the text colour.
    const QImage image = render(t, withBackground);
    QVERIFY(Pixels::inkBox(image, t->textColor(), 0).intersects(t->buttonRect()));
}

void tst_Texts::validation_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("inputType");
    QTest::addColumn<int>("typeNumber");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("kept");
    QTest::addColumn<bool>("imeOff");

    QTest::newRow("four digits") << "ValidateTextBox" << "Number:4" << 1 << "12345" << "1234" << true;
    QTest::newRow("no letters in numbers") << "ValidateTextBox" << "Number:4" << 1 << "1a2" << "12" << true;
    QTest::newRow("32 digits") << "ValidateTextBox" << "Number:32" << 2 << QString(40, QLatin1Char('7'))
                               << QString(32, QLatin1Char('7')) << true;
    QTest::newRow("letters and digits") << "ValidateTextBox" << "Alphabet+Number" << 3 << "Ab1.-c" << "Ab1c"
                                        << false;
    QTest::newRow("with points") << "ValidateTextBox" << "IP+Alphabet+Number" << 4 << "host.a-1" << "host.a1"
                                 << false;
    QTest::newRow("case-sensitive type") << "ValidateTextBox" << "number:4" << 0 << "x y" << "x y" << false;
    QTest::newRow("ip address") << "IPAddressTextBox" << "" << 0 << "192.168.300.1" << "192.168.30.1" << true;
    QTest::newRow("ip without leading zeros") << "IPAddressTextBox" << "" << 0 << "10.01.2.3" << "10.0.2.3"
                                              << true;
}

void tst_Texts::validation()
{
    QFETCH(QString, type);
    QFETCH(QString, inputType);
    QFETCH(int, typeNumber);
    QFETCH(QString, typed);
    QFETCH(QString, kept);
    QFETCH(bool, imeOff);

    reset();
    host.setParameter(QStringLiteral("T"), QStringLiteral("0"), QString());
    const QString xml = QStringLiteral("<Address prmAddr=\"T\"/><InputType>%1</InputType>").arg(inputType);
    ParameterText *t;
    if (type == QLatin1String("ValidateTextBox")) {
        auto *v = host.make<ValidateTextBox>(xml);
        QCOMPARE(v->inputType(), typeNumber);
        t = v;
    } else {
        t = host.make<IPAddressTextBox>(xml);
    }
    t->setFocus();
    key(t, Qt::Key_Return);
    QVERIFY(t->isEditing());
    QCOMPARE(t->editor()->inputMethodSwitchedOff(), imeOff);
    QTest::keyClicks(t->editor(), typed);
    QCOMPARE(t->editorText(), kept);
    key(t, Qt::Key_Return);
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.at(0).arg("ui_prm_str"), kept);
}

void tst_Texts::hexShowsBytes()
{
    reset();
    host.setParameter(QStringLiteral("Hex"), QStringLiteral("0"), QStringLiteral("0A1b 2C"));
    auto *h = host.make<HexTextBox>(QStringLiteral("<Address prmAddr=\"Hex\"/><MaxLength>2</MaxLength>"));
    QCOMPARE(h->hexText(), QStringLiteral("0a 1b "));
    QCOMPARE(h->bytes(), QByteArray("\x0a\x1b", 2));
    QCOMPARE(HexTextBox::toHex(QByteArray("\x00\xff", 2)), QStringLiteral("00 ff "));
}

void tst_Texts::hexTyping_data()
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("maxLength");
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<QString>("result");

    QTest::newRow("append starts a cell") << "0a " << 3 << "5" << 0 << false << "0a 50 ";
    QTest::newRow("append fills the cell") << "0a " << 3 << "5f" << 0 << false << "0a 5f ";
    QTest::newRow("append two cells") << "" << 0 << "123" << 0 << false << "12 30 ";
    QTest::newRow("overwrite skips the blank") << "0a 1b " << 1 << "cd" << 0 << false << "0c db ";
    QTest::newRow("typed on a blank") << "0a 1b " << 2 << "e" << 0 << false << "0a eb ";
    QTest::newRow("upper case is lowered") << "" << 0 << "AB" << 0 << false << "ab ";
    QTest::newRow("non-digits refused") << "0a " << 3 << "xz" << 0 << false << "0a ";
    QTest::newRow("limit refuses a new cell") << "0a 1b " << 6 << "3" << 2 << false << "0a 1b ";
    QTest::newRow("limit allows overwrite") << "0a 1b " << 0 << "ff" << 2 << false << "ff 1b ";
    QTest::newRow("read-only refuses") << "0a " << 0 << "f" << 0 << true << "0a ";
}

void tst_Texts::hexTyping()
{
    QFETCH(QString, start);
    QFETCH(int, cursor);
    QFETCH(QString, typed);
    QFETCH(int, maxLength);
    QFETCH(bool, readOnly);
    QFETCH(QString, result);

    reset();
    host.setParameter(QStringLiteral("Hex"), QStringLiteral("0"), start);
    auto *h = host.make<HexTextBox>(QStringLiteral("<Address prmAddr=\"Hex\"/>"));
    h->setMaxLength(maxLength);
    h->setReadOnly(readOnly);
    QSignalSpy changed(h->edit(), &QPlainTextEdit::textChanged);
    h->edit()->setFocus();
    QTextCursor c = h->edit()->textCursor();
    c.setPosition(cursor);
    h->edit()->setTextCursor(c);
    QTest::keyClicks(h->edit(), typed);
    QCOMPARE(h->hexText(), result);
    QCOMPARE(changed.isEmpty(), result == start);

    // Return sends the bytes when they changed.
    QTest::keyClick(h->edit(), Qt::Key_Return);
    if (result == start || readOnly) {
        QVERIFY(host.requests.isEmpty());
    } else {
        QCOMPARE(host.requests.size(), 1);
        QCOMPARE(host.requests.at(0).arg("ui_prm_str"), result.trimmed());
    }
}

void tst_Texts::textEditorEndsOnHide()
{
    reset();
    host.setParameter(QStringLiteral("Name"), QStringLiteral("0"), QStringLiteral("Mic 1"));
    auto *t = host.make<ParameterText>(QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"120\" height=\"24\"/>"
                                                      "<Address prmAddr=\"Name\"/><ReadOnly>false</ReadOnly>"));
    t->setFocus();
    key(t, Qt::Key_Return);
    QVERIFY(t->isEditing());
    LineEdit *editor = t->editor();
    editor->setText(QStringLiteral("Podium"));
    QCOMPARE(QWidget::mouseGrabber(), editor);

    t->hide();
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.at(0).arg("ui_prm_str"), QStringLiteral("Podium"));
    QVERIFY(QWidget::mouseGrabber() != editor);
    t->show();
    QVERIFY(!t->isEditing());
    QVERIFY(QWidget::mouseGrabber() != editor);
}

QTEST_MAIN(tst_Texts)
#include "tst_texts.moc"
