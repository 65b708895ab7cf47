#ifndef CORVANE_PANELS_PANELCONTAINER_H
#define CORVANE_PANELS_PANELCONTAINER_H

#include "core/BaseWidget.h"
#include "panels/PageBuilder.h"

#include <QPointer>

class IPanelFactory;

/*!
    \class PanelContainer
    \brief A plain frame holding one panel built once from its description.

    "Panel" holds the panel's <Widget> elements inline (or names a panel
    file with its "file" attribute); "File" names a panel file by its text.
    The panel is built at configuration through the host's panel factory,
    fills the container, and its controls inherit the keys of the
    container's first address where their own addresses leave them out.
*/
class PanelContainer : public BaseWidget
{
    Q_OBJECT
    Q_PROPERTY(QString panelName READ panelName)
    Q_PROPERTY(bool panelBuilt READ isPanelBuilt)
    CORVANE_TAG_TABLE

public:
    PanelContainer(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    bool configure(const QDomNode &element) override;

    //! The panel file's name, empty for an inline panel.
    QString panelName() const { return m_source.attribute(QStringLiteral("file")); }
    bool isPanelBuilt() const { return !m_panel.isNull(); }
    QWidget *panel() const { return m_panel; }

    void setPanelFactory(IPanelFactory *factory) { m_factory = factory; }

protected:
    virtual bool readPanel(const QDomElement &e);
    virtual bool readFile(const QDomElement &e);

    //! Places the freshly built \a panel in the container.
    virtual void installPanel(QWidget *panel);

private:
    Panels::ElementStore m_store;
    QDomElement m_source;
    QPointer<QWidget> m_panel;
    IPanelFactory *m_factory = nullptr;
};

#endif
