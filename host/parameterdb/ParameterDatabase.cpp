#include "ParameterDatabase.h"

#include <data/ParameterKeys.h>
#include <corvane/ParameterManagement.h>

#include <QCoreApplication>
#include <QDir>
#include <QDomDocument>
#include <QFile>

#include <cmath>

namespace {

const QString stateAddress = QStringLiteral("Setup/0/Config/DesiredFs:0:0");

QString text(const QVariantMap &map, QLatin1String key)
{
    return map.value(key).toString();
}

// Expands "Repeat" elements: every attribute of the parameters inside may
// name the loop variable as {var}.
bool readParameters(const QDomElement &parent, const QMap<QString, QString> &vars, QList<ParameterDefinition> *out,
                    QStringList *errors, const QString &origin)
{
    bool ok = true;
    for (QDomElement e = parent.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
        if (e.tagName() == QLatin1String("Repeat")) {
            const QString var = e.attribute(QStringLiteral("var"), QStringLiteral("n"));
            bool okFrom = false, okTo = false;
            const int from = e.attribute(QStringLiteral("from")).toInt(&okFrom);
            const int to = e.attribute(QStringLiteral("to")).toInt(&okTo);
            if (!okFrom || !okTo || to < from || to - from > 4096) {
                if (errors)
                    errors->append(QStringLiteral("%1:%2: malformed Repeat range").arg(origin).arg(e.lineNumber()));
                ok = false;
                continue;
            }
            for (int i = from; i <= to; ++i) {
                QMap<QString, QString> inner = vars;
                inner.insert(var, QString::number(i));
                ok = readParameters(e, inner, out, errors, origin) && ok;
            }
            continue;
        }
        if (e.tagName() != QLatin1String("Parameter"))
            continue;
        QDomElement copy = e.cloneNode(false).toElement();
        const QDomNamedNodeMap attributes = copy.attributes();
        for (int i = 0; i < attributes.count(); ++i) {
            QDomAttr a = attributes.item(i).toAttr();
            QString value = a.value();
            for (auto it = vars.cbegin(); it != vars.cend(); ++it)
                value.replace(QLatin1Char('{') + it.key() + QLatin1Char('}'), it.value());
            a.setValue(value);
        }
        ParameterDefinition definition;
        QString error;
        if (!ParameterDefinition::fromElement(copy, &definition, &error)) {
            if (errors)
                errors->append(QStringLiteral("%1:%2: %3").arg(origin).arg(e.lineNumber()).arg(error));
            ok = false;
            continue;
        }
        out->append(definition);
    }
    return ok;
}

} // namespace

ParameterDatabase::ParameterDatabase() = default;
ParameterDatabase::~ParameterDatabase() = default;

ParameterDatabase *ParameterDatabase::instance()
{
    static ParameterDatabase *db = [] {
        auto *d = new ParameterDatabase;
        if (QCoreApplication::instance())
            d->loadModels(QCoreApplication::applicationDirPath() + QLatin1String("/devices"));
        return d;
    }();
    return db;
}

bool ParameterDatabase::loadModels(const QString &folder, QStringList *errors)
{
    const QDir dir(folder);
    if (!dir.exists())
        return false;
    bool ok = true;
    for (const QString &name : dir.entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name))
        ok = loadModelFile(dir.filePath(name), errors) && ok;
    return ok;
}

bool ParameterDatabase::loadModelFile(const QString &path, QStringList *errors)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (errors)
            errors->append(QStringLiteral("%1: %2").arg(path, file.errorString()));
        return false;
    }
    return loadModel(file.readAll(), path, errors);
}

bool ParameterDatabase::loadModel(const QByteArray &xml, const QString &origin, QStringList *errors)
{
    QDomDocument document;
    QString message;
    int line = 0;
    if (!document.setContent(xml, &message, &line)) {
        if (errors)
            errors->append(QStringLiteral("%1:%2: %3").arg(origin).arg(line).arg(message));
        return false;
    }
    const QDomElement root = document.documentElement();
    const QString name = root.attribute(QStringLiteral("name"));
    if (root.tagName() != QLatin1String("DeviceModel") || name.isEmpty()) {
        if (errors)
            errors->append(QStringLiteral("%1:%2: expected <DeviceModel name=\"...\">").arg(origin).arg(root.lineNumber()));
        return false;
    }
    QList<ParameterDefinition> definitions;
    const bool ok = readParameters(root, {}, &definitions, errors, origin);
    Model model;
    for (const ParameterDefinition &s : qAsConst(definitions)) {
        if (model.byAddress.contains(s.address)) {
            model.order[model.byAddress.value(s.address)] = s;
            continue;
        }
        model.byAddress.insert(s.address, model.order.size());
        model.order.append(s);
    }
    m_models.insert(name, model);
    return ok;
}

QStringList ParameterDatabase::models() const
{
    return m_models.keys();
}

