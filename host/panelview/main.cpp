#include "CommandLine.h"
#include "PanelChecker.h"
#include "PanelFactory.h"
#include "PanelHost.h"
#include "ParameterDatabase.h"
#include "ScriptRunner.h"
#include "SignalClock.h"
#include "TypeDescriptions.h"
#include "TypeNames.h"

#include <corvane/IHostCore.h>
#include <corvane/IPanelFactory.h>
#include <corvane/IWidgetCore.h>
#include <corvane/IWidgetFactory.h>
#include <corvane/ParameterManagement.h>

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

// What --check needs to know of a type: whether the factory makes it, and
// which tags the control reads.
PanelChecker::TypeLookup typeLookup(IWidgetFactory *factory)
{
    return [factory](const QString &type, QStringList *tags) {
        NullHostCore host;
        ParameterManagementRegistry registry;
        QWidget scratch;
        IWidgetCore *core = factory->create(type, &scratch, &host, &registry);
        QWidget *w = core ? widgetOf(core) : nullptr;
        if (!w)
            return PanelChecker::UnknownType;
        const bool answered = QMetaObject::invokeMethod(w, "handledTags", Qt::DirectConnection,
                                                        Q_RETURN_ARG(QStringList, *tags));
        delete w;
        return answered ? PanelChecker::KnownTypeWithTags : PanelChecker::KnownType;
    };
}

bool hasDisplay()
{
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || qEnvironmentVariableIsSet("DISPLAY")
        || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
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
        early.parse(raw, &ignored);
        if ((early.headless() || early.help) && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        else if (!early.headless() && !early.help && !early.panel.isEmpty() && !hasDisplay())
            return fail(QStringLiteral("no display to open a window on; use --screenshot FILE.png to render the panel"));
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("panelview"));

    CommandLine options;
    QString error;
    if (!options.parse(app.arguments().mid(1), &error)) {
        fail(error);
        err() << CommandLine::usage();
        return 1;
    }
    if (options.help) {
        QTextStream(stdout) << CommandLine::usage();
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
        if (options.describe)
            names = TypeDescriptions::describe(names, TypeDescriptions::builtIn());
        for (const QString &name : qAsConst(names))
            out << name << QLatin1Char('\n');
        return 0;
    }

    QFile file(options.panel);
    if (!file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("cannot read %1: %2").arg(options.panel, file.errorString()));
    const QByteArray xml = file.readAll();

    ParameterDatabase *database = ParameterDatabase::instance();
    const PanelChecker checker(typeLookup(factory),
                               [database](const QString &model) { return database->hasModel(model); });
    const QList<PanelChecker::Finding> findings = checker.check(xml);
    if (options.check) {
        QTextStream out(stdout);
        for (const QString &line : PanelChecker::format(options.panel, findings))
            out << line << '\n';
        return PanelChecker::hasError(findings) ? 1 : 0;
    }
    for (const QString &line : PanelChecker::format(options.panel, findings))
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
