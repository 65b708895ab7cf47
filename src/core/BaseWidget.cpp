#include "BaseWidget.h"

#include "PanelTiles.h"
#include "Saturating.h"
#include "SharedKeys.h"
#include "accessibility/AccessibleControl.h"
#include "data/ParameterKeys.h"

#include <QDomElement>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonObject>

namespace {

ParameterAddress &emptyAddress()
{
    static ParameterAddress empty;
    empty = ParameterAddress();
    return empty;
}

} // namespace

BaseWidget::BaseWidget(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : QWidget(parent)
    , m_hostCore(hostCore)
    , m_registry(registry)
{
    // Controls expose alignments as properties; reading them through
    // QObject::property() needs the type registered.
    static const int alignmentType = qRegisterMetaType<Qt::Alignment>("Qt::Alignment");
    Q_UNUSED(alignmentType)
    // The application's family, not the parent's: a control inside a panel
    // with its own font still starts from the application's.
    // Family and zoomed size go in together: each setFont() resolves the
    // font against the parent's and sends FontChange to the control.
    // A control whose parent already has that font inherits it and keeps
    // no font of its own.
    QFont f = font();
    const QString family = QGuiApplication::font().family();
    const qreal size = scaledPointSize(m_designPointSize, zoomFactor());
    const bool resize = size > 0 && !qFuzzyCompare(f.pointSizeF(), size);
    if (!resize && f.family() == family)
        return;
    f.setFamily(family);
    if (resize)
        f.setPointSizeF(size);
    setFont(f);
}

BaseWidget::~BaseWidget()
{
    // The host commits after deleting a panel; until then the queued
    // removals keep its delivery walk away from this object.
    for (int i = 0; i < m_binding.count(); ++i)
        unregisterEntry(i);
}

// ---------------------------------------------------------------------------
// IWidgetCore

bool BaseWidget::configure(const QDomNode &element)
{
    const TagTable &table = tagTable();
    for (QDomElement e = element.firstChildElement(); !e.isNull(); e = e.nextSiblingElement())
        table.apply(this, e);
    return true;
}

bool BaseWidget::passToHost(int value)
{
    if (m_hostCore) {
        if (IHostTarget *target = m_hostCore->currentTarget())
            target->receiveInteger(value);
    }
    return true;
}

bool BaseWidget::setZoom(float zoom)
{
    if (zoom <= 0.0f)
        return false;
    PanelTiles::place(this, QRect(scaledPosition(m_designPosition, zoom), scaledSize(m_designSize, zoom)));
    applyFont(zoom);
    return true;
}

float BaseWidget::zoomFactor() const
{
    return m_hostCore ? m_hostCore->zoomFactor() : 1.0f;
}

void BaseWidget::setHighlight(bool highlight)
{
    m_highlight = highlight;
    update();
}

bool BaseWidget::setWidgetName(const QString &name)
{
    m_name = name;
    return true;
}

ParameterAddress &BaseWidget::address(int index)
{
    if (!m_binding.contains(index))
        return emptyAddress();
    return m_binding[index].address;
}

const ParameterAddress &BaseWidget::addressAt(int index) const
{
    if (!m_binding.contains(index))
        return emptyAddress();
    return m_binding.at(index).address;
}

bool BaseWidget::applyValues(const QList<Value> &values)
{
    const int n = qMin(values.size(), m_binding.count());
    for (int i = 0; i < n; ++i) {
        if (m_binding[i].address.value().assign(values.at(i)))
            dispatchValueChanged(i);
    }
    return true;
}

void BaseWidget::updateAddresses(const QList<QVariantMap> &addresses)
{
    static const QLatin1String taken[] = {Key::prmAddr, Key::dev_uniq_id, Key::zone_uniq_id, Key::temporaryLink};
    const int n = qMin(addresses.size(), m_binding.count());
    for (int i = 0; i < n; ++i) {
        QVariantMap keys = m_binding.at(i).address.keys();
        for (const QLatin1String &k : taken) {
            if (addresses.at(i).contains(k))
                keys.insert(k, addresses.at(i).value(k));
        }
        m_binding.setTemplate(i, keys.value(Key::prmAddr).toString());
        rebindAddress(i, keys);
    }
}

QList<ParameterAddress> BaseWidget::validAddresses() const
{
    QList<ParameterAddress> valid;
    for (const AddressBinding::Entry &entry : m_binding.entries()) {
        const ParameterAddress &a = entry.address;
        if (a.isValid())
            valid.append(a);
    }
    return valid;
}

QMap<QString, Value> BaseWidget::addressValues() const
{
    QMap<QString, Value> values;
    for (const AddressBinding::Entry &entry : m_binding.entries()) {
        const ParameterAddress &a = entry.address;
        if (a.isValid())
            values.insert(a.prmAddr(), a.value());
    }
    return values;
}

QVariantList BaseWidget::addressList() const
{
    QVariantList list;
    for (const AddressBinding::Entry &entry : m_binding.entries())
        list.append(entry.address.keys());
    return list;
}

QJsonDocument BaseWidget::exchangeAddressData(const QJsonDocument &document)
{
    const QJsonArray incoming = document.object().value(QLatin1String("addresses")).toArray();
    if (!incoming.isEmpty()) {
        QList<QVariantMap> maps;
        QList<Value> values;
        for (const QJsonValue &v : incoming) {
            const QJsonObject o = v.toObject();
            maps.append(o.value(QLatin1String("keys")).toObject().toVariantMap());
            Value value;
            const QJsonObject attributes = o.value(QLatin1String("value")).toObject();
            for (auto it = attributes.begin(); it != attributes.end(); ++it)
                value.set(it.key(), it.value().toString());
            values.append(value);
        }
        updateAddresses(maps);
        applyValues(values);
    }

    QJsonArray out;
    for (const AddressBinding::Entry &entry : m_binding.entries()) {
        const ParameterAddress &a = entry.address;
        QJsonObject value;
        for (auto it = a.value().attributes().cbegin(); it != a.value().attributes().cend(); ++it)
            value.insert(it.key(), it.value());
        out.append(QJsonObject{{QLatin1String("keys"), QJsonObject::fromVariantMap(a.keys())},
                               {QLatin1String("value"), value}});
    }
    return QJsonDocument(QJsonObject{{QLatin1String("addresses"), out}});
}

bool BaseWidget::applyAddressValues(const QList<QVariantMap> &values)
{
    for (int i = 0; i < m_binding.count(); ++i) {
        if (!m_binding.at(i).address.isValid())
            continue;
        for (const QVariantMap &map : values) {
            if (!m_binding.at(i).address.sameParameter(map))
                continue;
            Value &value = m_binding[i].address.value();
            bool changed = value.set(Key::ui_prm_val, map.value(Key::ui_prm_val).toString());
            changed |= value.set(Key::ui_prm_str, map.value(Key::ui_prm_str).toString());
            if (changed)
                dispatchValueChanged(i);
            // Painting also reads state the host keeps (active, mode).
            if (repaintsOnMatch())
                update();
        }
    }
    return true;
}

void BaseWidget::notifyValueChanged(const QVariantMap &parameter)
{
    for (int i = 0; i < m_binding.count(); ++i) {
        if (!m_binding.at(i).address.isValid() || !m_binding.at(i).address.sameParameter(parameter))
            continue;
        bool changed = readAddressValue(i);
        if (!changed && (parameter.contains(Key::ui_prm_val) || parameter.contains(Key::ui_prm_str))) {
            // A host that sends the new texts along saves the read.
            Value &value = m_binding[i].address.value();
            if (parameter.contains(Key::ui_prm_val))
                changed |= value.set(Key::ui_prm_val, parameter.value(Key::ui_prm_val).toString());
            if (parameter.contains(Key::ui_prm_str))
                changed |= value.set(Key::ui_prm_str, parameter.value(Key::ui_prm_str).toString());
        }
        if (changed)
            dispatchValueChanged(i);
        // Painting also reads state the host keeps (active, mode); Qt
        // merges the repaints of one round.
        if (repaintsOnMatch())
            update();
    }
}

void BaseWidget::setActive(bool active)
{
    if (m_active == active)
        return;
    m_active = active;
    update();
}

// ---------------------------------------------------------------------------
// Addresses

QVariantMap BaseWidget::parseAddressKeys(const QDomElement &e)
{
    QVariantMap keys;
    const QDomNamedNodeMap attributes = e.attributes();
    for (int i = 0; i < attributes.count(); ++i) {
        const QDomAttr a = attributes.item(i).toAttr();
        keys.insert(sharedKey(a.name()), a.value());
    }
    bool hasChildren = false;
    for (QDomElement c = e.firstChildElement(); !c.isNull(); c = c.nextSiblingElement()) {
        keys.insert(sharedKey(c.tagName()), c.text());
        hasChildren = true;
    }
    // <Address>Ch/Gain</Address> is the short form of a bare parameter address.
    if (!hasChildren && !keys.contains(Key::prmAddr)) {
        const QString text = e.text().trimmed();
        if (!text.isEmpty())
            keys.insert(Key::prmAddr, text);
    }
    return keys;
}

bool BaseWidget::appendAddress(const QDomElement &e, const QString &addrType)
{
    return appendAddress(parseAddressKeys(e), addrType);
}

bool BaseWidget::completeDevice(QVariantMap &keys) const
{
    if (!keys.value(Key::dev_uniq_id).toString().isEmpty())
        return true;
    const QVariantMap owner = ownerDevice();
    const QString device = owner.value(Key::dev_uniq_id).toString();
    if (device.isEmpty())
        return false;
    keys.insert(Key::dev_uniq_id, device);
    if (!keys.contains(Key::dev_model) && owner.contains(Key::dev_model))
        keys.insert(Key::dev_model, owner.value(Key::dev_model));
    return true;
}

bool BaseWidget::appendAddress(QVariantMap keys, const QString &addrType)
{
    completeAddressKeys(keys);
    if (!completeDevice(keys))
        return false;
    if (!addrType.isEmpty())
        keys.insert(Key::AddrType, addrType);

    ParameterAddress address;
    if (keys.contains(Key::ui_prm_def_val)) {
        address.value().set(Key::ui_prm_val, keys.value(Key::ui_prm_val).toString());
        address.value().set(Key::ui_prm_str, keys.value(Key::ui_prm_str).toString());
        address.value().set(Key::prmAddr, keys.value(Key::prmAddr).toString());
    }
    address.keys() = std::move(keys);
    const int at = m_binding.insert(std::move(address));
    registerEntry(at);
    if (m_binding.at(at).address.isValid() && readAddressValue(at))
        dispatchValueChanged(at);
    return true;
}

void BaseWidget::rebindAddress(int index, const QVariantMap &keys)
{
    if (!m_binding.contains(index))
        return;
    QVariantMap bound = keys;
    // Without any device the entry stays unregistered: a default manager
    // registration could not be taken back (removals go to "Prm").
    const bool hasDevice = completeDevice(bound);
    if (!m_binding.bind(index, bound))
        return;
    unregisterEntry(index);
    m_binding.assign(index, std::move(bound));
    if (hasDevice)
        registerEntry(index);
    if (m_binding.at(index).address.isValid())
        readAddressValue(index);
    addressRebound(index);
}

void BaseWidget::setPlaceholder(const QString &name, const QString &value)
{
    for (int i : m_binding.setPlaceholder(name, value))
        rebindAddress(i, m_binding.at(i).address.keys());
}

void BaseWidget::registerEntry(int index)
{
    AddressBinding::Entry &entry = m_binding[index];
    entry.registered = entry.address.isValid() && changeRegistration(true, entry.category, entry.address);
}

void BaseWidget::unregisterEntry(int index)
{
    AddressBinding::Entry &entry = m_binding[index];
    if (entry.registered)
        changeRegistration(false, entry.category, entry.address);
    entry.registered = false;
}

bool BaseWidget::registerAddress(const ParameterAddress &address)
{
    return changeRegistration(true, AddressBinding::categoryOf(address.prmAddr()), address);
}

void BaseWidget::unregisterAddress(const ParameterAddress &address)
{
    changeRegistration(false, AddressBinding::categoryOf(address.prmAddr()), address);
}

bool BaseWidget::changeRegistration(bool add, AddressBinding::Category category, const ParameterAddress &address)
{
    if (!m_registry)
        return false;
    const QString word = AddressBinding::categoryName(category);
    const QString prmAddr = address.prmAddr();
    void *item = static_cast<IWidgetCore *>(this);
    const QString key = address.deviceId();
    if (key.isEmpty())
        return add ? m_registry->addToDefault(word, prmAddr, item) : m_registry->removeFromDefault(word, prmAddr, item);
    return add ? m_registry->add(word, key, prmAddr, item) : m_registry->remove(word, key, prmAddr, item);
}

int BaseWidget::indexOfAddressType(const QString &addrType) const
{
    return m_binding.indexOfType(addrType);
}

QVariantMap BaseWidget::ownerDevice() const
{
    return m_hostCore ? m_hostCore->ownerDevice(this) : QVariantMap();
}

bool BaseWidget::readAddressValue(int index)
{
    if (!m_hostCore || !m_binding.contains(index) || !m_binding.at(index).address.isValid())
        return false;
    Value value;
    QMap<QString, QString> attributes;
    if (!m_hostCore->readParameter(m_binding.at(index).address, value, attributes))
        return false;
    Value &current = m_binding[index].address.value();
    if (current.isEmpty()) {
        // The first read: share the host's texts instead of copying them
        // key by key. The payload stays the control's.
        const QVariant payload = current.payload();
        current = value;
        current.setPayload(payload);
        return !current.isEmpty();
    }
    return current.assign(value);
}

void BaseWidget::dispatchValueChanged(int index)
{
    if (m_binding.isSelector(index))
        typedAddressChanged(m_binding.selectorType(index), index);
    else
        ownValueChanged(index);
    Accessibility::valueChanged(this);
}

void BaseWidget::ownValueChanged(int index)
{
    Q_UNUSED(index)
    update();
}

// ---------------------------------------------------------------------------
// Requests and reading

bool BaseWidget::sendRequest(int kind, int index, const QMap<QString, QString> &arguments)
{
    if (!m_binding.contains(index) || !m_registry || !m_hostCore)
        return false;
    if (!m_binding.at(index).address.isValid()) // a template still waiting for its placeholders
        return false;
    const QVariantMap &keys = m_binding.at(index).address.keys();
    if (checksParameterExistence() && !m_hostCore->parameterExists(keys))
        return false;
    return m_hostCore->sendRequest(this, index, keys, kind, arguments);
}

bool BaseWidget::requestPosition(double numerator, double denominator, int setType, int index)
{
    QMap<QString, QString> args;
    args.insert(Key::ui_prm_val, QString::number(numerator / denominator, 'g', 6));
    args.insert(Key::set_prm_type, QString::number(setType));
    return sendRequest(0, index, args);
}

bool BaseWidget::requestText(const QString &text, int index)
{
    QMap<QString, QString> args;
    args.insert(Key::ui_prm_str, text);
    return sendRequest(1, index, args);
}

bool BaseWidget::requestStep(int step, int index)
{
    QMap<QString, QString> args;
    args.insert(Key::ui_prm_step, QString::number(step));
    args.insert(Key::ui_prm_val, positionText(index));
    return sendRequest(2, index, args);
}

bool BaseWidget::requestDefault(int index)
{
    return sendRequest(3, index, {});
}

// Read at every paint and step: the keys are made once rather than
// converted from Latin-1 at every call.
QString BaseWidget::positionText(int index) const
{
    static const QString key = sharedKey(Key::ui_prm_val);
    return addressAt(index).value().text(key);
}

QString BaseWidget::displayText(int index) const
{
    static const QString key = sharedKey(Key::ui_prm_str);
    return addressAt(index).value().text(key);
}

double BaseWidget::position(int index) const
{
    double v = 0.0;
    return Saturating::readPosition(positionText(index), &v) ? v : 0.0;
}

bool BaseWidget::hasPosition(int index) const
{
    double v = 0.0;
    return Saturating::readPosition(positionText(index), &v);
}

int BaseWidget::stepOfPosition(int steps, int index) const
{
    if (!m_binding.contains(index))
        return 0;
    return Saturating::stepsOf(positionText(index), steps);
}

bool BaseWidget::isOff(int index) const
{
    if (!m_binding.contains(index))
        return false;
    double v = 0.0;
    return !Saturating::readPosition(positionText(index), &v) || v <= 0.0;
}

