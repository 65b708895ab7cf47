#include "TagTable.h"

#include "BaseWidget.h"
#include "Saturating.h"

#include <cmath>

bool TagTable::Entry::apply(BaseWidget *w, const QDomElement &e) const
{
    if (property.type == Type::Handler)
        return (w->*handler)(e);

    QVariant value;
    switch (property.type) {
    case Type::Bool: {
        const bool on = property.ignoreCase ? BaseWidget::isTrueIgnoringCase(e) : BaseWidget::isTrue(e);
        if (!on && property.onlyTrue)
            return false;
        value = on;
        break;
    }
    case Type::Int: {
        // Read wide and range-checked before it becomes an int.
        bool ok = false;
        const qint64 v = e.text().trimmed().toLongLong(&ok);
        if (!ok || v < property.minimum || v > property.maximum)
            return false;
        value = Saturating::toInt(v);
        break;
    }
    case Type::Double: {
        double v = 0.0;
        if (!Saturating::readPosition(e.text().trimmed(), &v))
            return false;
        value = v;
        break;
    }
    case Type::Color: {
        const QColor c = BaseWidget::parseColor(e.text());
        if (!c.isValid())
            return false;
        value = c;
        break;
    }
    case Type::Text: {
        const QString text = property.trimmed ? e.text().trimmed() : e.text();
        if (property.nonEmpty && text.isEmpty())
            return false;
        value = text;
        break;
    }
    case Type::Handler:
        break;
    }
    return metaObject->property(propertyIndex).write(w, value);
}
