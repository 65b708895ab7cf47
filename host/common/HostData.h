#ifndef CORVANE_HOST_HOSTDATA_H
#define CORVANE_HOST_HOSTDATA_H

#include <QCoreApplication>
#include <QDir>
#include <QString>

/*!
    The host's data folder \a name ("devices", "panels"): next to the program
    when it is there (the build tree, or a tree laid out like the design
    application's), otherwise in the installed data folder, which lies at a
    fixed place relative to the application directory so that an installed
    tree can be moved as a whole.
*/
inline QString hostDataFolder(const QString &name)
{
    const QDir application(QCoreApplication::applicationDirPath());
    if (application.exists(name))
        return application.filePath(name);
    return QDir::cleanPath(application.filePath(QStringLiteral(CORVANE_APPDIR_TO_DATA "/") + name));
}

#endif
