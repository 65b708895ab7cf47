#include "ControlTestHost.h"

#include "controls/numberbox/NumberBox.h"

#include <QPainter>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QtTest>
#include "support/Gesture.h"

using Input::key;
using Input::mouse;

namespace {

const char *const gainAddress = "<Address><prmAddr>Ch/Gain</prmAddr></Address>";

int countColour(const QImage &image, const QColor &colour, const QRect &area)
{
    int n = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.pixelColor(x, y) == colour)
                ++n;
        }
    }
    return n;
}

// Records what reaches the widget core's Control-click handling.
class CoreRecordingBox : public NumberBox
{
public:
    using NumberBox::NumberBox;
    QList<QEvent::Type> controlClicks;

protected:
    void controlClick(QMouseEvent *event) override
    {
        controlClicks.append(event->type());
        NumberBox::controlClick(event);
    }
};

} // namespace

class tst_NumberBox : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;

    template <class W = NumberBox>
    W *box(const QString &val = QStringLiteral("0.5"), const QString &str = QStringLiteral("-6.0dB"),
           const QString &extra = QString())
    {
        host.reset();
        host.setParameter(QStringLiteral("Ch/Gain"), val, str);
        auto *b = host.make<W>(QStringLiteral("<Rect x=\"10\" y=\"10\" width=\"80\" height=\"24\"/>")
                               + QLatin1String(gainAddress) + extra);
        b->setFocus();
        return b;
    }

private slots:
    void description_data();
    void description();
    void keys_data();
    void keys();
    void editing_data();
    void editing();
    void editorLife();
    void editorFont();
    void editorEndsOnHide_data();
    void editorEndsOnHide();
    void drag_data();
    void drag();
    void controlPressGoesToCore();
    void controlReleaseGoesToCore();
    void horizontalDragRoundsTowardZero();
    void textRectangle_data();
    void textRectangle();
    void wheel_data();
    void wheel();
    void paint_data();
    void paint();
    void opaqueOnlyWhenTheBackgroundIs_data();
    void opaqueOnlyWhenTheBackgroundIs();
};

void tst_NumberBox::description_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<int>("alignment");
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<QColor>("background");

    const QColor black(0, 0, 0, 255);
    QTest::newRow("defaults") << QString() << 132 << false << black;
    QTest::newRow("right and vcenter") << "<TextAlignment>Right|VCenter</TextAlignment>" << (2 | 128) << false << black;
    QTest::newRow("left wins over right") << "<TextAlignment>Left Right</TextAlignment>" << 1 << false << black;
    QTest::newRow("left alone drops vertical centring") << "<TextAlignment>Left</TextAlignment>" << 1 << false << black;
    QTest::newRow("no known word") << "<TextAlignment>Top</TextAlignment>" << 132 << false << black;
    QTest::newRow("words are case-sensitive") << "<TextAlignment>right vcenter</TextAlignment>" << 132 << false
                                              << black;
    QTest::newRow("horizontal drag") << "<EnableHorizontalDrag>true</EnableHorizontalDrag>" << 132 << true << black;
    QTest::newRow("horizontal drag needs exact true") << "<EnableHorizontalDrag>True</EnableHorizontalDrag>" << 132
                                                      << false << black;
    QTest::newRow("background rgba") << "<BackgroundColor>10,20,30,40</BackgroundColor>" << 132 << false
                                     << QColor(10, 20, 30, 40);
    QTest::newRow("background rgb") << "<BackgroundColor>10,20,30</BackgroundColor>" << 132 << false
                                    << QColor(10, 20, 30, 255);
}

void tst_NumberBox::description()
{
    QFETCH(QString, xml);
    QFETCH(int, alignment);
    QFETCH(bool, horizontal);
    QFETCH(QColor, background);

    NumberBox *b = box(QStringLiteral("0.5"), QStringLiteral("x"), xml);
    QCOMPARE(int(b->property("textAlignment").value<Qt::Alignment>()), alignment);
    QCOMPARE(b->property("horizontalDrag").toBool(), horizontal);
    QCOMPARE(b->property("backgroundColor").value<QColor>(), background);
    QVERIFY(b->handledTags().contains(QStringLiteral("BackgroundColor")));
}

