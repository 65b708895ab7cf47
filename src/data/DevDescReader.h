#ifndef CORVANE_DEVDESCREADER_H
#define CORVANE_DEVDESCREADER_H

#include "ParameterKeys.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <memory>

class shareFileLoader;

/*!
    \class BaseDescReader
    \brief Serves descriptor files by base name through shared-memory loaders.

    Keeps one shareFileLoader per base name, so that each file is read from
    disk once and then served from its shared-memory segment, in this process
    and in every other process that asks for it.
*/
class BaseDescReader
{
public:
    BaseDescReader();
    virtual ~BaseDescReader();

    BaseDescReader(const BaseDescReader &) = delete;
    BaseDescReader &operator=(const BaseDescReader &) = delete;

    /*!
        Appends the content of applicationDirPath()/\a folder/\a baseName.xml
        to \a bytes and answers true, or answers false with \a bytes unchanged.
        An empty \a baseName answers false and caches nothing. The cache is
        keyed by \a baseName alone: a later request for the same name in
        another folder is served from the first folder's file. A failed load
        forgets the name, so the next request tries the disk again.
        When the loader reports success without data, the answer
        is true and nothing is appended.
    */
    bool read(const QString &folder, const QString &baseName, QByteArray &bytes);

    //! The cached loader of \a baseName, or null (diagnostics, tests).
    const shareFileLoader *cachedLoader(const QString &baseName) const;
    //! The number of cached names.
    int cacheSize() const { return int(m_loaders.size()); }

private:
    // Ordered by QString's ordering (case-sensitive); owning.
    std::map<QString, std::unique_ptr<shareFileLoader>> m_loaders;
};

/*!
    \class DevDescReader
    \brief The process-wide reader of device descriptor files.
*/
class DevDescReader : public BaseDescReader
{
public:
    //! The single reader, created on first call (thread safe), destroyed at exit.
    static DevDescReader &instance();

private:
    DevDescReader() = default;
};

//! The folder of device descriptor files, relative to the application directory.
constexpr QLatin1String deviceDescriptorFolder = latin1Literal("descriptor/Common/Device");

/*!
    The file extension of the speaker-processor library files of \a model:
    attribute "ext" of the first "SpeakerProcessorLibrary" element of the
    model's descriptor (DevDescReader, folder "descriptor/Common/Device").
    A null string when the descriptor cannot be read or has no such element,
    an empty one when the element has no "ext".
*/
QString speakerLibraryExtension(const QString &model);

#endif
