#include "WidgetFactory.h"

#include "WidgetTypes.h"

#include <QHash>

namespace {

using Creator = IWidgetCore *(*)(QWidget *, IHostCore *, ParameterManagementRegistry *);

template <class W>
IWidgetCore *construct(QWidget *parent, IHostCore *hostCore, ParameterManagementRegistry *registry)
{
    return new W(hostCore, registry, parent);
}

struct TypeEntry
{
    const char *name;
    Creator create;
};

#define CORVANE_TYPE_ENTRY(Name) {#Name, &construct<Name>},
const TypeEntry typeChain[] = {CORVANE_WIDGET_TYPES(CORVANE_TYPE_ENTRY)};
#undef CORVANE_TYPE_ENTRY

// The chain is one list; lookup goes through a hash built from it, so a
// name is found in constant time while matching stays exact and
// case-sensitive.
const QHash<QString, Creator> &creators()
{
    static const QHash<QString, Creator> hash = [] {
        QHash<QString, Creator> h;
        h.reserve(int(sizeof(typeChain) / sizeof(typeChain[0])));
        for (const TypeEntry &entry : typeChain)
            h.insert(QLatin1String(entry.name), entry.create);
        return h;
    }();
    return hash;
}

} // namespace

IWidgetCore *WidgetFactory::create(const QString &typeName, QWidget *parent, IHostCore *hostCore,
                                   ParameterManagementRegistry *registry)
{
    const Creator create = creators().value(typeName);
    return create ? create(parent, hostCore, registry) : nullptr;
}

QStringList WidgetFactory::typeNames()
{
    QStringList names;
    for (const TypeEntry &entry : typeChain)
        names.append(QLatin1String(entry.name));
    return names;
}

extern "C" Q_DECL_EXPORT void CorvaneWidgetTypeNames(QStringList *names)
{
    if (names)
        *names = WidgetFactory::typeNames();
}