void tst_NumberBox::keys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("visible");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("step");
    QTest::addColumn<bool>("editing");
    QTest::addColumn<bool>("accepted");

    QTest::newRow("up steps") << int(Qt::Key_Up) << true << 2 << "1" << false << true;
    QTest::newRow("down steps") << int(Qt::Key_Down) << true << 2 << "-1" << false << true;
    QTest::newRow("return edits") << int(Qt::Key_Return) << true << -1 << QString() << true << true;
    QTest::newRow("enter edits") << int(Qt::Key_Enter) << true << -1 << QString() << true << true;
    QTest::newRow("escape passes on") << int(Qt::Key_Escape) << true << -1 << QString() << false << false;
    QTest::newRow("other key passes on") << int(Qt::Key_A) << true << -1 << QString() << false << false;
    QTest::newRow("invisible ignores up") << int(Qt::Key_Up) << false << -1 << QString() << false << false;
    QTest::newRow("invisible ignores return") << int(Qt::Key_Return) << false << -1 << QString() << false << false;
}

void tst_NumberBox::keys()
{
    QFETCH(int, key);
    QFETCH(bool, visible);
    QFETCH(int, kind);
    QFETCH(QString, step);
    QFETCH(bool, editing);
    QFETCH(bool, accepted);

    NumberBox *b = box(QStringLiteral("0.25"));
    b->setVisible(visible);
    QKeyEvent e(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(b, &e);
    QCOMPARE(e.isAccepted(), accepted);
    QCOMPARE(b->isEditing(), editing);
    if (kind < 0) {
        QVERIFY(host.requests.isEmpty());
        return;
    }
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.at(0).kind, kind);
    QCOMPARE(host.requests.at(0).arg("ui_prm_step"), step);
    QCOMPARE(host.requests.at(0).arg("ui_prm_val"), QStringLiteral("0.25"));
    QCOMPARE(host.requests.at(0).address.value("prmAddr").toString(), QStringLiteral("Ch/Gain"));
}

void tst_NumberBox::editing_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("how");
    QTest::addColumn<bool>("sent");

    QTest::newRow("return commits") << "12" << "Return" << true;
    QTest::newRow("enter commits") << "-3.5dB" << "Enter" << true;
    QTest::newRow("empty text is sent") << "" << "Return" << true;
    QTest::newRow("escape discards") << "12" << "Escape" << false;
    QTest::newRow("up discards") << "12" << "Up" << false;
    QTest::newRow("down discards") << "12" << "Down" << false;
    QTest::newRow("focus loss commits") << "7" << "focus" << true;
    QTest::newRow("click outside commits") << "8" << "outside" << true;
    QTest::newRow("click inside keeps editing") << "9" << "inside" << false;
}

void tst_NumberBox::editing()
{
    QFETCH(QString, typed);
    QFETCH(QString, how);
    QFETCH(bool, sent);

    NumberBox *b = box();
    auto *other = new QWidget(host.window.get());
    other->setFocusPolicy(Qt::StrongFocus);
    other->show();
    QSignalSpy finished(b, &NumberBox::editingFinished);

    QVERIFY(key(b, Qt::Key_Return));
    QVERIFY(b->isEditing());
    LineEdit *editor = b->editor();
    QVERIFY(editor->hasFocus());
    // Typing replaces the selected display text.
    QTest::keyClick(editor, Qt::Key_Backspace);
    QTest::keyClicks(editor, typed);
    QCOMPARE(b->editorText(), typed);

    if (how == QLatin1String("focus")) {
        other->setFocus();
    } else if (how == QLatin1String("outside")) {
        // With the mouse grabbed, a click elsewhere on the screen reaches the editor.
        mouse(editor, QEvent::MouseButtonPress, QPoint(-20, 200));
    } else if (how == QLatin1String("inside")) {
        mouse(editor, QEvent::MouseButtonPress, QPoint(5, 5));
        mouse(editor, QEvent::MouseButtonRelease, QPoint(5, 5));
    } else {
        QTest::keyClick(editor, Qt::Key(QKeySequence(how)[0]));
    }

    if (how == QLatin1String("inside")) {
        QVERIFY(b->isEditing());
        QVERIFY(host.requests.isEmpty());
        return;
    }
    QVERIFY(!b->isEditing());
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).toBool(), sent);
    if (!sent) {
        QVERIFY(host.requests.isEmpty());
        return;
    }
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.at(0).kind, 1);
    QCOMPARE(host.requests.at(0).arg("ui_prm_str"), typed);
    QVERIFY(host.requests.at(0).arguments.contains(QStringLiteral("ui_prm_str")));
}

