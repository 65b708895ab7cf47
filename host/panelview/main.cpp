#include "CommandLine.h"
#include "Discovery.h"
#include "Linter.h"
#include "PanelChecker.h"
#include "PanelFactory.h"
#include "PanelHost.h"
#include "PanelWatcher.h"
#include "ParameterDatabase.h"
#include "Schema.h"
#include "ScriptRunner.h"
#include "SignalClock.h"
#include "TypeDescriptions.h"
#include "TypeNames.h"

#include <corvane/IHostCore.h>
#include <corvane/IPanelFactory.h>
#include <corvane/IWidgetCore.h>
#include <corvane/IWidgetFactory.h>
#include <corvane/ParameterManagement.h>
#include <corvane/Version.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPixmap>
#include <QPluginLoader>
#include <QTextStream>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

QTextStream &err()
{
    static QTextStream stream(stderr);
    return stream;
}

int fail(const QString &message)
{
    err() << "panelview: " << message << '\n';
    err().flush();
    return 1;
}

bool hasDisplay()
{
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || qEnvironmentVariableIsSet("DISPLAY")
        || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

// --list-models, --list-parameters, --describe, --schema.
int discover(const CommandLine &options, IWidgetFactory *factory, const QString &pluginPath)
{
    QTextStream out(stdout);
    QString error;
    QStringList typeNames;
    if (!options.describe.isEmpty() || options.schema) {
        if (!TypeNames::of(pluginPath, &typeNames, &error))
            return fail(QStringLiteral("the plug-in lists no type names: %1").arg(error));
    }
    const ParameterDatabase &database = *ParameterDatabase::instance();
    bool ok = true;
    if (options.listModels)
        Discovery::listModels(database, out);
    if (ok && !options.listParameters.isEmpty())
        ok = Discovery::listParameters(database, options.listParameters, out, &error);
    if (ok && !options.describe.isEmpty())
        ok = Discovery::describe(factory, typeNames, options.describe, out, &error);
    if (ok && options.schema) {
        QMap<QString, QStringList> tags;
        for (const QString &type : qAsConst(typeNames))
            Linter::tagsOf(factory, type, &tags[type]);
        out << Schema::generate(typeNames, tags);
    }
    out.flush();
    return ok ? 0 : fail(error);
}

} // namespace

// Without a window system the editors' mouse grab is only a no-op; the
// platform's complaint about it would drown a script's own errors.
QtMessageHandler defaultMessageHandler = nullptr;

