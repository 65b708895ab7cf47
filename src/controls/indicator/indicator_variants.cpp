#include "indicator_variants.h"

bool RedundantIndicator::computeOn() const
{
    return addressesOn() > 0;
}

bool TuningZoneOrIndicator::computeOn() const
{
    return addressesOn() > 0;
}

bool TuningZoneXorIndicator::computeOn() const
{
    return addressesOn() == 1;
}

QString ChannelNumberIndicator::shownText() const
{
    const QString number = addressCount() ? displayText(0) : QString();
    if (text().contains(QLatin1String("%1")))
        return number.isEmpty() ? QString() : text().arg(number);
    return number.isEmpty() ? text() : number;
}

void ChannelNumberIndicator::ownValueChanged(int index)
{
    Indicator::ownValueChanged(index);
    const QString shown = shownText();
    if (shown != m_shownText) {
        m_shownText = shown;
        update();
    }
}