void tst_NumberBox::editorLife()
{
    NumberBox *b = box(QStringLiteral("0.5"), QStringLiteral("-6.0dB"),
                       QStringLiteral("<TextAlignment>Right</TextAlignment>"));
    QVERIFY(!b->editor());

    key(b, Qt::Key_Return);
    LineEdit *editor = b->editor();
    QVERIFY(editor);
    QCOMPARE(editor->parentWidget(), b);
    QCOMPARE(editor->size(), b->size());
    QVERIFY(!editor->hasFrame());
    QCOMPARE(editor->contextMenuPolicy(), Qt::NoContextMenu);
    QCOMPARE(editor->alignment(), Qt::AlignRight);
    QCOMPARE(editor->text(), QStringLiteral("-6.0dB"));
    QCOMPARE(editor->selectedText(), QStringLiteral("-6.0dB"));
    QCOMPARE(QWidget::mouseGrabber(), editor);
    QVERIFY(editor->inputMethodSwitchedOff());
    QVERIFY(!editor->testAttribute(Qt::WA_InputMethodEnabled));

    // Return again while open does not refill the editor.
    QTest::keyClicks(editor, QStringLiteral("3"));
    b->startEditing();
    QCOMPARE(editor->text(), QStringLiteral("3"));

    QTest::keyClick(editor, Qt::Key_Escape);
    QVERIFY(!editor->isVisible());
    QVERIFY(QWidget::mouseGrabber() != editor);
    QVERIFY(b->hasFocus());

    // The same editor is reused, refilled with the current display text.
    host.setParameter(QStringLiteral("Ch/Gain"), QStringLiteral("0.6"), QStringLiteral("-3.0dB"));
    b->notifyValueChanged({{"prmAddr", "Ch/Gain"}, {"dev_uniq_id", "dev1"}});
    key(b, Qt::Key_Return);
    QCOMPARE(b->editor(), editor);
    QCOMPARE(editor->text(), QStringLiteral("-3.0dB"));
    QCOMPARE(QWidget::mouseGrabber(), editor);
    key(b, Qt::Key_Return);
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.at(0).arg("ui_prm_str"), QStringLiteral("-3.0dB"));
}

void tst_NumberBox::editorFont()
{
    // The editor starts from the box's own font (family, "FontSize" and
    // zoom), so the text keeps its size when the edit starts.
    host.zoom = 2.0f;
    NumberBox *b = box(QStringLiteral("0.5"), QStringLiteral("-6.0dB"), QStringLiteral("<FontSize>7</FontSize>"));
    host.zoom = 1.0f;
    QCOMPARE(b->font().pointSizeF(), 14.0);
    key(b, Qt::Key_Return);
    QCOMPARE(b->editor()->font().pointSizeF(), 14.0);
    QCOMPARE(b->editor()->font().family(), b->font().family());
    QCOMPARE(b->font().family(), QApplication::font().family());
}

void tst_NumberBox::editorEndsOnHide_data()
{
    QTest::addColumn<bool>("pageSwitch");
    QTest::newRow("box hidden") << false;
    QTest::newRow("page switched away") << true;
}

void tst_NumberBox::editorEndsOnHide()
{
    QFETCH(bool, pageSwitch);
    host.reset();
    host.setParameter(QStringLiteral("Ch/Gain"), QStringLiteral("0.5"), QStringLiteral("-6.0dB"));
    auto *pages = new QStackedWidget;
    auto *page = new QWidget;
    pages->addWidget(page);
    pages->addWidget(new QWidget);
    auto *b = host.make<NumberBox>(QStringLiteral("<Rect x=\"10\" y=\"10\" width=\"80\" height=\"24\"/>")
                                   + QLatin1String(gainAddress));
    pages->setParent(host.window.get());
    pages->setGeometry(0, 0, 200, 100);
    b->setParent(page);
    pages->show();
    b->show();
    b->setFocus();

    key(b, Qt::Key_Return);
    LineEdit *editor = b->editor();
    QVERIFY(editor && editor->isVisible());
    QTest::keyClicks(editor, QStringLiteral("7"));
    QCOMPARE(QWidget::mouseGrabber(), editor);

    if (pageSwitch)
        pages->setCurrentIndex(1);
    else
        b->hide();
    // Ended as a focus loss ends it: committed once, grab released.
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.at(0).kind, 1);
    QCOMPARE(host.requests.at(0).arg("ui_prm_str"), QStringLiteral("7"));
    QVERIFY(QWidget::mouseGrabber() != editor);

    if (pageSwitch)
        pages->setCurrentIndex(0);
    else
        b->show();
    QVERIFY(b->isVisible());
    QVERIFY(!editor->isVisible());
    QVERIFY(!b->isEditing());
    QVERIFY(QWidget::mouseGrabber() != editor);

    // The next drag reaches the box.
    mouse(b, QEvent::MouseButtonPress, QPoint(40, 12));
    QVERIFY(b->isDragging());
    mouse(b, QEvent::MouseButtonRelease, QPoint(40, 12));
    QCOMPARE(host.requests.size(), 1);
}

