#include "Equalizer.h"

#include "FrequencySteps.h"

#include <QDomDocument>
#include <QDomElement>

#include <cmath>

namespace {

// The graph background's axes, in design pixels.
constexpr double pixelsPerDecade = 220.5;
constexpr double x100Hz = 155;
constexpr double pixelsPerDb = 4.5;
constexpr int zeroDbRow = 81;

const QString bandTypes = QStringLiteral("Peaking|Low Shelf|High Shelf|Notch");
const QString slopes = QStringLiteral("6 dB/oct|12 dB/oct|18 dB/oct|24 dB/oct|30 dB/oct|36 dB/oct|42 dB/oct|48 dB/oct");

struct Generated
{
    QList<ParameterDefinition> *out;
    QDomDocument document;
    QString *error;

    bool add(const QString &address, const QString &type, const QList<QPair<QString, QString>> &attributes)
    {
        QDomElement e = document.createElement(QStringLiteral("Parameter"));
        e.setAttribute(QStringLiteral("address"), address);
        e.setAttribute(QStringLiteral("type"), type);
        for (const auto &a : attributes)
            e.setAttribute(a.first, a.second);
        ParameterDefinition definition;
        if (!ParameterDefinition::fromElement(e, &definition, error))
            return false;
        out->append(definition);
        return true;
    }
};

} // namespace

bool Equalizer::fromElement(const QDomElement &element, Equalizer *equalizer, QList<ParameterDefinition> *generated,
                            QString *error)
{
    Equalizer eq;
    eq.m_path = element.attribute(QStringLiteral("path"));
    if (eq.m_path.isEmpty()) {
        *error = QStringLiteral("equalizer without a path");
        return false;
    }
    eq.m_highPass = element.attribute(QStringLiteral("highPass"), eq.m_path + QLatin1String("/HPF"));
    eq.m_lowPass = element.attribute(QStringLiteral("lowPass"), eq.m_path + QLatin1String("/LPF"));
    bool ok = false;
    eq.m_bands = element.attribute(QStringLiteral("bands"), QStringLiteral("4")).toInt(&ok);
    if (!ok || eq.m_bands < 1 || eq.m_bands > 32) {
        *error = QStringLiteral("equalizer %1: bands must be 1 to 32").arg(eq.m_path);
        return false;
    }
    bool okW = false, okH = false;
    eq.m_width = element.attribute(QStringLiteral("width"), QStringLiteral("610")).toInt(&okW);
    eq.m_height = element.attribute(QStringLiteral("height"), QStringLiteral("162")).toInt(&okH);
    if (!okW || !okH || eq.m_width < 2 || eq.m_height < 2 || eq.m_width > 10000 || eq.m_height > 10000) {
        *error = QStringLiteral("equalizer %1: width and height must be 2 to 10000").arg(eq.m_path);
        return false;
    }
    // Default band frequencies: spread evenly over 100 Hz to 8 kHz on the log scale.
    QStringList frequencies = element.attribute(QStringLiteral("frequencies")).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (int b = frequencies.size(); b < eq.m_bands; ++b) {
        const double f = eq.m_bands == 1 ? 1000 : 100 * std::pow(80.0, double(b) / (eq.m_bands - 1));
        frequencies.append(FrequencySteps::label(FrequencySteps::nearestRow(f)));
    }

    QList<ParameterDefinition> out;
    Generated g{&out, QDomDocument(), error};
    const QString onOff = QStringLiteral("onoff");
    bool good = true;
    for (int b = 0; b < eq.m_bands && good; ++b) {
        good = g.add(eq.address(BandType, b), QStringLiteral("options"), {{"options", bandTypes}})
            && g.add(eq.address(BandFreq, b), QStringLiteral("frequency"), {{"default", frequencies.at(b)}})
            && g.add(eq.address(BandGain, b), QStringLiteral("linear"),
                     {{"min", "-18"}, {"max", "18"}, {"step", "0.5"}, {"decimals", "1"}, {"unit", "dB"}})
            && g.add(eq.address(BandQ, b), QStringLiteral("linear"),
                     {{"min", "0.5"}, {"max", "16"}, {"default", "0.7"}, {"step", "0.1"}, {"decimals", "2"},
                      {"curve", "0:0.5 0.5:2 0.8:6 1:16"}})
            && g.add(eq.address(BandOn, b), onOff, {{"default", "On"}})
            && g.add(eq.address(BandPoint, b), QStringLiteral("text"), {});
    }
    good = good && g.add(eq.address(HighPassFreq), QStringLiteral("frequency"), {{"default", "80"}})
        && g.add(eq.address(HighPassSlope), QStringLiteral("options"), {{"options", slopes}, {"default", "12 dB/oct"}})
        && g.add(eq.address(HighPassOn), onOff, {})
        && g.add(eq.address(HighPassPoint), QStringLiteral("text"), {})
        && g.add(eq.address(LowPassFreq), QStringLiteral("frequency"), {{"default", "20000"}})
        && g.add(eq.address(LowPassSlope), QStringLiteral("options"), {{"options", slopes}, {"default", "12 dB/oct"}})
        && g.add(eq.address(LowPassOn), onOff, {})
        && g.add(eq.address(LowPassPoint), QStringLiteral("text"), {})
        && g.add(eq.address(SectionOn), onOff, {{"default", "On"}})
        && g.add(eq.address(Sum), onOff, {{"default", "On"}})
        && g.add(eq.address(OwnCurve), QStringLiteral("text"), {{"readonly", "true"}})
        && g.add(eq.address(FilterCurve), QStringLiteral("text"), {{"readonly", "true"}})
        && g.add(eq.address(TotalCurve), QStringLiteral("text"), {{"readonly", "true"}});
    if (!good)
        return false;

    for (int role = BandType; role <= TotalCurve; ++role) {
        const int bands = role <= BandPoint ? eq.m_bands : 1;
        for (int b = 0; b < bands; ++b)
            eq.m_roles.insert(eq.address(Role(role), b), qMakePair(Role(role), b));
    }
    generated->append(out);
    *equalizer = eq;
    return true;
}

