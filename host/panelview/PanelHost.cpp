#include "PanelHost.h"

#include "JsonWriter.h"
#include "ParameterDatabase.h"

#include <core/Saturating.h>
#include <data/ParameterKeys.h>
#include <corvane/IPanelFactory.h>
#include <corvane/IWidgetCore.h>

#include <QFileInfo>
#include <QSet>
#include <QVarLengthArray>

#include <algorithm>

PanelHost::PanelHost(ParameterDatabase *database)
    : m_database(database)
{
    m_database->setObserver(this);
}

PanelHost::~PanelHost()
{
    // Controls unregister while they die; the registry must still be there.
    // An editor that loses the focus on the way out sends nothing.
    m_tearingDown = true;
    m_sink = nullptr;
    delete m_panel;
    if (m_database)
        m_database->setObserver(nullptr);
}

bool PanelHost::load(const QByteArray &xml, const QString &path, QString *error, bool keepValues)
{
    QString message;
    int line = 0;
    if (!m_document.setContent(xml, &message, &line)) {
        *error = QStringLiteral("%1:%2: error: %3").arg(path).arg(line).arg(message);
        return false;
    }
    const QDomElement root = m_document.documentElement();
    if (root.tagName() != QLatin1String("Panel")) {
        *error = QStringLiteral("%1:%2: error: the root element must be <Panel>, not <%3>")
                     .arg(path).arg(root.lineNumber()).arg(root.tagName());
        return false;
    }
    m_basePath = QFileInfo(path).absolutePath();
    m_designSize = QSize(root.attribute(QStringLiteral("width")).toInt(),
                         root.attribute(QStringLiteral("height")).toInt());
    if (!keepValues)
        m_database->clearDevices();
    m_owner.clear();
    m_warnings.clear();
    for (QDomElement d = root.firstChildElement(QStringLiteral("Device")); !d.isNull();
         d = d.nextSiblingElement(QStringLiteral("Device"))) {
        const QString id = d.attribute(QStringLiteral("id"));
        const QString model = d.attribute(QStringLiteral("model"));
        const bool kept = keepValues && m_database->device(id).value(Key::dev_model).toString() == model;
        if (!kept && !m_database->addDevice(id, model))
            continue;
        readDeviceSetup(d, id);
        if (m_owner.isEmpty())
            m_owner = {{Key::dev_uniq_id, id}, {Key::dev_model, model}};
    }
    return true;
}

// What a device holds when the panel opens: <Value prmAddr="...">typed text</Value>
// is applied as a typed request; <Signal input="Ch1" source="tone" level="-20"/>
// (source "noise" with a level, "envelope" with a file relative to the
// panel, or "off") feeds an input.
void PanelHost::readDeviceSetup(const QDomElement &device, const QString &id)
{
    for (QDomElement e = device.firstChildElement(QStringLiteral("Value")); !e.isNull();
         e = e.nextSiblingElement(QStringLiteral("Value"))) {
        const QVariantMap address{{Key::dev_uniq_id, id}, {Key::prmAddr, e.attribute(QStringLiteral("prmAddr"))}};
        if (!m_database->request(address, 1, {{Key::ui_prm_str, e.text()}})) {
            m_warnings << QStringLiteral("%1: warning: \"%2\" cannot be set to \"%3\"")
                              .arg(e.lineNumber())
                              .arg(e.attribute(QStringLiteral("prmAddr")), e.text());
        }
    }
    for (QDomElement e = device.firstChildElement(QStringLiteral("Signal")); !e.isNull();
         e = e.nextSiblingElement(QStringLiteral("Signal"))) {
        const QString input = e.attribute(QStringLiteral("input"));
        QStringList words{e.attribute(QStringLiteral("source"))};
        if (e.hasAttribute(QStringLiteral("level")))
            words << e.attribute(QStringLiteral("level"));
        if (e.hasAttribute(QStringLiteral("file")))
            words << e.attribute(QStringLiteral("file"));
        SignalSource source;
        QString message;
        if (!SignalSource::fromWords(words, m_basePath, &source, &message))
            m_warnings << QStringLiteral("%1: warning: %2").arg(e.lineNumber()).arg(message);
        else if (!m_database->setSignal(id, input, source))
            m_warnings << QStringLiteral("%1: warning: device \"%2\" has no input \"%3\"").arg(e.lineNumber()).arg(id, input);
    }
}

