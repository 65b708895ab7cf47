#include "data/ParameterKeys.h"
#include "PageBuilder.h"

#include "core/BaseWidget.h"
#include "plugin/PanelFactoryLoader.h"

#include <corvane/IPanelFactory.h>

namespace Panels {

QVariantMap inheritedContext(const BaseWidget &owner)
{
    if (owner.addressCount() == 0)
        return QVariantMap();
    QVariantMap keys = owner.addressAt(0).keys();
    for (const QLatin1String &key : {Key::AddrType, Key::prmAddr, Key::ui_prm_val, Key::ui_prm_str, Key::ui_prm_def_val})
        keys.remove(key);
    return keys;
}

QWidget *buildPage(IPanelFactory *factory, const QDomElement &page, BaseWidget *owner, QWidget *parent,
                   const QVariantMap &context)
{
    if (!factory || page.isNull())
        return nullptr;
    const QString file = page.attribute(QStringLiteral("file")).trimmed();
    if (!file.isEmpty())
        return factory->createPanelByName(file, parent, owner->hostCore(), owner->registry(), context);
    const QDomElement panel = page.firstChildElement(QStringLiteral("Panel"));
    return factory->createPanel(panel.isNull() ? page : panel, parent, owner->hostCore(), owner->registry(),
                                context);
}

IPanelFactory *sharedPanelFactory()
{
    // The plug-in stays loaded for the life of the process; asking the
    // loader again for every page would only repeat the search.
    static IPanelFactory *const factory = loadPanelFactory();
    return factory;
}

} // namespace Panels
