#ifndef CORVANE_IWIDGETFACTORY_H
#define CORVANE_IWIDGETFACTORY_H

#include <QtPlugin>
#include <QString>

class IHostCore;
class IWidgetCore;
class ParameterManagementRegistry;
class QWidget;

/*!
    \class IWidgetFactory
    \brief The plug-in's root interface: builds controls by type name.

    create() constructs the control class named \a typeName (exact,
    case-sensitive) as a child of \a parent, handing it \a hostCore and
    \a registry unchanged, and returns its IWidgetCore side; unknown names
    give null. The factory keeps nothing: controls belong to their parent.
*/
class IWidgetFactory
{
public:
    virtual ~IWidgetFactory() = default;
    virtual IWidgetCore *create(const QString &typeName, QWidget *parent, IHostCore *hostCore,
                                ParameterManagementRegistry *registry) = 0;
};

#define IWidgetFactory_iid "com.tessaro.skd.MainApplication.IWidgetFactory/0.0"
Q_DECLARE_INTERFACE(IWidgetFactory, IWidgetFactory_iid)

#endif
