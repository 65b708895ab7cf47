#ifndef CORVANE_PARAMETERMANAGEMENT_H
#define CORVANE_PARAMETERMANAGEMENT_H

#include <QMap>
#include <QMultiMap>
#include <QMutex>
#include <QString>

/*!
    \class ParameterManagementBase
    \brief Records which controls show which parameter addresses.

    Additions and removals are queued under the manager's lock and applied
    together by commit(), so a table that a host is walking to deliver a
    change never changes under it. The snapshot accessors take no lock: they
    hand out implicitly shared copies of the maps.

    Items are opaque pointer-sized values supplied by the registering control
    (controls of this library register their IWidgetCore pointer).
*/
class ParameterManagementBase
{
public:
    using Item = void *;
    using Table = QMultiMap<QString, Item>;

    ParameterManagementBase() = default;
    ParameterManagementBase(const ParameterManagementBase &) = delete;
    ParameterManagementBase &operator=(const ParameterManagementBase &) = delete;
    virtual ~ParameterManagementBase();

    //! Queues (address, item) for addition; always true.
    virtual bool add(const QString &address, Item item);
    //! Queues (address, item) for removal; always true.
    virtual bool remove(const QString &address, Item item);
    //! Applies the queues: removals first, then additions; always true.
    virtual bool commit();
    virtual Table registrations() const;
    virtual Table pendingAdditions() const;
    virtual Table pendingRemovals() const;

private:
    Table m_registrations;
    Table m_additions;
    Table m_removals;
    QMutex m_lock;
};

#define CORVANE_MANAGER_CATEGORY(Name) \
    class Name : public ParameterManagementBase \
    { \
    public: \
        ~Name() override; \
    };

CORVANE_MANAGER_CATEGORY(ParameterManagement)
CORVANE_MANAGER_CATEGORY(ParameterManagementMeter)
CORVANE_MANAGER_CATEGORY(ParameterManagementGraph)
CORVANE_MANAGER_CATEGORY(ParameterManagementLocal)
CORVANE_MANAGER_CATEGORY(ParameterManagementPreference)
CORVANE_MANAGER_CATEGORY(ParameterManagementEditor)

#undef CORVANE_MANAGER_CATEGORY

/*!
    \class ParameterManagementRegistry
    \brief The managers of one panel or editor, by category and key.

    Every category ("Prm", "Meter", "Graph", "Local", "Preference",
    "Editor") has a default manager and a map from key (the device or group a
    control belongs to) to the manager created for that key. Category words
    are case-sensitive.

    The registry owns its managers. Who commits, and when, is the host's
    decision.
*/
class ParameterManagementRegistry
{
public:
    enum { CategoryCount = 6 };

    ParameterManagementRegistry();
    ParameterManagementRegistry(const ParameterManagementRegistry &) = delete;
    ParameterManagementRegistry &operator=(const ParameterManagementRegistry &) = delete;
    virtual ~ParameterManagementRegistry();

    //! The six category words, in registry order.
    static const QStringList &categories();
    //! The category word chosen by a parameter address's prefix ("Meter:..." gives "Meter", no known prefix "Prm").
    static QString categoryOf(const QString &prmAddr);

    bool add(const QString &category, const QString &key, const QString &address, ParameterManagementBase::Item item);
    bool remove(const QString &category, const QString &key, const QString &address, ParameterManagementBase::Item item);
    bool addToDefault(const QString &category, const QString &address, ParameterManagementBase::Item item);
    //! Refuses an unknown category word; the removal itself always goes to the "Prm" default manager.
    bool removeFromDefault(const QString &category, const QString &address, ParameterManagementBase::Item item);

    ParameterManagementBase *manager(const QString &category, const QString &key) const;
    ParameterManagementBase *defaultManager(const QString &category) const;
    //! The keyed managers of one category (empty for an unknown word).
    QMap<QString, ParameterManagementBase *> managers(const QString &category) const;

    //! Commits every manager of the registry.
    void commitAll();

private:
    static int indexOf(const QString &category);
    ParameterManagementBase *createManager(int category, const QString &key);

    ParameterManagementBase *m_defaults[CategoryCount];
    QMap<QString, ParameterManagementBase *> m_keyed[CategoryCount];
};

#endif
