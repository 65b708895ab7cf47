#ifndef CORVANE_IEXTERNALDEVICESDB_H
#define CORVANE_IEXTERNALDEVICESDB_H

#include <QString>
#include <QStringList>
#include <QVariantMap>

/*!
    \class IExternalDevicesDB
    \brief Devices that are not on the network but are wired to one:
    loudspeakers and digital-interface devices.

    The library exports it as \c{extern "C" IExternalDevicesDB *GetExternalDevicesDB()}.
    The object lives as long as the library; never delete it.
*/
class IExternalDevicesDB
{
public:
    virtual ~IExternalDevicesDB() = default;
    //! Reads the device files below \a folder, replacing what was read before; false when the folder is missing.
    virtual bool load(const QString &folder) = 0;
    virtual QStringList speakerModels() const = 0;
    //! The attributes of one loudspeaker model; empty when unknown.
    virtual QVariantMap speaker(const QString &model) const = 0;
    virtual QStringList interfaceDevices() const = 0;
    virtual QVariantMap interfaceDevice(const QString &model) const = 0;
};

#endif