bool ParameterDatabase::hasModel(const QString &model) const
{
    return m_models.contains(model);
}

const ParameterDefinition *ParameterDatabase::definition(const QString &model, const QString &prmAddr) const
{
    const auto it = m_models.constFind(model);
    if (it == m_models.cend())
        return nullptr;
    const int index = it->byAddress.value(prmAddr, -1);
    return index < 0 ? nullptr : &it->order.at(index);
}

QList<ParameterDefinition> ParameterDatabase::definitions(const QString &model) const
{
    return m_models.value(model).order;
}

bool ParameterDatabase::addDevice(const QString &id, const QString &model)
{
    if (id.isEmpty() || m_deviceModels.contains(id))
        return false;
    m_deviceOrder.append(id);
    m_deviceModels.insert(id, model);
    return true;
}

void ParameterDatabase::clearDevices()
{
    m_deviceOrder.clear();
    m_deviceModels.clear();
    m_states.clear();
}

QString ParameterDatabase::stateKey(const QString &device, const QString &zone, const QString &prmAddr)
{
    return device + QLatin1Char('\n') + zone + QLatin1Char('\n') + prmAddr;
}

const ParameterDefinition *ParameterDatabase::specFor(const QVariantMap &address) const
{
    const QString dev = text(address, Key::dev_uniq_id);
    if (!m_deviceModels.contains(dev))
        return nullptr;
    return definition(m_deviceModels.value(dev), text(address, Key::prmAddr));
}

ParameterDatabase::State ParameterDatabase::initialState(const ParameterDefinition &definition) const
{
    State s;
    s.value = definition.defaultValue;
    s.text = definition.defaultText;
    return s;
}

QStringList ParameterDatabase::devices() const
{
    return m_deviceOrder;
}

QVariantMap ParameterDatabase::device(const QString &devUniqId) const
{
    if (!m_deviceModels.contains(devUniqId))
        return QVariantMap();
    return {{Key::dev_uniq_id, devUniqId}, {Key::dev_model, m_deviceModels.value(devUniqId)}};
}

bool ParameterDatabase::readParameter(const QVariantMap &address, QVariantMap &answer) const
{
    const QString dev = text(address, Key::dev_uniq_id);
    if (!m_deviceModels.contains(dev))
        return false;
    const QString key = stateKey(dev, text(address, Key::zone_uniq_id), text(address, Key::prmAddr));
    const ParameterDefinition *s = specFor(address);
    auto it = m_states.constFind(key);
    if (!s && it == m_states.cend())
        return false;

    QVariantMap out;
    if (s) {
        const State state = it == m_states.cend() ? initialState(*s) : *it;
        if (s->isNumeric()) {
            const QString position = ParameterDefinition::positionText(s->positionOf(state.value));
            out.insert(Key::ui_prm_val, position);
            out.insert(Key::ui_prm_str, s->displayText(state.value));
            out.insert(Key::prmValue, QString::number(state.value, 'g', 10));
            out.insert(Key::prmMin, s->displayText(s->minimum));
            out.insert(Key::prmMax, s->displayText(s->maximum));
            if (s->type == ParameterDefinition::Meter)
                out.insert(Key::ui_prm_prak, position);
        } else {
            out.insert(Key::ui_prm_val, s->type == ParameterDefinition::State ? state.text : QStringLiteral("0"));
            out.insert(Key::ui_prm_str, state.text);
            out.insert(Key::prmValue, state.text);
        }
        out.insert(Key::prmUnit, s->unit);
        out.insert(Key::prmType, ParameterDefinition::typeName(s->type));
        // Lets a combo box list the choices without a list of its own.
        if (s->type == ParameterDefinition::Options)
            out.insert(Key::ui_prm_option, s->options.join(QLatin1Char('|')));
        if (it != m_states.cend()) {
            for (auto t = it->stored.cbegin(); t != it->stored.cend(); ++t)
                out.insert(t.key(), t.value());
        }
    } else {
        for (auto t = it->stored.cbegin(); t != it->stored.cend(); ++t)
            out.insert(t.key(), t.value());
    }
    for (auto o = out.cbegin(); o != out.cend(); ++o)
        answer.insert(o.key(), o.value());
    return true;
}

bool ParameterDatabase::queryParameter(const QString &model, const QVariantMap &request,
                                       QMap<QString, QVariantMap> &answer) const
{
    const QString prmAddr = text(request, Key::prmAddr);
    bool any = false;
    for (const QString &dev : m_deviceOrder) {
        if (m_deviceModels.value(dev) != model)
            continue;
        QVariantMap address = request;
        address.insert(Key::dev_uniq_id, dev);
        QVariantMap one;
        if (!readParameter(address, one))
            continue;
        one.insert(QStringLiteral("category"), ParameterManagementRegistry::categoryOf(prmAddr));
        one.insert(QStringLiteral("componentname"), text(request, Key::cptName));
        answer.insert(dev, one);
        any = true;
    }
    return any;
}

