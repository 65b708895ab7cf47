#include "controls/ControlTestHost.h"

#include "controls/button/button_variants.h"

#include <QCoreApplication>
#include <QProcess>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <QFileDialog>
#include <QtTest>
#include "support/Files.h"
#include "support/Render.h"
#include "support/ModalWatch.h"
#include "support/PaintRecorder.h"
#include "support/Pixels.h"

using Input::mouse;

namespace {

const char *const muteXml = "<Rect x=\"10\" y=\"10\" width=\"60\" height=\"24\"/>"
                            "<Address prmAddr=\"Ch/Mute\"/>";

const QColor panel(10, 20, 30);

//! Pixels in \a area whose colour is close to \a colour (text is antialiased).
int countNear(const QImage &image, const QColor &colour, const QRect &area, int tolerance = 40)
{
    return Pixels::countNear(image, colour, area, tolerance);
}

//! The bounding box of the pixels countNear() counts.
QRect inkBox(const QImage &image, const QColor &colour, const QRect &area, int tolerance = 40)
{
    return Pixels::inkBox(image, colour, tolerance, area);
}

void key(QWidget *w, QEvent::Type type, int k, bool autoRepeat = false)
{
    QKeyEvent e(type, k, Qt::NoModifier, QString(), autoRepeat);
    QApplication::sendEvent(w, &e);
}

void click(QWidget *w)
{
    mouse(w, QEvent::MouseButtonPress, QPoint(5, 5));
    mouse(w, QEvent::MouseButtonRelease, QPoint(5, 5));
}

//! A \a size square picture of one \a colour, as SVG.
QByteArray svgSquare(const QColor &colour, int size = 10)
{
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%1\" height=\"%1\">"
                          "<rect width=\"%1\" height=\"%1\" fill=\"%2\"/></svg>")
        .arg(size)
        .arg(colour.name())
        .toUtf8();
}

//! A \a size square picture of one \a colour, saved as \a path (its suffix names the format).
bool writeImage(const QString &path, const QColor &colour, int size = 4)
{
    QImage img(size, size, QImage::Format_RGB32);
    img.fill(colour);
    return img.save(path);
}

class CheckingButton : public Button
{
public:
    using Button::Button;

protected:
    bool checksParameterExistence() const override { return true; }
};

class Tapper : public TapTempoButton
{
public:
    using TapTempoButton::TapTempoButton;
    qint64 clock = 0;

protected:
    qint64 now() const override { return clock; }
};

template <class Base>
class Chooser : public Base
{
public:
    using Base::Base;
    QString answer;
    QString askedFilter;
    int asked = -1;

protected:
    bool askFileName(Button::FileDialog kind, const QString &, const QString &filter, QString *path) override
    {
        asked = int(kind);
        askedFilter = filter;
        *path = answer;
        return true;
    }
};

class Target : public IHostTarget
{
public:
    void receiveInteger(int value) override { received.append(value); }
    QList<int> received;
};

} // namespace

class tst_Button : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;

    template <class W = Button>
    W *button(const QString &val, const QString &extra = QString(), const QString &str = QString())
    {
        host.reset();
        host.setParameter(QStringLiteral("Ch/Mute"), val, str);
        return host.make<W>(QLatin1String(muteXml) + extra);
    }

    void deliver(BaseWidget *w, const QString &val, const QString &str = QString())
    {
        host.setParameter(QStringLiteral("Ch/Mute"), val, str);
        w->notifyValueChanged({{QStringLiteral("prmAddr"), QStringLiteral("Ch/Mute")},
                               {QStringLiteral("dev_uniq_id"), QStringLiteral("dev1")}});
    }

    QStringList sentValues() const
    {
        QStringList values;
        for (const auto &r : host.requests)
            values.append(r.arg(r.kind == 1 ? "ui_prm_str" : "ui_prm_val"));
        return values;
    }

private slots:
    void description_data();
    void description();
    void clickSends_data();
    void clickSends();
    void pressRules_data();
    void pressRules();
    void dragOutShowsReleased();
    void keys_data();
    void keys();
    void displayState_data();
    void displayState();
    void paintFace_data();
    void paintFace();
    void paintImages_data();
    void paintImages();
    void paintTextAndIcon();
    void imageCache();
    void imageNames_data();
    void imageNames();
    void sharpAtHighDensity();
    void focusRing();
    void unchangedStateDoesNotRepaint();
    void selectValueTag_data();
    void selectValueTag();
    void tapTempo_data();
    void tapTempo();
    void tapTempoPause();
    void tapTempoInput();
    void equivalent_data();
    void equivalent();
    void blink();
    void changeEnable();
    void returnButton();
    void libraryButtons_data();
    void libraryButtons();
    void libraryDialogNeverBlocks();
    void matrixCellButtons_data();
    void matrixCellButtons();
    void editorWindows_data();
    void editorWindows();
    void editorWindowFromTheBackButton();
};

void tst_Button::description_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<bool>("reverse");
    QTest::addColumn<QColor>("textColor");

    const QColor text = Button::defaultTextColor;
    QTest::newRow("defaults") << QString() << false << false << text;
    QTest::newRow("read only TRUE") << "<ReadOnly>TRUE</ReadOnly>" << true << false << text;
    QTest::newRow("read only True") << "<ReadOnly>True</ReadOnly>" << true << false << text;
    QTest::newRow("read only yes") << "<ReadOnly>yes</ReadOnly>" << false << false << text;
    QTest::newRow("false leaves read only set") << "<ReadOnly>true</ReadOnly><ReadOnly>false</ReadOnly>" << true
                                                << false << text;
    QTest::newRow("reverse tRuE") << "<Reverse>tRuE</Reverse>" << false << true << text;
    QTest::newRow("reverse 1") << "<Reverse>1</Reverse>" << false << false << text;
    QTest::newRow("text colour") << "<TextColor>255,0,0,128</TextColor>" << false << false << QColor(255, 0, 0, 128);
    QTest::newRow("bad text colour") << "<TextColor>red</TextColor>" << false << false << text;
}

void tst_Button::description()
{
    QFETCH(QString, xml);
    QFETCH(bool, readOnly);
    QFETCH(bool, reverse);
    QFETCH(QColor, textColor);

    Button *b = button(QStringLiteral("0"), xml);
    QCOMPARE(b->property("readOnly").toBool(), readOnly);
    QCOMPARE(b->property("reverse").toBool(), reverse);
    QCOMPARE(b->property("textColor").value<QColor>(), textColor);
    for (const char *tag : {"OffImage", "OnImage", "Icon", "Text", "OnText", "TextColor", "Reverse", "ReadOnly"})
        QVERIFY2(b->handledTags().contains(QLatin1String(tag)), tag);
}

