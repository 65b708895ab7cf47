#include "PanelFactoryLoader.h"

#include <corvane/IPanelFactory.h>

#include <QCoreApplication>
#include <QDir>
#include <QPluginLoader>

QString panelFactoryPath()
{
#if defined(Q_OS_WIN)
    const QString format = QStringLiteral("%1/Panel.dll");
#elif defined(Q_OS_MACOS)
    const QString format = QStringLiteral("%1/libPanel.dylib");
#else
    const QString format = QStringLiteral("%1/libPanel.so");
#endif
    return QDir::cleanPath(format.arg(QCoreApplication::applicationDirPath()));
}

IPanelFactory *loadPanelFactory()
{
    QPluginLoader loader(panelFactoryPath());
    QObject *root = loader.instance();
    return root ? qobject_cast<IPanelFactory *>(root) : nullptr;
}