void tst_NumberBox::drag_data()
{
    QTest::addColumn<QString>("val");
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<Gesture>("gesture"); // after a press at (40, 12)

    using namespace Step;
    const QPoint start(40, 12);
    const QPoint up10 = start + QPoint(0, -10);
    QTest::newRow("click without movement sends nothing") << "0.5" << false << Gesture{release(start)};
    QTest::newRow("ten pixels up") << "0.5" << false
                                   << Gesture{move(up10, {"pos 0.533333 1"}), release(up10, {"pos 0.533333 0"})};
    QTest::newRow("sideways does not count") << "0.5" << false
                                             << Gesture{move(start + QPoint(25, 0)), release(start + QPoint(25, 0))};
    QTest::newRow("back to start sends nothing at release")
        << "0.5" << false << Gesture{move(start + QPoint(0, 3), {"pos 0.49 1"}), move(start), release(start)};
    QTest::newRow("start is rounded") << "0.4985" << false
                                      << Gesture{move(start + QPoint(0, -1), {"pos 0.503333 1"}),
                                                 release(start + QPoint(0, -1), {"pos 0.503333 0"})};
    QTest::newRow("below zero keeps sending 0")
        << "0.01" << false
        << Gesture{move(start + QPoint(0, 10), {"pos 0 1"}), move(start + QPoint(0, 20), {"pos 0 1"}),
                   release(start + QPoint(0, 20), {"pos 0 0"})};
    QTest::newRow("above the top keeps sending 1")
        << "0.99" << false
        << Gesture{move(up10, {"pos 1 1"}), move(start + QPoint(0, -11), {"pos 1 1"}),
                   release(start + QPoint(0, -11), {"pos 1 0"})};
    QTest::newRow("not a number starts at 0") << "abc" << false
                                              << Gesture{move(start + QPoint(0, -30), {"pos 0.1 1"}),
                                                         release(start + QPoint(0, -30), {"pos 0.1 0"})};
    QTest::newRow("horizontal: right and up") << "0.5" << true
                                              << Gesture{move(start + QPoint(10, -10), {"pos 0.533333 1"}),
                                                         release(start + QPoint(10, -10), {"pos 0.533333 0"})};
    QTest::newRow("horizontal: right and down cancel")
        << "0.5" << true << Gesture{move(start + QPoint(10, 10)), release(start + QPoint(10, 10))};
    QTest::newRow("horizontal: right alone at half speed")
        << "0.5" << true
        << Gesture{move(start + QPoint(20, 0), {"pos 0.533333 1"}), release(start + QPoint(20, 0), {"pos 0.533333 0"})};
    QTest::newRow("a modifier ends the drag")
        << "0.5" << false
        << Gesture{move(start + QPoint(0, -3), {"pos 0.51 1"}), move(start + QPoint(0, -6)).with(Qt::ShiftModifier),
                   move(start + QPoint(0, -9)), release(start + QPoint(0, -9))};
}

void tst_NumberBox::drag()
{
    QFETCH(QString, val);
    QFETCH(bool, horizontal);
    QFETCH(Gesture, gesture);

    NumberBox *b = box(val);
    b->setHorizontalDrag(horizontal);
    const int selections = host.selections.size();
    mouse(b, QEvent::MouseButtonPress, QPoint(40, 12));
    QVERIFY(b->isDragging());
    QCOMPARE(host.selections.size(), selections + 1);
    QCOMPARE(host.requests.size(), 0);
    const Gestures::Result r = Gestures::play(b, host, gesture, Gestures::describeFor(QStringLiteral("Ch/Gain")));
    QCOMPARE(r.sent, r.expected);
    QVERIFY(!b->isDragging());
}

