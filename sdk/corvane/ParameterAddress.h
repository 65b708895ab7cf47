#ifndef CORVANE_PARAMETERADDRESS_H
#define CORVANE_PARAMETERADDRESS_H

#include <QVariantMap>

#include "Value.h"

/*!
    \class ParameterAddress
    \brief One parameter a control is bound to.

    The key map holds the address keys ("prmAddr", "dev_uniq_id",
    "zone_uniq_id", ...) and any further keys the panel description gave; the
    value holds what the control last read for it ("ui_prm_val",
    "ui_prm_str", ...). An entry is valid when it names a parameter address.
*/
class ParameterAddress
{
public:
    ParameterAddress() = default;
    explicit ParameterAddress(const QVariantMap &keys) : m_keys(keys) { }

    const QVariantMap &keys() const { return m_keys; }
    QVariantMap &keys() { return m_keys; }
    void setKeys(const QVariantMap &keys) { m_keys = keys; }

    QString key(const QString &name) const { return m_keys.value(name).toString(); }
    void setKey(const QString &name, const QString &text) { m_keys.insert(name, text); }

    const Value &value() const { return m_value; }
    Value &value() { return m_value; }

    QString prmAddr() const { return key(QStringLiteral("prmAddr")); }
    QString deviceId() const { return key(QStringLiteral("dev_uniq_id")); }
    QString zoneId() const { return key(QStringLiteral("zone_uniq_id")); }

    bool isValid() const { return !prmAddr().isEmpty(); }

    //! True when \a other names the same parameter: same "prmAddr", "dev_uniq_id" and "zone_uniq_id".
    bool sameParameter(const QVariantMap &other) const
    {
        return prmAddr() == other.value(QStringLiteral("prmAddr")).toString()
            && deviceId() == other.value(QStringLiteral("dev_uniq_id")).toString()
            && zoneId() == other.value(QStringLiteral("zone_uniq_id")).toString();
    }

private:
    QVariantMap m_keys;
    Value m_value;
};

#endif