QString Equalizer::address(Role role, int band) const
{
    const QString b = QStringLiteral("%1/Band%2/").arg(m_path).arg(band + 1);
    switch (role) {
    case NoRole: return QString();
    case BandType: return b + QLatin1String("Type");
    case BandFreq: return b + QLatin1String("Freq");
    case BandGain: return b + QLatin1String("Gain");
    case BandQ: return b + QLatin1String("Q");
    case BandOn: return b + QLatin1String("On");
    case BandPoint: return b + QLatin1String("Point");
    case HighPassFreq: return m_highPass + QLatin1String("/Freq");
    case HighPassSlope: return m_highPass + QLatin1String("/Slope");
    case HighPassOn: return m_highPass + QLatin1String("/On");
    case HighPassPoint: return m_highPass + QLatin1String("/Point");
    case LowPassFreq: return m_lowPass + QLatin1String("/Freq");
    case LowPassSlope: return m_lowPass + QLatin1String("/Slope");
    case LowPassOn: return m_lowPass + QLatin1String("/On");
    case LowPassPoint: return m_lowPass + QLatin1String("/Point");
    case SectionOn: return m_path + QLatin1String("/On");
    case Sum: return m_path + QLatin1String("/Sum");
    case OwnCurve: return QLatin1String("Graph:") + m_path + QLatin1String("/Curve");
    case FilterCurve: return QLatin1String("Graph:") + m_path + QLatin1String("/HpfCurve");
    case TotalCurve: return QLatin1String("Graph:") + m_path + QLatin1String("/Total");
    }
    return QString();
}

Equalizer::Role Equalizer::roleOf(const QString &prmAddr, int *band) const
{
    const auto it = m_roles.constFind(prmAddr);
    if (it == m_roles.cend())
        return NoRole;
    if (band)
        *band = it->second;
    return it->first;
}

bool Equalizer::isComputed(Role role)
{
    return isPoint(role) || role == OwnCurve || role == FilterCurve || role == TotalCurve;
}

