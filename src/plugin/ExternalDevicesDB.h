#ifndef CORVANE_EXTERNALDEVICESDB_H
#define CORVANE_EXTERNALDEVICESDB_H

#include <corvane/IExternalDevicesDB.h>

#include <QMap>

/*!
    \class ExternalDevicesDB
    \brief Loudspeakers and digital-interface devices, read from XML files.

    Each file below the folder holds `<Speaker model="...">` and
    `<InterfaceDevice model="...">` elements; their attributes, and the texts
    of their child elements, become the device's keys. The default folder is
    "descriptor/Common/External" in the application directory, read on first
    use.
*/
class ExternalDevicesDB : public IExternalDevicesDB
{
public:
    static ExternalDevicesDB &instance();

    bool load(const QString &folder) override;
    QStringList speakerModels() const override;
    QVariantMap speaker(const QString &model) const override;
    QStringList interfaceDevices() const override;
    QVariantMap interfaceDevice(const QString &model) const override;

private:
    void ensureLoaded() const;

    mutable bool m_loaded = false;
    QMap<QString, QVariantMap> m_speakers;
    QMap<QString, QVariantMap> m_interfaces;
};

#endif
