#ifndef CORVANE_WIDGETFACTORY_H
#define CORVANE_WIDGETFACTORY_H

#include <QObject>
#include <QStringList>

#include <corvane/IWidgetFactory.h>
#include <corvane/Version.h>

/*!
    \class WidgetFactory
    \brief The plug-in's root object: builds controls by type name.

    Holds no state and keeps nothing it made; every control belongs to its
    Qt parent from construction on.

    The plug-in metadata holds nothing but the interface id and the class
    name; the library's version travels as the "Version" class info, which
    leaves the metadata record, the interfaces and the exports untouched.
*/
class WidgetFactory : public QObject, public IWidgetFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "CorvaneDesigner.WidgetFactory")
    Q_INTERFACES(IWidgetFactory)
    Q_CLASSINFO("Version", CORVANE_VERSION_STR)

public:
    IWidgetCore *create(const QString &typeName, QWidget *parent, IHostCore *hostCore,
                        ParameterManagementRegistry *registry) override;

    //! Every type name create() knows, in the order of its chain.
    static QStringList typeNames();
};

#endif