void tst_Button::clickSends_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("extra");
    QTest::addColumn<QString>("val");
    QTest::addColumn<bool>("on");
    QTest::addColumn<QString>("sent"); // "KIND: ARG=VALUE ..."

    QTest::newRow("off") << "Button" << "" << "0" << false << "0: set_prm_type=0 ui_prm_val=1";
    QTest::newRow("on") << "Button" << "" << "1" << true << "0: set_prm_type=0 ui_prm_val=0";
    QTest::newRow("part on") << "Button" << "" << "0.25" << true << "0: set_prm_type=0 ui_prm_val=0";
    QTest::newRow("negative is off") << "Button" << "" << "-1" << false << "0: set_prm_type=0 ui_prm_val=1";
    QTest::newRow("not a number is off") << "Button" << "" << "abc" << false << "0: set_prm_type=0 ui_prm_val=1";
    QTest::newRow("empty is off") << "Button" << "" << "" << false << "0: set_prm_type=0 ui_prm_val=1";
    QTest::newRow("flat toggles") << "FlatButton" << "" << "0" << false << "0: set_prm_type=0 ui_prm_val=1";

    // Value 2 of 4 steps.
    const QString select = QStringLiteral("<Value steps=\"4\">2</Value>");
    const QString canOff = select + QStringLiteral("<CanOff>true</CanOff>");
    QTest::newRow("select elsewhere") << "SelectButton" << select << "0.25" << false << "0: set_prm_type=0 ui_prm_val=0.5";
    QTest::newRow("select selected") << "SelectButton" << select << "0.5" << true << "0: set_prm_type=0 ui_prm_val=0.5";
    QTest::newRow("select rounds to selected") << "SelectButton" << select << "0.45" << true
                                               << "0: set_prm_type=0 ui_prm_val=0.5";
    QTest::newRow("can off, elsewhere") << "SelectButton" << canOff << "0.75" << false
                                        << "0: set_prm_type=0 ui_prm_val=0.5";
    QTest::newRow("can off, selected") << "SelectButton" << canOff << "0.5" << true << "0: set_prm_type=0 ui_prm_val=0";
    QTest::newRow("can off, not a number") << "SelectButton" << canOff << "n/a" << false
                                           << "0: set_prm_type=0 ui_prm_val=0.5";

    QTest::newRow("step up") << "StepButton" << "" << "0.5" << false << "2: ui_prm_step=1 ui_prm_val=0.5";
    QTest::newRow("step down") << "StepButton" << "<Step>-1</Step>" << "0.5" << false << "2: ui_prm_step=-1 ui_prm_val=0.5";
    QTest::newRow("step +1") << "StepButton" << "<Step>+1</Step>" << "0.5" << false << "2: ui_prm_step=1 ui_prm_val=0.5";
    QTest::newRow("step 0 refused") << "StepButton" << "<Step>-1</Step><Step>0</Step>" << "0.5" << false
                                    << "2: ui_prm_step=-1 ui_prm_val=0.5";
    QTest::newRow("reset") << "ResetButton" << "" << "1" << false << "3:";
    // The parameter's text is "Mic".
    QTest::newRow("match value, other text") << "MatchValueButton" << "<MatchValue>Line</MatchValue>" << "0" << false
                                             << "1: ui_prm_str=Line";
    QTest::newRow("match value, same text") << "MatchValueButton" << "<MatchValue>Mic</MatchValue>" << "0" << true
                                            << "1: ui_prm_str=Mic";
    QTest::newRow("match value without one toggles") << "MatchValueButton" << "" << "1" << true
                                                     << "0: set_prm_type=0 ui_prm_val=0";
}

void tst_Button::clickSends()
{
    QFETCH(QString, type);
    QFETCH(QString, extra);
    QFETCH(QString, val);
    QFETCH(bool, on);
    QFETCH(QString, sent);

    host.reset();
    host.setParameter(QStringLiteral("Ch/Mute"), val, QStringLiteral("Mic"));
    auto *b = host.make<Button>(type, QLatin1String(muteXml) + extra);
    QVERIFY(b);
    QCOMPARE(b->isOn(), on);
    click(b);
    QVERIFY(!b->isPressed());
    QCOMPARE(host.requests.size(), 1);
    const auto &r = host.requests.first();
    QCOMPARE(r.index, 0);
    QString got = QString::number(r.kind) + QLatin1Char(':');
    for (auto it = r.arguments.cbegin(); it != r.arguments.cend(); ++it)
        got += QLatin1Char(' ') + it.key() + QLatin1Char('=') + it.value();
    QCOMPARE(got, sent);
}

void tst_Button::pressRules_data()
{
    QTest::addColumn<int>("mouseButton");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("setup");
    QTest::addColumn<QPoint>("release");
    QTest::addColumn<bool>("pressed");
    QTest::addColumn<int>("requests");
    QTest::addColumn<int>("selections");
    QTest::addColumn<bool>("highlight");
    QTest::addColumn<int>("linkActions");

    const QPoint inside(30, 12), outside(90, 12);
    const int none = Qt::NoModifier, ctrl = Qt::ControlModifier, shift = Qt::ShiftModifier;
    QTest::newRow("click") << int(Qt::LeftButton) << none << "" << inside << true << 1 << 1 << false << 0;
    QTest::newRow("release outside cancels") << int(Qt::LeftButton) << none << "" << outside << true << 0 << 1 << false
                                             << 0;
    QTest::newRow("right button") << int(Qt::RightButton) << none << "" << inside << false << 0 << 0 << false << 0;
    QTest::newRow("shift notifies only") << int(Qt::LeftButton) << shift << "" << inside << false << 0 << 1 << false
                                         << 0;
    QTest::newRow("alt notifies only") << int(Qt::LeftButton) << int(Qt::AltModifier) << "" << inside << false << 0
                                       << 1 << false << 0;
    QTest::newRow("control selects") << int(Qt::LeftButton) << ctrl << "" << inside << false << 0 << 1 << true << 0;
    QTest::newRow("control shift links") << int(Qt::LeftButton) << (ctrl | shift) << "" << inside << false << 0 << 0
                                         << false << 1;
    QTest::newRow("read only") << int(Qt::LeftButton) << none << "readOnly" << inside << false << 0 << 0 << false << 0;
    QTest::newRow("read only control") << int(Qt::LeftButton) << ctrl << "readOnly" << inside << false << 0 << 0
                                       << false << 0;
    QTest::newRow("not operable") << int(Qt::LeftButton) << none << "inoperable" << inside << false << 0 << 0 << false
                                  << 0;
}

void tst_Button::pressRules()
{
    QFETCH(int, mouseButton);
    QFETCH(int, modifiers);
    QFETCH(QString, setup);
    QFETCH(QPoint, release);
    QFETCH(bool, pressed);
    QFETCH(int, requests);
    QFETCH(int, selections);
    QFETCH(bool, highlight);
    QFETCH(int, linkActions);

    Button *b = button(QStringLiteral("0"), setup == QLatin1String("readOnly") ? "<ReadOnly>true</ReadOnly>" : "");
    if (setup == QLatin1String("inoperable"))
        b->setOperable(false);
    const auto mods = Qt::KeyboardModifiers(modifiers);
    mouse(b, QEvent::MouseButtonPress, QPoint(30, 12), Qt::MouseButton(mouseButton), mods);
    QCOMPARE(b->isPressed(), pressed);
    QCOMPARE(b->displayState(), pressed ? 1 : 0);
    mouse(b, QEvent::MouseButtonRelease, release, Qt::MouseButton(mouseButton), mods);
    QVERIFY(!b->isPressed());
    QCOMPARE(host.requests.size(), requests);
    QCOMPARE(host.selections.size(), selections);
    QCOMPARE(b->highlight(), highlight);
    int links = 0;
    for (const auto &a : host.actions)
        links += a.text == QLatin1String("Add to Parameter Link Group");
    QCOMPARE(links, linkActions);
}

