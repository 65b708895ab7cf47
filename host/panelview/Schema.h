#ifndef CORVANE_HOST_SCHEMA_H
#define CORVANE_HOST_SCHEMA_H

#include <QMap>
#include <QString>
#include <QStringList>

/*
    An XML Schema (1.0) of the panel format, for XML editors and xmllint.

    XML Schema 1.0 cannot make a Widget's content depend on its type
    attribute, so a Widget may hold any tag that some type reads; each tag's
    content follows its form (colours, booleans, rectangles, addresses,
    child elements), and the type attribute is one of the type names.
*/
namespace Schema {

//! The schema for \a typeNames, each with the tags it reads.
QString generate(const QStringList &typeNames, const QMap<QString, QStringList> &tagsByType);

} // namespace Schema

#endif
