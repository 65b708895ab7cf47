#ifndef CORVANE_ABSTRACTDATABASE_H
#define CORVANE_ABSTRACTDATABASE_H

#include <corvane/IAbstractDB.h>

/*
    Access to the host's parameter database.

    abstractDatabase() resolves the exported
        extern "C" IAbstractDB *GetAbstractDB()
    of the library "CorvaneParameterDB" in the application directory
    (QCoreApplication::applicationDirPath() + "/CorvaneParameterDB", the
    platform's prefix and suffix added by QLibrary) the first time it is
    asked while a QCoreApplication exists, and caches the answer, found or
    not, for the rest of the process. The library is never unloaded. It
    answers null when the library or its entry point is absent, and the
    callers then answer false.

    setAbstractDatabase() installs a database object that overrides the
    resolution (tests, or a host that links its database in directly);
    nullptr restores the resolution. The object is not owned.
*/
IAbstractDB *abstractDatabase();
void setAbstractDatabase(IAbstractDB *database);

#endif
