#include "combobox_variants.h"

PrmViewComboBox::PrmViewComboBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : ComboBox(hostCore, registry, parent)
{
    setReadOnly(true);
    setFocusPolicy(Qt::NoFocus);
}

const TagTable &ValueTextComboBox::tags()
{
    static const TagTable table = TagTable::of<ValueTextComboBox>(&ComboBox::tags(), {
        {"ValueTextList", &ValueTextComboBox::readValueTextList},
    });
    return table;
}

bool ValueTextComboBox::readValueTextList(const QDomElement &e)
{
    QStringList texts;
    for (QDomElement c = e.firstChildElement(); !c.isNull(); c = c.nextSiblingElement())
        texts.append(c.text().trimmed());
    if (texts.isEmpty() && !e.text().trimmed().isEmpty()) {
        for (const QString &t : e.text().split(QLatin1Char(',')))
            texts.append(t.trimmed());
    }
    m_valueTexts = texts;
    refresh();
    return !texts.isEmpty();
}

QVector<ComboBox::Option> ValueTextComboBox::parameterOptions() const
{
    if (m_valueTexts.isEmpty())
        return ComboBox::parameterOptions();
    QVector<Option> options;
    for (const QString &t : m_valueTexts)
        options.append({t, t});
    return options;
}

int ValueTextComboBox::indexOfCurrent(const QVector<Option> &options) const
{
    // Description items map by text like any combo box; the list maps by position.
    if (m_valueTexts.isEmpty() || !items().isEmpty())
        return ComboBox::indexOfCurrent(options);
    if (addressCount() == 0 || positionText(0).isEmpty())
        return -1;
    if (!hasPosition(0))
        return -1;
    return qBound(0, stepOfPosition(m_valueTexts.size() - 1, 0), m_valueTexts.size() - 1);
}

bool ValueTextComboBox::sendOption(int index, const Option &option)
{
    if (m_valueTexts.isEmpty() || !items().isEmpty())
        return ComboBox::sendOption(index, option);
    const int steps = m_valueTexts.size() - 1;
    return requestPosition(index, steps > 0 ? steps : 1, 0, 0);
}
