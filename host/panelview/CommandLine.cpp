#include "CommandLine.h"

#include <cmath>

bool CommandLine::parse(const QStringList &arguments, QString *error)
{
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &a = arguments.at(i);
        auto value = [&](QString *out) {
            if (i + 1 >= arguments.size()) {
                *error = QStringLiteral("%1 needs a value").arg(a);
                return false;
            }
            *out = arguments.at(++i);
            return true;
        };
        if (a == QLatin1String("--screenshot")) {
            if (!value(&screenshot))
                return false;
        } else if (a == QLatin1String("--script")) {
            if (!value(&script))
                return false;
        } else if (a == QLatin1String("--plugin")) {
            if (!value(&plugin))
                return false;
        } else if (a == QLatin1String("--zoom")) {
            QString text;
            if (!value(&text))
                return false;
            bool ok = false;
            zoom = text.toDouble(&ok);
            if (!ok || !std::isfinite(zoom) || zoom <= 0) {
                *error = QStringLiteral("--zoom needs a number above 0, not \"%1\"").arg(text);
                return false;
            }
        } else if (a == QLatin1String("--check")) {
            check = true;
        } else if (a == QLatin1String("--list-types")) {
            listTypes = true;
        } else if (a == QLatin1String("--json")) {
            json = true;
        } else if (a == QLatin1String("--list-models")) {
            listModels = true;
        } else if (a == QLatin1String("--list-parameters")) {
            if (!value(&listParameters))
                return false;
        } else if (a == QLatin1String("--describe")) {
            if (!value(&describe))
                return false;
        } else if (a == QLatin1String("--schema")) {
            schema = true;
        } else if (a == QLatin1String("--watch")) {
            watch = true;
        } else if (a == QLatin1String("--trace")) {
            trace = true;
        } else if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            help = true;
        } else if (a.startsWith(QLatin1String("--")) || (a.startsWith(QLatin1Char('-')) && a.size() > 1)) {
            *error = QStringLiteral("unknown option %1").arg(a);
            return false;
        } else if (panel.isEmpty()) {
            panel = a;
        } else {
            *error = QStringLiteral("one panel at a time (got \"%1\" and \"%2\")").arg(panel, a);
            return false;
        }
    }
    if (!help && !listTypes && !discovery() && panel.isEmpty()) {
        *error = QStringLiteral("no panel description given");
        return false;
    }
    return true;
}

QString CommandLine::usage()
{
    return QStringLiteral(
        "usage: panelview [options] PANEL.xml\n"
        "       panelview --list-types [--plugin PATH]\n"
        "       panelview --list-models | --list-parameters MODEL | --describe TYPE | --schema\n"
        "\n"
        "Opens a panel description with the widget plug-in and a simulated device.\n"
        "\n"
        "  --check              report the problems of the description and exit\n"
        "                       (status 1 when there is an error)\n"
        "  --screenshot FILE    render the panel to a PNG file without a display and exit\n"
        "  --script FILE        play a scripted session (- reads standard input) and\n"
        "                       print what happened as JSON lines\n"
        "  --zoom F             zoom factor (1 is design size)\n"
        "  --plugin PATH        the widget plug-in (default: the one next to panelview)\n"
        "  --list-types         print the type names the plug-in creates\n"
        "  --trace              in the window, print requests and selections as JSON lines\n"
        "  --json               with --check, print the findings as JSON lines\n"
        "  --watch              rebuild the window when the panel or a file it uses changes\n"
        "  --list-models        print the device models of the simulated database\n"
        "  --list-parameters MODEL  print a model's parameters: address, kind, range, unit, options\n"
        "  --describe TYPE      print a type's tags, properties and address layout\n"
        "  --schema             print an XML Schema of the panel format\n");
}
