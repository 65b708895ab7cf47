#include "Value.h"

#include "SharedKeys.h"
#include "../data/ParameterKeys.h"

// Here, in the types library, so that the plug-in and the host's database
// use one table.
const QString &sharedKey(const QString &key)
{
    static const QString known[] = {
        Key::prmAddr, Key::dev_uniq_id, Key::zone_uniq_id, Key::dev_model, Key::AddrType,
        Key::ui_prm_val, Key::ui_prm_str, Key::ui_prm_prak, Key::ui_prm_def_val, Key::ui_prm_option,
        Key::prmValue, Key::prmType, Key::prmMin, Key::prmMax, Key::prmUnit, Key::prmStr, Key::prmFlag,
    };
    // Few enough that comparing sizes and last letters first beats hashing
    // the key: keys of one size almost always differ in their last letter.
    const int n = key.size();
    if (n == 0)
        return key;
    for (const QString &k : known) {
        if (k.size() == n && (k.isSharedWith(key) || (k.at(n - 1) == key.at(n - 1) && k == key)))
            return k;
    }
    return key;
}

bool Value::set(const QString &key, const QString &text)
{
    const auto it = m_attributes.constFind(key);
    if (it != m_attributes.cend() && *it == text)
        return false;
    m_attributes.insert(key, text);
    return true;
}

QString Value::text(const QString &key) const
{
    return m_attributes.value(key);
}

QStringList Value::keys() const
{
    return m_attributes.keys();
}

bool Value::remove(const QString &key)
{
    m_attributes.remove(key);
    return true;
}

bool Value::assign(const Value &other)
{
    bool changed = false;
    for (auto it = other.m_attributes.cbegin(); it != other.m_attributes.cend(); ++it)
        changed |= set(it.key(), it.value());
    return changed;
}

bool Value::isEmpty() const
{
    return m_attributes.isEmpty();
}

bool Value::operator==(const Value &other) const
{
    if (m_attributes.size() != other.m_attributes.size() || keys() != other.keys())
        return false;
    for (auto it = m_attributes.cbegin(); it != m_attributes.cend(); ++it) {
        if (it.value() != other.m_attributes.value(it.key()))
            return false;
    }
    return true;
}
