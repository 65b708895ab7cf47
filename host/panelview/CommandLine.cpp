#include "CommandLine.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QCoreApplication>

#include <cmath>

namespace {

const QString programName = QStringLiteral("panelview");

QCommandLineOption helpOption()
{
    return QCommandLineOption({QStringLiteral("h"), QStringLiteral("help")},
                              QStringLiteral("print this help and exit"));
}

QCommandLineOption versionOption()
{
    return QCommandLineOption({QStringLiteral("v"), QStringLiteral("version")},
                              QStringLiteral("print the version and exit"));
}

// Every option but --help and --version, in the order --help lists them.
QList<QCommandLineOption> options()
{
    return {
        {QStringLiteral("check"), QStringLiteral("report the problems of the description and exit (status 1 when there is an error)")},
        {QStringLiteral("screenshot"), QStringLiteral("render the panel to a PNG file without a display and exit"), QStringLiteral("FILE")},
        {QStringLiteral("script"), QStringLiteral("play a scripted session (- reads standard input) and print what happened as JSON lines"), QStringLiteral("FILE")},
        {QStringLiteral("zoom"), QStringLiteral("zoom factor (1 is design size)"), QStringLiteral("F")},
        {QStringLiteral("plugin"), QStringLiteral("the widget plug-in (default: the one next to panelview)"), QStringLiteral("PATH")},
        {QStringLiteral("list-types"), QStringLiteral("print the type names the plug-in creates, in chain order")},
        {QStringLiteral("long"), QStringLiteral("with --list-types: each name's line from its family page")},
        {QStringLiteral("trace"), QStringLiteral("in the window, print requests and selections as JSON lines")},
        {QStringLiteral("json"), QStringLiteral("with --check, print the findings as JSON lines")},
        {QStringLiteral("watch"), QStringLiteral("in the window, rebuild the panel when its file or a file it uses changes")},
        {QStringLiteral("list-models"), QStringLiteral("print the device models of the simulated database")},
        {QStringLiteral("list-parameters"), QStringLiteral("print a model's parameters: address, kind, range, unit, options"), QStringLiteral("MODEL")},
        {QStringLiteral("describe"), QStringLiteral("print a type's classes, address layout, tags and properties"), QStringLiteral("TYPE")},
        {QStringLiteral("schema"), QStringLiteral("print an XML Schema of the panel format")},
    };
}

void declare(QCommandLineParser *parser)
{
    parser->setApplicationDescription(
        QStringLiteral("Opens a panel description with the widget plug-in and a simulated device."));
    parser->addOption(helpOption());
    parser->addOption(versionOption());
    parser->addOptions(options());
    parser->addPositionalArgument(QStringLiteral("PANEL.xml"), QStringLiteral("the panel description"));
}

} // namespace

bool CommandLine::parse(const QStringList &arguments, QString *error)
{
    QCommandLineParser parser;
    declare(&parser);
    if (!parser.parse(QStringList(programName) + arguments)) {
        *error = parser.errorText();
        return false;
    }
    help = parser.isSet(QStringLiteral("help"));
    version = parser.isSet(QStringLiteral("version"));
    check = parser.isSet(QStringLiteral("check"));
    listTypes = parser.isSet(QStringLiteral("list-types"));
    listLong = parser.isSet(QStringLiteral("long"));
    trace = parser.isSet(QStringLiteral("trace"));
    screenshot = parser.value(QStringLiteral("screenshot"));
    script = parser.value(QStringLiteral("script"));
    plugin = parser.value(QStringLiteral("plugin"));
    json = parser.isSet(QStringLiteral("json"));
    watch = parser.isSet(QStringLiteral("watch"));
    listModels = parser.isSet(QStringLiteral("list-models"));
    listParameters = parser.value(QStringLiteral("list-parameters"));
    describe = parser.value(QStringLiteral("describe"));
    schema = parser.isSet(QStringLiteral("schema"));
    if (parser.isSet(QStringLiteral("zoom"))) {
        const QString text = parser.value(QStringLiteral("zoom"));
        bool ok = false;
        zoom = text.toDouble(&ok);
        if (!ok || !std::isfinite(zoom) || zoom <= 0) {
            *error = QStringLiteral("--zoom needs a number above 0, not \"%1\"").arg(text);
            return false;
        }
    }

    const QStringList positional = parser.positionalArguments();
    if (positional.size() > 1) {
        *error = QStringLiteral("one panel at a time (got \"%1\" and \"%2\")").arg(positional.at(0), positional.at(1));
        return false;
    }
    panel = positional.value(0);
    if (!aboutOnly() && !listTypes && !discovery() && panel.isEmpty()) {
        *error = QStringLiteral("no panel description given");
        return false;
    }
    return true;
}

QString CommandLine::usage()
{
    QCommandLineParser parser;
    declare(&parser);
    // Qt names the program as it was called; the usage lines name it plainly
    // and show the second form of the command.
    QString text = parser.helpText();
    text.remove(0, text.indexOf(QLatin1Char('\n')) + 1);
    return QStringLiteral("Usage: %1 [options] PANEL.xml\n"
                          "       %1 --list-types [--long] [--plugin PATH]\n"
                          "       %1 --list-models | --list-parameters MODEL | --describe TYPE | --schema\n").arg(programName)
        + text;
}

QString CommandLine::helpHint()
{
    return QStringLiteral("Try '%1 --help' for more information.\n").arg(programName);
}