bool ParameterDatabase::apply(const ParameterDefinition &definition, State *state, int kind,
                              const QMap<QString, QString> &arguments) const
{
    switch (kind) {
    case 0: {
        if (!definition.isNumeric())
            return false;
        bool ok = false;
        const double position = arguments.value(Key::ui_prm_val).toDouble(&ok);
        if (!ok || !std::isfinite(position))
            return false;
        state->value = definition.valueAt(position);
        return true;
    }
    case 1: {
        const QString typed = arguments.value(Key::ui_prm_str);
        if (definition.type == ParameterDefinition::Text) {
            state->text = definition.maxLength > 0 ? typed.left(definition.maxLength) : typed;
            return true;
        }
        double value;
        if (!definition.parse(typed, &value))
            return false;
        state->value = value;
        return true;
    }
    case 2: {
        if (!definition.isNumeric())
            return false;
        bool ok = false;
        const int steps = arguments.value(Key::ui_prm_step).toInt(&ok);
        if (!ok)
            return false;
        state->value = definition.stepped(state->value, steps);
        return true;
    }
    case 3:
        *state = initialState(definition);
        return true;
    }
    return false;
}

bool ParameterDatabase::request(const QVariantMap &address, int kind, const QMap<QString, QString> &arguments)
{
    if (!m_apply)
        return false;
    const ParameterDefinition *s = specFor(address);
    if (!s || s->readOnly)
        return false;
    const QString key = stateKey(text(address, Key::dev_uniq_id), text(address, Key::zone_uniq_id),
                                 text(address, Key::prmAddr));
    State state = m_states.value(key, initialState(*s));
    if (!apply(*s, &state, kind, arguments))
        return false;
    state.stored.clear();
    m_states.insert(key, state);
    notify(address);
    return true;
}

bool ParameterDatabase::store(const QVariantMap &address, const QMap<QString, QString> &texts)
{
    const QString dev = text(address, Key::dev_uniq_id);
    if (!m_deviceModels.contains(dev))
        return false;
    const QString key = stateKey(dev, text(address, Key::zone_uniq_id), text(address, Key::prmAddr));
    auto it = m_states.find(key);
    if (it == m_states.end()) {
        const ParameterDefinition *s = specFor(address);
        it = m_states.insert(key, s ? initialState(*s) : State());
    }
    for (auto t = texts.cbegin(); t != texts.cend(); ++t)
        it->stored.insert(t.key(), t.value());
    notify(address);
    return true;
}

bool ParameterDatabase::parameterExists(const QVariantMap &address) const
{
    const QString dev = text(address, Key::dev_uniq_id);
    if (!m_deviceModels.contains(dev))
        return false;
    return specFor(address)
        || m_states.contains(stateKey(dev, text(address, Key::zone_uniq_id), text(address, Key::prmAddr)));
}

QString ParameterDatabase::positionOfText(const QVariantMap &address, const QString &text) const
{
    const ParameterDefinition *s = specFor(address);
    double value = 0;
    if (!s || !s->isNumeric() || !s->parse(text, &value))
        return QString();
    return ParameterDefinition::positionText(s->positionOf(value));
}

QString ParameterDatabase::convertDelay(const QVariantMap &address, const QString &unit, const QString &typed) const
{
    const ParameterDefinition *s = specFor(address);
    if (!s || s->type != ParameterDefinition::Linear || s->unit != QLatin1String("ms"))
        return QString();
    bool ok = false;
    const double amount = typed.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(amount))
        return QString();
    constexpr double speedOfSound = 343.0; // m/s at 20 degrees
    double ms;
    if (unit == QLatin1String("meter")) {
        ms = amount / speedOfSound * 1000;
    } else if (unit == QLatin1String("feet")) {
        ms = amount * 0.3048 / speedOfSound * 1000;
    } else if (unit == QLatin1String("sample")) {
        double rate = 48000;
        QVariantMap fsAddress = address;
        fsAddress.insert(Key::prmAddr, stateAddress);
        QVariantMap fs;
        if (readParameter(fsAddress, fs)) {
            const double v = fs.value(Key::prmValue).toDouble(&ok);
            if (ok && v > 0)
                rate = v;
        }
        ms = amount / rate * 1000;
    } else if (unit == QLatin1String("frame")) {
        ms = amount / 30.0 * 1000;
    } else {
        return QString();
    }
    return ParameterDefinition::positionText(s->positionOf(s->normalized(ms)));
}

void ParameterDatabase::notify(const QVariantMap &address)
{
    if (!m_observer)
        return;
    m_observer->parameterChanged({{Key::dev_uniq_id, text(address, Key::dev_uniq_id)},
                                  {Key::prmAddr, text(address, Key::prmAddr)},
                                  {Key::zone_uniq_id, text(address, Key::zone_uniq_id)}});
}

extern "C" IAbstractDB *GetAbstractDB()
{
    return ParameterDatabase::instance();
}
