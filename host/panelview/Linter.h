#ifndef CORVANE_HOST_LINTER_H
#define CORVANE_HOST_LINTER_H

#include "PanelChecker.h"

#include <corvane/IHostCore.h>
#include <corvane/ParameterManagement.h>

#include <QWidget>

class IWidgetFactory;
class ParameterDatabase;
class QTextStream;

/*
    --check for panelview: a PanelChecker that knows the plug-in's types and
    tags, the simulated database's device models and the files next to the
    panel, and the report it prints.
*/
namespace Linter {

//! A control of a type, made only to be looked at, with the host objects it needs while it lives.
class Specimen
{
public:
    Specimen(IWidgetFactory *factory, const QString &type);
    ~Specimen();
    //! Null when the factory does not make the type.
    QWidget *widget() const { return m_widget; }

private:
    NullHostCore m_host;
    ParameterManagementRegistry m_registry;
    QWidget m_parent;
    QWidget *m_widget = nullptr;
};

//! What the factory knows of \a type, and the tags it reads.
PanelChecker::TypeKnowledge tagsOf(IWidgetFactory *factory, const QString &type, QStringList *tags);

//! A checker for the panel at \a panelPath; \a typeNames are the plug-in's names, for suggestions.
PanelChecker checker(IWidgetFactory *factory, ParameterDatabase *database, const QString &panelPath,
                     const QStringList &typeNames);

//! The file an image named \a name in a panel in \a panelFolder resolves to (a resource of the plug-in
//! starts with ":"); empty when there is none.
QString resolveImage(const QString &panelFolder, const QString &name);
//! The file a panel file named \a name (".xml" optional) resolves to for a panel in \a panelFolder; empty when none.
QString resolvePanelFile(const QString &panelFolder, const QString &name);

//! Prints the collapsed findings and the summary line (or JSON lines with \a json); the exit status.
int report(QTextStream &out, const QString &file, const QList<PanelChecker::Finding> &findings, bool json);

} // namespace Linter

#endif
