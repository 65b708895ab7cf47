#include "AbstractDatabase.h"

#include <QCoreApplication>
#include <QLibrary>
#include <QMutexLocker>
#include <QRecursiveMutex>

namespace {

struct DatabaseState
{
    // Recursive, and "resolved" set before the library runs: a library that
    // asks for the database while it starts gets null, not a deadlock.
    QRecursiveMutex mutex;
    IAbstractDB *override = nullptr;
    bool resolved = false;
    IAbstractDB *resolvedDatabase = nullptr;
};

DatabaseState &state()
{
    static DatabaseState s;
    return s;
}

IAbstractDB *resolveDatabase()
{
    // QLibrary's destructor leaves the library loaded, which is what we
    // want: the database object lives in it.
    QLibrary library(QCoreApplication::applicationDirPath()
                     + QLatin1String("/CorvaneParameterDB"));
    const auto entry = reinterpret_cast<GetAbstractDBFunction>(library.resolve("GetAbstractDB"));
    return entry ? entry() : nullptr;
}

} // namespace

IAbstractDB *abstractDatabase()
{
    DatabaseState &s = state();
    QMutexLocker locker(&s.mutex);
    if (s.override)
        return s.override;
    if (!s.resolved) {
        // Without an application object there is no application directory
        // yet: answer null, and try again once there is one.
        if (!QCoreApplication::instance())
            return nullptr;
        s.resolved = true;
        s.resolvedDatabase = resolveDatabase();
    }
    return s.resolvedDatabase;
}

void setAbstractDatabase(IAbstractDB *database)
{
    DatabaseState &s = state();
    QMutexLocker locker(&s.mutex);
    s.override = database;
}
