#ifndef CORVANE_IPANELFACTORY_H
#define CORVANE_IPANELFACTORY_H

#include <QtPlugin>
#include <QString>
#include <QVariantMap>

class IHostCore;
class ParameterManagementRegistry;
class QDomElement;
class QWidget;

/*!
    \class IPanelFactory
    \brief The host's panel builder, loaded by the library from the
    application directory when a control must build a whole page.

    Both operations build every control of a panel description (a \c Panel
    element or a page of the same shape) as children of a new widget under
    \a parent and return it, or null. \a context holds address keys the
    page's controls inherit (keys they do not set themselves, such as
    "dev_uniq_id").
*/
class IPanelFactory
{
public:
    virtual ~IPanelFactory() = default;
    virtual QWidget *createPanel(const QDomElement &panel, QWidget *parent, IHostCore *hostCore,
                                 ParameterManagementRegistry *registry, const QVariantMap &context) = 0;
    //! Builds the panel stored under \a name in the host's panel folder.
    virtual QWidget *createPanelByName(const QString &name, QWidget *parent, IHostCore *hostCore,
                                       ParameterManagementRegistry *registry, const QVariantMap &context) = 0;
};

/*!
    The dynamic property, set to true, of a tile: a plain widget that paints
    nothing, into which a host may group the consecutive controls of a large
    page. Qt repaints a changed control by visiting its siblings, so a page
    of thousands of controls repaints much faster when they sit in tiles of
    a few dozen. Tiles are direct children of the page. A control inside one
    places itself in page coordinates and takes the page, not the tile, as
    its panel; the host keeps each tile around its controls. A control that
    places itself beyond its tile, or inside a tile that has a mask, sends
    the tile a QEvent::LayoutRequest, as Qt posts one to a shown tile when
    one of its controls is shown or hidden.
*/
constexpr char panelTileProperty[] = "corvaneTile";

#define IPanelFactory_iid "com.tessaro.skd.MainApplication.IPanelFactory/0.0"
Q_DECLARE_INTERFACE(IPanelFactory, IPanelFactory_iid)

#endif
