#include "JsonWriter.h"

#include <cmath>

namespace Json {

QString string(const QString &text)
{
    QString out;
    out.reserve(text.size() + 2);
    out += QLatin1Char('"');
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '"': out += QLatin1String("\\\""); break;
        case '\\': out += QLatin1String("\\\\"); break;
        case '\n': out += QLatin1String("\\n"); break;
        case '\r': out += QLatin1String("\\r"); break;
        case '\t': out += QLatin1String("\\t"); break;
        case '\b': out += QLatin1String("\\b"); break;
        case '\f': out += QLatin1String("\\f"); break;
        default:
            if (c.unicode() < 0x20)
                out += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
            else
                out += c;
        }
    }
    out += QLatin1Char('"');
    return out;
}

QString number(double value)
{
    if (!std::isfinite(value))
        return QStringLiteral("null");
    if (value == std::floor(value) && std::abs(value) < 1e15)
        return QString::number(qint64(value));
    return QString::number(value, 'g', 12);
}

QString strings(const QStringList &texts)
{
    QStringList encoded;
    for (const QString &t : texts)
        encoded << string(t);
    return array(encoded);
}

QString array(const QStringList &values)
{
    return QLatin1Char('[') + values.join(QLatin1Char(',')) + QLatin1Char(']');
}

Object &Object::add(const QString &key, const QString &text)
{
    return addRaw(key, string(text));
}

Object &Object::add(const QString &key, int value)
{
    return addRaw(key, QString::number(value));
}

Object &Object::add(const QString &key, double value)
{
    return addRaw(key, number(value));
}

Object &Object::add(const QString &key, bool value)
{
    return addRaw(key, value ? QStringLiteral("true") : QStringLiteral("false"));
}

Object &Object::addRaw(const QString &key, const QString &json)
{
    if (!m_members.isEmpty())
        m_members += QLatin1Char(',');
    m_members += string(key) + QLatin1Char(':') + json;
    return *this;
}

} // namespace Json
