// Loads the installed widget plug-in, builds a dial, configures it from its
// element, lets it read a value through this host and register its address.
// Prints one line on success; names the first thing that failed otherwise.

#include <corvane/IHostCore.h>
#include <corvane/IWidgetCore.h>
#include <corvane/IWidgetFactory.h>
#include <corvane/ParameterManagement.h>
#include <corvane/Version.h>

#include <QApplication>
#include <QDomDocument>
#include <QMetaClassInfo>
#include <QPluginLoader>
#include <QTextStream>

#include <cstdio>

namespace {

class Host : public NullHostCore
{
public:
    bool readParameter(const ParameterAddress &, Value &value, QMap<QString, QString> &) override
    {
        value.set(QStringLiteral("ui_prm_val"), QStringLiteral("0.25"));
        value.set(QStringLiteral("ui_prm_str"), QStringLiteral("-6.0 dB"));
        return true;
    }
    QVariantMap ownerDevice(const QWidget *) override
    {
        return {{QStringLiteral("dev_uniq_id"), QStringLiteral("mixer-1")}};
    }
};

int failed(const QString &what)
{
    QTextStream(stderr) << "sdk_host: " << what << '\n';
    return 1;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);

    if (QStringLiteral(CORVANE_VERSION_STR) != QStringLiteral(PACKAGE_VERSION))
        return failed(QStringLiteral("Version.h says %1, the CMake package %2").arg(CORVANE_VERSION_STR, PACKAGE_VERSION));

    QPluginLoader loader(QStringLiteral(CORVANE_PLUGIN));
    QObject *root = loader.instance();
    auto *factory = qobject_cast<IWidgetFactory *>(root);
    if (!factory)
        return failed(QStringLiteral("no widget factory in %1: %2").arg(loader.fileName(), loader.errorString()));

    const QMetaObject *meta = root->metaObject();
    const int at = meta->indexOfClassInfo("Version");
    const QString pluginVersion = at < 0 ? QString() : QString::fromLatin1(meta->classInfo(at).value());
    if (pluginVersion != QStringLiteral(CORVANE_VERSION_STR))
        return failed(QStringLiteral("the plug-in is version \"%1\", the SDK %2").arg(pluginVersion, CORVANE_VERSION_STR));

    Host host;
    ParameterManagementRegistry registry;
    QWidget panel;
    if (factory->create(QStringLiteral("dial"), &panel, &host, &registry))
        return failed(QStringLiteral("\"dial\" made a control"));
    IWidgetCore *core = factory->create(QStringLiteral("Dial"), &panel, &host, &registry);
    QWidget *dial = core ? widgetOf(core) : nullptr;
    if (!dial || dial->parentWidget() != &panel || qstrcmp(dial->metaObject()->className(), "Dial") != 0)
        return failed(QStringLiteral("\"Dial\" made no dial on the panel"));

    QDomDocument document;
    document.setContent(QStringLiteral("<Widget type='Dial' name='gain'><Rect x='4' y='6' width='40' height='40'/>"
                                       "<Address prmAddr='Ch1/HA/Gain'/></Widget>"));
    if (!core->configure(document.documentElement()) || !core->setZoom(2.0f))
        return failed(QStringLiteral("the dial refused its element or the zoom"));
    if (dial->geometry() != QRect(8, 12, 80, 80))
        return failed(QStringLiteral("the dial is not at its zoomed place"));
    if (core->addressCount() != 1 || core->address(0).value().text(QStringLiteral("ui_prm_str")) != QLatin1String("-6.0 dB"))
        return failed(QStringLiteral("the dial did not read its parameter through the host"));
    if (dial->property("position").toDouble() != 0.25)
        return failed(QStringLiteral("the dial does not stand at the value the host gave"));
    registry.commitAll();
    ParameterManagementBase *manager = registry.manager(QStringLiteral("Prm"), QStringLiteral("mixer-1"));
    if (!manager || !manager->registrations().contains(QStringLiteral("Ch1/HA/Gain"), core))
        return failed(QStringLiteral("the dial's address is not registered under its device"));

    QTextStream(stdout) << "built a " << dial->metaObject()->className() << " with plug-in " << pluginVersion
                        << " from " << loader.fileName() << '\n';
    return 0;
}
