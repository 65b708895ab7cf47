#include "PanelContainer.h"

#include <QDomDocument>
#include <QVBoxLayout>

PanelContainer::PanelContainer(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
}

const TagTable &PanelContainer::tags()
{
    static const TagTable table = TagTable::of<PanelContainer>(&BaseWidget::tags(), {
        {"Panel", &PanelContainer::readPanel},
        {"File", &PanelContainer::readFile},
    });
    return table;
}

bool PanelContainer::readPanel(const QDomElement &e)
{
    if (m_panel)
        return false;
    m_source = m_store.keep(e);
    return true;
}

bool PanelContainer::readFile(const QDomElement &e)
{
    const QString name = e.text().trimmed();
    if (m_panel || name.isEmpty())
        return false;
    m_source = m_store.keep(QDomDocument().createElement(QStringLiteral("Panel")));
    m_source.setAttribute(QStringLiteral("file"), name);
    return true;
}

bool PanelContainer::configure(const QDomNode &element)
{
    const bool ok = BaseWidget::configure(element);
    // Built after the addresses are known, so that the panel inherits them.
    if (!m_panel && !m_source.isNull()) {
        QWidget *panel = Panels::buildPage(m_factory ? m_factory : Panels::sharedPanelFactory(), m_source, this,
                                           this, Panels::inheritedContext(*this));
        if (panel) {
            m_panel = panel;
            installPanel(panel);
        }
    }
    return ok;
}

void PanelContainer::installPanel(QWidget *panel)
{
    if (QLayout *existing = layout()) {
        existing->addWidget(panel);
    } else {
        auto *box = new QVBoxLayout(this);
        box->setContentsMargins(0, 0, 0, 0);
        box->setSpacing(0);
        box->addWidget(panel);
    }
    panel->show();
}
