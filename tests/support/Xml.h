#ifndef CORVANE_TESTS_XML_H
#define CORVANE_TESTS_XML_H

#include <QDomDocument>
#include <QDomElement>
#include <QList>
#include <QString>
#include <QStringList>

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

//! <Rect x="X" y="Y" width="W" height="H"/>, a control's place.
inline QString rect(int x, int y, int w, int h)
{
    return QStringLiteral("<Rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\"/>").arg(x).arg(y).arg(w).arg(h);
}

//! <Address prmAddr="PRMADDR"/>.
inline QString address(const QString &prmAddr)
{
    return QStringLiteral("<Address prmAddr=\"%1\"/>").arg(prmAddr);
}

//! An <AddressList> of one <Address> per parameter address, in order.
inline QString addressList(const QStringList &prmAddrs)
{
    QString list;
    for (const QString &a : prmAddrs)
        list += address(a);
    return QStringLiteral("<AddressList>") + list + QStringLiteral("</AddressList>");
}

} // namespace Xml

#endif