void tst_Button::dragOutShowsReleased()
{
    Button *b = button(QStringLiteral("0"));
    mouse(b, QEvent::MouseButtonPress, QPoint(30, 12));
    QCOMPARE(render(b, panel).pixelColor(30, 12), QColor(Button::faceColor.darker(140).rgb()));
    mouse(b, QEvent::MouseMove, QPoint(90, 12));
    QVERIFY(b->isPressed());
    QCOMPARE(render(b, panel).pixelColor(30, 12), Button::faceColor);
    mouse(b, QEvent::MouseButtonRelease, QPoint(90, 12));
    QVERIFY(host.requests.isEmpty());
}

void tst_Button::keys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("setup");
    QTest::addColumn<bool>("pressed");
    QTest::addColumn<int>("requests");

    QTest::newRow("space") << int(Qt::Key_Space) << "" << true << 1;
    QTest::newRow("return") << int(Qt::Key_Return) << "" << true << 1;
    QTest::newRow("enter") << int(Qt::Key_Enter) << "" << true << 1;
    QTest::newRow("other key") << int(Qt::Key_A) << "" << false << 0;
    QTest::newRow("auto-repeat") << int(Qt::Key_Space) << "repeat" << false << 0;
    QTest::newRow("read only") << int(Qt::Key_Space) << "readOnly" << false << 0;
    QTest::newRow("invisible") << int(Qt::Key_Return) << "hidden" << false << 0;
    QTest::newRow("existence check") << int(Qt::Key_Space) << "checking" << false << 0;
    QTest::newRow("other key released while pressed") << int(Qt::Key_Space) << "releaseOther" << true << 0;
}

void tst_Button::keys()
{
    QFETCH(int, key);
    QFETCH(QString, setup);
    QFETCH(bool, pressed);
    QFETCH(int, requests);

    const QString extra = setup == QLatin1String("readOnly") ? QStringLiteral("<ReadOnly>true</ReadOnly>") : QString();
    Button *b = setup == QLatin1String("checking") ? button<CheckingButton>(QStringLiteral("1"), extra)
                                                    : button(QStringLiteral("1"), extra);
    if (setup == QLatin1String("hidden"))
        b->hide();
    const bool repeat = setup == QLatin1String("repeat");
    ::key(b, QEvent::KeyPress, key, repeat);
    QCOMPARE(b->isPressed(), pressed);
    ::key(b, QEvent::KeyRelease, setup == QLatin1String("releaseOther") ? int(Qt::Key_A) : key, repeat);
    QVERIFY(!b->isPressed());
    QCOMPARE(host.requests.size(), requests);
    if (requests)
        QCOMPARE(host.requests.first().arg("ui_prm_val"), QStringLiteral("0"));
}

void tst_Button::displayState_data()
{
    QTest::addColumn<QString>("val");
    QTest::addColumn<bool>("press");
    QTest::addColumn<int>("state");

    QTest::newRow("off") << "0" << false << 0;
    QTest::newRow("off pressed") << "0" << true << 1;
    QTest::newRow("on") << "1" << false << 2;
    QTest::newRow("on pressed") << "0.5" << true << 3;
    QTest::newRow("not a number") << "x" << false << 0;
}

void tst_Button::displayState()
{
    QFETCH(QString, val);
    QFETCH(bool, press);
    QFETCH(int, state);

    Button *b = button(val);
    if (press)
        ::key(b, QEvent::KeyPress, Qt::Key_Space);
    QCOMPARE(b->property("displayState").toInt(), state);
    QCOMPARE(b->property("on").toBool(), state >= 2);
}

void tst_Button::paintFace_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("val");
    QTest::addColumn<QString>("extra");
    QTest::addColumn<bool>("press");
    QTest::addColumn<QColor>("centre");

    QTest::newRow("off") << "Button" << "0" << "" << false << Button::faceColor;
    QTest::newRow("on") << "Button" << "1" << "" << false << Button::litColor;
    QTest::newRow("off pressed") << "Button" << "0" << "" << true << QColor(Button::faceColor.darker(140).rgb());
    QTest::newRow("on pressed") << "Button" << "1" << "" << true << QColor(Button::litColor.darker(140).rgb());
    QTest::newRow("reverse on") << "Button" << "1" << "<Reverse>true</Reverse>" << false << Button::faceColor;
    QTest::newRow("reverse off") << "Button" << "0" << "<Reverse>true</Reverse>" << false << Button::litColor;
    QTest::newRow("flat off") << "FlatButton" << "0" << "" << false << panel;
    QTest::newRow("flat on") << "FlatButton" << "1" << "" << false << Button::litColor;
}

void tst_Button::paintFace()
{
    QFETCH(QString, type);
    QFETCH(QString, val);
    QFETCH(QString, extra);
    QFETCH(bool, press);
    QFETCH(QColor, centre);

    // A text of its own keeps the display text off the sampled pixels.
    extra += QStringLiteral("<Text>.</Text>");
    Button *b = type == QLatin1String("FlatButton") ? button<FlatButton>(val, extra) : button(val, extra);
    if (press)
        ::key(b, QEvent::KeyPress, Qt::Key_Space);
    const QImage image = render(b, panel);
    QCOMPARE(image.pixelColor(b->width() / 4, b->height() / 4), centre);
    // Rounded: the very corner shows the panel.
    QCOMPARE(image.pixelColor(0, 0), panel);
}

void tst_Button::paintImages_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("val");
    QTest::addColumn<bool>("press");
    QTest::addColumn<QColor>("centre");

    const QColor red(255, 0, 0), green(0, 255, 0);
    QTest::newRow("svg off") << "svg" << "0" << false << red;
    QTest::newRow("svg on") << "svg" << "1" << false << green;
    QTest::newRow("png off") << "png" << "0" << false << red;
    QTest::newRow("png on") << "png" << "1" << false << green;
    QTest::newRow("png on pressed is darker") << "png" << "1" << true << QColor(0, 175, 0);
}

