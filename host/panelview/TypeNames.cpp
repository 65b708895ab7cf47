#include "TypeNames.h"

#include <QLibrary>

bool TypeNames::of(const QString &pluginPath, QStringList *names, QString *error)
{
    using ListFunction = void (*)(QStringList *);
    QLibrary library(pluginPath);
    const auto list = reinterpret_cast<ListFunction>(library.resolve("CorvaneWidgetTypeNames"));
    if (!list) {
        *error = library.errorString();
        return false;
    }
    list(names);
    return true;
}
