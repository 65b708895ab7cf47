#include "DevDescReader.h"

#include "ShareFileLoader.h"

#include <QCoreApplication>
#include <QDir>
#include <QDomDocument>
#include <QDomElement>
#include <QDomNodeList>

#include <new>

BaseDescReader::BaseDescReader() = default;

BaseDescReader::~BaseDescReader() = default;

bool BaseDescReader::read(const QString &folder, const QString &baseName, QByteArray &bytes)
{
    if (baseName.isEmpty())
        return false;

    shareFileLoader *loader = nullptr;
    const auto found = m_loaders.find(baseName);
    if (found != m_loaders.end() && found->second) {
        loader = found->second.get();
    } else {
        const QString path = QCoreApplication::applicationDirPath() + QLatin1Char('/') + folder
            + QLatin1Char('/') + baseName + QLatin1String(".xml");
        loader = new (std::nothrow) shareFileLoader(QDir(path).path(), false);
        if (!loader)
            return false;
        m_loaders[baseName].reset(loader); // overwrites an existing entry's pointer
    }

    if (loader->load(bytes))
        return true;

    // Forget the name (and with it the loader), so that the next request
    // starts again from the disk.
    for (auto it = m_loaders.find(baseName); it != m_loaders.end(); it = m_loaders.find(baseName))
        m_loaders.erase(it);
    return false;
}

const shareFileLoader *BaseDescReader::cachedLoader(const QString &baseName) const
{
    const auto found = m_loaders.find(baseName);
    return found != m_loaders.end() ? found->second.get() : nullptr;
}

DevDescReader &DevDescReader::instance()
{
    static DevDescReader reader;
    return reader;
}

QString speakerLibraryExtension(const QString &model)
{
    QByteArray bytes;
    if (!DevDescReader::instance().read(deviceDescriptorFolder, model, bytes))
        return QString();

    QDomDocument document;
    document.setContent(bytes); // a parse error leaves a document without the element

    const QDomNodeList nodes = document.elementsByTagName(QStringLiteral("SpeakerProcessorLibrary"));
    if (nodes.isEmpty())
        return QString();
    const QDomNode first = nodes.item(0);
    if (!first.isElement())
        return QString();
    return first.toElement().attribute(QStringLiteral("ext"), QString());
}