void tst_Button::paintImages()
{
    QFETCH(QString, format);
    QFETCH(QString, val);
    QFETCH(bool, press);
    QFETCH(QColor, centre);

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    host.imagePath = dir.path();
    for (const auto &image : {qMakePair(QStringLiteral("off"), QColor(255, 0, 0)),
                              qMakePair(QStringLiteral("on"), QColor(0, 255, 0))}) {
        const QString path = dir.filePath(image.first + QLatin1Char('.') + format);
        QVERIFY(format == QLatin1String("svg") ? writeFile(path, svgSquare(image.second))
                                               : writeImage(path, image.second, 8));
    }
    Button *b = button(val, QStringLiteral("<OffImage>off.%1</OffImage><OnImage>on.%1</OnImage>").arg(format));
    host.imagePath.clear();
    if (press)
        ::key(b, QEvent::KeyPress, Qt::Key_Space);
    const QImage image = render(b, panel);
    // Scaled over the whole button, corners included.
    QCOMPARE(image.pixelColor(b->width() / 2, b->height() / 2), centre);
    QCOMPARE(image.pixelColor(1, 1), centre);
    QCOMPARE(b->shownText(), QString());
}

void tst_Button::paintTextAndIcon()
{
    QTemporaryDir dir;
    QVERIFY(writeFile(dir.filePath(QStringLiteral("icon.svg")), svgSquare(QColor(0, 255, 0))));
    host.imagePath = dir.path();
    const QColor ink(255, 0, 0);
    Button *b = button(QStringLiteral("0"), QStringLiteral("<Text>Mute</Text><OnText>Muted</OnText>"
                                                           "<TextColor>255,0,0</TextColor><Icon>icon.svg</Icon>"
                                                           "<FontSize>12</FontSize>"));
    b->resize(120, 30);
    QCOMPARE(b->shownText(), QStringLiteral("Mute"));

    QImage image = render(b, panel);
    const QRect left(0, 0, 30, 30), right(30, 0, 90, 30);
    QVERIFY(countNear(image, QColor(0, 255, 0), left, 0) > 100);
    QCOMPARE(countNear(image, QColor(0, 255, 0), right, 0), 0);
    QVERIFY(countNear(image, ink, right) > 10);
    QCOMPARE(countNear(image, ink, left), 0);
    // Centred in the room the icon leaves.
    const QRect offBox = inkBox(image, ink, right);
    QVERIFY2(qAbs(offBox.center().x() - 75) <= 3, qPrintable(QString::number(offBox.center().x())));
    QVERIFY(qAbs(offBox.center().y() - 15) <= 3);

    deliver(b, QStringLiteral("1"));
    QCOMPARE(b->shownText(), QStringLiteral("Muted"));
    image = render(b, panel);
    QVERIFY(inkBox(image, ink, right).width() > offBox.width());
    host.imagePath.clear();
}

void tst_Button::imageCache()
{
    QTemporaryDir dir;
    QVERIFY(writeImage(dir.filePath(QStringLiteral("a.png")), Qt::blue));
    QVERIFY(writeImage(dir.filePath(QStringLiteral("b.png")), Qt::blue));
    host.imagePath = dir.path();
    Button *b = button(QStringLiteral("0"), QStringLiteral("<OffImage>a.png</OffImage>"));
    QCOMPARE(b->imagePath(QStringLiteral("a.png")), dir.filePath(QStringLiteral("a.png")));
    QCOMPARE(b->imagePath(QStringLiteral(":/x.png")), QStringLiteral(":/x.png"));

    render(b, panel);
    const int once = b->cachedImageCount();
    QCOMPARE(once, 1);
    render(b, panel);
    QCOMPARE(b->cachedImageCount(), once);
    // The file is read once: removing it does not change what is drawn.
    QVERIFY(QFile::remove(dir.filePath(QStringLiteral("a.png"))));
    QCOMPARE(render(b, panel).pixelColor(5, 5), QColor(Qt::blue));

    b->setOffImage(QStringLiteral("b.png"));
    QCOMPARE(b->cachedImageCount(), 0);
    render(b, panel);
    QCOMPARE(b->cachedImageCount(), 1);
    b->setOffImage(QStringLiteral("missing.png"));
    QCOMPARE(render(b, panel).pixelColor(b->width() / 4, b->height() / 4), Button::faceColor);
    host.imagePath.clear();
}

void tst_Button::imageNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("drawn");

    QTest::newRow("in the image folder") << "sub/face.png" << true;
    QTest::newRow("written with backslashes") << "sub\\face.png" << true;
    QTest::newRow("built in when the folder lacks it") << "Widget/Dial/index.svg" << true;
    QTest::newRow("missing") << "sub/none.png" << false;
    QTest::newRow("not an image") << "sub/broken.svg" << false;
}

void tst_Button::imageNames()
{
    QFETCH(QString, name);
    QFETCH(bool, drawn);

    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("sub")));
    QVERIFY(writeImage(dir.filePath(QStringLiteral("sub/face.png")), Qt::blue));
    const QString broken = dir.filePath(QStringLiteral("sub/broken.svg"));
    QVERIFY(writeFile(broken, "<svg"));
    host.imagePath = dir.path();
    Button *b = button(QStringLiteral("0"), QStringLiteral("<OffImage>%1</OffImage>").arg(name.toHtmlEscaped()));
    const QImage image = render(b);
    QCOMPARE(image.pixelColor(b->width() / 4, b->height() / 4) != Button::faceColor, drawn);

    if (name.endsWith(QLatin1String("broken.svg"))) {
        // An unreadable file is given up on, not parsed again on every paint.
        QVERIFY(writeFile(broken, svgSquare(Qt::blue, 4)));
        QCOMPARE(render(b).pixelColor(b->width() / 4, b->height() / 4), Button::faceColor);
        // Naming it again reads it again.
        b->setOffImage(QString());
        b->setOffImage(name);
        QCOMPARE(render(b).pixelColor(b->width() / 4, b->height() / 4), QColor(Qt::blue));
    }
    host.imagePath.clear();
}

namespace {

// Pixels of \a image that are neither (nearly) black nor (nearly) white: the
// blur across an edge between the two.
int blurredPixels(const QImage &image)
{
    int n = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int grey = qGray(image.pixel(x, y));
            if (grey > 24 && grey < 231)
                ++n;
        }
    }
    return n;
}

} // namespace

