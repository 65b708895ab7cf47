#ifndef CORVANE_HOST_PANELFACTORY_H
#define CORVANE_HOST_PANELFACTORY_H

#include <corvane/IPanelFactory.h>

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QRect>

class IWidgetFactory;
class QDomElement;

/*!
    \class PanelFactory
    \brief Builds whole panels, or pages of panels, from their descriptions.

    Every \c Widget element of the description becomes a control made by
    the widget factory, configured with its element, named, and scaled by the
    host's zoom. The widget factory is the one set with setWidgetFactory(),
    or else the plug-in in the application directory.

    A host finds every control of a panel, including those on pages that
    controls build later, among the panel's child widgets with coreOf().
*/
class PanelFactory : public QObject, public IPanelFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IPanelFactory_iid)
    Q_INTERFACES(IPanelFactory)

public:
    explicit PanelFactory(QObject *parent = nullptr);

    Q_INVOKABLE void setWidgetFactory(QObject *factory);
    Q_INVOKABLE QObject *widgetFactory();
    //! What went wrong in the last build (types the factory does not know, files that cannot be read).
    Q_INVOKABLE QStringList lastProblems() const { return m_problems; }

    QWidget *createPanel(const QDomElement &panel, QWidget *parent, IHostCore *hostCore,
                         ParameterManagementRegistry *registry, const QVariantMap &context) override;
    QWidget *createPanelByName(const QString &name, QWidget *parent, IHostCore *hostCore,
                               ParameterManagementRegistry *registry, const QVariantMap &context) override;

    //! The colour of the Panel element's "background" attribute, or the standard dark grey.
    static QColor panelBackground(const QDomElement &panel);

    /*!
        The most controls one page holds. Qt paints overlapping siblings
        recursively, one stack frame per sibling, so a page of a hundred
        thousand controls would overflow the stack; controls beyond the
        limit are left out and reported.
    */
    static constexpr int maxControlsPerPage = 10000;

    /*!
        Pages of more controls than this hold them in PanelTile groups of
        consecutive controls. A tile takes at least tileSize of them and
        closes at the first one that lies wholly beside, above or below
        what it holds, or at twice tileSize.
    */
    static constexpr int tiledAbove = 256;
    static constexpr int tileSize = 64;
    //! Whether a tile holding \a held controls over \a area closes before the next control, at \a next.
    static bool closesTile(int held, const QRect &area, const QRect &next)
    {
        if (held >= 2 * tileSize)
            return true;
        return held >= tileSize
               && (next.top() > area.bottom() || next.bottom() < area.top() || next.left() > area.right()
                   || next.right() < area.left());
    }

private:
    IWidgetFactory *factory();

    QPointer<QObject> m_factoryObject;
    QStringList m_problems;
};

#endif
