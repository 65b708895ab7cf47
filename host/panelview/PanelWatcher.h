#ifndef CORVANE_HOST_PANELWATCHER_H
#define CORVANE_HOST_PANELWATCHER_H

#include "PanelChecker.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

#include <functional>

class IPanelFactory;
class PanelHost;

/*!
    \class PanelWatcher
    \brief Rebuilds a panel's window when its file, or a file it uses, changes.

    The devices keep their values and the window keeps its place. Editors
    often save by writing a new file and renaming it over the old one, which
    ends a file watch, so every path is watched again after each rebuild;
    changes are gathered for a moment before the rebuild.

    The checker's findings for each new version go to the report function;
    a version that cannot be built (not well-formed, say) leaves the window
    as it was.
*/
class PanelWatcher : public QObject
{
    Q_OBJECT

public:
    using Report = std::function<void(const QList<PanelChecker::Finding> &findings)>;

    PanelWatcher(PanelHost *host, IPanelFactory *factory, const QString &path, PanelChecker checker,
                 Report report, QObject *parent = nullptr);

    //! The files watched besides the panel: the images and pages it uses.
    QStringList usedFiles() const { return m_used; }
    //! Rebuilds now; false when the file cannot be read or built.
    bool rebuild();

signals:
    void rebuilt();
    void failed(const QString &error);

private:
    void watch();

    PanelHost *m_host;
    IPanelFactory *m_factory;
    QString m_path;
    PanelChecker m_checker;
    Report m_report;
    QStringList m_used;
    QFileSystemWatcher m_watcher;
    QTimer m_delay;
};

#endif