void tst_Button::sharpAtHighDensity()
{
    // A black wedge on white, so that every row crosses a slanted edge.
    const QByteArray svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"10\" height=\"10\">"
                           "<rect width=\"10\" height=\"10\" fill=\"#ffffff\"/>"
                           "<polygon points=\"0,0 7,0 3,10 0,10\" fill=\"#000000\"/></svg>";
    const QByteArray out = qgetenv("CORVANE_GRAB_TO");
    QTemporaryDir dir;
    QString imageFolder = QString::fromLocal8Bit(qgetenv("CORVANE_IMAGE_FOLDER"));
    if (imageFolder.isEmpty()) {
        imageFolder = dir.path();
        QVERIFY(writeFile(dir.filePath(QStringLiteral("wedge.svg")), svg));
    }
    host.imagePath = imageFolder;
    Button *b = button(QStringLiteral("0"), QStringLiteral("<OffImage>wedge.svg</OffImage>"));
    const QImage grabbed = b->grab().toImage().convertToFormat(QImage::Format_RGB32);
    host.imagePath.clear();
    if (!out.isEmpty()) {
        // The child: grab on a screen of twice the density and hand the picture back.
        QCOMPARE(grabbed.size(), b->size() * 2);
        QVERIFY(grabbed.save(QString::fromLocal8Bit(out)));
        return;
    }
    QCOMPARE(grabbed.size(), b->size());

    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
    env.insert(QStringLiteral("CORVANE_IMAGE_FOLDER"), imageFolder);
    const QString twiceFile = dir.filePath(QStringLiteral("twice.png"));
    env.insert(QStringLiteral("CORVANE_GRAB_TO"), twiceFile);
    child.setProcessEnvironment(env);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("sharpAtHighDensity")});
    QVERIFY2(child.waitForFinished(60000), qPrintable(child.errorString()));
    QVERIFY2(child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0, child.readAll().right(2000).constData());
    const QImage twice = QImage(twiceFile).convertToFormat(QImage::Format_RGB32);
    QCOMPARE(twice.size(), b->size() * 2);

    // What a picture rendered for the ordinary density shows on the denser
    // screen: each pixel, the blurred ones of the edge included, drawn twice
    // as wide and twice as high.
    const QImage enlarged = grabbed.scaled(twice.size(), Qt::IgnoreAspectRatio, Qt::FastTransformation);
    const int blurTwice = blurredPixels(twice);
    const int blurEnlarged = blurredPixels(enlarged);
    QVERIFY2(blurTwice > 0, "the edge is drawn");
    QVERIFY2(blurTwice * 3 < blurEnlarged * 2,
             qPrintable(QStringLiteral("%1 blurred pixels at twice the density, %2 enlarged").arg(blurTwice).arg(blurEnlarged)));
    // Both show the same wedge: as many dark pixels, give or take the edge.
    const int darkTwice = Pixels::countNear(twice, Qt::black, twice.rect(), 72);
    const int darkEnlarged = Pixels::countNear(enlarged, Qt::black, enlarged.rect(), 72);
    QVERIFY2(qAbs(darkTwice - darkEnlarged) <= blurEnlarged, qPrintable(QStringLiteral("%1 %2").arg(darkTwice).arg(darkEnlarged)));
}

void tst_Button::focusRing()
{
    Button *b = button(QStringLiteral("0"), QStringLiteral("<Text>.</Text>"));
    auto *other = new QWidget(host.window.get());
    other->setGeometry(200, 10, 20, 20);
    other->setFocusPolicy(Qt::StrongFocus);
    other->show();
    other->setFocus();
    QVERIFY(!b->hasFocus());
    const QImage unfocused = render(b, panel);
    const QRect edge(0, 2, b->width(), 1);

    b->setFocus(Qt::MouseFocusReason);
    QVERIFY(b->hasFocus());
    QCOMPARE(render(b, panel).copy(edge), unfocused.copy(edge));

    other->setFocus();
    b->setFocus(Qt::TabFocusReason);
    QVERIFY(render(b, panel).copy(edge) != unfocused.copy(edge));
    other->setFocus();
    QCOMPARE(render(b, panel).copy(edge), unfocused.copy(edge));
}

void tst_Button::unchangedStateDoesNotRepaint()
{
    Button *b = button(QStringLiteral("1"), QStringLiteral("<Text>A</Text>"));
    PaintRecorder counter;
    QVERIFY(counter.watchSettled(b));

    deliver(b, QStringLiteral("1"));
    b->setText(QStringLiteral("A"));
    b->setReverse(false);
    b->setReadOnly(false);
    QCoreApplication::processEvents();
    // A notification that matched repaints once, changed or not; the rest paints nothing.
    QCOMPARE(counter.paints, 1);
    counter.clear();

    deliver(b, QStringLiteral("0"));
    QCoreApplication::processEvents();
    QVERIFY(counter.paints > 0);
    QCOMPARE(b->displayState(), 0);
}

void tst_Button::selectValueTag_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QVariantMap>("editor");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("steps");
    QTest::addColumn<bool>("canOff");

    const QVariantMap none;
    const QVariantMap editor{{QStringLiteral("editor_info"), QStringLiteral("3")},
                             {QStringLiteral("editor_hint"), QStringLiteral("input")}};
    QTest::newRow("defaults") << "" << none << 0 << 1 << false;
    QTest::newRow("value and steps") << "<Value steps=\"8\">5</Value>" << none << 5 << 8 << false;
    QTest::newRow("not a number") << "<Value steps=\"8\">five</Value>" << none << 0 << 1 << false;
    QTest::newRow("zero steps refused") << "<Value steps=\"0\">2</Value>" << none << 0 << 1 << false;
    QTest::newRow("beyond 16 bits") << "<Value>40000</Value>" << none << 0 << 1 << false;
    QTest::newRow("editor info") << "<Value steps=\"8\">editor_info</Value>" << editor << 3 << 8 << false;
    QTest::newRow("editor info with offset") << "<Value steps=\"8\" offset=\"-1\">editor_info</Value>" << editor << 2
                                             << 8 << false;
    QTest::newRow("editor info missing") << "<Value steps=\"8\">editor_info</Value>" << none << 0 << 1 << false;
    QTest::newRow("hint matches") << "<Value steps=\"4\">1</Value><Value hint=\"input\">2</Value>" << editor << 2 << 4
                                  << false;
    QTest::newRow("hinted wins in any order") << "<Value hint=\"input\" steps=\"4\">2</Value><Value>1</Value>"
                                              << editor << 2 << 4 << false;
    QTest::newRow("other hint ignored") << "<Value steps=\"4\">1</Value><Value hint=\"output\">2</Value>" << editor
                                        << 1 << 4 << false;
    QTest::newRow("can off TRUE") << "<CanOff>TRUE</CanOff>" << none << 0 << 1 << true;
    QTest::newRow("can off yes") << "<CanOff>yes</CanOff>" << none << 0 << 1 << false;
}

void tst_Button::selectValueTag()
{
    QFETCH(QString, xml);
    QFETCH(QVariantMap, editor);
    QFETCH(int, value);
    QFETCH(int, steps);
    QFETCH(bool, canOff);

    host.editor = editor;
    auto *b = button<SelectButton>(QStringLiteral("0"), xml);
    host.editor.clear();
    QCOMPARE(b->property("selectValue").toInt(), value);
    QCOMPARE(b->property("stepCount").toInt(), steps);
    QCOMPARE(b->property("canOff").toBool(), canOff);
}

void tst_Button::tapTempo_data()
{
    QTest::addColumn<QList<int>>("taps");
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<QString>("intervals");

    QTest::newRow("one tap sends nothing") << QList<int>{0} << QStringList() << "";
    QTest::newRow("steady 120") << QList<int>{0, 500, 1000, 1500} << QStringList{"120.0", "120.0", "120.0"}
                                << "500,500,500";
    QTest::newRow("mean of intervals") << QList<int>{0, 400, 1000} << QStringList{"150.0", "120.0"} << "400,600";
    QTest::newRow("whole beats only") << QList<int>{0, 700} << QStringList{"85.0"} << "700";
    QTest::newRow("last four intervals") << QList<int>{0, 1000, 1500, 2000, 2500, 3000}
                                         << QStringList{"60.0", "80.0", "90.0", "96.0", "120.0"} << "500,500,500,500";
    QTest::newRow("same instant") << QList<int>{0, 0} << QStringList{"0.0"} << "0";
}

