#ifndef CORVANE_HOST_JSONWRITER_H
#define CORVANE_HOST_JSONWRITER_H

#include <QString>
#include <QStringList>

/*
    JSON text with keys in the order they are added (QJsonObject sorts
    them, and the order of panelview's output is part of its format).
*/
namespace Json {

QString string(const QString &text);
QString number(double value);
QString strings(const QStringList &texts);

class Object
{
public:
    Object &add(const QString &key, const QString &text);
    Object &add(const QString &key, const char *text) { return add(key, QString::fromUtf8(text)); }
    Object &add(const QString &key, int value);
    Object &add(const QString &key, double value);
    Object &add(const QString &key, bool value);
    //! Adds \a json, already JSON text.
    Object &addRaw(const QString &key, const QString &json);
    QString toString() const { return QLatin1Char('{') + m_members + QLatin1Char('}'); }

private:
    QString m_members;
};

//! Joins already encoded JSON values into an array.
QString array(const QStringList &values);

} // namespace Json

#endif