QStringList Equalizer::dependents(Role role, int band) const
{
    switch (role) {
    case BandFreq:
    case BandGain:
        return {address(BandPoint, band), address(OwnCurve), address(TotalCurve)};
    case BandType:
    case BandQ:
    case BandOn:
    case SectionOn:
        return {address(OwnCurve), address(TotalCurve)};
    case HighPassFreq:
        return {address(HighPassPoint), address(FilterCurve), address(TotalCurve)};
    case LowPassFreq:
        return {address(LowPassPoint), address(FilterCurve), address(TotalCurve)};
    case HighPassSlope:
    case HighPassOn:
    case LowPassSlope:
    case LowPassOn:
        return {address(FilterCurve), address(TotalCurve)};
    default:
        return {};
    }
}

double Equalizer::xOf(double hertz)
{
    return x100Hz + pixelsPerDecade * std::log10(qMax(hertz, 1e-3) / 100);
}

double Equalizer::hertzOf(double x)
{
    return 100 * std::pow(10.0, (x - x100Hz) / pixelsPerDecade);
}

double Equalizer::yOf(double db) const
{
    return (rangeY() - zeroDbRow) + pixelsPerDb * db;
}

double Equalizer::dbOf(double y) const
{
    return (y - (rangeY() - zeroDbRow)) / pixelsPerDb;
}

QVector<FilterResponse::Section> Equalizer::bandCascade(const Settings &settings) const
{
    QVector<FilterResponse::Section> out;
    if (!settings.on)
        return out;
    for (const Settings::Band &b : settings.bands) {
        if (b.on)
            out.append(FilterResponse::band(b.shape, settings.sampleRate, b.frequency, b.gain, b.q));
    }
    return out;
}

QVector<FilterResponse::Section> Equalizer::filterCascade(const Settings &settings) const
{
    QVector<FilterResponse::Section> out;
    if (settings.highPass.on)
        out += FilterResponse::butterworth(FilterResponse::Shape::HighPass, settings.sampleRate,
                                           settings.highPass.frequency, settings.highPass.order);
    if (settings.lowPass.on)
        out += FilterResponse::butterworth(FilterResponse::Shape::LowPass, settings.sampleRate,
                                           settings.lowPass.frequency, settings.lowPass.order);
    return out;
}

QString Equalizer::curveText(const QVector<FilterResponse::Section> &cascade, double sampleRate) const
{
    QString text = QStringLiteral("0:%1/0:%2").arg(rangeX()).arg(rangeY());
    text.reserve(text.size() + FrequencySteps::count() * 9);
    for (int row = 0; row < FrequencySteps::count(); ++row) {
        const double hertz = FrequencySteps::hertz(row);
        const long x = std::lround(xOf(hertz));
        if (x < 0 || x > rangeX())
            continue;
        const double y = qBound(0.0, yOf(FilterResponse::gainDb(cascade, sampleRate, hertz)), double(rangeY()));
        text += QLatin1Char('/') + QString::number(x) + QLatin1Char(':') + QString::number(std::lround(y));
    }
    return text;
}

QString Equalizer::pointText(double hertz, double db) const
{
    const double x = qBound(0.0, xOf(hertz), double(rangeX()));
    const double y = qBound(0.0, yOf(db), double(rangeY()));
    return QStringLiteral("0:%1/0:%2/%3:%4").arg(rangeX()).arg(rangeY()).arg(x, 0, 'f', 2).arg(y, 0, 'f', 2);
}

bool Equalizer::readFractions(const QString &text, double *hertz, double *db) const
{
    const QStringList parts = text.split(QLatin1Char(':'));
    if (parts.size() != 2)
        return false;
    bool okX = false, okY = false;
    const double fx = parts.at(0).trimmed().toDouble(&okX);
    const double fy = parts.at(1).trimmed().toDouble(&okY);
    if (!okX || !okY || !std::isfinite(fx) || !std::isfinite(fy))
        return false;
    *hertz = hertzOf(qBound(0.0, fx, 1.0) * rangeX());
    *db = dbOf(qBound(0.0, fy, 1.0) * rangeY());
    return true;
}