bool PanelHost::build(IPanelFactory *factory, QString *error)
{
    delete m_panel;
    m_living.clear();
    m_gone.clear();
    m_panel = factory->createPanel(m_document.documentElement(), nullptr, this, &m_registry, QVariantMap());
    if (!m_panel) {
        *error = QStringLiteral("the panel factory built nothing");
        return false;
    }
    // <Panel readOuts="false"> switches the controls' value read-outs off.
    const QDomElement root = m_document.documentElement();
    if (root.hasAttribute(QStringLiteral("readOuts")))
        m_panel->setProperty("readOuts", root.attribute(QStringLiteral("readOuts")) != QLatin1String("false"));
    if (m_designSize.isValid() && !m_designSize.isEmpty())
        m_panel->setFixedSize(Saturating::pixels(m_designSize.width(), m_zoom),
                              Saturating::pixels(m_designSize.height(), m_zoom));
    commitRegistry();
    return true;
}

void PanelHost::setZoom(float zoom)
{
    if (!(zoom > 0))
        return;
    m_zoom = zoom;
    if (m_panel && m_designSize.isValid() && !m_designSize.isEmpty())
        m_panel->setFixedSize(Saturating::pixels(m_designSize.width(), zoom),
                              Saturating::pixels(m_designSize.height(), zoom));
    // Every control moves: the panel factory's tiles cover the page
    // meanwhile, so that none has to grow, and then fit the controls again.
    const QList<QWidget *> tiles = this->tiles();
    for (QWidget *tile : tiles)
        QMetaObject::invokeMethod(tile, "spread");
    for (IWidgetCore *core : controls())
        core->setZoom(zoom);
    for (QWidget *tile : tiles)
        QMetaObject::invokeMethod(tile, "fit");
}

QList<QWidget *> PanelHost::tiles() const
{
    QList<QWidget *> out;
    if (!m_panel)
        return out;
    for (QWidget *w : m_panel->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (w->property(panelTileProperty).toBool())
            out.append(w);
    }
    return out;
}

QList<IWidgetCore *> PanelHost::controls() const
{
    QList<IWidgetCore *> out;
    if (!m_panel)
        return out;
    for (QWidget *w : m_panel->findChildren<QWidget *>()) {
        if (IWidgetCore *core = coreOf(w))
            out.append(core);
    }
    return out;
}

IWidgetCore *PanelHost::control(const QString &name) const
{
    if (!m_panel)
        return nullptr;
    for (QWidget *w : m_panel->findChildren<QWidget *>(name)) {
        if (IWidgetCore *core = coreOf(w))
            return core;
    }
    return nullptr;
}

QString PanelHost::nameOf(IWidgetCore *core)
{
    QWidget *w = widgetOf(core);
    return w ? w->objectName() : QString();
}

void PanelHost::commitRegistry()
{
    // A new control may sit where a gone one was.
    if (!m_gone.isEmpty() && registryHasAdditions())
        m_gone.clear();
    m_registry.commitAll();
}

bool PanelHost::registryHasAdditions() const
{
    for (const QString &category : ParameterManagementRegistry::categories()) {
        if (!m_registry.defaultManager(category)->pendingAdditions().isEmpty())
            return true;
        const QMap<QString, ParameterManagementBase *> keyed = m_registry.managers(category);
        for (const ParameterManagementBase *m : keyed) {
            if (!m->pendingAdditions().isEmpty())
                return true;
        }
    }
    return false;
}

// The registry may hold items of controls that are gone (a removal from a
// default manager lands on "Prm"), so an item is told only when it is one
// of the panel's controls. Those are indexed once and again only when an
// item is not found.
QWidget *PanelHost::livingWidget(void *item)
{
    auto it = m_living.constFind(item);
    if (it != m_living.cend() && !it->isNull())
        return it->data();
    if (m_gone.contains(item))
        return nullptr;
    m_living.clear();
    for (IWidgetCore *core : controls())
        m_living.insert(core, widgetOf(core));
    it = m_living.constFind(item);
    if (it != m_living.cend() && !it->isNull())
        return it->data();
    m_gone.insert(item);
    return nullptr;
}