void tst_NumberBox::controlPressGoesToCore()
{
    NumberBox *b = box();
    QVERIFY(!b->highlight());
    mouse(b, QEvent::MouseButtonPress, QPoint(40, 12), Qt::LeftButton, Qt::ControlModifier);
    QVERIFY(!b->isDragging());
    QVERIFY(b->highlight());
    mouse(b, QEvent::MouseButtonRelease, QPoint(40, 2), Qt::LeftButton, Qt::ControlModifier);
    QVERIFY(host.requests.isEmpty());
}

void tst_NumberBox::controlReleaseGoesToCore()
{
    auto *b = box<CoreRecordingBox>();
    mouse(b, QEvent::MouseButtonPress, QPoint(40, 12));
    mouse(b, QEvent::MouseMove, QPoint(40, 2));
    QCOMPARE(host.requests.size(), 1);
    mouse(b, QEvent::MouseButtonRelease, QPoint(40, 2), Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(b->controlClicks, QList<QEvent::Type>{QEvent::MouseButtonRelease});
    QVERIFY(!b->isDragging());
    QCOMPARE(host.requests.size(), 1); // no release request of the drag
}

void tst_NumberBox::horizontalDragRoundsTowardZero()
{
    // (y - x) / 2 as integers: (12 - 41) / 2 is -14, not -15, so one pixel
    // to the right is already a step.
    NumberBox *b = box();
    b->setHorizontalDrag(true);
    const Gesture gesture{Step::press(41, 12), Step::move(42, 12, {"pos 0.503333 1"}),
                          Step::release(42, 12, {"pos 0.503333 0"})};
    const Gestures::Result r = Gestures::play(b, host, gesture, Gestures::describeFor(QStringLiteral("Ch/Gain")));
    QCOMPARE(r.sent, r.expected);
}

void tst_NumberBox::textRectangle_data()
{
    QTest::addColumn<QString>("alignment");
    QTest::newRow("left, top") << "Left";
    QTest::newRow("left, centred") << "Left VCenter";
    QTest::newRow("centred") << "";
}

// The text is drawn inside (0, 1, width, height - 1).
void tst_NumberBox::textRectangle()
{
    QFETCH(QString, alignment);
    host.parameters.clear();
    host.setParameter(QStringLiteral("Ch/Gain"), QStringLiteral("0.5"), QStringLiteral("-6.0dB"));
    QString xml = QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"90\" height=\"21\"/>"
                                 "<BackgroundColor>0,0,80</BackgroundColor><FontSize>12</FontSize>")
        + QLatin1String(gainAddress);
    if (!alignment.isEmpty())
        xml += QStringLiteral("<TextAlignment>%1</TextAlignment>").arg(alignment);
    auto *b = host.make<NumberBox>(xml);

    QImage shown(b->size(), QImage::Format_ARGB32);
    shown.fill(Qt::white);
    b->render(&shown);

    QImage expected(b->size(), QImage::Format_ARGB32);
    expected.fill(Qt::white);
    {
        QPainter p(&expected);
        p.fillRect(expected.rect(), QColor(0, 0, 80));
        p.setFont(b->font());
        p.setPen(NumberBox::enabledTextColor);
        p.drawText(QRect(0, 1, b->width(), b->height() - 1), int(b->textAlignment()), QStringLiteral("-6.0dB"));
    }
    QCOMPARE(shown, expected);
}

void tst_NumberBox::wheel_data()
{
    QTest::addColumn<Gesture>("gesture");
    Gestures::addWheelNotchRows(QPoint(40, 12), QStringLiteral("0.75"));
}

void tst_NumberBox::wheel()
{
    QFETCH(Gesture, gesture);

    NumberBox *b = box(QStringLiteral("0.75"));
    const Gestures::Result r = Gestures::play(b, host, gesture, Gestures::describeFor(QStringLiteral("Ch/Gain")));
    QCOMPARE(r.sent, r.expected);

    // An open editor keeps its text.
    host.requests.clear();
    key(b, Qt::Key_Return);
    Input::wheel(b, 120, QPoint(40, 12));
    QVERIFY(b->isEditing());
    QVERIFY(host.requests.isEmpty());
}

