// A stand-in "CorvaneParameterDB" library for tst_data_abstractdb: exports
// GetAbstractDB the way the host's database library does.
#include "FakeDatabase.h"

#include <QtGlobal>

extern "C" Q_DECL_EXPORT IAbstractDB *GetAbstractDB()
{
    static FakeDatabase database;
    database.name = QStringLiteral("resolved from library");
    return &database;
}