void PanelHost::deliver(const QVariantMap &address)
{
    const QString prmAddr = address.value(Key::prmAddr).toString();
    const QString device = address.value(Key::dev_uniq_id).toString();
    const QString category = ParameterManagementRegistry::categoryOf(prmAddr);
    ParameterManagementBase *keyed = m_registry.manager(category, device);
    ParameterManagementBase *fallback = m_registry.defaultManager(category);
    // Only the two tables read here need their queues applied; a panel
    // with many devices has many more.
    for (ParameterManagementBase *m : {keyed, fallback}) {
        if (!m)
            continue;
        if (!m_gone.isEmpty() && !m->pendingAdditions().isEmpty())
            m_gone.clear();
        m->commit();
    }

    QVarLengthArray<void *, 16> items;
    auto collect = [&](const ParameterManagementBase *m) {
        if (!m)
            return;
        const ParameterManagementBase::Table table = m->registrations();
        for (auto it = table.constFind(prmAddr); it != table.cend() && it.key() == prmAddr; ++it) {
            if (std::find(items.cbegin(), items.cend(), it.value()) == items.cend())
                items.append(it.value());
        }
    };
    collect(keyed);
    collect(fallback);

    // A control may take others down while it handles the change (a page
    // switch), so each one is watched from before the first is told.
    QVarLengthArray<QPointer<QWidget>, 16> targets;
    for (void *item : items)
        targets.append(livingWidget(item));
    for (int i = 0; i < items.size(); ++i) {
        if (!targets.at(i).isNull())
            static_cast<IWidgetCore *>(items.at(i))->notifyValueChanged(address);
    }
}

QString PanelHost::registryEvent() const
{
    QHash<void *, QString> names;
    for (IWidgetCore *core : controls())
        names.insert(core, nameOf(core));
    QStringList entries;
    auto list = [&](const QString &category, const QString &key, const ParameterManagementBase *manager) {
        const ParameterManagementBase::Table table = manager->registrations();
        for (auto it = table.cbegin(); it != table.cend(); ++it) {
            entries << Json::Object()
                           .add(QStringLiteral("category"), category)
                           .add(QStringLiteral("key"), key)
                           .add(QStringLiteral("address"), it.key())
                           .add(QStringLiteral("widget"), names.value(it.value()))
                           .toString();
        }
    };
    for (const QString &category : ParameterManagementRegistry::categories()) {
        list(category, QString(), m_registry.defaultManager(category));
        const auto keyed = m_registry.managers(category);
        for (auto it = keyed.cbegin(); it != keyed.cend(); ++it)
            list(category, it.key(), it.value());
    }
    return Json::Object()
        .add(QStringLiteral("event"), "registry")
        .addRaw(QStringLiteral("entries"), Json::array(entries))
        .toString();
}

bool PanelHost::readParameter(const ParameterAddress &address, Value &value, QMap<QString, QString> &attributes)
{
    Value answer;
    if (!m_database->readParameter(address.keys(), answer)) {
        value.setPayload(QVariant());
        return false;
    }
    // Both start empty on a control's read: they then share the database's
    // answer instead of copies of its texts.
    if (value.isEmpty() && attributes.isEmpty()) {
        value = answer;
        attributes = answer.attributes();
        return true;
    }
    value.assign(answer);
    for (auto it = answer.attributes().cbegin(); it != answer.attributes().cend(); ++it)
        attributes.insert(it.key(), it.value());
    value.setPayload(answer.payload());
    return true;
}

bool PanelHost::sendRequest(QWidget *control, int index, const QVariantMap &address, int kind,
                            const QMap<QString, QString> &arguments)
{
    if (m_tearingDown)
        return false;
    Json::Object args;
    for (auto it = arguments.cbegin(); it != arguments.cend(); ++it)
        args.add(it.key(), it.value());
    emitEvent(Json::Object()
                  .add(QStringLiteral("event"), "request")
                  .add(QStringLiteral("widget"), control ? control->objectName() : QString())
                  .add(QStringLiteral("index"), index)
                  .add(QStringLiteral("kind"), kind)
                  .addRaw(QStringLiteral("args"), args.toString())
                  .toString());
    if (!m_database->applyRequests())
        return false;
    return m_database->request(address, kind, arguments);
}

