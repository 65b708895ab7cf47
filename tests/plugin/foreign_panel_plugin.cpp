// A plug-in named like the host's panel plug-in that offers another
// interface: the library must not take it for a panel factory.
#include <QObject>
#include <QtPlugin>

class ForeignPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.example.NotAPanelFactory/1.0")
};

#include "foreign_panel_plugin.moc"
