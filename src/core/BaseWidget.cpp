#include "BaseWidget.h"

#include "GridLayout.h"
#include "Saturating.h"
#include "data/ParameterKeys.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDomElement>
#include <QDrag>
#include <QJsonArray>
#include <QJsonObject>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpression>

namespace {

const char *const menuAddToParameterSet = "Add to Parameter Set";
const char *const menuAddNewParameterSet = "Add New Parameter Set";
const char *const menuAddToRemoteControlList = "Add to Remote Control List";
const char *const menuAddToParameterLinkGroup = "Add to Parameter Link Group";
const char *const menuAddNewGroup = "Add New Group";

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
    QFont f = font();
    f.setFamily(QGuiApplication::font().family());
    const qreal size = scaledPointSize(m_designPointSize, zoomFactor());
    if (size > 0 && !qFuzzyCompare(f.pointSizeF(), size))
        f.setPointSizeF(size);
    setFont(f);
}

BaseWidget::~BaseWidget()
{
    // The host commits after deleting a panel; until then the queued
    // removals keep its delivery walk away from this object.
    for (int i = 0; i < m_addresses.size(); ++i) {
        if (m_registered.value(i))
            unregisterAddress(m_addresses.at(i));
    }
}

const TagTable &BaseWidget::tags()
{
    static const TagTable table = TagTable::of<BaseWidget>(nullptr, {
        {"Rect", &BaseWidget::readRect},
        {"Focus", &BaseWidget::readFocus},
        {"Layout", &BaseWidget::readLayout},
        {"Font", &BaseWidget::readFont},
        {"FontSize", &BaseWidget::readFontSize},
        {"Address", &BaseWidget::readAddress},
        {"AddressList", &BaseWidget::readAddressList},
        {"DragEnabled", &BaseWidget::readDragEnabled},
        {"BaseAddress", &BaseWidget::readBaseAddress},
        {"ReplaceParameterName", &BaseWidget::readReplaceParameterName},
        {"VisibleParameterName", &BaseWidget::readVisibleParameterName},
        {"ContextMenuVisible", &BaseWidget::readContextMenuVisible},
        {"FindKey", &BaseWidget::readFindKey},
        {"RemoteControlList", &BaseWidget::readRemoteControlList},
        {"TabOrder", &BaseWidget::readTabOrder},
        {"FrontFocus", &BaseWidget::readFrontFocus},
    });
    return table;
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
    setGeometry(QRect(scaledPosition(m_designPosition, zoom), scaledSize(m_designSize, zoom)));
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
    if (index < 0 || index >= m_addresses.size())
        return emptyAddress();
    return m_addresses[index];
}

const ParameterAddress &BaseWidget::addressAt(int index) const
{
    if (index < 0 || index >= m_addresses.size())
        return emptyAddress();
    return m_addresses.at(index);
}

bool BaseWidget::applyValues(const QList<Value> &values)
{
    const int n = qMin(values.size(), m_addresses.size());
    for (int i = 0; i < n; ++i) {
        if (m_addresses[i].value().assign(values.at(i)))
            addressValueChanged(i);
    }
    return true;
}

void BaseWidget::updateAddresses(const QList<QVariantMap> &addresses)
{
    static const QLatin1String taken[] = {Key::prmAddr, Key::dev_uniq_id, Key::zone_uniq_id, Key::temporaryLink};
    const int n = qMin(addresses.size(), m_addresses.size());
    for (int i = 0; i < n; ++i) {
        QVariantMap keys = m_addresses.at(i).keys();
        for (const QLatin1String &k : taken) {
            if (addresses.at(i).contains(k))
                keys.insert(k, addresses.at(i).value(k));
        }
        m_templates[i] = keys.value(Key::prmAddr).toString();
        rebindAddress(i, keys);
    }
}

QList<ParameterAddress> BaseWidget::validAddresses() const
{
    QList<ParameterAddress> valid;
    for (const ParameterAddress &a : m_addresses) {
        if (a.isValid())
            valid.append(a);
    }
    return valid;
}

QMap<QString, Value> BaseWidget::addressValues() const
{
    QMap<QString, Value> values;
    for (const ParameterAddress &a : m_addresses) {
        if (a.isValid())
            values.insert(a.prmAddr(), a.value());
    }
    return values;
}

