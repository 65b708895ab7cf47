#include "controls/ControlTestHost.h"

#include "controls/switcher/switcher_variants.h"

#include <QSignalSpy>
#include <QtTest>
#include "support/Render.h"
#include "support/PaintRecorder.h"
#include "support/Pixels.h"

using Input::mouse;
using Input::wheel;

namespace {

int countNear(const QImage &image, const QColor &colour, const QRect &area, int tolerance = 30)
{
    return Pixels::countNear(image, colour, area, tolerance);
}

const QString items3 = QStringLiteral("<Items><Item value=\"Mic\">Microphone</Item><Item>Line</Item>"
                                      "<Item value=\"USB\">Computer</Item></Items>");

} // namespace

class tst_Switcher : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;

    Switcher *switcher(const QString &extra = QString(), const QString &type = QStringLiteral("Switcher"))
    {
        const QString xml = QStringLiteral("<Rect x=\"0\" y=\"0\" width=\"150\" height=\"30\"/>"
                                           "<Address prmAddr=\"Ch/Input\"/>")
            + items3 + extra;
        const QString channel = type == QLatin1String("ChannelSelectSwitcher") ? QStringLiteral("<ChNum>2</ChNum>")
                                                                                : QString();
        return host.make<Switcher>(type, xml + channel);
    }

private slots:
    void init();
    void litSegment_data();
    void litSegment();
    void clickSendsTheSegment_data();
    void clickSendsTheSegment();
    void modifierPresses_data();
    void modifierPresses();
    void keysAndWheel_data();
    void keysAndWheel();
    void valueChangesRepaintOnlyOnChange();
    void painting_data();
    void painting();
    void settersReturnEarly();
};

void tst_Switcher::init()
{
    host.clear();
    host.setParameter(QStringLiteral("Ch/Input"), QStringLiteral("0"), QStringLiteral("Mic"));
}

void tst_Switcher::litSegment_data()
{
    QTest::addColumn<QString>("val");
    QTest::addColumn<QString>("str");
    QTest::addColumn<int>("lit");

    QTest::newRow("by value") << "0" << "USB" << 2;
    QTest::newRow("by label without value") << "1" << "Line" << 1;
    QTest::newRow("label of an item with a value") << "0" << "Computer" << 2;
    QTest::newRow("text wins over position") << "1" << "Mic" << 0;
    QTest::newRow("unknown text: position 0.5") << "0.5" << "-6 dB" << 1;
    QTest::newRow("unknown text: position 0.74 rounds to 1") << "0.74" << "x" << 1;
    QTest::newRow("unknown text: position 0.75 rounds to 2") << "0.75" << "x" << 2;
    QTest::newRow("unknown text: position beyond 1") << "1.7" << "x" << 2;
    QTest::newRow("nothing readable") << "" << "x" << -1;
}

void tst_Switcher::litSegment()
{
    QFETCH(QString, val);
    QFETCH(QString, str);
    QFETCH(int, lit);
    host.setParameter(QStringLiteral("Ch/Input"), val, str);
    Switcher *s = switcher();
    QCOMPARE(s->labels(), (QStringList{"Microphone", "Line", "Computer"}));
    QCOMPARE(s->values(), (QStringList{"Mic", "Line", "USB"}));
    QCOMPARE(s->currentIndex(), lit);
    QCOMPARE(s->property("currentIndex").toInt(), lit);
}

void tst_Switcher::clickSendsTheSegment_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("orientation");
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<QString>("sent");

    for (const char *type : {"Switcher", "ChannelSelectSwitcher", "SpeakerSwitcher"}) {
        QTest::newRow(qPrintable(QStringLiteral("%1 right segment").arg(type))) << type << "" << QPoint(140, 15) << "USB";
        QTest::newRow(qPrintable(QStringLiteral("%1 middle segment").arg(type))) << type << "" << QPoint(75, 15) << "Line";
        QTest::newRow(qPrintable(QStringLiteral("%1 lit segment").arg(type))) << type << "" << QPoint(10, 15) << "";
    }
    // 150 × 30 stacked: segments of 10 rows.
    QTest::newRow("vertical bottom") << "Switcher" << "Vertical" << QPoint(140, 25) << "USB";
    QTest::newRow("vertical middle") << "Switcher" << "vertical" << QPoint(140, 15) << "Line";
    QTest::newRow("vertical top is lit") << "Switcher" << "Vertical" << QPoint(140, 3) << "";
}

