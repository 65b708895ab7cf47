#include "Linter.h"

#include "JsonWriter.h"
#include "ParameterDatabase.h"

#include <corvane/IHostCore.h>
#include <corvane/IWidgetCore.h>
#include <corvane/IWidgetFactory.h>
#include <corvane/ParameterManagement.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>
#include <QWidget>

namespace Linter {

namespace {

QString firstFile(const QStringList &candidates)
{
    for (const QString &c : candidates) {
        if (QFileInfo(c).isFile())
            return QFileInfo(c).absoluteFilePath();
    }
    return QString();
}

} // namespace

// As the controls look images up: absolute, next to the panel, then in the plug-in.
QString resolveImage(const QString &panelFolder, const QString &name)
{
    if (QFileInfo(name).isAbsolute())
        return firstFile({name});
    return firstFile({QDir(panelFolder).filePath(name), QLatin1String(":/") + name});
}

// As the panel factory looks pages up: next to the panel, then in panels/ of the application.
QString resolvePanelFile(const QString &panelFolder, const QString &name)
{
    const QString file = name.endsWith(QLatin1String(".xml")) ? name : name + QLatin1String(".xml");
    if (QFileInfo(file).isAbsolute())
        return firstFile({file});
    return firstFile({QDir(panelFolder).filePath(file),
                      QDir(QCoreApplication::applicationDirPath() + QLatin1String("/panels")).filePath(file)});
}

Specimen::Specimen(IWidgetFactory *factory, const QString &type)
{
    IWidgetCore *core = factory->create(type, &m_parent, &m_host, &m_registry);
    m_widget = core ? widgetOf(core) : nullptr;
}

Specimen::~Specimen()
{
    delete m_widget; // before the registry it registered with
}

PanelChecker::TypeKnowledge tagsOf(IWidgetFactory *factory, const QString &type, QStringList *tags)
{
    const Specimen specimen(factory, type);
    if (!specimen.widget())
        return PanelChecker::UnknownType;
    const bool answered = QMetaObject::invokeMethod(specimen.widget(), "handledTags", Qt::DirectConnection,
                                                    Q_RETURN_ARG(QStringList, *tags));
    return answered ? PanelChecker::KnownTypeWithTags : PanelChecker::KnownType;
}

PanelChecker checker(IWidgetFactory *factory, ParameterDatabase *database, const QString &panelPath,
                     const QStringList &typeNames)
{
    auto types = [factory](const QString &type, QStringList *tags) { return tagsOf(factory, type, tags); };
    PanelChecker c(types, [database](const QString &model) { return database->hasModel(model); });
    c.setTypeNames(typeNames);
    c.setParameterLookup([database](const QString &model) {
        QStringList addresses;
        for (const ParameterDefinition &d : database->definitions(model))
            addresses << d.address;
        return addresses;
    });
    const QString folder = QFileInfo(panelPath).absolutePath();
    c.setFileLookup([folder](PanelChecker::FileKind kind, const QString &name) {
        return !(kind == PanelChecker::ImageFile ? resolveImage(folder, name) : resolvePanelFile(folder, name)).isEmpty();
    });
    return c;
}

int report(QTextStream &out, const QString &file, const QList<PanelChecker::Finding> &findings, bool json)
{
    const QList<PanelChecker::Finding> collapsed = PanelChecker::collapse(findings);
    int errors = 0, warnings = 0;
    for (const PanelChecker::Finding &f : collapsed)
        (f.error ? errors : warnings) += 1 + f.repeats.size();
    if (json) {
        for (const QString &line : PanelChecker::formatJson(file, collapsed))
            out << line << '\n';
        out << Json::Object()
                   .add(QStringLiteral("file"), file)
                   .add(QStringLiteral("summary"), PanelChecker::summary(collapsed))
                   .add(QStringLiteral("errors"), errors)
                   .add(QStringLiteral("warnings"), warnings)
                   .toString()
            << '\n';
    } else {
        for (const QString &line : PanelChecker::format(file, collapsed))
            out << line << '\n';
        out << PanelChecker::summary(collapsed) << '\n';
    }
    out.flush();
    return errors > 0 ? 1 : 0;
}

} // namespace Linter
