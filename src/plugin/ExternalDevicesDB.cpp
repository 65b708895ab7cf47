#include "ExternalDevicesDB.h"

#include <QCoreApplication>
#include <QDir>
#include <QDomDocument>
#include <QFile>

namespace {

QVariantMap readDevice(const QDomElement &e)
{
    QVariantMap keys;
    const QDomNamedNodeMap attributes = e.attributes();
    for (int i = 0; i < attributes.count(); ++i)
        keys.insert(attributes.item(i).nodeName(), attributes.item(i).nodeValue());
    for (QDomElement c = e.firstChildElement(); !c.isNull(); c = c.nextSiblingElement())
        keys.insert(c.tagName(), c.text());
    return keys;
}

} // namespace

ExternalDevicesDB &ExternalDevicesDB::instance()
{
    static ExternalDevicesDB db;
    return db;
}

bool ExternalDevicesDB::load(const QString &folder)
{
    m_loaded = true;
    m_speakers.clear();
    m_interfaces.clear();
    QDir dir(folder);
    if (!dir.exists())
        return false;
    const QStringList files = dir.entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name);
    for (const QString &name : files) {
        QFile file(dir.filePath(name));
        QDomDocument doc;
        if (!file.open(QIODevice::ReadOnly) || !doc.setContent(&file))
            continue;
        const QDomElement top = doc.documentElement();
        for (QDomElement e = top.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
            const QString model = e.attribute(QStringLiteral("model"));
            if (model.isEmpty())
                continue;
            if (e.tagName() == QLatin1String("Speaker"))
                m_speakers.insert(model, readDevice(e));
            else if (e.tagName() == QLatin1String("InterfaceDevice"))
                m_interfaces.insert(model, readDevice(e));
        }
    }
    return true;
}

void ExternalDevicesDB::ensureLoaded() const
{
    if (!m_loaded) {
        const QString folder = QCoreApplication::applicationDirPath() + QStringLiteral("/descriptor/Common/External");
        const_cast<ExternalDevicesDB *>(this)->load(folder);
    }
}

QStringList ExternalDevicesDB::speakerModels() const
{
    ensureLoaded();
    return m_speakers.keys();
}

QVariantMap ExternalDevicesDB::speaker(const QString &model) const
{
    ensureLoaded();
    return m_speakers.value(model);
}

QStringList ExternalDevicesDB::interfaceDevices() const
{
    ensureLoaded();
    return m_interfaces.keys();
}

QVariantMap ExternalDevicesDB::interfaceDevice(const QString &model) const
{
    ensureLoaded();
    return m_interfaces.value(model);
}

extern "C" Q_DECL_EXPORT IExternalDevicesDB *GetExternalDevicesDB()
{
    return &ExternalDevicesDB::instance();
}