void tst_Switcher::clickSendsTheSegment()
{
    QFETCH(QString, type);
    QFETCH(QString, orientation);
    QFETCH(QPoint, at);
    QFETCH(QString, sent);

    Switcher *s = switcher(orientation.isEmpty() ? QString()
                                                 : QStringLiteral("<Orientation>%1</Orientation>").arg(orientation),
                           type);
    QCOMPARE(s->metaObject()->className(), qPrintable(type));
    QCOMPARE(s->currentIndex(), 0);
    mouse(s, QEvent::MouseButtonPress, at);
    mouse(s, QEvent::MouseButtonRelease, at);
    if (sent.isEmpty()) {
        QVERIFY(host.requests.isEmpty());
        return;
    }
    QCOMPARE(host.requests.size(), 1);
    QCOMPARE(host.requests.at(0).kind, 1);
    QCOMPARE(host.requests.at(0).index, 0);
    QCOMPARE(host.requests.at(0).arg("ui_prm_str"), sent);
    QCOMPARE(host.requests.at(0).arguments.size(), 1);
}

void tst_Switcher::modifierPresses_data()
{
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("highlight");
    QTest::addColumn<int>("actions");
    QTest::addColumn<int>("requests");

    QTest::newRow("plain") << int(Qt::NoModifier) << false << 0 << 1;
    QTest::newRow("Control selects") << int(Qt::ControlModifier) << true << 0 << 0;
    QTest::newRow("Control+Shift links") << int(Qt::ControlModifier | Qt::ShiftModifier) << false << 1 << 0;
    QTest::newRow("Shift chooses nothing") << int(Qt::ShiftModifier) << false << 0 << 0;
}

void tst_Switcher::modifierPresses()
{
    QFETCH(int, modifiers);
    QFETCH(bool, highlight);
    QFETCH(int, actions);
    QFETCH(int, requests);

    Switcher *s = switcher();
    mouse(s, QEvent::MouseButtonPress, QPoint(140, 15), Qt::LeftButton, Qt::KeyboardModifiers(modifiers));
    mouse(s, QEvent::MouseButtonRelease, QPoint(140, 15), Qt::LeftButton, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(host.requests.size(), requests);
    QCOMPARE(s->highlight(), highlight);
    QCOMPARE(host.actions.size(), actions);
    // Everything but the link press selects the address.
    QCOMPARE(host.selections.isEmpty(), actions > 0);
}

void tst_Switcher::keysAndWheel_data()
{
    using Step::key;
    QTest::addColumn<QString>("orientation");
    QTest::addColumn<Gesture>("gesture");

    const QString up = QStringLiteral("step 1 0.5"), down = QStringLiteral("step -1 0.5");
    const QPoint at(5, 5);
    QTest::newRow("Right") << "" << Gesture{key(Qt::Key_Right, {up})};
    QTest::newRow("Left") << "" << Gesture{key(Qt::Key_Left, {down})};
    QTest::newRow("Up ignored in a row") << "" << Gesture{key(Qt::Key_Up)};
    QTest::newRow("Down in a column") << "Vertical" << Gesture{key(Qt::Key_Down, {up})};
    QTest::newRow("Up in a column") << "Vertical" << Gesture{key(Qt::Key_Up, {down})};
    QTest::newRow("Right ignored in a column") << "Vertical" << Gesture{key(Qt::Key_Right)};
    QTest::newRow("wheel two notches up") << "" << Gesture{Step::wheel(240, at, {up, up})};
    QTest::newRow("wheel a notch down") << "" << Gesture{Step::wheel(-120, at, {down})};
    QTest::newRow("half a notch") << "" << Gesture{Step::wheel(60, at)};
}

void tst_Switcher::keysAndWheel()
{
    QFETCH(QString, orientation);
    QFETCH(Gesture, gesture);

    host.setParameter(QStringLiteral("Ch/Input"), QStringLiteral("0.5"), QStringLiteral("Line"));
    Switcher *s = switcher(orientation.isEmpty() ? QString()
                                                 : QStringLiteral("<Orientation>%1</Orientation>").arg(orientation));
    const auto describe = Gestures::describeFor(QStringLiteral("Ch/Input"));
    const Gestures::Result r = Gestures::play(s, host, gesture, describe);
    QCOMPARE(r.sent, r.expected);

    // Disabled, the same again sends nothing (half a notch would now make a whole one).
    host.requests.clear();
    s->setEnabled(false);
    QCOMPARE(Gestures::play(s, host, gesture, describe).sent, QStringList());
}

void tst_Switcher::valueChangesRepaintOnlyOnChange()
{
    Switcher *s = switcher();
    QSignalSpy spy(s, &Switcher::currentIndexChanged);
    PaintRecorder counter;
    QVERIFY(counter.watchSettled(s));

    host.setParameter(QStringLiteral("Ch/Input"), QStringLiteral("0"), QStringLiteral("Mic"));
    s->notifyValueChanged({{"prmAddr", "Ch/Input"}, {"dev_uniq_id", "dev1"}});
    QCoreApplication::processEvents();
    QCOMPARE(spy.count(), 0);
    // A notification that matched repaints once, changed or not; the rest paints nothing.
    QCOMPARE(counter.paints, 1);
    counter.clear();

    host.setParameter(QStringLiteral("Ch/Input"), QStringLiteral("1"), QStringLiteral("USB"));
    s->notifyValueChanged({{"prmAddr", "Ch/Input"}, {"dev_uniq_id", "dev1"}});
    QCoreApplication::processEvents();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), 2);
    QVERIFY(counter.paints > 0);
}

