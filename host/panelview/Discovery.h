#ifndef CORVANE_HOST_DISCOVERY_H
#define CORVANE_HOST_DISCOVERY_H

#include <QString>
#include <QStringList>

class IWidgetFactory;
class ParameterDatabase;
class QTextStream;

/*
    What panelview tells a panel author about the devices and the types,
    read from the simulated database and from the plug-in itself.
*/
namespace Discovery {

//! --list-models: one model name a line.
void listModels(const ParameterDatabase &database, QTextStream &out);
//! --list-parameters: a header and one tab-separated line per parameter; false for an unknown model.
bool listParameters(const ParameterDatabase &database, const QString &model, QTextStream &out, QString *error);
//! --describe: the type's classes, address layout, tags and properties; false for an unknown type.
bool describe(IWidgetFactory *factory, const QStringList &typeNames, const QString &type, QTextStream &out, QString *error);

} // namespace Discovery

#endif
