#ifndef CORVANE_HOST_TYPENAMES_H
#define CORVANE_HOST_TYPENAMES_H

#include <QStringList>

namespace TypeNames {

/*!
    The type names the widget plug-in at \a pluginPath creates, in the order
    its factory tests them, as its exported CorvaneWidgetTypeNames() lists
    them; false with \a error set when the plug-in offers no list.
*/
bool of(const QString &pluginPath, QStringList *names, QString *error);

} // namespace TypeNames

#endif
