#include "DelaySubTimeNumberBox.h"

#include "data/AbstractDatabase.h"
#include "data/ParameterKeys.h"

namespace {

const QLatin1String linkPrefix("Link:");

} // namespace

const TagTable &DelaySubTimeNumberBox::tags()
{
    static const TagTable table = TagTable::of<DelaySubTimeNumberBox>(&NumberBox::tags(), {
        {"SpaceDelete", TagTable::boolean("spaceDelete")},
    });
    return table;
}

void DelaySubTimeNumberBox::setSpaceDelete(bool on)
{
    if (m_spaceDelete == on)
        return;
    m_spaceDelete = on;
    update();
}

int DelaySubTimeNumberBox::valueIndex() const
{
    return ownAddressCount() >= 2 ? 1 : 0;
}

QString DelaySubTimeNumberBox::selectorText() const
{
    return ownAddressCount() >= 2 ? displayText(0) : QString();
}

QString DelaySubTimeNumberBox::unit() const
{
    const QString text = selectorText();
    if (convertedUnits().contains(text))
        return text;
    return DelayUnit::ms;
}

QStringList DelaySubTimeNumberBox::convertedUnits() const
{
    return {DelayUnit::meter, DelayUnit::feet, DelayUnit::sample};
}

QString DelaySubTimeNumberBox::shownText() const
{
    QString text = NumberBox::shownText();
    if (m_spaceDelete)
        text.remove(QLatin1Char(' '));
    return text;
}

QString DelaySubTimeNumberBox::editorStartText() const
{
    QString text = NumberBox::editorStartText();
    if (m_spaceDelete)
        text.remove(QLatin1Char(' '));
    return text;
}

QVariantMap DelaySubTimeNumberBox::conversionAddress() const
{
    const int index = valueIndex();
    const ParameterAddress &a = addressAt(index);
    QVariantMap keys;
    for (const QLatin1String &k : {Key::cptName, Key::dev_model, Key::dev_uniq_id, Key::prmAddr})
        keys.insert(k, a.key(k));
    if (!a.zoneId().isEmpty())
        keys.insert(Key::zone_uniq_id, a.zoneId());
    keys.insert(Key::ui_prm_str, displayText(index));
    keys.insert(Key::ui_prm_val, positionText(index));
    return keys;
}

void DelaySubTimeNumberBox::commitText(const QString &text)
{
    if (text.isEmpty())
        return;
    const QString u = unit();
    if (u == QLatin1String(DelayUnit::ms)) {
        requestText(text, valueIndex());
        return;
    }
    IAbstractDB *db = abstractDatabase();
    if (!db)
        return;
    const QString converted = db->convertDelay(conversionAddress(), u, text);
    bool ok = false;
    const double position = converted.toDouble(&ok);
    if (converted.isEmpty() || !ok)
        return;
    requestPosition(position, 1.0, 0, valueIndex());
}

// ---------------------------------------------------------------------------

const TagTable &FixedScaleDelaySubTimeNumberBox::tags()
{
    static const TagTable table = TagTable::of<FixedScaleDelaySubTimeNumberBox>(&DelaySubTimeNumberBox::tags(), {
        {"FixedScale", TagTable::trimmedText("fixedScale")},
    });
    return table;
}

QString FixedScaleDelaySubTimeNumberBox::unit() const
{
    if (!m_fixedScale.isEmpty())
        return convertedUnits().contains(m_fixedScale) ? m_fixedScale : QString(DelayUnit::ms);
    return DelaySubTimeNumberBox::unit();
}

QStringList FixedScaleDelaySubTimeNumberBox::convertedUnits() const
{
    return DelaySubTimeNumberBox::convertedUnits() << DelayUnit::frame;
}

QVariantMap FixedScaleDelaySubTimeNumberBox::conversionAddress() const
{
    QVariantMap keys = DelaySubTimeNumberBox::conversionAddress();
    const QString address = keys.value(Key::prmAddr).toString();
    if (address.startsWith(linkPrefix))
        keys.insert(Key::prmAddr, address.mid(linkPrefix.size()));
    return keys;
}
