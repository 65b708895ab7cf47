#include "ParameterDefinition.h"

#include "FrequencySteps.h"

#include <QDomElement>
#include <QRegularExpression>

#include <cmath>

namespace {

const char *const typeNames[] = {"linear", "level", "frequency", "options", "onoff", "text", "meter", "state"};

bool toDouble(const QString &text, double *value)
{
    bool ok = false;
    const double v = text.trimmed().toDouble(&ok);
    if (ok && std::isfinite(v)) {
        *value = v;
        return true;
    }
    return false;
}

// A number followed by an optional unit word: "-6", "-6dB", "1.5 kHz".
bool splitNumber(const QString &text, double *number, QString *unit)
{
    static const QRegularExpression re(QStringLiteral(
        "^\\s*([+-]?(?:\\d+\\.?\\d*|\\.\\d+)(?:[eE][+-]?\\d+)?)\\s*([^\\s\\d][^\\s]*)?\\s*$"));
    const QRegularExpressionMatch m = re.match(text);
    if (!m.hasMatch())
        return false;
    *unit = m.captured(2);
    return toDouble(m.captured(1), number);
}

bool isInfinityWord(const QString &text)
{
    const QString t = text.trimmed().toLower();
    return t == QLatin1String("-inf") || t == QLatin1String("-inf db") || t == QLatin1String("-infdb")
        || t == QStringLiteral("-\u221e") || t == QLatin1String("off");
}

} // namespace

QString ParameterDefinition::typeName(Type type)
{
    return QLatin1String(typeNames[type]);
}

bool ParameterDefinition::typeFromName(const QString &name, Type *type)
{
    for (int i = 0; i <= State; ++i) {
        if (name == QLatin1String(typeNames[i])) {
            *type = Type(i);
            return true;
        }
    }
    return false;
}

