#ifndef CORVANE_TESTS_XML_H
#define CORVANE_TESTS_XML_H

#include <QDomDocument>
#include <QDomElement>
#include <QList>
#include <QString>

namespace Xml {

//! The root element of \a xml. Its document is kept for the rest of the run, so the element stays valid.
inline QDomElement element(const QString &xml)
{
    static QList<QDomDocument> keep;
    QDomDocument doc;
    const bool ok = doc.setContent(xml);
    Q_ASSERT(ok);
    Q_UNUSED(ok);
    keep.append(doc);
    return doc.documentElement();
}

//! A <Widget> element holding \a children, as a panel file describes a control.
inline QDomElement widget(const QString &children)
{
    return element(QStringLiteral("<Widget>") + children + QStringLiteral("</Widget>"));
}

} // namespace Xml

#endif