void PanelHost::selectParameter(QWidget *control, const QString &first, const QString &second)
{
    emitEvent(Json::Object()
                  .add(QStringLiteral("event"), "select")
                  .add(QStringLiteral("widget"), control ? control->objectName() : QString())
                  .addRaw(QStringLiteral("texts"), Json::strings({first, second}))
                  .toString());
}

QVariantMap PanelHost::ownerDevice(const QWidget *)
{
    return m_owner;
}

bool PanelHost::parameterExists(const QVariantMap &address)
{
    return m_database->parameterExists(address);
}

void PanelHost::contextAction(QWidget *control, const QString &action, const QVariantMap &data)
{
    Json::Object d;
    for (auto it = data.cbegin(); it != data.cend(); ++it)
        d.add(it.key(), it.value().toString());
    emitEvent(Json::Object()
                  .add(QStringLiteral("event"), "action")
                  .add(QStringLiteral("widget"), control ? control->objectName() : QString())
                  .add(QStringLiteral("action"), action)
                  .addRaw(QStringLiteral("data"), d.toString())
                  .toString());
}

void PanelHost::parameterChanged(const QVariantMap &address)
{
    deliver(address);
}

void PanelHost::emitEvent(const QString &json)
{
    if (m_sink)
        m_sink(json);
}

void PanelHost::setColorAnswer(bool scripted, const QColor &answer)
{
    m_scriptedColor = scripted;
    m_colorAnswer = answer;
}

bool PanelHost::answerColor(QWidget *control, const QColor &initial, QColor &color)
{
    if (!m_scriptedColor)
        return false;
    auto text = [](const QColor &c) {
        return c.isValid() ? QStringLiteral("%1,%2,%3").arg(c.red()).arg(c.green()).arg(c.blue())
                           : QStringLiteral("cancel");
    };
    emitEvent(Json::Object()
                  .add(QStringLiteral("event"), "ask")
                  .add(QStringLiteral("widget"), control ? control->objectName() : QString())
                  .add(QStringLiteral("colour"), text(initial))
                  .add(QStringLiteral("answer"), text(m_colorAnswer))
                  .toString());
    color = m_colorAnswer;
    return true;
}

void PanelHost::setFileAnswer(bool scripted, const QString &answer)
{
    m_scriptedFile = scripted;
    m_fileAnswer = answer;
}

bool PanelHost::answerFileName(QWidget *control, bool save, const QString &caption, const QString &,
                               QString &path)
{
    if (!m_scriptedFile)
        return false;
    emitEvent(Json::Object()
                  .add(QStringLiteral("event"), "ask")
                  .add(QStringLiteral("widget"), control ? control->objectName() : QString())
                  .add(QStringLiteral("file"), save ? "save" : "open")
                  .add(QStringLiteral("caption"), caption)
                  .add(QStringLiteral("answer"), m_fileAnswer.isEmpty() ? QStringLiteral("cancel") : m_fileAnswer)
                  .toString());
    path = m_fileAnswer;
    return true;
}

void PanelHost::windowOpened(QWidget *control, const QString &id, QWidget *window)
{
    if (!window)
        return;
    m_windows.append(window);
    // A second window beside the panel's, at the zoom of the panel.
    if (m_panel)
        window->move(m_panel->geometry().topRight() + QPoint(20, 0));
    emitEvent(Json::Object()
                  .add(QStringLiteral("event"), "window")
                  .add(QStringLiteral("widget"), control ? control->objectName() : QString())
                  .add(QStringLiteral("id"), id)
                  .add(QStringLiteral("title"), window->windowTitle())
                  .add(QStringLiteral("open"), true)
                  .toString());
}

void PanelHost::windowClosed(const QString &id, QWidget *window)
{
    m_windows.removeAll(window);
    emitEvent(Json::Object()
                  .add(QStringLiteral("event"), "window")
                  .add(QStringLiteral("id"), id)
                  .add(QStringLiteral("title"), window ? window->windowTitle() : QString())
                  .add(QStringLiteral("open"), false)
                  .toString());
}

QList<QWidget *> PanelHost::windows() const
{
    QList<QWidget *> open;
    for (const QPointer<QWidget> &w : m_windows) {
        if (w)
            open.append(w);
    }
    return open;
}