bool ParameterDefinition::fromElement(const QDomElement &element, ParameterDefinition *definition, QString *error)
{
    ParameterDefinition s;
    s.address = element.attribute(QStringLiteral("address"));
    if (s.address.isEmpty()) {
        *error = QStringLiteral("parameter without an address");
        return false;
    }
    const QString type = element.attribute(QStringLiteral("type"));
    if (!typeFromName(type, &s.type)) {
        *error = QStringLiteral("parameter %1: unknown type \"%2\"").arg(s.address, type);
        return false;
    }

    auto number = [&](const char *name, double *out) {
        const QString text = element.attribute(QLatin1String(name));
        if (text.isEmpty())
            return true;
        if (toDouble(text, out))
            return true;
        *error = QStringLiteral("parameter %1: %2 \"%3\" is not a number").arg(s.address, QLatin1String(name), text);
        return false;
    };

    s.unit = element.attribute(QStringLiteral("unit"));
    s.readOnly = element.attribute(QStringLiteral("readonly")) == QLatin1String("true");
    s.minusInfinity = element.attribute(QStringLiteral("inf")) == QLatin1String("true");
    s.decimals = element.attribute(QStringLiteral("decimals"), QStringLiteral("0")).toInt();
    s.maxLength = element.attribute(QStringLiteral("maxLength"), QStringLiteral("0")).toInt();
    const QString defaultText = element.attribute(QStringLiteral("default"));

    switch (s.type) {
    case Linear:
    case Level:
    case Meter: {
        if (s.type != Linear && !element.hasAttribute(QStringLiteral("unit")))
            s.unit = QStringLiteral("dB");
        if (s.type != Linear && !element.hasAttribute(QStringLiteral("decimals")))
            s.decimals = 1;
        s.step = std::pow(10.0, -s.decimals);
        if (!number("min", &s.minimum) || !number("max", &s.maximum) || !number("step", &s.step))
            return false;
        if (!(s.maximum > s.minimum) || !(s.step > 0)) {
            *error = QStringLiteral("parameter %1: empty range or step").arg(s.address);
            return false;
        }
        s.defaultValue = s.type == Meter ? s.minimum : qBound(s.minimum, 0.0, s.maximum);
        if (!defaultText.isEmpty() && !(s.minusInfinity && isInfinityWord(defaultText))
            && !number("default", &s.defaultValue))
            return false;
        if (s.minusInfinity && isInfinityWord(defaultText))
            s.defaultValue = s.minimum;
        const QString curve = element.attribute(QStringLiteral("curve")).simplified();
        if (!curve.isEmpty()) {
            for (const QString &item : curve.split(QLatin1Char(' '))) {
                const QStringList pv = item.split(QLatin1Char(':'));
                double p, v;
                if (pv.size() != 2 || !toDouble(pv[0], &p) || !toDouble(pv[1], &v)
                    || (!s.curve.isEmpty() && (p <= s.curve.last().x() || v <= s.curve.last().y()))) {
                    *error = QStringLiteral("parameter %1: malformed curve point \"%2\"").arg(s.address, item);
                    return false;
                }
                s.curve.append(QPointF(p, v));
            }
            if (s.curve.size() < 2 || s.curve.first().x() != 0 || s.curve.last().x() != 1
                || s.curve.first().y() != s.minimum || s.curve.last().y() != s.maximum) {
                *error = QStringLiteral("parameter %1: the curve must run from 0:min to 1:max").arg(s.address);
                return false;
            }
        }
        break;
    }
    case Frequency: {
        double lo = 20, hi = 20000, def = 1000;
        if (!number("min", &lo) || !number("max", &hi) || !number("default", &def))
            return false;
        s.unit = QStringLiteral("Hz");
        s.minimum = FrequencySteps::nearestRow(lo);
        s.maximum = FrequencySteps::nearestRow(hi);
        if (!(s.maximum > s.minimum)) {
            *error = QStringLiteral("parameter %1: empty frequency range").arg(s.address);
            return false;
        }
        s.step = 1;
        s.defaultValue = qBound(s.minimum, double(FrequencySteps::nearestRow(def)), s.maximum);
        break;
    }
    case Options:
    case OnOff: {
        const QString list = element.attribute(QStringLiteral("options"));
        s.options = list.isEmpty() && s.type == OnOff ? QStringList{QStringLiteral("Off"), QStringLiteral("On")}
                                                      : list.split(QLatin1Char('|'));
        if (s.options.size() < 2 || s.options.contains(QString())) {
            *error = QStringLiteral("parameter %1: an option list needs two or more options").arg(s.address);
            return false;
        }
        s.minimum = 0;
        s.maximum = s.options.size() - 1;
        s.step = 1;
        s.defaultValue = 0;
        if (!defaultText.isEmpty() && !s.parse(defaultText, &s.defaultValue)) {
            *error = QStringLiteral("parameter %1: default \"%2\" is not an option").arg(s.address, defaultText);
            return false;
        }
        break;
    }
    case Text:
    case State:
        s.defaultText = defaultText;
        s.options = element.attribute(QStringLiteral("options")).split(QLatin1Char('|'), Qt::SkipEmptyParts);
        if (s.type == State && !s.options.isEmpty() && !s.options.contains(defaultText))
            s.defaultText = s.options.first();
        break;
    }
    if (s.type == Meter || s.type == State)
        s.readOnly = true;
    *definition = s;
    return true;
}

double ParameterDefinition::lowest() const
{
    return minimum;
}

double ParameterDefinition::highest() const
{
    return maximum;
}

double ParameterDefinition::rounded(double value) const
{
    switch (type) {
    case Frequency:
    case Options:
    case OnOff:
        return std::round(value);
    default: {
        const double scale = std::pow(10.0, decimals);
        double r = std::round(value * scale) / scale;
        return r == 0 ? 0.0 : r; // no "-0.0"
    }
    }
}

double ParameterDefinition::normalized(double value) const
{
    return qBound(minimum, rounded(qBound(minimum, value, maximum)), maximum);
}

double ParameterDefinition::valueAt(double position) const
{
    const double p = qBound(0.0, position, 1.0);
    if (curve.size() >= 2) {
        for (int i = 1; i < curve.size(); ++i) {
            const QPointF a = curve.at(i - 1), b = curve.at(i);
            if (p <= b.x())
                return normalized(a.y() + (b.y() - a.y()) * (p - a.x()) / (b.x() - a.x()));
        }
        return maximum;
    }
    return normalized(minimum + (maximum - minimum) * p);
}