QVariantList BaseWidget::addressList() const
{
    QVariantList list;
    for (const ParameterAddress &a : m_addresses)
        list.append(a.keys());
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
    for (const ParameterAddress &a : qAsConst(m_addresses)) {
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
    for (int i = 0; i < m_addresses.size(); ++i) {
        if (!m_addresses.at(i).isValid())
            continue;
        for (const QVariantMap &map : values) {
            if (!m_addresses.at(i).sameParameter(map))
                continue;
            Value &value = m_addresses[i].value();
            bool changed = value.set(Key::ui_prm_val, map.value(Key::ui_prm_val).toString());
            changed |= value.set(Key::ui_prm_str, map.value(Key::ui_prm_str).toString());
            if (changed)
                addressValueChanged(i);
            // Painting also reads state the host keeps (active, mode).
            if (repaintsOnMatch())
                update();
        }
    }
    return true;
}

void BaseWidget::notifyValueChanged(const QVariantMap &parameter)
{
    for (int i = 0; i < m_addresses.size(); ++i) {
        if (!m_addresses.at(i).isValid() || !m_addresses.at(i).sameParameter(parameter))
            continue;
        bool changed = readAddressValue(i);
        if (!changed && (parameter.contains(Key::ui_prm_val) || parameter.contains(Key::ui_prm_str))) {
            // A host that sends the new texts along saves the read.
            Value &value = m_addresses[i].value();
            if (parameter.contains(Key::ui_prm_val))
                changed |= value.set(Key::ui_prm_val, parameter.value(Key::ui_prm_val).toString());
            if (parameter.contains(Key::ui_prm_str))
                changed |= value.set(Key::ui_prm_str, parameter.value(Key::ui_prm_str).toString());
        }
        if (changed)
            addressValueChanged(i);
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
        keys.insert(a.name(), a.value());
    }
    bool hasChildren = false;
    for (QDomElement c = e.firstChildElement(); !c.isNull(); c = c.nextSiblingElement()) {
        keys.insert(c.tagName(), c.text());
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

    ParameterAddress entry;
    if (keys.contains(Key::ui_prm_def_val)) {
        entry.value().set(Key::ui_prm_val, keys.value(Key::ui_prm_val).toString());
        entry.value().set(Key::ui_prm_str, keys.value(Key::ui_prm_str).toString());
        entry.value().set(Key::prmAddr, keys.value(Key::prmAddr).toString());
    }
    const QString templ = keys.value(Key::prmAddr).toString();
    bool complete = true;
    keys.insert(Key::prmAddr, boundAddress(templ, &complete));
    if (!complete)
        keys.remove(Key::prmAddr);
    entry.setKeys(keys);

    // Typed addresses (selectors) stay behind the control's own addresses so
    // that the indexes a description gives do not depend on element order.
    int at = m_addresses.size();
    if (addrType.isEmpty()) {
        while (at > 0 && !m_addresses.at(at - 1).key(Key::AddrType).isEmpty())
            --at;
    }
    m_addresses.insert(at, entry);
    m_templates.insert(at, templ);
    m_registered.insert(at, entry.isValid() && registerAddress(entry));
    if (entry.isValid() && readAddressValue(at))
        addressValueChanged(at);
    return true;
}

void BaseWidget::rebindAddress(int index, const QVariantMap &keys)
{
    if (index < 0 || index >= m_addresses.size())
        return;
    ParameterAddress &entry = m_addresses[index];
    QVariantMap bound = keys;
    // Without any device the entry stays unregistered: a default manager
    // registration could not be taken back (removals go to "Prm").
    const bool hasDevice = completeDevice(bound);
    bool complete = true;
    bound.insert(Key::prmAddr, boundAddress(m_templates.at(index), &complete));
    if (!complete)
        bound.remove(Key::prmAddr);
    if (bound == entry.keys())
        return;
    if (m_registered.at(index))
        unregisterAddress(entry);
    entry.setKeys(bound);
    entry.value() = Value();
    m_registered[index] = hasDevice && entry.isValid() && registerAddress(entry);
    if (entry.isValid())
        readAddressValue(index);
    addressRebound(index);
}

QString BaseWidget::boundAddress(const QString &templ, bool *complete) const
{
    *complete = true;
    if (!templ.contains(QLatin1Char('{')))
        return templ;
    static const QRegularExpression placeholderPattern(QStringLiteral("\\{([A-Za-z0-9_]+)\\}"));
    QString result;
    int last = 0;
    auto it = placeholderPattern.globalMatch(templ);
    while (it.hasNext()) {
        const QRegularExpressionMatch m = it.next();
        result += templ.midRef(last, m.capturedStart() - last);
        const auto value = m_placeholders.constFind(m.captured(1));
        if (value == m_placeholders.cend())
            *complete = false;
        else
            result += *value;
        last = m.capturedEnd();
    }
    result += templ.midRef(last);
    return result;
}

void BaseWidget::setPlaceholder(const QString &name, const QString &value)
{
    const auto it = m_placeholders.constFind(name);
    if (it != m_placeholders.cend() && *it == value)
        return;
    m_placeholders.insert(name, value);
    const QString token = QLatin1Char('{') + name + QLatin1Char('}');
    for (int i = 0; i < m_addresses.size(); ++i) {
        if (m_templates.at(i).contains(token))
            rebindAddress(i, m_addresses.at(i).keys());
    }
}

bool BaseWidget::registerAddress(const ParameterAddress &address)
{
    if (!m_registry)
        return false;
    const QString prmAddr = address.prmAddr();
    const QString category = ParameterManagementRegistry::categoryOf(prmAddr);
    void *item = static_cast<IWidgetCore *>(this);
    const QString key = address.deviceId();
    return key.isEmpty() ? m_registry->addToDefault(category, prmAddr, item)
                         : m_registry->add(category, key, prmAddr, item);
}

void BaseWidget::unregisterAddress(const ParameterAddress &address)
{
    if (!m_registry)
        return;
    const QString prmAddr = address.prmAddr();
    const QString category = ParameterManagementRegistry::categoryOf(prmAddr);
    void *item = static_cast<IWidgetCore *>(this);
    const QString key = address.deviceId();
    if (key.isEmpty())
        m_registry->removeFromDefault(category, prmAddr, item);
    else
        m_registry->remove(category, key, prmAddr, item);
}

int BaseWidget::indexOfAddressType(const QString &addrType) const
{
    for (int i = 0; i < m_addresses.size(); ++i) {
        if (m_addresses.at(i).key(Key::AddrType) == addrType)
            return i;
    }
    return -1;
}

QVariantMap BaseWidget::ownerDevice() const
{
    return m_hostCore ? m_hostCore->ownerDevice(this) : QVariantMap();
}

bool BaseWidget::readAddressValue(int index)
{
    if (!m_hostCore || index < 0 || index >= m_addresses.size() || !m_addresses.at(index).isValid())
        return false;
    Value value;
    QMap<QString, QString> attributes;
    if (!m_hostCore->readParameter(m_addresses.at(index), value, attributes))
        return false;
    return m_addresses[index].value().assign(value);
}

void BaseWidget::addressValueChanged(int index)
{
    const QString type = m_addresses.value(index).key(Key::AddrType);
    if (!type.isEmpty())
        typedAddressChanged(type, index);
    update();
}

// ---------------------------------------------------------------------------
// Requests and reading

bool BaseWidget::sendRequest(int kind, int index, const QMap<QString, QString> &arguments)
{
    if (index < 0 || index >= m_addresses.size() || !m_registry || !m_hostCore)
        return false;
    if (!m_addresses.at(index).isValid()) // a template still waiting for its placeholders
        return false;
    const QVariantMap &keys = m_addresses.at(index).keys();
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

QString BaseWidget::positionText(int index) const
{
    return addressAt(index).value().text(Key::ui_prm_val);
}

QString BaseWidget::displayText(int index) const
{
    return addressAt(index).value().text(Key::ui_prm_str);
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
    if (index < 0 || index >= m_addresses.size())
        return 0;
    return Saturating::stepsOf(positionText(index), steps);
}

bool BaseWidget::isOff(int index) const
{
    if (index < 0 || index >= m_addresses.size())
        return false;
    double v = 0.0;
    return !Saturating::readPosition(positionText(index), &v) || v <= 0.0;
}

// ---------------------------------------------------------------------------
// Selection, menu, drag

bool BaseWidget::selectAddress(int index, bool report)
{
    if (index < 0 || index >= m_addresses.size())
        return false;
    m_currentAddressIndex = index;
    if (report && m_hostCore) {
        QString first, second;
        selectionTexts(index, first, second);
        m_hostCore->selectParameter(this, first, second);
    }
    return true;
}

void BaseWidget::selectionTexts(int index, QString &first, QString &second) const
{
    const ParameterAddress &a = addressAt(index);
    first = a.deviceId();
    if (!m_visibleParameterName)
        second.clear();
    else
        second = m_replaceParameterName.isEmpty() ? a.prmAddr() : m_replaceParameterName;
}

QMenu *BaseWidget::createContextMenu()
{
    if (!m_contextMenuVisible)
        return nullptr;
    QMenu *menu = new QMenu(this);
    buildContextMenu(menu);
    if (menu->actions().isEmpty()) {
        delete menu;
        return nullptr;
    }
    connect(menu, SIGNAL(triggered(QAction *)), this, SLOT(selectedMenu(QAction *)));
    return menu;
}

void BaseWidget::buildContextMenu(QMenu *menu)
{
    if (m_addresses.isEmpty())
        return;
    QVariantMap data = addressAt(m_currentAddressIndex).keys();
    data.insert(QStringLiteral("widget"), m_name);
    for (const char *text : {menuAddToParameterSet, menuAddNewParameterSet, menuAddToRemoteControlList,
                             menuAddToParameterLinkGroup, menuAddNewGroup}) {
        QAction *action = menu->addAction(QString::fromLatin1(text));
        action->setData(data);
    }
}

void BaseWidget::selectedMenu(QAction *action)
{
    if (!action)
        return;
    const QString text = action->text();
    if (text == QLatin1String(menuAddToParameterSet))
        addToParameterSet(action->data().toMap());
    else if (text == QLatin1String(menuAddNewParameterSet))
        addNewParameterSet();
    else if (text == QLatin1String(menuAddToRemoteControlList))
        addToRemoteControlList();
    else if (text == QLatin1String(menuAddToParameterLinkGroup))
        addToParameterLinkGroup(action->data().toMap());
    else if (text == QLatin1String(menuAddNewGroup))
        addNewGroup();
    else
        menuEntryChosen(action);
}

void BaseWidget::addToParameterSet(const QVariantMap &data)
{
    if (m_hostCore)
        m_hostCore->contextAction(this, QString::fromLatin1(menuAddToParameterSet), data);
}

void BaseWidget::addNewParameterSet()
{
    if (m_hostCore)
        m_hostCore->contextAction(this, QString::fromLatin1(menuAddNewParameterSet), addressAt(m_currentAddressIndex).keys());
}

void BaseWidget::addToRemoteControlList()
{
    if (m_hostCore)
        m_hostCore->contextAction(this, QString::fromLatin1(menuAddToRemoteControlList), addressAt(m_currentAddressIndex).keys());
}

void BaseWidget::addToParameterLinkGroup(const QVariantMap &data)
{
    if (m_hostCore)
        m_hostCore->contextAction(this, QString::fromLatin1(menuAddToParameterLinkGroup), data);
}

void BaseWidget::addNewGroup()
{
    if (m_hostCore)
        m_hostCore->contextAction(this, QString::fromLatin1(menuAddNewGroup), addressAt(m_currentAddressIndex).keys());
}

void BaseWidget::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createContextMenu();
    if (!menu) {
        QWidget::contextMenuEvent(event);
        return;
    }
    menu->exec(event->globalPos());
    delete menu;
}

QString BaseWidget::dragPayload(int index) const
{
    QJsonObject payload = QJsonObject::fromVariantMap(addressAt(index).keys());
    payload.insert(QStringLiteral("widget"), m_name);
    return QString::fromUtf8(QJsonDocument(payload).toJson(QJsonDocument::Compact));
}

void BaseWidget::pressNotified(QMouseEvent *event)
{
    m_pressPoint = event->pos();
    selectAddress(m_currentAddressIndex, true);
}

void BaseWidget::controlClick(QMouseEvent *event)
{
    // Control-click adds the control to (or takes it out of) the host's
    // multiple selection.
    m_pressPoint = event->pos();
    if (event->type() == QEvent::MouseButtonPress) {
        setHighlight(!m_highlight);
        selectAddress(m_currentAddressIndex, true);
    }
}

void BaseWidget::linkClick(QMouseEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        QVariantMap data = addressAt(m_currentAddressIndex).keys();
        data.insert(QStringLiteral("widget"), m_name);
        addToParameterLinkGroup(data);
    }
}

bool BaseWidget::handOverModifierPress(QMouseEvent *event)
{
    const Qt::KeyboardModifiers mods = event->modifiers();
    if (!(mods & Qt::ControlModifier))
        return false;
    if (mods & Qt::ShiftModifier)
        linkClick(event);
    else
        controlClick(event);
    return true;
}

bool BaseWidget::maybeStartParameterDrag(QMouseEvent *event)
{
    if (!m_dragEnabled || event->modifiers() != Qt::ControlModifier || !(event->buttons() & Qt::LeftButton))
        return false;
    if ((event->pos() - m_pressPoint).manhattanLength() < QApplication::startDragDistance())
        return false;
    auto *mime = new QMimeData;
    mime->setText(dragPayload(m_currentAddressIndex));
    auto *drag = new QDrag(this);
    drag->setMimeData(mime);
    drag->exec(Qt::CopyAction);
    return true;
}

void BaseWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && !handOverModifierPress(event))
        pressNotified(event);
    QWidget::mousePressEvent(event);
}