void tst_Button::tapTempo()
{
    QFETCH(QList<int>, taps);
    QFETCH(QStringList, sent);
    QFETCH(QString, intervals);

    auto *b = button<Tapper>(QStringLiteral("0.5"));
    for (int t : taps) {
        b->clock = 1000000 + t;
        click(b);
    }
    QCOMPARE(sentValues(), sent);
    for (const auto &r : host.requests)
        QCOMPARE(r.kind, 1);
    QCOMPARE(b->property("intervals").toString(), intervals);
    QCOMPARE(b->tapCount(), taps.size());
    QCOMPARE(b->isOn(), true);
}

void tst_Button::tapTempoPause()
{
    auto *b = button<Tapper>(QStringLiteral("0.5"));
    QTimer *timer = b->resetTimer();
    b->tap();
    QVERIFY(timer->isActive());
    QVERIFY(timer->isSingleShot());
    QCOMPARE(timer->interval(), 3200);
    // A coarse timer may fire up to 5 % early, before the pause is over.
    QCOMPARE(timer->timerType(), Qt::PreciseTimer);
    b->clock = 500;
    b->tap();
    QCOMPARE(sentValues(), QStringList{"120.0"});

    // The pause runs out: the next taps measure afresh.
    QVERIFY(QMetaObject::invokeMethod(timer, "timeout"));
    QCOMPARE(b->tapCount(), 0);
    QVERIFY(!b->isOn());
    b->clock = 10000;
    b->tap();
    QCOMPARE(host.requests.size(), 1);
    b->clock = 10250;
    b->tap();
    QCOMPARE(sentValues(), (QStringList{"120.0", "240.0"}));
    QCOMPARE(b->bpm(), 240);
}

void tst_Button::tapTempoInput()
{
    auto *b = button<Tapper>(QStringLiteral("0.5"));
    ::key(b, QEvent::KeyPress, Qt::Key_Return);
    QVERIFY(b->isPressed());
    QCOMPARE(b->tapCount(), 1);
    ::key(b, QEvent::KeyRelease, Qt::Key_Return);
    QVERIFY(!b->isPressed());
    ::key(b, QEvent::KeyPress, Qt::Key_Return, true);
    ::key(b, QEvent::KeyPress, Qt::Key_Space);
    ::key(b, QEvent::KeyPress, Qt::Key_Enter);
    QCOMPARE(b->tapCount(), 1);
    mouse(b, QEvent::MouseButtonPress, QPoint(5, 5), Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(b->tapCount(), 1);
    // A release never toggles the tempo parameter.
    mouse(b, QEvent::MouseButtonPress, QPoint(5, 5));
    b->clock = 600;
    mouse(b, QEvent::MouseButtonRelease, QPoint(5, 5));
    QCOMPARE(b->tapCount(), 2);
    QCOMPARE(host.requests.size(), 1);

    b->setReadOnly(true);
    ::key(b, QEvent::KeyPress, Qt::Key_Return);
    mouse(b, QEvent::MouseButtonPress, QPoint(5, 5));
    QCOMPARE(b->tapCount(), 2);
}

void tst_Button::equivalent_data()
{
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<bool>("on");
    QTest::addColumn<bool>("mixed");
    QTest::addColumn<QString>("sent");

    QTest::newRow("all off") << QStringList{"0", "0", "0"} << false << false << "1";
    QTest::newRow("some on") << QStringList{"1", "0", "1"} << false << true << "1";
    QTest::newRow("all on") << QStringList{"1", "1", "1"} << true << false << "0";
}

void tst_Button::equivalent()
{
    QFETCH(QStringList, values);
    QFETCH(bool, on);
    QFETCH(bool, mixed);
    QFETCH(QString, sent);

    host.reset();
    QString list;
    for (int i = 0; i < values.size(); ++i) {
        host.setParameter(QStringLiteral("Ch%1/Mute").arg(i), values.at(i), QString());
        list += QStringLiteral("<Address prmAddr=\"Ch%1/Mute\"/>").arg(i);
    }
    auto *b = host.make<EquivalentButton>(QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"60\" height=\"24\"/>"
                                                         "<AddressList>%1</AddressList><Text>.</Text>")
                                              .arg(list));
    QCOMPARE(b->isOn(), on);
    QCOMPARE(b->isMixed(), mixed);
    // Only a mixed button carries the lit bar along its bottom.
    QCOMPARE(render(b, panel).pixelColor(30, 19) == Button::litColor, on || mixed);
    click(b);
    QCOMPARE(host.requests.size(), values.size());
    for (int i = 0; i < values.size(); ++i) {
        QCOMPARE(host.requests.at(i).index, i);
        QCOMPARE(host.requests.at(i).arg("ui_prm_val"), sent);
    }
}

void tst_Button::blink()
{
    BlinkController &controller = BlinkController::instance();
    auto *b = button<BlinkButton>(QStringLiteral("1"), QStringLiteral("<Text>.</Text>"));
    auto *other = new BlinkButton(&host, &host.registry, host.window.get());
    other->setGeometry(100, 10, 60, 24);
    other->configure(Xml::widget(QStringLiteral("<Address prmAddr=\"Ch/Mute\"/><Text>.</Text>")));
    QVERIFY(b->isBlinking());
    QVERIFY(other->isBlinking());
    QCOMPARE(controller.blinkingCount(), 2);
    QVERIFY(controller.timer()->isActive());

    const QPoint probe(15, 6);
    QCOMPARE(render(b, panel).pixelColor(probe), Button::litColor);
    QVERIFY(QMetaObject::invokeMethod(controller.timer(), "timeout"));
    QCOMPARE(render(b, panel).pixelColor(probe), Button::faceColor);
    QCOMPARE(render(other, panel).pixelColor(probe), Button::faceColor);
    QCOMPARE(b->displayState(), 2);
    controller.toggle();
    QCOMPARE(render(b, panel).pixelColor(probe), Button::litColor);

    deliver(b, QStringLiteral("0"));
    QCOMPARE(controller.blinkingCount(), 1);
    QVERIFY(controller.timer()->isActive());
    deliver(other, QStringLiteral("0"));
    QVERIFY(!b->isBlinking());
    QVERIFY(!other->isBlinking());
    QCOMPARE(controller.blinkingCount(), 0);
    QVERIFY(!controller.timer()->isActive());

    deliver(b, QStringLiteral("1"));
    deliver(other, QStringLiteral("1"));
    QCOMPARE(controller.blinkingCount(), 2);
    host.window.reset();
    QCOMPARE(controller.blinkingCount(), 0);
    QVERIFY(!controller.timer()->isActive());
}

