#include "controls/ControlTestHost.h"

#include "controls/dial/Dial.h"
#include "controls/fader/Fader.h"
#include "controls/numberbox/NumberBox.h"
#include "core/ReadOut.h"
#include "graphs/graph/GraphControlPoint.h"

class tst_ReadOut : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;
    const QVariantMap fader{{"dev_uniq_id", "dev1"}, {"prmAddr", "Ch1/Fader"}};

    // The database's answer to a request: a new value, delivered back.
    void answer(BaseWidget *w, const QString &val, const QString &str)
    {
        host.setParameter(QStringLiteral("Ch1/Fader"), val, str);
        w->notifyValueChanged(fader);
    }

private slots:
    void init()
    {
        host.requests.clear();
        host.setParameter(QStringLiteral("Ch1/Fader"), QStringLiteral("0.5"), QStringLiteral("-10.0 dB"));
        if (ReadOut::existing())
            ReadOut::existing()->hide();
    }

    // Building and showing controls makes no read-out window; the first
    // control that wants one does, and it shows at once.
    void createdOnFirstUse()
    {
        Dial *dial = host.make<Dial>(QStringLiteral("<Rect x='20' y='60' width='48' height='48'/>"
                                                    "<Address prmAddr='Ch1/Fader'/><Focus>strong</Focus>"));
        QVERIFY(QTest::qWaitForWindowExposed(dial->window()));
        Input::mouse(dial, QEvent::MouseMove, QPoint(20, 20), Qt::NoButton);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(dial, &leave);
        QCoreApplication::processEvents();
        QVERIFY(!ReadOut::existing());
        dial->setFocus();
        Input::key(dial, Qt::Key_Up);
        QVERIFY(ReadOut::existing());
        QTRY_COMPARE(ReadOut::existing()->subject(), static_cast<QWidget *>(dial));
    }

    // A drag shows the value the database formats, follows it, and leaves at release.
    void drag_data()
    {
        QTest::addColumn<QString>("type");
        QTest::newRow("dial") << "Dial";
        QTest::newRow("fader") << "Fader";
        QTest::newRow("number box") << "NumberBox";
    }

    void drag()
    {
        QFETCH(QString, type);
        const QString xml = QStringLiteral("<Rect x='20' y='60' width='40' height='120'/>"
                                           "<Address prmAddr='Ch1/Fader'/>");
        BaseWidget *w = type == QLatin1String("Dial") ? static_cast<BaseWidget *>(host.make<Dial>(xml))
            : type == QLatin1String("Fader")          ? static_cast<BaseWidget *>(host.make<Fader>(xml))
                                                      : static_cast<BaseWidget *>(host.make<NumberBox>(xml));
        ReadOut *readOut = ReadOut::instance();
        QVERIFY(readOut);
        // Where the knob sits at 0.5.
        const QPoint start = type == QLatin1String("Fader") ? w->property("knobRect").toRect().center()
                                                            : QPoint(20, 60);
        Input::mouse(w, QEvent::MouseButtonPress, start);
        QTRY_COMPARE(readOut->subject(), static_cast<QWidget *>(w));
        QCOMPARE(readOut->text(), QStringLiteral("-10.0 dB"));

        Input::mouse(w, QEvent::MouseMove, start - QPoint(0, 10));
        QVERIFY(!host.requests.isEmpty());
        answer(w, QStringLiteral("0.6"), QStringLiteral("-7.5 dB"));
        Input::mouse(w, QEvent::MouseMove, start - QPoint(0, 11));
        QTRY_COMPARE(readOut->text(), QStringLiteral("-7.5 dB"));
        // Placed beside the control, not over it.
        const QRect box(w->mapToGlobal(QPoint(0, 0)), w->size());
        QVERIFY(!readOut->geometry().intersects(box));

        Input::mouse(w, QEvent::MouseButtonRelease, start - QPoint(0, 11));
        QTRY_VERIFY(!readOut->isVisible());
    }

    void wheelAndKeys()
    {
        Dial *dial = host.make<Dial>(QStringLiteral("<Rect x='20' y='60' width='48' height='48'/>"
                                                    "<Address prmAddr='Ch1/Fader'/><Focus>strong</Focus>"));
        ReadOut *readOut = ReadOut::instance();
        dial->setFocus();
        Input::key(dial, Qt::Key_Up);
        QTRY_COMPARE(readOut->subject(), static_cast<QWidget *>(dial));
        readOut->hide();
        Input::key(dial, Qt::Key_Left);
        QCoreApplication::processEvents();
        QVERIFY(!readOut->isVisible());
    }

    void hover()
    {
        Fader *f = host.make<Fader>(QStringLiteral("<Rect x='20' y='60' width='40' height='120'/>"
                                                   "<Address prmAddr='Ch1/Fader'/>"));
        ReadOut *readOut = ReadOut::instance();
        QTest::mouseMove(f, QPoint(20, 60));
        QEnterEvent enter(QPointF(20, 60), QPointF(20, 60), QPointF(f->mapToGlobal(QPoint(20, 60))));
        QApplication::sendEvent(f, &enter);
        if (!f->underMouse())
            QSKIP("the platform does not track the pointer");
        QTRY_COMPARE(readOut->subject(), static_cast<QWidget *>(f));
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(f, &leave);
        QVERIFY(!readOut->isVisible());
    }

    // The panel, or any widget above the control, switches read-outs off.
    void switchedOff_data()
    {
        QTest::addColumn<QVariant>("setting");
        QTest::addColumn<bool>("shown");
        QTest::newRow("unset") << QVariant() << true;
        QTest::newRow("on") << QVariant(true) << true;
        QTest::newRow("off") << QVariant(false) << false;
    }

    void switchedOff()
    {
        QFETCH(QVariant, setting);
        QFETCH(bool, shown);
        Dial *dial = host.make<Dial>(QStringLiteral("<Rect x='20' y='60' width='48' height='48'/>"
                                                    "<Address prmAddr='Ch1/Fader'/>"));
        host.window->setProperty("readOuts", setting);
        QCOMPARE(ReadOut::wanted(dial), shown);
        Input::mouse(dial, QEvent::MouseButtonPress, QPoint(24, 24));
        QCoreApplication::processEvents();
        QCOMPARE(ReadOut::instance()->isVisible(), shown);
        Input::mouse(dial, QEvent::MouseButtonRelease, QPoint(24, 24));
        dial->setEnabled(false);
        QVERIFY(!ReadOut::wanted(dial));
        QVERIFY(!ReadOut::instance()->isVisible());
    }

    void text_data()
    {
        QTest::addColumn<QString>("val");
        QTest::addColumn<QString>("str");
        QTest::addColumn<QString>("shown");
        QTest::newRow("display text") << "0.5" << "-10.0 dB" << "-10.0 dB";
        QTest::newRow("no display text: the position") << "0.5" << "" << "0.5";
    }

    void text()
    {
        QFETCH(QString, val);
        QFETCH(QString, str);
        QFETCH(QString, shown);
        host.setParameter(QStringLiteral("Ch1/Fader"), val, str);
        Dial *dial = host.make<Dial>(QStringLiteral("<Address prmAddr='Ch1/Fader'/>"));
        QCOMPARE(ReadOut::textFor(dial), shown);
    }

    // A handle reads its band's frequency and gain, beside its point.
    void handle_data()
    {
        QTest::addColumn<QString>("freq");
        QTest::addColumn<QString>("gain");
        QTest::addColumn<QString>("shown");
        QTest::newRow("both") << "1.00 kHz" << "+3.0 dB" << "1.00 kHz  +3.0 dB";
        QTest::newRow("frequency only (a high-pass)") << "80.0 Hz" << "" << "80.0 Hz";
        QTest::newRow("neither: the point's own text") << "" << "" << "0.5:0.5";
    }

    void handle()
    {
        QFETCH(QString, freq);
        QFETCH(QString, gain);
        QFETCH(QString, shown);
        ControlTestHost bandHost;
        bandHost.setParameter(QStringLiteral("Ch1/EQ/Band2/Point"), QStringLiteral("0.5"), QStringLiteral("0.5:0.5"));
        if (!freq.isEmpty())
            bandHost.setParameter(QStringLiteral("Ch1/EQ/Band2/Freq"), QStringLiteral("0.3"), freq);
        if (!gain.isEmpty())
            bandHost.setParameter(QStringLiteral("Ch1/EQ/Band2/Gain"), QStringLiteral("0.6"), gain);
        // Another band's values never leak in.
        bandHost.setParameter(QStringLiteral("Ch1/EQ/Band3/Gain"), QStringLiteral("0.1"), QStringLiteral("-9.0 dB"));
        auto *point = bandHost.make<GraphControlPoint>(QStringLiteral("<Address prmAddr='Ch1/EQ/Band2/Point'/>"));
        QCOMPARE(ReadOut::textFor(point), shown);
        QVERIFY(ReadOut::wanted(point));
    }
};

QTEST_MAIN(tst_ReadOut)
#include "tst_readout.moc"