void BaseWidget::mouseMoveEvent(QMouseEvent *event)
{
    maybeStartParameterDrag(event);
    QWidget::mouseMoveEvent(event);
}

// ---------------------------------------------------------------------------
// Geometry, font, painting

QPoint BaseWidget::scaledPosition(const QPoint &design, float zoom) const
{
    return QPoint(Saturating::pixels(design.x(), zoom), Saturating::pixels(design.y(), zoom));
}

QSize BaseWidget::scaledSize(const QSize &design, float zoom) const
{
    return QSize(Saturating::pixels(design.width(), zoom), Saturating::pixels(design.height(), zoom));
}

qreal BaseWidget::scaledPointSize(qreal designPointSize, float zoom) const
{
    const int dpi = logicalDpiX();
    return designPointSize * zoom * 96.0 / (dpi > 0 ? dpi : 96);
}

void BaseWidget::applyFont(float zoom)
{
    QFont f = font();
    const qreal size = scaledPointSize(m_designPointSize, zoom);
    if (size > 0 && !qFuzzyCompare(f.pointSizeF(), size)) {
        f.setPointSizeF(size);
        setFont(f);
    }
}

void BaseWidget::childEvent(QChildEvent *event)
{
    QWidget::childEvent(event);
    if (event->added() && event->child()->isWidgetType()) {
        if (auto *grid = qobject_cast<GridLayout *>(layout()))
            grid->place(static_cast<QWidget *>(event->child()));
    }
}

void BaseWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintBase(painter);
}

void BaseWidget::paintBase(QPainter &painter)
{
    if (!m_highlight)
        return;
    painter.save();
    painter.setPen(QPen(QColor(255, 170, 0), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.restore();
}

// ---------------------------------------------------------------------------
// Description handlers

QRect BaseWidget::parseRect(const QDomElement &e)
{
    // Clamped to what a widget can be, so that right and bottom edges stay
    // inside the int range however large the numbers in the file are.
    const auto read = [&e](const char *name, int low) {
        return int(qBound<qint64>(low, e.attribute(QLatin1String(name)).toLongLong(), Saturating::maxPixels));
    };
    return QRect(read("x", -Saturating::maxPixels), read("y", -Saturating::maxPixels), read("width", 0),
                 read("height", 0));
}

QColor BaseWidget::parseColor(const QString &text, const QColor &fallback)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 3 && parts.size() != 4)
        return fallback;
    int c[4] = {0, 0, 0, 255};
    for (int i = 0; i < parts.size(); ++i) {
        bool ok = false;
        c[i] = parts.at(i).trimmed().toInt(&ok);
        if (!ok || c[i] < 0 || c[i] > 255)
            return fallback;
    }
    return QColor(c[0], c[1], c[2], c[3]);
}

