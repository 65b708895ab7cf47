#ifndef CORVANE_PANELS_PAGEBUILDER_H
#define CORVANE_PANELS_PAGEBUILDER_H

#include <QDomDocument>
#include <QDomElement>
#include <QVariantMap>

class BaseWidget;
class IPanelFactory;
class QWidget;

/*
    What the stackers and containers share about the pages they build
    through the host's panel factory.

    A page element either names a panel file ("file" attribute, built by
    name from the host's panel folder), holds a whole <Panel> element, or
    holds the page's <Widget> elements itself (built from the element).
*/
namespace Panels {

//! The address keys a page's controls inherit from \a owner: those of its first address, less "AddrType",
//! "prmAddr" and the value keys, which describe the owner's own parameter rather than the device it sits on.
QVariantMap inheritedContext(const BaseWidget &owner);

//! How deep pages may nest inside pages.
constexpr int maxPageDepth = 64;

/*!
    Builds the page \a page describes as a child of \a parent; null when there
    is nothing to build or it failed. A page whose file is already being
    built further out (a panel that includes itself, directly or through
    other files) and pages nested deeper than maxPageDepth are refused with
    a warning that names the cycle.
*/
QWidget *buildPage(IPanelFactory *factory, const QDomElement &page, BaseWidget *owner, QWidget *parent,
                   const QVariantMap &context);

//! The include cycle \a file closes on \a chain ("a -> b -> a"), or empty when it closes none.
QString cycleOf(const QStringList &chain, const QString &file);

//! The host's panel factory, loaded once per process; null when the host offers none.
IPanelFactory *sharedPanelFactory();

/*
    Keeps copies of description elements beyond configure(): the host may
    drop its document as soon as the panel is built.
*/
class ElementStore
{
public:
    QDomElement keep(const QDomElement &e) { return m_document.importNode(e, true).toElement(); }

private:
    QDomDocument m_document;
};

} // namespace Panels

#endif
