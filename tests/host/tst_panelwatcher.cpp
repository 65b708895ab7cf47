// --watch: a panel rebuilt when its file or a file it uses changes, with the
// devices' values and the window's place kept.
#include "Linter.h"
#include "PanelHost.h"
#include "PanelWatcher.h"
#include "ParameterDatabase.h"
#include "TypeNames.h"

#include <corvane/IPanelFactory.h>
#include <corvane/IWidgetFactory.h>

#include <data/ParameterKeys.h>

#include <QPluginLoader>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const char *const version1 =
    "<Panel width=\"200\" height=\"100\">\n"
    "  <Device id=\"mixer\" model=\"Vela8\"/>\n"
    "  <Widget type=\"Dial\" name=\"gain\">\n"
    "    <Rect x=\"10\" y=\"10\" width=\"40\" height=\"40\"/>\n"
    "    <Address prmAddr=\"Ch1/HA/Gain\"/>\n"
    "    <Image>knob.svg</Image>\n"
    "  </Widget>\n"
    "</Panel>\n";

// The same with a fader added, bound to a misspelled parameter.
const QByteArray version2 = QByteArray(version1).replace(
    "</Panel>", "  <Widget type=\"Fader\" name=\"level\">\n"
                "    <Rect x=\"60\" y=\"10\" width=\"30\" height=\"80\"/>\n"
                "    <Address prmAddr=\"Ch1/Fadr\"/>\n"
                "  </Widget>\n"
                "</Panel>");

bool write(const QString &path, const QByteArray &data)
{
    // As editors save: a new file renamed over the old one.
    const QString temporary = path + QLatin1String(".new");
    QFile f(temporary);
    if (!f.open(QIODevice::WriteOnly) || f.write(data) != data.size())
        return false;
    f.close();
    QFile::remove(path);
    return QFile::rename(temporary, path);
}

QString gainText(ParameterDatabase *database)
{
    QVariantMap answer;
    database->readParameter({{Key::dev_uniq_id, QStringLiteral("mixer")}, {Key::prmAddr, QStringLiteral("Ch1/HA/Gain")}}, answer);
    return answer.value(Key::ui_prm_str).toString();
}

} // namespace

class tst_PanelWatcher : public QObject
{
    Q_OBJECT

private slots:
    void rebuildsOnChange();
};

void tst_PanelWatcher::rebuildsOnChange()
{
    const QString bin = QCoreApplication::applicationDirPath();
    QPluginLoader widgets(bin + QLatin1String("/libCorvaneWidgets.so"));
    auto *factory = qobject_cast<IWidgetFactory *>(widgets.instance());
    QVERIFY2(factory, qPrintable(widgets.errorString()));
    QPluginLoader panels(bin + QLatin1String("/libPanel.so"));
    auto *panelFactory = qobject_cast<IPanelFactory *>(panels.instance());
    QVERIFY2(panelFactory, qPrintable(panels.errorString()));
    QMetaObject::invokeMethod(panels.instance(), "setWidgetFactory", Qt::DirectConnection, Q_ARG(QObject *, widgets.instance()));

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("panel.xml"));
    const QString image = dir.filePath(QStringLiteral("knob.svg"));
    QVERIFY(write(image, "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"8\" height=\"8\"/>"));
    QVERIFY(write(path, version1));

    ParameterDatabase *database = ParameterDatabase::instance();
    PanelHost host(database);
    QString error;
    QVERIFY2(host.load(version1, path, &error), qPrintable(error));
    QVERIFY2(host.build(panelFactory, &error), qPrintable(error));
    host.panel()->move(123, 45);
    host.panel()->show();
    const QString initial = gainText(database);
    QVERIFY(database->request({{Key::dev_uniq_id, QStringLiteral("mixer")}, {Key::prmAddr, QStringLiteral("Ch1/HA/Gain")}},
                              1, {{Key::ui_prm_str, QStringLiteral("42")}}));
    const QString changed = gainText(database);
    QVERIFY(changed != initial);

    QStringList types;
    TypeNames::of(bin + QLatin1String("/libCorvaneWidgets.so"), &types, &error);
    QList<QList<PanelChecker::Finding>> reports;
    PanelWatcher watcher(&host, panelFactory, path, Linter::checker(factory, database, path, types),
                         [&reports](const QList<PanelChecker::Finding> &f) { reports << f; });
    QCOMPARE(watcher.usedFiles(), QStringList{QFileInfo(image).absoluteFilePath()});
    QSignalSpy rebuilt(&watcher, &PanelWatcher::rebuilt);
    QSignalSpy failed(&watcher, &PanelWatcher::failed);

    // The panel file changes: the new control is there, the value and the place are kept,
    // and the findings of the new version are reported.
    QVERIFY(!host.control(QStringLiteral("level")));
    QVERIFY(write(path, version2));
    QVERIFY(rebuilt.wait(5000));
    QVERIFY(host.control(QStringLiteral("level")));
    QVERIFY(host.control(QStringLiteral("gain")));
    QCOMPARE(host.panel()->pos(), QPoint(123, 45));
    QVERIFY(host.panel()->isVisible());
    QCOMPARE(gainText(database), changed);
    QCOMPARE(reports.size(), 1);
    QCOMPARE(reports.last().size(), 1);
    QVERIFY2(reports.last().first().message.contains(QLatin1String("\"Ch1/Fadr\"; did you mean \"Ch1/Fader\"")),
             qPrintable(reports.last().first().message));

    // A file the panel uses changes: rebuilt again.
    QVERIFY(write(image, "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9\" height=\"9\"/>"));
    QVERIFY(rebuilt.wait(5000));
    QCOMPARE(rebuilt.count(), 2);

    // A version that cannot be built leaves the window as it was.
    QWidget *before = host.panel();
    QVERIFY(write(path, "<Panel width=\"200\" height=\"100\">\n<Widget>\n</Panel>\n"));
    QVERIFY(failed.wait(5000));
    QCOMPARE(host.panel(), before);
    QVERIFY(host.control(QStringLiteral("level")));
    QCOMPARE(reports.last().first().line, 2);

    // And the watch goes on.
    QVERIFY(write(path, version1));
    QVERIFY(rebuilt.wait(5000));
    QVERIFY(!host.control(QStringLiteral("level")));
}

QTEST_MAIN(tst_PanelWatcher)
#include "tst_panelwatcher.moc"