void tst_Switcher::painting_data()
{
    QTest::addColumn<QString>("orientation");
    QTest::addColumn<QString>("str");
    QTest::addColumn<int>("lit");

    QTest::newRow("row, first lit") << "" << "Mic" << 0;
    QTest::newRow("row, last lit") << "" << "USB" << 2;
    QTest::newRow("column, middle lit") << "Vertical" << "Line" << 1;
    QTest::newRow("none lit") << "" << "" << -1;
}

void tst_Switcher::painting()
{
    QFETCH(QString, orientation);
    QFETCH(QString, str);
    QFETCH(int, lit);

    host.setParameter(QStringLiteral("Ch/Input"), str.isEmpty() ? QString() : QStringLiteral("0"), str);
    const QColor on(250, 20, 20);
    Switcher *s = switcher(QStringLiteral("<SelectedColor>250,20,20</SelectedColor><BackgroundColor>20,20,250</BackgroundColor>")
                           + (orientation.isEmpty() ? QString()
                                                    : QStringLiteral("<Orientation>%1</Orientation>").arg(orientation)));
    const QImage image = render(s);
    for (int i = 0; i < 3; ++i) {
        const QRect r = s->segmentRect(i);
        QVERIFY(!r.isEmpty());
        const int area = r.width() * r.height();
        const int red = countNear(image, on, r);
        const int blue = countNear(image, QColor(20, 20, 250), r);
        if (i == lit) {
            QVERIFY2(red > area / 2, qPrintable(QString::number(red)));
            QCOMPARE(blue, 0);
        } else {
            QCOMPARE(red, 0);
            QVERIFY2(blue > area / 2, qPrintable(QString::number(blue)));
        }
        // A label is drawn in every segment.
        QVERIFY(countNear(image, i == lit ? Switcher::defaultSelectedTextColor : Switcher::defaultTextColor, r, 60) > 0);
    }
}

void tst_Switcher::settersReturnEarly()
{
    Switcher *s = switcher();
    PaintRecorder counter;
    QVERIFY(counter.watchSettled(s));
    s->setSelectedColor(Switcher::defaultSelectedColor);
    s->setOrientation(Qt::Horizontal);
    s->setItems(s->items());
    QCoreApplication::processEvents();
    QCOMPARE(counter.paints, 0);
    s->setOrientation(Qt::Vertical);
    QCoreApplication::processEvents();
    QCOMPARE(counter.paints, 1);
    QCOMPARE(s->property("orientation").toString(), QStringLiteral("Vertical"));
    QCOMPARE(s->segmentAt(QPoint(5, 25)), 2);
}

QTEST_MAIN(tst_Switcher)
#include "tst_switcher.moc"
