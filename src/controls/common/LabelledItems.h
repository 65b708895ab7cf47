#ifndef CORVANE_CONTROLS_COMMON_LABELLEDITEMS_H
#define CORVANE_CONTROLS_COMMON_LABELLEDITEMS_H

#include <QString>
#include <QStringList>
#include <QVector>

class QDomElement;

//! One choice of a list control: what it shows and what choosing it sends.
struct LabelledItem
{
    QString label;
    QString value;
    bool operator==(const LabelledItem &o) const { return label == o.label && value == o.value; }
    bool operator!=(const LabelledItem &o) const { return !(*this == o); }
};

using LabelledItems = QVector<LabelledItem>;

namespace LabelledItemList {

/*!
    The "Item" children of \a items, in order: an item's trimmed text is its
    label, its "value" attribute what it sends, the label when the attribute
    is absent (an empty attribute is kept: it sends an empty text).
*/
LabelledItems read(const QDomElement &items);
QStringList labels(const LabelledItems &items);
QStringList values(const LabelledItems &items);

} // namespace LabelledItemList

#endif