void tst_Button::changeEnable()
{
    auto *b = button<ChangeEnableButton>(QStringLiteral("0"), QStringLiteral("<Target>gain</Target>"));
    auto *gain = new QWidget(host.window.get());
    gain->setObjectName(QStringLiteral("gain"));
    auto *other = new QWidget(host.window.get());
    other->setObjectName(QStringLiteral("pan"));
    // Shown again: the targets are looked for anew.
    b->hide();
    b->show();
    QVERIFY(!gain->isEnabled());
    QVERIFY(other->isEnabled());
    QCOMPARE(b->property("targets").toString(), QStringLiteral("gain"));

    click(b);
    QCOMPARE(host.requests.first().arg("ui_prm_val"), QStringLiteral("1"));
    deliver(b, QStringLiteral("1"));
    QVERIFY(gain->isEnabled());
}

void tst_Button::returnButton()
{
    Target target;
    host.target = &target;
    auto *b = button<ReturnButton>(QStringLiteral("0"), QStringLiteral("<ReturnValue>7</ReturnValue>"));
    click(b);
    host.target = nullptr;
    QCOMPARE(target.received, QList<int>{7});
    QVERIFY(host.requests.isEmpty());
}

void tst_Button::libraryButtons_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("descriptor");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<int>("dialog");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("sent");

    const QString spl = QStringLiteral("<Device><SpeakerProcessorLibrary ext=\"spl\"/></Device>");
    const int open = int(Button::FileDialog::Open), save = int(Button::FileDialog::Save);
    const QString filter = QStringLiteral("Library Files (*.spl);;All Files (*)");
    QTest::newRow("recall") << "ChannelSelectLibraryRecallButton" << spl << "/lib/a.spl" << open << filter
                            << "/lib/a.spl";
    QTest::newRow("recall cancelled") << "SpeakerLibraryRecallButton" << spl << "" << open << filter << "";
    QTest::newRow("store adds extension") << "ChannelSelectLibraryStoreButton" << spl << "/lib/b" << save << filter
                                          << "/lib/b.spl";
    QTest::newRow("store keeps extension") << "SpeakerLibraryStoreButton" << spl << "/lib/b.SPL" << save << filter
                                           << "/lib/b.SPL";
    QTest::newRow("fir") << "ChannelSelectLibraryStoreButtonFIR" << spl << "/lib/c" << save
                         << "FIR Library Files (*.spl);;All Files (*)" << "/lib/c.spl";
    QTest::newRow("no library element") << "ChannelSelectLibraryStoreButton" << "<Device/>" << "/lib/d" << save
                                        << "All Files (*)" << "/lib/d";
    QTest::newRow("no descriptor") << "SpeakerLibraryRecallButton" << "" << "/lib/e" << open << "All Files (*)"
                                   << "/lib/e";
}

void tst_Button::libraryButtons()
{
    QFETCH(QString, type);
    QFETCH(QString, descriptor);
    QFETCH(QString, answer);
    QFETCH(int, dialog);
    QFETCH(QString, filter);
    QFETCH(QString, sent);

    // A model of its own per row: descriptors are cached by model name.
    static int serial = 0;
    const QString model = QStringLiteral("ButtonTest%1x%2").arg(QCoreApplication::applicationPid()).arg(++serial);
    const QString folder = QCoreApplication::applicationDirPath() + QLatin1String("/descriptor/Common/Device");
    QVERIFY(QDir().mkpath(folder));
    const QString file = folder + QLatin1Char('/') + model + QLatin1String(".xml");
    if (!descriptor.isEmpty())
        QVERIFY(writeFile(file, descriptor.toUtf8()));
    const QString xml = QStringLiteral("<Address prmAddr=\"Ch1/Library\" dev_model=\"%1\"/>").arg(model);
    host.reset();

    QString askedFilter;
    int asked = -1;
    auto run = [&](auto *b) {
        b->answer = answer;
        click(b);
        askedFilter = b->askedFilter;
        asked = b->asked;
        QCOMPARE(b->property("fileFilter").toString(), filter);
        QVERIFY(!b->isOn());
    };
    if (type == QLatin1String("ChannelSelectLibraryRecallButton"))
        run(host.make<Chooser<ChannelSelectLibraryRecallButton>>(xml));
    else if (type == QLatin1String("ChannelSelectLibraryStoreButton"))
        run(host.make<Chooser<ChannelSelectLibraryStoreButton>>(xml));
    else if (type == QLatin1String("ChannelSelectLibraryStoreButtonFIR"))
        run(host.make<Chooser<ChannelSelectLibraryStoreButtonFIR>>(xml));
    else if (type == QLatin1String("SpeakerLibraryRecallButton"))
        run(host.make<Chooser<SpeakerLibraryRecallButton>>(xml));
    else
        run(host.make<Chooser<SpeakerLibraryStoreButton>>(xml));
    QFile::remove(file);

    QCOMPARE(asked, dialog);
    QCOMPARE(askedFilter, filter);
    QCOMPARE(sentValues(), sent.isEmpty() ? QStringList() : QStringList{sent});
    for (const auto &r : host.requests)
        QCOMPARE(r.kind, 1);
}

void tst_Button::libraryDialogNeverBlocks()
{
    // Nobody answers at once: the dialog opens without a modal loop.
    host.reset();
    auto *b = host.make<ChannelSelectLibraryRecallButton>(
        QStringLiteral("<Address prmAddr=\"Ch1/Library\"/>"));
    ModalWatch watch;
    click(b);
    QCoreApplication::processEvents();
    QVERIFY(!watch.blocked);
    QPointer<QFileDialog> dialog = b->findChild<QFileDialog *>();
    QVERIFY(dialog);
    QVERIFY(dialog->isVisible());
    QVERIFY(!dialog->isModal());
    QVERIFY(host.requests.isEmpty());
    emit dialog->fileSelected(QStringLiteral("/lib/chosen.spl"));
    QCOMPARE(sentValues(), QStringList{QStringLiteral("/lib/chosen.spl")});
    dialog->close();
    QTRY_VERIFY(!dialog);
}

namespace {

const char editorPanel[] =
    "<Panel name=\"mixer_edit\" width=\"200\" height=\"120\">"
    "  <Widget type=\"NumberBox\" name=\"level\"><Rect x=\"10\" y=\"10\" width=\"60\" height=\"20\"/>"
    "    <Address prmAddr=\"Mix/Level\"/></Widget>"
    "  <Widget type=\"ParentPanelButton\" name=\"back\"><Rect x=\"10\" y=\"40\" width=\"60\" height=\"20\"/>"
    "  </Widget>"
    "</Panel>";

//! Writes the editor panel into \a dir, the host's panel folder.
bool writeEditorPanel(const QTemporaryDir &dir)
{
    return writeFile(dir.filePath(QStringLiteral("mixer_edit.xml")), editorPanel);
}

//! A button of the type named \a type added to the host's window, which stays as it is.
template <class B = WindowButton>
B *addButton(ControlTestHost &host, const QString &xml, const QString &type = QStringLiteral("CreateEditorButton"))
{
    auto *b = dynamic_cast<B *>(WidgetFactory().create(type, host.window.get(), &host, &host.registry));
    if (b) {
        b->configure(Xml::widget(xml));
        b->show();
    }
    return b;
}

} // namespace

