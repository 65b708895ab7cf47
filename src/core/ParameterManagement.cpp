#include "ParameterManagement.h"

#include <QMutexLocker>

ParameterManagementBase::~ParameterManagementBase() = default;

bool ParameterManagementBase::add(const QString &address, Item item)
{
    QMutexLocker locker(&m_lock);
    m_additions.insert(address, item);
    return true;
}

bool ParameterManagementBase::remove(const QString &address, Item item)
{
    QMutexLocker locker(&m_lock);
    m_removals.insert(address, item);
    return true;
}

bool ParameterManagementBase::commit()
{
    QMutexLocker locker(&m_lock);
    for (auto it = m_removals.cbegin(); it != m_removals.cend(); ++it)
        m_registrations.remove(it.key(), it.value());
    m_removals.clear();
    if (m_registrations.isEmpty()) {
        // The first commit of a page: the queue is already in the order the
        // table keeps, and taking it whole saves a tree insertion per item.
        m_registrations.swap(m_additions);
        return true;
    }
    // The queue holds each address's items newest first; walking it from the
    // back and inserting each ahead of its address's entries leaves the
    // newest addition first, before what was registered earlier.
    for (auto it = m_additions.cend(); it != m_additions.cbegin();) {
        --it;
        m_registrations.insert(it.key(), it.value());
    }
    m_additions.clear();
    return true;
}

ParameterManagementBase::Table ParameterManagementBase::registrations() const
{
    return m_registrations;
}

ParameterManagementBase::Table ParameterManagementBase::pendingAdditions() const
{
    return m_additions;
}

ParameterManagementBase::Table ParameterManagementBase::pendingRemovals() const
{
    return m_removals;
}

ParameterManagement::~ParameterManagement() = default;
ParameterManagementMeter::~ParameterManagementMeter() = default;
ParameterManagementGraph::~ParameterManagementGraph() = default;
ParameterManagementLocal::~ParameterManagementLocal() = default;
ParameterManagementPreference::~ParameterManagementPreference() = default;
ParameterManagementEditor::~ParameterManagementEditor() = default;

namespace {

ParameterManagementBase *newManager(int category)
{
    switch (category) {
    case 0: return new ParameterManagement;
    case 1: return new ParameterManagementMeter;
    case 2: return new ParameterManagementGraph;
    case 3: return new ParameterManagementLocal;
    case 4: return new ParameterManagementPreference;
    case 5: return new ParameterManagementEditor;
    }
    return nullptr;
}

} // namespace

ParameterManagementRegistry::ParameterManagementRegistry()
{
    for (int i = 0; i < CategoryCount; ++i)
        m_defaults[i] = newManager(i);
}

ParameterManagementRegistry::~ParameterManagementRegistry()
{
    for (int i = 0; i < CategoryCount; ++i) {
        delete m_defaults[i];
        qDeleteAll(m_keyed[i]);
    }
}

const QStringList &ParameterManagementRegistry::categories()
{
    static const QStringList words = {
        QStringLiteral("Prm"), QStringLiteral("Meter"), QStringLiteral("Graph"),
        QStringLiteral("Local"), QStringLiteral("Preference"), QStringLiteral("Editor"),
    };
    return words;
}

QString ParameterManagementRegistry::categoryOf(const QString &prmAddr)
{
    // Tested in this order; an address names at most one of them in practice.
    static const char *const prefixes[][2] = {
        {"Graph:", "Graph"}, {"Meter:", "Meter"}, {"Local:", "Local"},
        {"Preference:", "Preference"}, {"Editor:", "Editor"},
    };
    for (const auto &p : prefixes) {
        if (prmAddr.startsWith(QLatin1String(p[0])))
            return QLatin1String(p[1]);
    }
    return QStringLiteral("Prm");
}

int ParameterManagementRegistry::indexOf(const QString &category)
{
    return categories().indexOf(category);
}

ParameterManagementBase *ParameterManagementRegistry::createManager(int category, const QString &key)
{
    ParameterManagementBase *manager = newManager(category);
    // A second manager for the same key replaces the pointer kept so far.
    m_keyed[category].insert(key, manager);
    return manager;
}

bool ParameterManagementRegistry::add(const QString &category, const QString &key, const QString &address,
                                      ParameterManagementBase::Item item)
{
    const int c = indexOf(category);
    if (c < 0)
        return false;
    ParameterManagementBase *manager = m_keyed[c].value(key);
    if (!manager)
        manager = createManager(c, key);
    return manager->add(address, item);
}

bool ParameterManagementRegistry::remove(const QString &category, const QString &key, const QString &address,
                                         ParameterManagementBase::Item item)
{
    ParameterManagementBase *m = manager(category, key);
    return m ? m->remove(address, item) : false;
}

bool ParameterManagementRegistry::addToDefault(const QString &category, const QString &address,
                                               ParameterManagementBase::Item item)
{
    ParameterManagementBase *m = defaultManager(category);
    return m ? m->add(address, item) : false;
}

bool ParameterManagementRegistry::removeFromDefault(const QString &category, const QString &address,
                                                    ParameterManagementBase::Item item)
{
    if (indexOf(category) < 0)
        return false;
    // Removals from a default manager always go to "Prm", whichever category
    // was named; hosts rely on this.
    return m_defaults[0]->remove(address, item);
}

ParameterManagementBase *ParameterManagementRegistry::manager(const QString &category, const QString &key) const
{
    const int c = indexOf(category);
    return c < 0 ? nullptr : m_keyed[c].value(key);
}

ParameterManagementBase *ParameterManagementRegistry::defaultManager(const QString &category) const
{
    const int c = indexOf(category);
    return c < 0 ? nullptr : m_defaults[c];
}

QMap<QString, ParameterManagementBase *> ParameterManagementRegistry::managers(const QString &category) const
{
    const int c = indexOf(category);
    return c < 0 ? QMap<QString, ParameterManagementBase *>() : m_keyed[c];
}

void ParameterManagementRegistry::commitAll()
{
    for (int i = 0; i < CategoryCount; ++i) {
        m_defaults[i]->commit();
        for (ParameterManagementBase *m : qAsConst(m_keyed[i]))
            m->commit();
    }
}