double ParameterDefinition::positionOf(double value) const
{
    const double v = qBound(minimum, value, maximum);
    if (curve.size() >= 2) {
        for (int i = 1; i < curve.size(); ++i) {
            const QPointF a = curve.at(i - 1), b = curve.at(i);
            if (v <= b.y())
                return a.x() + (b.x() - a.x()) * (v - a.y()) / (b.y() - a.y());
        }
        return 1;
    }
    return (v - minimum) / (maximum - minimum);
}

bool ParameterDefinition::parse(const QString &text, double *value) const
{
    const QString trimmed = text.trimmed();
    switch (type) {
    case Text:
    case State:
        return false;
    case Options:
    case OnOff: {
        for (int i = 0; i < options.size(); ++i) {
            if (options.at(i).compare(trimmed, Qt::CaseInsensitive) == 0) {
                *value = i;
                return true;
            }
        }
        if (type == OnOff) {
            const QString t = trimmed.toLower();
            if (t == QLatin1String("on") || t == QLatin1String("true") || t == QLatin1String("1")) {
                *value = 1;
                return true;
            }
            if (t == QLatin1String("off") || t == QLatin1String("false") || t == QLatin1String("0")) {
                *value = 0;
                return true;
            }
            return false;
        }
        bool ok = false;
        const int index = trimmed.toInt(&ok);
        if (!ok || index < 0 || index >= options.size())
            return false;
        *value = index;
        return true;
    }
    case Frequency: {
        double number;
        QString word;
        if (!splitNumber(trimmed, &number, &word))
            return false;
        const QString w = word.toLower();
        if (w == QLatin1String("k") || w == QLatin1String("khz"))
            number *= 1000;
        else if (!w.isEmpty() && w != QLatin1String("hz"))
            return false;
        *value = qBound(minimum, double(FrequencySteps::nearestRow(number)), maximum);
        return true;
    }
    case Linear:
    case Level:
    case Meter: {
        if (minusInfinity && isInfinityWord(trimmed)) {
            *value = minimum;
            return true;
        }
        double number;
        QString word;
        if (!splitNumber(trimmed, &number, &word))
            return false;
        if (!word.isEmpty() && word.compare(unit, Qt::CaseInsensitive) != 0) {
            // Milliseconds also take seconds, and anything in dB takes "db".
            if (unit == QLatin1String("ms") && word == QLatin1String("s"))
                number *= 1000;
            else
                return false;
        }
        *value = normalized(number);
        return true;
    }
    }
    return false;
}

double ParameterDefinition::stepped(double value, int steps) const
{
    if (type == Level && minusInfinity && value <= minimum && steps > 0) {
        // Stepping up from -inf lands on the lowest level the curve shows
        // as a number, rather than one resolution step above nothing.
        return normalized(minimum + step * steps);
    }
    return normalized(value + step * steps);
}

QString ParameterDefinition::displayText(double value) const
{
    switch (type) {
    case Text:
    case State:
        return QString();
    case Options:
    case OnOff:
        return options.value(int(rounded(value)));
    case Frequency:
        return FrequencySteps::label(int(rounded(value))) + QLatin1String(" Hz");
    case Linear:
    case Level:
    case Meter: {
        QString number;
        if (minusInfinity && value <= minimum)
            number = QStringLiteral("-inf");
        else
            number = QString::number(rounded(value), 'f', decimals);
        return unit.isEmpty() ? number : number + QLatin1Char(' ') + unit;
    }
    }
    return QString();
}

QString ParameterDefinition::positionText(double position)
{
    const double p = std::abs(position) < 1e-12 ? 0.0 : position;
    return QString::number(p, 'g', 6);
}

QString ParameterDefinition::valueText(double value)
{
    // Most values are whole numbers, far from where 'g' turns to an
    // exponent: those skip the general formatting, which costs several
    // times as much.
    if (std::abs(value) < 1e6 && value == std::trunc(value))
        return QString::number(qint64(value));
    return QString::number(value, 'g', 10);
}