bool BaseWidget::readRect(const QDomElement &e)
{
    // All four numbers or nothing: <Rect/> leaves the geometry as it is.
    for (const char *name : {"x", "y", "width", "height"}) {
        bool ok = false;
        e.attribute(QLatin1String(name)).toInt(&ok);
        if (!ok)
            return false;
    }
    const QRect r = parseRect(e);
    m_designPosition = r.topLeft();
    m_designSize = r.size();
    const float zoom = zoomFactor();
    const QPoint pos = scaledPosition(m_designPosition, zoom);
    const QSize size = scaledSize(m_designSize, zoom);
    setGeometry(QRect(pos, size));
    if (e.hasAttribute(QStringLiteral("fixed"))) {
        const QString fixed = e.attribute(QStringLiteral("fixed"));
        if (fixed.contains(QLatin1String("height")))
            setFixedHeight(size.height());
        if (fixed.contains(QLatin1String("width")))
            setFixedWidth(size.width());
    }
    if (e.hasAttribute(QStringLiteral("expand"))) {
        const QString expand = e.attribute(QStringLiteral("expand"));
        QSizePolicy policy = sizePolicy();
        if (expand.contains(QLatin1String("height")))
            policy.setVerticalPolicy(QSizePolicy::Expanding);
        if (expand.contains(QLatin1String("width")))
            policy.setHorizontalPolicy(QSizePolicy::Expanding);
        setSizePolicy(policy);
    }
    return true;
}