void tst_NumberBox::paint_data()
{
    QTest::addColumn<QString>("str");
    QTest::addColumn<bool>("bound");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("alignment");
    QTest::addColumn<QString>("shown");

    QTest::newRow("enabled") << "-6.0dB" << true << true << "" << "-6.0dB";
    QTest::newRow("disabled") << "-6.0dB" << true << false << "" << "-6.0dB";
    QTest::newRow("empty text shows the position") << "" << true << true << "" << "0.5";
    QTest::newRow("left aligned") << "-6.0dB" << true << true << "Left" << "-6.0dB";
    QTest::newRow("right aligned") << "-6.0dB" << true << true << "Right" << "-6.0dB";
    QTest::newRow("unbound draws no text") << "-6.0dB" << false << true << "" << "";
}

void tst_NumberBox::paint()
{
    QFETCH(QString, str);
    QFETCH(bool, bound);
    QFETCH(bool, enabled);
    QFETCH(QString, alignment);
    QFETCH(QString, shown);

    host.parameters.clear();
    host.setParameter(QStringLiteral("Ch/Gain"), QStringLiteral("0.5"), str);
    QString xml = QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"120\" height=\"24\"/>"
                                 "<BackgroundColor>0,0,80</BackgroundColor><FontSize>14</FontSize>");
    if (bound)
        xml += QLatin1String(gainAddress);
    if (!alignment.isEmpty())
        xml += QStringLiteral("<TextAlignment>%1</TextAlignment>").arg(alignment);
    auto *b = host.make<NumberBox>(xml);
    b->setEnabled(enabled);
    if (bound)
        QCOMPARE(b->shownText(), shown);

    QImage image(b->size(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    b->render(&image);

    const QColor background(0, 0, 80);
    QCOMPARE(image.pixelColor(0, 0), background);
    QCOMPARE(image.pixelColor(119, 23), background);

    const QColor ink = enabled ? NumberBox::enabledTextColor : NumberBox::disabledTextColor;
    const QColor other = enabled ? NumberBox::disabledTextColor : NumberBox::enabledTextColor;
    const QRect left(0, 0, 40, 24), middle(40, 0, 40, 24), right(80, 0, 40, 24);
    const int total = countColour(image, ink, image.rect());
    QCOMPARE(countColour(image, other, image.rect()), 0);
    if (!bound) {
        QCOMPARE(total, 0);
        return;
    }
    QVERIFY(total > 10);
    if (alignment == QLatin1String("Left")) {
        QVERIFY(countColour(image, ink, left) > 0);
        QCOMPARE(countColour(image, ink, right), 0);
    } else if (alignment == QLatin1String("Right")) {
        QVERIFY(countColour(image, ink, right) > 0);
        QCOMPARE(countColour(image, ink, left), 0);
    } else if (shown.size() > 4) {
        QVERIFY(countColour(image, ink, middle) > 0);
    }
}

void tst_NumberBox::opaqueOnlyWhenTheBackgroundIs_data()
{
    QTest::addColumn<QString>("background");
    QTest::addColumn<bool>("opaque");

    QTest::newRow("default") << "" << true;
    QTest::newRow("opaque colour") << "<BackgroundColor>0,0,80</BackgroundColor>" << true;
    QTest::newRow("translucent") << "<BackgroundColor>0,0,80,128</BackgroundColor>" << false;
    QTest::newRow("transparent") << "<BackgroundColor>0,0,80,0</BackgroundColor>" << false;
    QTest::newRow("translucent, then opaque")
        << "<BackgroundColor>0,0,80,128</BackgroundColor><BackgroundColor>0,0,80,255</BackgroundColor>" << true;
}

// An opaque box spares Qt the painting below it; a see-through one must
// let the parent paint first, or it shows stale pixels.
void tst_NumberBox::opaqueOnlyWhenTheBackgroundIs()
{
    QFETCH(QString, background);
    QFETCH(bool, opaque);

    auto *b = host.make<NumberBox>("<Rect x=\"0\" y=\"0\" width=\"60\" height=\"18\"/>" + background);
    QCOMPARE(b->testAttribute(Qt::WA_OpaquePaintEvent), opaque);
    QCOMPARE(b->backgroundColor().alpha() == 255, opaque);
}

QTEST_MAIN(tst_NumberBox)
#include "tst_numberbox.moc"
