#include "numberbox_variants.h"

#include "data/ParameterKeys.h"

#include <QRegularExpression>
#include <QtMath>

#include <cmath>

namespace NumberText {

namespace {
const QRegularExpression &numberPattern()
{
    static const QRegularExpression pattern(QStringLiteral("^\\s*[-+]?(\\d+\\.?\\d*|\\.\\d+)([eE][-+]?\\d+)?"));
    return pattern;
}
} // namespace

double leadingNumber(const QString &text, bool *ok)
{
    const QRegularExpressionMatch m = numberPattern().match(text);
    *ok = m.hasMatch();
    return m.hasMatch() ? m.captured(0).trimmed().toDouble() : 0.0;
}

QString leadingNumberText(const QString &text)
{
    return numberPattern().match(text).captured(0).trimmed();
}

QString formatLeadingNumber(const QString &text, const char *format)
{
    const QRegularExpressionMatch m = numberPattern().match(text);
    if (!m.hasMatch())
        return text;
    return QString::asprintf(format, m.captured(0).trimmed().toDouble()) + text.mid(m.capturedEnd());
}

} // namespace NumberText

// ---------------------------------------------------------------------------

int BandWidthNumberBox::unitIndex() const
{
    return addressCount() > 1 && !isSelector(1) ? 1 : -1;
}

QString BandWidthNumberBox::unitText() const
{
    const int index = unitIndex();
    return index < 0 ? QString() : displayText(index);
}

QString BandWidthNumberBox::editorStartText() const
{
    const QString text = NumberBox::editorStartText();
    if (!isOctaves())
        return text;
    // Octaves are typed as the bare figure; the display adds the unit.
    const QString figure = NumberText::leadingNumberText(text);
    return figure.isEmpty() ? text : figure;
}

QString TuningZoneBandWidthNumberBox::shownText() const
{
    return NumberText::formatLeadingNumber(TuningZone::shownText(), "%.1f");
}

QString TuningZoneMasterDelaySubTimeNumberBox::shownText() const
{
    const QString text = displayText(valueIndex());
    bool ok = false;
    const double v = NumberText::leadingNumber(text, &ok);
    if (!ok)
        return TuningZone::shownText();
    return QString::asprintf("%.02f ", v) + unit();
}

// ---------------------------------------------------------------------------

const TagTable &TuningZoneMasterNumberBox::tags()
{
    static const TagTable table = TagTable::of<TuningZoneMasterNumberBox>(&TuningZone::tags(), {
        {"MasterType", TagTable::trimmedText("masterType")},
        {"MaxValue", TagTable::number("maxValue")},
        {"MinValue", TagTable::number("minValue")},
        {"Scale", TagTable::trimmedText("scale")},
        {"Step", TagTable::number("step")},
        {"Unit", TagTable::trimmedText("unit")},
    });
    return table;
}

QString TuningZoneMasterNumberBox::shownText() const
{
    if (!displayText(0).isEmpty() || !(m_max > m_min))
        return TuningZone::shownText();
    if (!hasPosition(0))
        return TuningZone::shownText();
    const double v = qBound(0.0, position(0), 1.0);
    double value;
    if (m_scale.compare(QLatin1String("log"), Qt::CaseInsensitive) == 0 && m_min > 0)
        value = m_min * qPow(m_max / m_min, v);
    else
        value = m_min + v * (m_max - m_min);
    int decimals = 0;
    if (m_step > 0 && m_step < 1)
        decimals = qMin(6, int(qCeil(-std::log10(m_step) - 1e-9)));
    if (m_step > 0)
        value = std::round(value / m_step) * m_step; // no integer: any double rounds
    QString text = QString::number(value, 'f', decimals);
    if (!m_unit.isEmpty())
        text += QLatin1Char(' ') + m_unit;
    return text;
}

// ---------------------------------------------------------------------------

const TagTable &GcNumberBox::tags()
{
    static const TagTable table = TagTable::of<GcNumberBox>(&NumberBox::tags(), {
        {"ReadOnly", TagTable::boolean("readOnly").ignoringCase()},
    });
    return table;
}

void GcNumberBox::setReadOnly(bool on)
{
    m_readOnly = on;
    if (on)
        endEditing(false);
}

// ---------------------------------------------------------------------------

const TagTable &BeamNumberBox::tags()
{
    static const TagTable table = TagTable::of<BeamNumberBox>(&NumberBox::tags(), {
        {"Unit", &BeamNumberBox::readUnit},
        {"Mode", TagTable::trimmedText("mode")},
        {"Left", TagTable::number("left")},
        {"Right", TagTable::number("right")},
        {"Bottom", TagTable::number("bottom")},
        {"FlrToTalk", TagTable::number("floorToTalker")},
    });
    return table;
}

bool BeamNumberBox::readUnit(const QDomElement &e)
{
    const QString text = e.text().trimmed();
    if (text.compare(QLatin1String("Meter"), Qt::CaseInsensitive) != 0
        && text.compare(QLatin1String("Feet"), Qt::CaseInsensitive) != 0)
        return false;
    m_unit = text;
    update();
    return true;
}

double BeamNumberBox::value() const
{
    bool ok = false;
    const double stored = NumberText::leadingNumber(displayText(0), &ok);
    return ok && std::isfinite(stored) ? toShown(stored) : qQNaN();
}

QString BeamNumberBox::shownText() const
{
    const double v = value();
    if (qIsNaN(v))
        return NumberBox::shownText();
    return QString::asprintf("%.1f", v) + (showsFeet() ? QLatin1String("ft") : QLatin1String("m"));
}

QString BeamNumberBox::editorStartText() const
{
    const double v = value();
    return qIsNaN(v) ? NumberBox::editorStartText() : QString::asprintf("%.1f", v);
}

void BeamNumberBox::sendValue(double shown)
{
    if (!qIsNaN(m_left))
        shown = qMax(shown, toShown(m_left));
    if (!qIsNaN(m_right))
        shown = qMin(shown, toShown(m_right));
    requestText(QString::asprintf("%.1f", toStored(shown)), 0);
}

void BeamNumberBox::commitText(const QString &text)
{
    bool ok = false;
    const double v = NumberText::leadingNumber(text, &ok);
    if (ok)
        sendValue(v);
}

void BeamNumberBox::stepValue(int step)
{
    const double v = value();
    if (qIsNaN(v)) {
        NumberBox::stepValue(step);
        return;
    }
    // Round first so that repeated steps stay on the tenths.
    sendValue(std::round(v * 10) / 10.0 + step * 0.1);
}

bool BeamConvertNumberBox::showsFeet() const
{
    if (m_mode.compare(QLatin1String("Feet"), Qt::CaseInsensitive) == 0)
        return true;
    if (m_mode.compare(QLatin1String("Meter"), Qt::CaseInsensitive) == 0)
        return false;
    return isFeet();
}

double BeamConvertNumberBox::toShown(double stored) const
{
    return showsFeet() ? stored / metresPerFoot : stored;
}

double BeamConvertNumberBox::toStored(double shown) const
{
    return showsFeet() ? shown * metresPerFoot : shown;
}

// ---------------------------------------------------------------------------

int DirectionNumberBox::boundDragPosition(int position) const
{
    return ((position % dragRange) + dragRange) % dragRange;
}

bool MeterValueNumberBox::isOffline() const
{
    return displayText(0).isEmpty() && positionText(0).isEmpty();
}

QString MeterValueNumberBox::shownText() const
{
    return isOffline() ? QStringLiteral("offline") : NumberBox::shownText();
}
