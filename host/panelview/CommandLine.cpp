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
        } else if (a == QLatin1String("--describe")) {
            describe = true;
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
    if (!help && !listTypes && panel.isEmpty()) {
        *error = QStringLiteral("no panel description given");
        return false;
    }
    return true;
}

QString CommandLine::usage()
{
    return QStringLiteral(
        "usage: panelview [options] PANEL.xml\n"
        "       panelview --list-types [--describe] [--plugin PATH]\n"
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
        "  --describe           with --list-types: each name's line from its family page\n"
        "  --trace              in the window, print requests and selections as JSON lines\n");
}
