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

namespace {

QStringList fieldOf(const LabelledItems &items, QString LabelledItem::*field)
{
    QStringList list;
    list.reserve(items.size());
    for (const LabelledItem &item : items)
        list.append(item.*field);
    return list;
}

} // namespace

QStringList labels(const LabelledItems &items)
{
    return fieldOf(items, &LabelledItem::label);
}

QStringList values(const LabelledItems &items)
{
    return fieldOf(items, &LabelledItem::value);
}

} // namespace LabelledItemList
