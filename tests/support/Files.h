#ifndef CORVANE_TESTS_FILES_H
#define CORVANE_TESTS_FILES_H

#include <QByteArray>
#include <QFile>
#include <QString>

//! Writes \a bytes to \a path, replacing what was there; false when it cannot.
inline bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}

#endif
