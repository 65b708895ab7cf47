#include "data/ParameterKeys.h"
#include "PageBuilder.h"

#include "core/BaseWidget.h"
#include "plugin/PanelFactoryLoader.h"

#include <corvane/IPanelFactory.h>

#include <QDebug>
#include <QDir>

namespace Panels {

namespace {

// The pages being built, outermost first, by file name ("" for pages
// described inline). Pages are built on the GUI thread only.
QStringList &buildChain()
{
    static QStringList chain;
    return chain;
}

QString pageName(const QString &file)
{
    QString name = QDir::cleanPath(QDir::fromNativeSeparators(file));
    if (name.endsWith(QLatin1String(".xml"), Qt::CaseInsensitive))
        name.chop(4);
    return name;
}

} // namespace

QString cycleOf(const QStringList &chain, const QString &file)
{
    const QString name = pageName(file);
    const int first = chain.indexOf(name);
    if (name.isEmpty() || first < 0)
        return QString();
    QStringList cycle;
    for (int i = first; i < chain.size(); ++i) {
        if (!chain.at(i).isEmpty())
            cycle << chain.at(i);
    }
    cycle << name;
    return cycle.join(QLatin1String(" -> "));
}

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
    QStringList &chain = buildChain();
    // A page that contains itself would be built until the stack runs out.
    if (chain.size() >= maxPageDepth) {
        qWarning().noquote() << QStringLiteral("panel pages nested deeper than %1 levels; \"%2\" is not built")
                                    .arg(maxPageDepth).arg(owner->objectName());
        return nullptr;
    }
    const QString cycle = cycleOf(chain, file);
    if (!cycle.isEmpty()) {
        qWarning().noquote() << QStringLiteral("panel \"%1\" includes itself (%2); the page is not built")
                                    .arg(file, cycle);
        return nullptr;
    }
    chain.append(pageName(file));
    QWidget *built = nullptr;
    if (!file.isEmpty()) {
        built = factory->createPanelByName(file, parent, owner->hostCore(), owner->registry(), context);
    } else {
        const QDomElement panel = page.firstChildElement(QStringLiteral("Panel"));
        built = factory->createPanel(panel.isNull() ? page : panel, parent, owner->hostCore(), owner->registry(),
                                     context);
    }
    chain.removeLast();
    return built;
}

IPanelFactory *sharedPanelFactory()
{
    // The plug-in stays loaded for the life of the process; asking the
    // loader again for every page would only repeat the search.
    static IPanelFactory *const factory = loadPanelFactory();
    return factory;
}

} // namespace Panels