void filterMessages(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (message == QLatin1String("This plugin does not support grabbing the mouse")
        || message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set")))
        return;
    defaultMessageHandler(type, context, message);
}

int main(int argc, char *argv[])
{
    defaultMessageHandler = qInstallMessageHandler(filterMessages);
    // Everything but the window runs without a display; decide before the
    // application object picks a platform.
    {
        QStringList raw;
        for (int i = 1; i < argc; ++i)
            raw << QString::fromLocal8Bit(argv[i]);
        CommandLine early;
        QString ignored;
        // A failed parse prints an error and nothing else, unless it failed on
        // one of Qt's own options (-platform, ...), which outrank the variable.
        const bool parsed = early.parse(raw, &ignored);
        if ((!parsed || early.headless() || early.aboutOnly()) && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        else if (parsed && !early.headless() && !early.aboutOnly() && !hasDisplay())
            return fail(QStringLiteral("no display to open a window on; use --screenshot FILE.png to render the panel"));
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("panelview"));
    QApplication::setApplicationVersion(QStringLiteral(CORVANE_VERSION_STR));

    CommandLine options;
    QString error;
    if (!options.parse(app.arguments().mid(1), &error)) {
        fail(error);
        err() << CommandLine::helpHint();
        return 1;
    }
    if (options.help) {
        QTextStream(stdout) << CommandLine::usage();
        return 0;
    }
    if (options.version) {
        QTextStream(stdout) << QCoreApplication::applicationName() << ' ' << QCoreApplication::applicationVersion() << '\n';
        return 0;
    }

    const QString pluginPath = options.plugin.isEmpty()
        ? QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("libCorvaneWidgets.so"))
        : options.plugin;
    QPluginLoader widgetLoader(pluginPath);
    QObject *factoryObject = widgetLoader.instance();
    auto *factory = qobject_cast<IWidgetFactory *>(factoryObject);
    if (!factory) {
        return fail(factoryObject ? QStringLiteral("%1 is not a widget plug-in").arg(pluginPath)
                                  : QStringLiteral("cannot load the plug-in: %1").arg(widgetLoader.errorString()));
    }

    if (options.listTypes) {
        QTextStream out(stdout);
        QStringList names;
        if (!TypeNames::of(pluginPath, &names, &error))
            return fail(QStringLiteral("the plug-in lists no type names: %1").arg(error));
        if (options.listLong)
            names = TypeDescriptions::describe(names, TypeDescriptions::builtIn());
        for (const QString &name : qAsConst(names))
            out << name << QLatin1Char('\n');
        return 0;
    }

    if (options.discovery())
        return discover(options, factory, pluginPath);

    QFile file(options.panel);
    if (!file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("cannot read %1: %2").arg(options.panel, file.errorString()));
    const QByteArray xml = file.readAll();

    ParameterDatabase *database = ParameterDatabase::instance();
    QStringList typeNames;
    TypeNames::of(pluginPath, &typeNames, &error);
    const PanelChecker checker = Linter::checker(factory, database, options.panel, typeNames);
    const QList<PanelChecker::Finding> findings = checker.check(xml);
    if (options.check) {
        QTextStream out(stdout);
        return Linter::report(out, options.panel, findings, options.json);
    }
    for (const QString &line : PanelChecker::format(options.panel, PanelChecker::collapse(findings)))
        err() << line << '\n';
    err().flush();

    const QString panelPluginPath = QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("libPanel.so"));
    QPluginLoader panelLoader(panelPluginPath);
    QObject *panelObject = panelLoader.instance();
    auto *panelFactory = qobject_cast<IPanelFactory *>(panelObject);
    if (!panelFactory)
        return fail(QStringLiteral("cannot load the panel factory: %1").arg(panelLoader.errorString()));
    QMetaObject::invokeMethod(panelObject, "setWidgetFactory", Qt::DirectConnection, Q_ARG(QObject *, factoryObject));

    PanelHost host(database);
    if (!host.load(xml, options.panel, &error)) {
        // The findings above already name what makes the file unusable.
        if (!PanelChecker::hasError(findings))
            err() << error << '\n';
        return 1;
    }
    for (const QString &warning : host.warnings())
        err() << options.panel << ':' << warning << '\n';
    err().flush();
    host.setZoom(float(options.zoom));
    if (!host.build(panelFactory, &error))
        return fail(error);
    QWidget *panel = host.panel();
    panel->setWindowTitle(QStringLiteral("%1 - panelview").arg(QFileInfo(options.panel).fileName()));

    if (!options.script.isEmpty()) {
        QString script;
        if (options.script == QLatin1String("-")) {
            QTextStream in(stdin);
            script = in.readAll();
        } else {
            QFile scriptFile(options.script);
            if (!scriptFile.open(QIODevice::ReadOnly | QIODevice::Text)) {
                err() << options.script << ":0: cannot read the script: " << scriptFile.errorString() << '\n';
                return 2;
            }
            script = QString::fromUtf8(scriptFile.readAll());
        }
        QTextStream out(stdout);
        out.setCodec("UTF-8");
        ScriptRunner runner(&host, &out);
        if (!runner.run(script, options.script == QLatin1String("-") ? QStringLiteral("<stdin>") : options.script)) {
            out.flush();
            err() << runner.error() << '\n';
            err().flush();
            return 2;
        }
    }

    if (!options.screenshot.isEmpty()) {
        // Without a script to say otherwise, the picture shows the signals
        // after a second, with the meters settled.
        if (options.script.isEmpty())
            database->advance(1000);
        panel->show();
        QCoreApplication::processEvents();
        if (!panel->grab().save(options.screenshot, "PNG"))
            return fail(QStringLiteral("cannot write %1").arg(options.screenshot));
    }
    if (options.headless())
        return 0;

    QTextStream trace(stdout);
    std::unique_ptr<PanelWatcher> watcher;
    if (options.watch) {
        const QString file = options.panel;
        watcher.reset(new PanelWatcher(&host, panelFactory, file, checker, [file](const QList<PanelChecker::Finding> &f) {
            const QList<PanelChecker::Finding> collapsed = PanelChecker::collapse(f);
            for (const QString &line : PanelChecker::format(file, collapsed))
                err() << line << '\n';
            err() << file << ": " << PanelChecker::summary(collapsed) << '\n';
            err().flush();
        }));
        QObject::connect(watcher.get(), &PanelWatcher::failed, [](const QString &message) { fail(message); });
    }
    if (options.trace) {
        host.setEventSink([&trace](const QString &line) {
            trace << line << '\n';
            trace.flush();
        });
    }
    panel->show();
    SignalClock clock(database);
    clock.start(panel->screen());
    return app.exec();
}