bool BaseWidget::readFocus(const QDomElement &e)
{
    const QString text = e.text();
    if (text == QLatin1String("none"))
        setFocusPolicy(Qt::NoFocus);
    else if (text == QLatin1String("strong"))
        setFocusPolicy(Qt::StrongFocus);
    else if (text == QLatin1String("tab"))
        setFocusPolicy(Qt::TabFocus);
    else
        return false;
    return true;
}

bool BaseWidget::readLayout(const QDomElement &e)
{
    if (e.attribute(QStringLiteral("type")) != QLatin1String("grid"))
        return false;
    delete layout();
    auto *grid = new GridLayout(e, zoomFactor());
    setLayout(grid);
    for (QObject *child : children()) {
        if (child->isWidgetType() && !static_cast<QWidget *>(child)->isWindow())
            grid->place(static_cast<QWidget *>(child));
    }
    return true;
}

bool BaseWidget::readFont(const QDomElement &e)
{
    QFont f = font();
    const QString family = e.attribute(QStringLiteral("family"), e.text().trimmed());
    if (!family.isEmpty())
        f.setFamily(family);
    if (e.hasAttribute(QStringLiteral("bold")))
        f.setBold(e.attribute(QStringLiteral("bold")) == QLatin1String("true"));
    if (e.hasAttribute(QStringLiteral("italic")))
        f.setItalic(e.attribute(QStringLiteral("italic")) == QLatin1String("true"));
    f.setPointSizeF(scaledPointSize(m_designPointSize, zoomFactor()));
    setFont(f);
    return true;
}

bool BaseWidget::readFontSize(const QDomElement &e)
{
    bool ok = false;
    const double size = e.text().trimmed().toDouble(&ok);
    if (!ok || size <= 0)
        return false;
    m_designPointSize = size;
    QFont f = font();
    f.setPointSizeF(scaledPointSize(size, zoomFactor()));
    setFont(f);
    return true;
}

bool BaseWidget::readAddress(const QDomElement &e)
{
    return appendAddress(e);
}

bool BaseWidget::readAddressList(const QDomElement &e)
{
    bool all = true;
    for (QDomElement c = e.firstChildElement(); !c.isNull(); c = c.nextSiblingElement())
        all &= appendAddress(c);
    return all;
}

bool BaseWidget::readDragEnabled(const QDomElement &e)
{
    m_dragEnabled = isTrue(e);
    return true;
}

bool BaseWidget::readBaseAddress(const QDomElement &e)
{
    m_baseAddress = parseAddressKeys(e);
    return true;
}

bool BaseWidget::readReplaceParameterName(const QDomElement &e)
{
    m_replaceParameterName = e.text();
    return true;
}

bool BaseWidget::readVisibleParameterName(const QDomElement &e)
{
    m_visibleParameterName = isTrue(e);
    return true;
}

bool BaseWidget::readContextMenuVisible(const QDomElement &e)
{
    m_contextMenuVisible = isTrue(e);
    return true;
}

bool BaseWidget::readFindKey(const QDomElement &e)
{
    m_findKey = e.text();
    return true;
}

bool BaseWidget::readRemoteControlList(const QDomElement &e)
{
    m_remoteControlList.clear();
    for (QDomElement c = e.firstChildElement(); !c.isNull(); c = c.nextSiblingElement()) {
        const QString text = c.text().trimmed();
        if (!text.isEmpty())
            m_remoteControlList.append(text);
    }
    if (m_remoteControlList.isEmpty()) {
        for (const QString &part : e.text().split(QLatin1Char(','), Qt::SkipEmptyParts))
            m_remoteControlList.append(part.trimmed());
    }
    return true;
}

bool BaseWidget::readTabOrder(const QDomElement &e)
{
    bool ok = false;
    const int order = e.text().trimmed().toInt(&ok);
    if (!ok)
        return false;
    m_tabOrder = order;
    return true;
}

bool BaseWidget::readFrontFocus(const QDomElement &e)
{
    if (!isTrue(e))
        return false;
    setFocus(Qt::OtherFocusReason);
    return true;
}
