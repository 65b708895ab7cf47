#include "PanelWatcher.h"

#include "Linter.h"
#include "PanelHost.h"

#include <QFile>
#include <QFileInfo>
#include <QWidget>

PanelWatcher::PanelWatcher(PanelHost *host, IPanelFactory *factory, const QString &path, PanelChecker checker,
                           Report report, QObject *parent)
    : QObject(parent), m_host(host), m_factory(factory), m_path(path), m_checker(std::move(checker)),
      m_report(std::move(report))
{
    const QString folder = QFileInfo(path).absolutePath();
    // The checker resolves every file the panel names; what it finds is watched.
    m_checker.setFileLookup([this, folder](PanelChecker::FileKind kind, const QString &name) {
        const QString file = kind == PanelChecker::ImageFile ? Linter::resolveImage(folder, name)
                                                             : Linter::resolvePanelFile(folder, name);
        if (!file.isEmpty() && !file.startsWith(QLatin1Char(':')) && !m_used.contains(file))
            m_used << file;
        return !file.isEmpty();
    });
    m_delay.setSingleShot(true);
    m_delay.setInterval(200);
    connect(&m_delay, &QTimer::timeout, this, &PanelWatcher::rebuild);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_delay, qOverload<>(&QTimer::start));
    // A file replaced by a rename shows up as a change of its folder.
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_delay, qOverload<>(&QTimer::start));

    QFile file(m_path);
    if (file.open(QIODevice::ReadOnly))
        m_checker.check(file.readAll()); // the files the first version uses
    watch();
}

void PanelWatcher::watch()
{
    if (!m_watcher.files().isEmpty())
        m_watcher.removePaths(m_watcher.files());
    if (!m_watcher.directories().isEmpty())
        m_watcher.removePaths(m_watcher.directories());
    QStringList files{QFileInfo(m_path).absoluteFilePath()};
    files += m_used;
    QStringList folders;
    for (const QString &f : qAsConst(files)) {
        if (QFileInfo::exists(f))
            m_watcher.addPath(f);
        const QString folder = QFileInfo(f).absolutePath();
        if (!folders.contains(folder))
            folders << folder;
    }
    m_watcher.addPaths(folders);
}

bool PanelWatcher::rebuild()
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) {
        watch();
        emit failed(QStringLiteral("cannot read %1: %2").arg(m_path, file.errorString()));
        return false;
    }
    const QByteArray xml = file.readAll();
    m_used.clear();
    const QList<PanelChecker::Finding> findings = m_checker.check(xml);
    watch();
    if (m_report)
        m_report(findings);

    QWidget *old = m_host->panel();
    const QPoint place = old ? old->pos() : QPoint();
    const bool shown = old && old->isVisible();
    QString error;
    if (!m_host->load(xml, m_path, &error, true) || !m_host->build(m_factory, &error)) {
        emit failed(error);
        return false;
    }
    QWidget *panel = m_host->panel();
    panel->setWindowTitle(QStringLiteral("%1 - panelview").arg(QFileInfo(m_path).fileName()));
    if (old) {
        panel->move(place);
        panel->setVisible(shown);
    }
    emit rebuilt();
    return true;
}
