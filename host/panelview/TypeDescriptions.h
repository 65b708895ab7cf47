#ifndef CORVANE_HOST_TYPEDESCRIPTIONS_H
#define CORVANE_HOST_TYPEDESCRIPTIONS_H

#include <QMap>
#include <QString>
#include <QStringList>

namespace TypeDescriptions {

/*!
    The one-line descriptions of the "Type names" tables of family pages
    written in Markdown (rows "| `Name` | line |" below a "## Type names"
    heading), keyed by type name. A name listed twice keeps its first line.
*/
QMap<QString, QString> parse(const QString &markdown);

//! The descriptions of the family pages built into panelview.
QMap<QString, QString> builtIn();

//! "NAME<TAB>LINE" for each of \a names, in their order; the line is empty for a name without one.
QStringList describe(const QStringList &names, const QMap<QString, QString> &descriptions);

} // namespace TypeDescriptions

#endif