void tst_Button::matrixCellButtons_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("current"); // position of the cell's parameter
    QTest::addColumn<QString>("sent");

    QTest::newRow("matrix, off cell") << "MatrixButton" << "0" << "1";
    QTest::newRow("matrix mixer, on cell") << "MatrixMixerButton" << "1" << "0";
    QTest::newRow("brio matrix") << "BrioMatrixButton" << "0" << "1";
    QTest::newRow("brio mixer") << "BrioMatrixMixerButton" << "1" << "0";
    QTest::newRow("vela mixer") << "VelaMatrixMixerButton" << "0" << "1";
}

void tst_Button::matrixCellButtons()
{
    QFETCH(QString, type);
    QFETCH(QString, current);
    QFETCH(QString, sent);

    host.requests.clear();
    host.setParameter(QStringLiteral("Mix/In2/Out3/On"), current, current == "1" ? "On" : "Off");
    host.setParameter(QStringLiteral("Mix/In3/Out2/On"), "0", "Off");
    const QString xml = QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"20\" height=\"20\"/>"
                                       "<XIndex>3</XIndex><AddressForm prmAddr=\"Mix/In{y}/Out{x}/On\"/>"
                                       "<YIndex>2</YIndex>");
    auto *b = host.make<MatrixButton>(type, xml);
    QVERIFY(b);
    QCOMPARE(b->addressAt(0).prmAddr(), QStringLiteral("Mix/In2/Out3/On"));
    QCOMPARE(b->isOn(), current == QLatin1String("1"));
    click(b);
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.first().address.value("prmAddr").toString(), QStringLiteral("Mix/In2/Out3/On"));
    QCOMPARE(host.requests.first().arg("ui_prm_val"), sent);
}

void tst_Button::editorWindows_data()
{
    QTest::addColumn<QString>("opener");   // the type clicked first
    QTest::addColumn<QString>("second");   // the type clicked next, naming the same editor
    QTest::addColumn<bool>("opens");       // whether the first click opens the window
    QTest::addColumn<bool>("secondCloses");
    QTest::addColumn<int>("flags");        // window type of the editor

    QTest::newRow("editor, closed by a second button") << "CreateEditorButton" << "BrioCreateEditorButton" << true
                                                       << true << int(Qt::Window);
    QTest::newRow("hide button closes only") << "BrioCreateEditorButton" << "BrioCreateEditorHideButton" << true
                                             << true << int(Qt::Window);
    QTest::newRow("hide button never opens") << "BrioCreateEditorHideButton" << "CreateEditorButton" << false
                                             << false << int(Qt::Window);
    QTest::newRow("child window") << "ChildWindowButton" << "ChildWindowButton" << true << true << int(Qt::Tool);
}

void tst_Button::editorWindows()
{
    QFETCH(QString, opener);
    QFETCH(QString, second);
    QFETCH(bool, opens);
    QFETCH(bool, secondCloses);
    QFETCH(int, flags);

    QTemporaryDir dir;
    QVERIFY(writeEditorPanel(dir));
    host.imagePath = dir.path();
    host.windowEvents.clear();
    host.requests.clear();

    const QString xml = QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"40\" height=\"20\"/>"
                                       "<EditorID>mixer_edit</EditorID><Title>Mixer</Title>");
    host.window.reset(new QWidget);
    host.window->resize(300, 200);
    host.window->show();
    WindowButton *first = addButton(host, xml, opener);
    WindowButton *other = addButton(host, xml, second);
    QVERIFY(first && other);
    QVERIFY(!first->isOn());

    click(first);
    QCOMPARE(first->isWindowOpen(), opens);
    QVERIFY(host.requests.isEmpty());
    if (!opens) {
        QVERIFY(host.windowEvents.isEmpty());
        return;
    }
    QPointer<QWidget> editor = first->editorWindow();
    QVERIFY(editor);
    QVERIFY(editor->isWindow());
    QVERIFY(editor->isVisible());
    QCOMPARE(int(editor->windowType()), flags);
    QCOMPARE(editor->windowTitle(), QStringLiteral("Mixer"));
    QCOMPARE(editor->parentWidget(), host.window.get());
    QVERIFY(first->isOn());
    QVERIFY(other->isOn()); // one window per editor name
    QCOMPARE(host.windowEvents, QStringList{"open mixer_edit"});
    // The editor's controls sit on the button's device.
    auto *level = editor->findChild<BaseWidget *>(QStringLiteral("level"));
    QVERIFY(level);
    QCOMPARE(level->addressAt(0).deviceId(), QStringLiteral("dev1"));

    // Clicking the first again raises nothing new: it closes.
    click(secondCloses ? other : first);
    QVERIFY(!first->isWindowOpen());
    QVERIFY(!other->isOn());
    QCOMPARE(host.windowEvents, (QStringList{"open mixer_edit", "close mixer_edit"}));
    QTRY_VERIFY(!editor);

    // A panel that cannot be built opens nothing.
    host.windowEvents.clear();
    WindowButton *missing = addButton(host, QStringLiteral("<EditorID>no_such_panel</EditorID>"));
    click(missing);
    QVERIFY(!missing->isWindowOpen());
    QVERIFY(host.windowEvents.isEmpty());
}

void tst_Button::editorWindowFromTheBackButton()
{
    QTemporaryDir dir;
    QVERIFY(writeEditorPanel(dir));
    host.imagePath = dir.path();
    host.windowEvents.clear();
    auto *b = host.make<CreateEditorButton>(QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"40\" height=\"20\"/>"
                                                           "<EditorID>mixer_edit</EditorID>"));
    // The back button on the panel itself closes nothing.
    auto *stray = addButton<ParentPanelButton>(host, QStringLiteral("<Rect x=\"50\" y=\"0\" width=\"40\" height=\"20\"/>"),
                                              QStringLiteral("ParentPanelButton"));
    click(stray);
    QVERIFY(host.window->isVisible());
    QVERIFY(!stray->isOn());

    click(b);
    QPointer<QWidget> editor = b->editorWindow();
    QVERIFY(editor);
    QCOMPARE(editor->windowTitle(), QStringLiteral("mixer_edit"));
    auto *back = editor->findChild<ParentPanelButton *>(QStringLiteral("back"));
    QVERIFY(back);
    click(back);
    QVERIFY(!b->isOn());
    QCOMPARE(host.windowEvents, (QStringList{"open mixer_edit", "close mixer_edit"}));
    QTRY_VERIFY(!editor);
    QVERIFY(host.window->isVisible());

    // A window that goes with its panel is not reported as closed.
    click(b);
    QVERIFY(b->editorWindow());
    host.windowEvents.clear();
    host.window.reset();
    QVERIFY(host.windowEvents.isEmpty());
}

QTEST_MAIN(tst_Button)
#include "tst_button.moc"
