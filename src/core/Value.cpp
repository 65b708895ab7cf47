#include "Value.h"

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
