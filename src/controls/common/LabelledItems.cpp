#include "LabelledItems.h"

#include <QDomElement>

namespace LabelledItemList {

LabelledItems read(const QDomElement &items)
{
    const QString tag = QStringLiteral("Item");
    const QString valueAttribute = QStringLiteral("value");
    LabelledItems list;
    for (QDomElement c = items.firstChildElement(tag); !c.isNull(); c = c.nextSiblingElement(tag)) {
        const QString label = c.text().trimmed();
        list.append({label, c.hasAttribute(valueAttribute) ? c.attribute(valueAttribute) : label});
    }
    return list;
}

QStringList labels(const LabelledItems &items)
{
    QStringList list;
    list.reserve(items.size());
    for (const LabelledItem &item : items)
        list.append(item.label);
    return list;
}

QStringList values(const LabelledItems &items)
{
    QStringList list;
    list.reserve(items.size());
    for (const LabelledItem &item : items)
        list.append(item.value);
    return list;
}

} // namespace LabelledItemList
