#include "AddressingMixins.h"

#include "data/ParameterKeys.h"
#include "plugin/ExternalDevicesDB.h"

namespace Addressing {

QString selectorNumber(const BaseWidget &widget, int index)
{
    const ParameterAddress &selector = widget.addressAt(index);
    if (selector.value().isEmpty())
        return QString();
    bool ok = false;
    int number = widget.displayText(index).trimmed().toInt(&ok);
    if (!ok) {
        const int range = selector.key(QStringLiteral("range")).toInt();
        if (range <= 0)
            return QString();
        number = widget.stepOfPosition(range, index);
    }
    number += selector.key(QStringLiteral("offset")).toInt();
    return QString::number(number);
}

bool readSelector(BaseWidget &widget, const QDomElement &e, const QString &placeholder)
{
    // <ChNum>3</ChNum> fixes the number; anything else names the selector.
    if (!e.hasAttributes() && e.firstChildElement().isNull()) {
        bool ok = false;
        e.text().trimmed().toInt(&ok);
        if (ok) {
            widget.setPlaceholder(placeholder, e.text().trimmed());
            return true;
        }
    }
    return widget.appendAddress(e, placeholder);
}

bool ValueGate::readValues(const QDomElement &e)
{
    // "Off, ,Bypass": parts that are empty once trimmed are dropped too.
    m_values.clear();
    const QStringList parts = e.text().split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        const QString v = part.trimmed();
        if (!v.isEmpty())
            m_values.append(v);
    }
    if (e.hasAttribute(QStringLiteral("range")))
        m_steps = e.attribute(QStringLiteral("range")).toShort();
    return true;
}

bool ValueGate::readRange(const QDomElement &e)
{
    bool ok = false;
    const int steps = e.text().trimmed().toShort(&ok);
    if (!ok)
        return false;
    m_steps = steps;
    return true;
}

bool ValueGate::readStringFlag(const QDomElement &e)
{
    m_byString = e.text() == QLatin1String("true");
    return true;
}

QString ValueGate::currentText(const BaseWidget &widget, int index) const
{
    if (m_byString)
        return widget.displayText(index);
    return QString::number(widget.stepOfPosition(m_steps, index));
}

bool ValueGate::matches(const BaseWidget &widget, int index) const
{
    if (m_values.isEmpty() || index < 0 || index >= widget.addressCount())
        return false;
    return m_values.contains(currentText(widget, index));
}

} // namespace Addressing

bool TuningZoneAddressing::readZone(BaseWidget &widget, const QDomElement &e)
{
    m_zone = e.text().trimmed();
    widget.setPlaceholder(QStringLiteral("Zone"), m_zone);
    return true;
}

void TuningZoneAddressing::completeKeys(const BaseWidget &widget, QVariantMap &keys) const
{
    if (!keys.value(Key::zone_uniq_id).toString().isEmpty())
        return;
    QString zone = m_zone;
    if (zone.isEmpty() && widget.hostCore())
        zone = widget.hostCore()->editorInfo().value(Key::zone_uniq_id).toString();
    if (!zone.isEmpty())
        keys.insert(Key::zone_uniq_id, zone);
}

bool SpeakerAddressing::readModelMap(const QDomElement &e)
{
    m_modelMap.clear();
    for (QDomElement c = e.firstChildElement(QStringLiteral("Model")); !c.isNull();
         c = c.nextSiblingElement(QStringLiteral("Model"))) {
        const QString model = c.attribute(QStringLiteral("name"));
        if (!model.isEmpty())
            m_modelMap.insert(model, c.attribute(QStringLiteral("base"), c.text().trimmed()));
    }
    return true;
}

bool SpeakerAddressing::readConnectedPort(const QDomElement &e)
{
    bool ok = false;
    const int port = e.attribute(QStringLiteral("connect_port_inedx")).trimmed().toInt(&ok);
    if (!ok || port < 0)
        return false;
    m_port = port;
    m_portPattern = e.attribute(QStringLiteral("extdev_speaker_ports")).trimmed();
    return true;
}

QString SpeakerAddressing::portAddress(int port) const
{
    const QString pattern = m_portPattern.isEmpty() ? QStringLiteral("ExtDev/SpeakerPort{port}") : m_portPattern;
    return QString(pattern).replace(QLatin1String("{port}"), QString::number(port));
}

bool SpeakerAddressing::readBaseAddressList(const QDomElement &e)
{
    m_baseList.clear();
    for (QDomElement c = e.firstChildElement(); !c.isNull(); c = c.nextSiblingElement())
        m_baseList.append(c.text().trimmed());
    return true;
}

QString SpeakerAddressing::baseFor(const BaseWidget &widget, const QString &type, int index) const
{
    if (type == QLatin1String("SpeakerChannel")) {
        const QString number = Addressing::selectorNumber(widget, index);
        if (number.isEmpty())
            return QString();
        return m_baseList.value(number.toInt(), m_default);
    }
    if (type == QLatin1String("SpeakerModel")) {
        const QString model = widget.displayText(index).trimmed();
        if (model.isEmpty() && widget.addressAt(index).value().isEmpty())
            return QString();
        // The widget's own map first, then the loudspeaker's data, then DEFAULT.
        const auto own = m_modelMap.constFind(model);
        if (own != m_modelMap.cend())
            return *own;
        if (!model.isEmpty()) {
            const QString base = ExternalDevicesDB::instance().speaker(model).value(QStringLiteral("BaseAddress"))
                                     .toString().trimmed();
            if (!base.isEmpty())
                return base;
        }
        return m_default;
    }
    return m_default;
}
