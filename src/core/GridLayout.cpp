#include "GridLayout.h"
#include "Saturating.h"

#include <QDomElement>

GridLayout::GridLayout(const QDomElement &e, float zoom)
{
    bool ok = false;
    const int columns = e.attribute(QStringLiteral("columns")).toInt(&ok);
    if (ok && columns > 0)
        m_columns = columns;
    const int spacing = e.attribute(QStringLiteral("spacing")).toInt(&ok);
    setSpacing(ok && spacing >= 0 ? Saturating::pixels(spacing, zoom) : 0);
    const int margin = e.attribute(QStringLiteral("margin")).toInt(&ok);
    const int m = ok && margin >= 0 ? Saturating::pixels(margin, zoom) : 0;
    setContentsMargins(m, m, m, m);
}

void GridLayout::place(QWidget *widget)
{
    if (indexOf(widget) >= 0)
        return;
    addWidget(widget, m_next / m_columns, m_next % m_columns);
    ++m_next;
}
