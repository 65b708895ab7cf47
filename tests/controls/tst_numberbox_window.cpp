/*
    The number box in a real window, driven by the X server's own pointer
    (xdotool): the editor's mouse grab and the commit by a click outside it,
    which the offscreen platform cannot show, and a drag.
    Runs under Xvfb with the xcb platform.
*/
#include "ControlTestHost.h"

#include "controls/numberbox/NumberBox.h"

#include <QProcess>
#include <QtTest>

class tst_NumberBoxWindow : public QObject
{
    Q_OBJECT

private:
    ControlTestHost host;
    NumberBox *box = nullptr;

    static void xdotool(const QStringList &args)
    {
        QCOMPARE(QProcess::execute(QStringLiteral("xdotool"), args), 0);
    }
    static void pointerTo(const QPoint &global)
    {
        xdotool({QStringLiteral("mousemove"), QString::number(global.x()), QString::number(global.y())});
    }
    void openEditor(const QString &typed)
    {
        box->setFocus();
        QTRY_VERIFY(box->hasFocus());
        QTest::keyClick(box, Qt::Key_Return);
        QTRY_COMPARE(QWidget::mouseGrabber(), static_cast<QWidget *>(box->editor()));
        QTRY_VERIFY(box->editor()->hasFocus());
        QTest::keyClicks(box->editor(), typed);
    }

private slots:
    void initTestCase()
    {
        if (QGuiApplication::platformName() != QLatin1String("xcb"))
            QSKIP("needs an X server");
        if (QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty())
            QSKIP("needs xdotool");
        host.setParameter(QStringLiteral("Ch/Gain"), QStringLiteral("0.5"), QStringLiteral("-6.0dB"));
        box = host.make<NumberBox>(QStringLiteral("<Rect x=\"20\" y=\"20\" width=\"80\" height=\"24\"/>"
                                                  "<Address prmAddr=\"Ch/Gain\"/>"));
        host.window->move(100, 100);
        host.window->raise();
        host.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowExposed(host.window.get()));
        QVERIFY(QTest::qWaitForWindowActive(host.window.get()));
    }

    void init() { host.requests.clear(); }

    void clickInsideKeepsEditing()
    {
        openEditor(QStringLiteral("4"));
        pointerTo(box->editor()->mapToGlobal(QPoint(5, 12)));
        xdotool({QStringLiteral("click"), QStringLiteral("1")});
        QTest::qWait(200);
        QVERIFY(box->isEditing());
        QVERIFY(host.requests.isEmpty());
        QTest::keyClick(box->editor(), Qt::Key_Escape);
        QVERIFY(!box->isEditing());
    }

    void clickOutsideCommits_data()
    {
        QTest::addColumn<QPoint>("where");
        QTest::newRow("elsewhere in the window") << QPoint(300, 250);
        QTest::newRow("outside the window") << QPoint(600, 500);
    }

    void clickOutsideCommits()
    {
        QFETCH(QPoint, where);
        openEditor(QStringLiteral("-12"));
        pointerTo(host.window->mapToGlobal(where));
        xdotool({QStringLiteral("click"), QStringLiteral("1")});
        QTRY_VERIFY(!box->isEditing());
        QVERIFY(QWidget::mouseGrabber() != box->editor());
        QCOMPARE(host.requests.size(), 1);
        QCOMPARE(host.requests.at(0).kind, 1);
        QCOMPARE(host.requests.at(0).arg("ui_prm_str"), QStringLiteral("-12"));
    }

    void pointerDrag()
    {
        const QPoint start = box->mapToGlobal(QPoint(40, 12));
        pointerTo(start);
        xdotool({QStringLiteral("mousedown"), QStringLiteral("1")});
        QTRY_VERIFY(box->isDragging());
        pointerTo(start + QPoint(0, -10));
        QTRY_COMPARE(host.requests.size(), 1);
        xdotool({QStringLiteral("mouseup"), QStringLiteral("1")});
        QTRY_VERIFY(!box->isDragging());
        QCOMPARE(host.requests.size(), 2);
        QCOMPARE(host.requests.at(0).arg("ui_prm_val"), QStringLiteral("0.533333"));
        QCOMPARE(host.requests.at(0).arg("set_prm_type"), QStringLiteral("1"));
        QCOMPARE(host.requests.at(1).arg("ui_prm_val"), QStringLiteral("0.533333"));
        QCOMPARE(host.requests.at(1).arg("set_prm_type"), QStringLiteral("0"));
    }
};

QTEST_MAIN(tst_NumberBoxWindow)
#include "tst_numberbox_window.moc"
