#include "ParameterDatabase.h"
#include "HostData.h"

#include "FrequencySteps.h"

#include <core/SharedKeys.h>
#include <data/ParameterKeys.h>
#include <corvane/ParameterManagement.h>

#include <QCoreApplication>
#include <QDir>
#include <QDomDocument>
#include <QFile>

#include <algorithm>
#include <cmath>

namespace {

const QString stateAddress = QStringLiteral("Setup/0/Config/DesiredFs:0:0");

QString text(const QVariantMap &map, QLatin1String key)
{
    return map.value(key).toString();
}

// The keys a read looks up and answers, made once (a QLatin1String key is
// converted, its text allocated, at every lookup and insertion), and the
// copies that values share, so that a control's value holds no key text.
struct ReadKeys
{
    const QString device = sharedKey(Key::dev_uniq_id);
    const QString zone = sharedKey(Key::zone_uniq_id);
    const QString prmAddr = sharedKey(Key::prmAddr);
    const QString position = sharedKey(Key::ui_prm_val);
    const QString display = sharedKey(Key::ui_prm_str);
    const QString peak = sharedKey(Key::ui_prm_prak);
    const QString options = sharedKey(Key::ui_prm_option);
    const QString value = sharedKey(Key::prmValue);
    const QString minimum = sharedKey(Key::prmMin);
    const QString maximum = sharedKey(Key::prmMax);
    const QString unit = sharedKey(Key::prmUnit);
    const QString type = sharedKey(Key::prmType);
};

const ReadKeys &readKeys()
{
    static const ReadKeys keys;
    return keys;
}

// A copy of \a e with every attribute's {var} replaced by the loop variables.
QDomElement substituted(const QDomElement &e, const QMap<QString, QString> &vars)
{
    QDomElement copy = e.cloneNode(false).toElement();
    const QDomNamedNodeMap attributes = copy.attributes();
    for (int i = 0; i < attributes.count(); ++i) {
        QDomAttr a = attributes.item(i).toAttr();
        QString value = a.value();
        for (auto it = vars.cbegin(); it != vars.cend(); ++it)
            value.replace(QLatin1Char('{') + it.key() + QLatin1Char('}'), it.value());
        a.setValue(value);
    }
    return copy;
}

// The frequency of a frequency parameter's value, a row of the step table.
double hertzOfRow(double row)
{
    return FrequencySteps::hertz(qBound(0, int(qBound(0.0, row, 1e6)), FrequencySteps::count() - 1));
}

// An option parameter's value as an index from 0 to \a last.
int optionIndex(double value, int last)
{
    return int(qBound(0.0, value, double(last)));
}

struct ModelParts
{
    QList<ParameterDefinition> definitions;
    QList<Equalizer> equalizers;
    QList<SignalPath> inputs;
};

// Expands "Repeat" elements: every attribute of the elements inside may
// name the loop variable as {var}.
bool readParameters(const QDomElement &parent, const QMap<QString, QString> &vars, ModelParts *out,
                    QStringList *errors, const QString &origin)
{
    bool ok = true;
    auto failed = [&](const QDomElement &e, const QString &error) {
        if (errors)
            errors->append(QStringLiteral("%1:%2: %3").arg(origin).arg(e.lineNumber()).arg(error));
        ok = false;
    };
    for (QDomElement e = parent.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
        const QString tag = e.tagName();
        if (tag == QLatin1String("Repeat")) {
            const QString var = e.attribute(QStringLiteral("var"), QStringLiteral("n"));
            bool okFrom = false, okTo = false;
            const int from = e.attribute(QStringLiteral("from")).toInt(&okFrom);
            const int to = e.attribute(QStringLiteral("to")).toInt(&okTo);
            if (!okFrom || !okTo || to < from || to - from > 4096) {
                failed(e, QStringLiteral("malformed Repeat range"));
                continue;
            }
            for (int i = from; i <= to; ++i) {
                QMap<QString, QString> inner = vars;
                inner.insert(var, QString::number(i));
                ok = readParameters(e, inner, out, errors, origin) && ok;
            }
            continue;
        }
        QString error;
        if (tag == QLatin1String("Parameter")) {
            ParameterDefinition definition;
            if (ParameterDefinition::fromElement(substituted(e, vars), &definition, &error))
                out->definitions.append(definition);
            else
                failed(e, error);
        } else if (tag == QLatin1String("Equalizer")) {
            Equalizer eq;
            if (Equalizer::fromElement(substituted(e, vars), &eq, &out->definitions, &error))
                out->equalizers.append(eq);
            else
                failed(e, error);
        } else if (tag == QLatin1String("Input")) {
            SignalPath input;
            if (SignalPath::fromElement(substituted(e, vars), &input, &error))
                out->inputs.append(input);
            else
                failed(e, error);
        }
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
            d->loadModels(hostDataFolder(QStringLiteral("devices")));
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
    ModelParts parts;
    const bool ok = readParameters(root, {}, &parts, errors, origin);
    Model model;
    model.equalizers = parts.equalizers;
    // A later input of the same name replaces an earlier one, as parameters do.
    for (const SignalPath &input : qAsConst(parts.inputs)) {
        const auto same = std::find_if(model.inputs.begin(), model.inputs.end(),
                                       [&](const SignalPath &p) { return p.name == input.name; });
        if (same != model.inputs.end())
            *same = input;
        else
            model.inputs.append(input);
    }
    for (int i = 0; i < model.equalizers.size(); ++i) {
        for (int role = Equalizer::BandType; role <= Equalizer::TotalCurve; ++role) {
            const int bands = role <= Equalizer::BandPoint ? model.equalizers.at(i).bandCount() : 1;
            for (int b = 0; b < bands; ++b)
                model.equalizerOf.insert(model.equalizers.at(i).address(Equalizer::Role(role), b), i);
        }
    }
    for (const ParameterDefinition &s : qAsConst(parts.definitions)) {
        if (model.byAddress.contains(s.address)) {
            model.order[model.byAddress.value(s.address)] = s;
            continue;
        }
        model.byAddress.insert(s.address, model.order.size());
        model.order.append(s);
    }
    // The answers formatted so far may hold the replaced model's texts.
    m_fixedTexts.clear();
    for (State &state : m_states)
        state.answer = Value();
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
    m_curves.clear();
    m_inputs.clear();
}

const Equalizer *ParameterDatabase::equalizerOf(const QString &model, const QString &prmAddr, Equalizer::Role *role,
                                                int *band) const
{
    const auto m = m_models.constFind(model);
    if (m == m_models.cend())
        return nullptr;
    const int index = m->equalizerOf.value(prmAddr, -1);
    if (index < 0)
        return nullptr;
    const Equalizer *eq = &m->equalizers.at(index);
    int b = 0;
    const Equalizer::Role r = eq->roleOf(prmAddr, &b);
    if (role)
        *role = r;
    if (band)
        *band = b;
    return eq;
}

double ParameterDatabase::numericValue(const QString &device, const QString &zone, const QString &prmAddr) const
{
    const auto it = m_states.constFind(stateKey(device, zone, prmAddr));
    if (it != m_states.cend())
        return it->value;
    const ParameterDefinition *d = definition(m_deviceModels.value(device), prmAddr);
    return d ? d->defaultValue : 0;
}

Equalizer::Settings ParameterDatabase::equalizerSettings(const QString &device, const QString &zone,
                                                         const Equalizer &eq) const
{
    using R = Equalizer;
    auto value = [&](R::Role role, int band) { return numericValue(device, zone, eq.address(role, band)); };
    auto hertz = [&](R::Role role, int band) { return hertzOfRow(value(role, band)); };
    Equalizer::Settings s;
    for (int b = 0; b < eq.bandCount(); ++b) {
        Equalizer::Settings::Band band;
        static const FilterResponse::Shape shapes[] = {FilterResponse::Shape::Peaking, FilterResponse::Shape::LowShelf,
                                                       FilterResponse::Shape::HighShelf, FilterResponse::Shape::Notch};
        band.shape = shapes[optionIndex(value(R::BandType, b), 3)];
        band.frequency = hertz(R::BandFreq, b);
        band.gain = value(R::BandGain, b);
        band.q = value(R::BandQ, b);
        band.on = value(R::BandOn, b) > 0;
        s.bands.append(band);
    }
    s.highPass = {hertz(R::HighPassFreq, 0), Equalizer::orderOfSlope(optionIndex(value(R::HighPassSlope, 0), 7)),
                  value(R::HighPassOn, 0) > 0};
    s.lowPass = {hertz(R::LowPassFreq, 0), Equalizer::orderOfSlope(optionIndex(value(R::LowPassSlope, 0), 7)),
                 value(R::LowPassOn, 0) > 0};
    s.on = value(R::SectionOn, 0) > 0;
    const double rate = numericValue(device, zone, stateAddress);
    if (rate > 0)
        s.sampleRate = rate;
    return s;
}

QString ParameterDatabase::computedText(const QString &device, const QString &zone, const Equalizer &eq,
                                        Equalizer::Role role, int band) const
{
    auto hertz = [&](Equalizer::Role r) { return hertzOfRow(numericValue(device, zone, eq.address(r, band))); };
    switch (role) {
    case Equalizer::BandPoint:
        return eq.pointText(hertz(Equalizer::BandFreq), numericValue(device, zone, eq.address(Equalizer::BandGain, band)));
    case Equalizer::HighPassPoint:
        return eq.pointText(hertz(Equalizer::HighPassFreq), 0);
    case Equalizer::LowPassPoint:
        return eq.pointText(hertz(Equalizer::LowPassFreq), 0);
    case Equalizer::OwnCurve:
    case Equalizer::FilterCurve:
    case Equalizer::TotalCurve: {
        const StateKey key = stateKey(device, zone, eq.address(role));
        const auto cached = m_curves.constFind(key);
        if (cached != m_curves.cend())
            return *cached;
        const Equalizer::Settings settings = equalizerSettings(device, zone, eq);
        QVector<FilterResponse::Section> cascade;
        if (role != Equalizer::FilterCurve)
            cascade += eq.bandCascade(settings);
        if (role != Equalizer::OwnCurve)
            cascade += eq.filterCascade(settings);
        const QString text = eq.curveText(cascade, settings.sampleRate);
        m_curves.insert(key, text);
        return text;
    }
    default:
        return QString();
    }
}

ParameterDatabase::StateKey ParameterDatabase::stateKey(const QString &device, const QString &zone,
                                                       const QString &prmAddr)
{
    return {device, zone, prmAddr};
}

// One pass over the address's few keys instead of a lookup for each: the
// keys of a control's address share their texts, and differ in size.
ParameterDatabase::StateKey ParameterDatabase::stateKey(const QVariantMap &address)
{
    const ReadKeys &k = readKeys();
    StateKey key;
    for (auto it = address.cbegin(); it != address.cend(); ++it) {
        if (it.key() == k.device)
            key.device = it->toString();
        else if (it.key() == k.prmAddr)
            key.prmAddr = it->toString();
        else if (it.key() == k.zone)
            key.zone = it->toString();
    }
    return key;
}

const ParameterDefinition *ParameterDatabase::specFor(const QVariantMap &address) const
{
    const QString dev = text(address, Key::dev_uniq_id);
    if (!m_deviceModels.contains(dev))
        return nullptr;
    return definition(m_deviceModels.value(dev), text(address, Key::prmAddr));
}

ParameterDatabase::FixedTexts &ParameterDatabase::fixedTexts(const ParameterDefinition &definition,
                                                             const QString &model) const
{
    auto it = m_fixedTexts.find(&definition);
    if (it == m_fixedTexts.end()) {
        const ReadKeys &k = readKeys();
        FixedTexts texts;
        if (definition.isNumeric()) {
            texts.answer.set(k.minimum, definition.displayText(definition.minimum));
            texts.answer.set(k.maximum, definition.displayText(definition.maximum));
        }
        texts.answer.set(k.unit, definition.unit);
        texts.answer.set(k.type, ParameterDefinition::typeName(definition.type));
        // Lets a combo box list the choices without a list of its own.
        if (definition.type == ParameterDefinition::Options)
            texts.answer.set(k.options, definition.options.join(QLatin1Char('|')));
        Equalizer::Role role = Equalizer::NoRole;
        texts.computed = !definition.isNumeric() && equalizerOf(model, definition.address, &role)
            && Equalizer::isComputed(role);
        it = m_fixedTexts.insert(&definition, texts);
    }
    return *it;
}

// The texts of \a state: those of its definition's type, then the texts
// stored for it. A parameter without a definition answers the stored ones
// alone.
Value ParameterDatabase::answerOf(const ParameterDefinition *s, const State &state, const StateKey &key,
                                  const QString &model) const
{
    const ReadKeys &k = readKeys();
    Value out;
    if (s) {
        const FixedTexts &fixed = fixedTexts(*s, model);
        out = fixed.answer;
        if (s->isNumeric()) {
            // What a stored text replaces is not formatted.
            const auto stored = [&state](const QString &key) {
                return !state.stored.isEmpty() && state.stored.contains(key);
            };
            const bool meter = s->type == ParameterDefinition::Meter;
            const bool peakOfItsOwn = !qIsNaN(state.peak) || stored(k.peak);
            QString position;
            if (!stored(k.position) || (meter && !peakOfItsOwn))
                position = ParameterDefinition::positionText(s->positionOf(state.value));
            if (!stored(k.position))
                out.set(k.position, position);
            if (!stored(k.display))
                out.set(k.display, s->displayText(state.value));
            if (!stored(k.value))
                out.set(k.value, ParameterDefinition::valueText(state.value));
            if (meter && !stored(k.peak))
                out.set(k.peak, qIsNaN(state.peak) ? position
                                                   : ParameterDefinition::positionText(s->positionOf(state.peak)));
        } else {
            QString shown = state.text;
            Equalizer::Role role;
            int band;
            if (fixed.computed) {
                if (const Equalizer *eq = equalizerOf(model, key.prmAddr, &role, &band))
                    shown = computedText(key.device, key.zone, *eq, role, band);
            }
            out.set(k.position, s->type == ParameterDefinition::State ? shown : QStringLiteral("0"));
            out.set(k.display, shown);
            out.set(k.value, shown);
        }
    }
    for (auto t = state.stored.cbegin(); t != state.stored.cend(); ++t)
        out.set(t.key(), t.value());
    const auto position = out.attributes().constFind(k.position);
    out.setPayload(position == out.attributes().cend() ? QVariant() : QVariant(*position));
    return out;
}

// Every change of a state is written here, which drops the answer formatted
// from the old one.
void ParameterDatabase::putState(const StateKey &key, State state)
{
    state.answer = Value();
    m_states.insert(key, state);
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
    const StateKey key = stateKey(address);
    const auto model = m_deviceModels.constFind(key.device);
    if (model == m_deviceModels.cend())
        return false;
    const ParameterDefinition *s = definition(*model, key.prmAddr);
    const auto it = m_states.constFind(key);
    if (!s && it == m_states.cend())
        return false;
    // Formatted afresh: what a read answers without the shared answers.
    const Value value = answerOf(s, it == m_states.cend() ? initialState(*s) : *it, key, *model);
    for (auto t = value.attributes().cbegin(); t != value.attributes().cend(); ++t)
        answer.insert(t.key(), t.value());
    return true;
}

bool ParameterDatabase::readParameter(const QVariantMap &address, Value &value) const
{
    const StateKey key = stateKey(address);
    const auto model = m_deviceModels.constFind(key.device);
    if (model == m_deviceModels.cend())
        return false;
    const auto it = m_states.find(key);
    if (it != m_states.end() && !it->answer.isEmpty()) {
        value = it->answer;
        return true;
    }
    const ParameterDefinition *s = definition(*model, key.prmAddr);
    if (!s && it == m_states.end())
        return false;
    if (it != m_states.end()) {
        value = answerOf(s, *it, key, *model);
        if (!s || !fixedTexts(*s, *model).computed)
            it->answer = value;
        return true;
    }
    FixedTexts &fixed = fixedTexts(*s, *model);
    if (fixed.computed) {
        value = answerOf(s, initialState(*s), key, *model);
    } else {
        // Every parameter of a definition answers the same until written.
        if (fixed.initial.isEmpty())
            fixed.initial = answerOf(s, initialState(*s), key, *model);
        value = fixed.initial;
    }
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
    Equalizer::Role role = Equalizer::NoRole;
    int band = 0;
    const Equalizer *eq = equalizerOf(m_deviceModels.value(text(address, Key::dev_uniq_id)),
                                      text(address, Key::prmAddr), &role, &band);
    if (eq && Equalizer::isPoint(role))
        return requestPoint(address, *eq, role, band, kind, arguments);
    const StateKey key = stateKey(text(address, Key::dev_uniq_id), text(address, Key::zone_uniq_id),
                                 text(address, Key::prmAddr));
    State state = m_states.value(key, initialState(*s));
    if (!apply(*s, &state, kind, arguments))
        return false;
    state.stored.clear();
    putState(key, state);
    notify(address);
    if (eq)
        notifyDependents(address, *eq, role, band);
    return true;
}

// A handle's "fx:fy" sets the frequency and, for a band, the gain; the
// handle and the curves follow.
bool ParameterDatabase::requestPoint(const QVariantMap &address, const Equalizer &eq, Equalizer::Role role, int band,
                                     int kind, const QMap<QString, QString> &arguments)
{
    const Equalizer::Role freqRole = role == Equalizer::BandPoint ? Equalizer::BandFreq
        : role == Equalizer::HighPassPoint                        ? Equalizer::HighPassFreq
                                                                  : Equalizer::LowPassFreq;
    QList<Equalizer::Role> targets{freqRole};
    if (role == Equalizer::BandPoint)
        targets.append(Equalizer::BandGain);
    double hertz = 0, db = 0;
    if (kind == 1) {
        if (!eq.readFractions(arguments.value(Key::ui_prm_str), &hertz, &db))
            return false;
    } else if (kind != 3) {
        return false;
    }
    const QString dev = text(address, Key::dev_uniq_id);
    const QString zone = text(address, Key::zone_uniq_id);
    const QString model = m_deviceModels.value(dev);
    QStringList changed;
    for (Equalizer::Role target : qAsConst(targets)) {
        const ParameterDefinition *d = definition(model, eq.address(target, band));
        if (!d || d->readOnly)
            continue;
        const StateKey key = stateKey(dev, zone, d->address);
        State state = m_states.value(key, initialState(*d));
        if (kind == 3)
            state = initialState(*d);
        else if (target == freqRole)
            state.value = d->normalized(FrequencySteps::nearestRow(hertz));
        else
            state.value = d->normalized(db);
        state.stored.clear();
        putState(key, state);
        changed.append(d->address);
        for (const QString &dependent : eq.dependents(target, band)) {
            m_curves.remove(stateKey(dev, zone, dependent));
            if (!changed.contains(dependent))
                changed.append(dependent);
        }
    }
    for (const QString &prmAddr : qAsConst(changed)) {
        QVariantMap one = address;
        one.insert(Key::prmAddr, prmAddr);
        notify(one);
    }
    return true;
}

void ParameterDatabase::notifyDependents(const QVariantMap &address, const Equalizer &eq, Equalizer::Role role,
                                         int band)
{
    const QString dev = text(address, Key::dev_uniq_id);
    const QString zone = text(address, Key::zone_uniq_id);
    for (const QString &dependent : eq.dependents(role, band)) {
        m_curves.remove(stateKey(dev, zone, dependent));
        QVariantMap changed = address;
        changed.insert(Key::prmAddr, dependent);
        notify(changed);
    }
}

bool ParameterDatabase::store(const QVariantMap &address, const QMap<QString, QString> &texts)
{
    const QString dev = text(address, Key::dev_uniq_id);
    if (!m_deviceModels.contains(dev))
        return false;
    const StateKey key = stateKey(dev, text(address, Key::zone_uniq_id), text(address, Key::prmAddr));
    auto it = m_states.find(key);
    if (it == m_states.end()) {
        const ParameterDefinition *s = specFor(address);
        it = m_states.insert(key, s ? initialState(*s) : State());
    }
    for (auto t = texts.cbegin(); t != texts.cend(); ++t)
        it->stored.insert(sharedKey(t.key()), t.value());
    it->answer = Value();
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

// ---------------------------------------------------------------------------
// Signals and meters

namespace {

constexpr double blockMs = 10;
constexpr double silenceDb = -200;
constexpr qint64 maxAdvanceMs = 24 * 3600 * 1000;
// Longer than any meter remembers: older time is skipped, not simulated.
constexpr double simulatedWindowMs = 60000;

// The ratio of an option text such as "4:1" or "inf:1"; 1 when it does not read.
double ratioOf(const QString &option)
{
    const QString first = option.section(QLatin1Char(':'), 0, 0).trimmed();
    if (first.compare(QLatin1String("inf"), Qt::CaseInsensitive) == 0)
        return qInf();
    bool ok = false;
    const double r = first.toDouble(&ok);
    return ok && r >= 1 ? r : 1.0;
}

quint32 nextRandom(quint32 *state)
{
    // xorshift32: the same sequence on every machine, so scripts are repeatable.
    quint32 x = *state ? *state : 0x9e3779b9u;
    x ^= x << 13;
    x ^= x >> 17;
    x ^= x << 5;
    *state = x;
    return x;
}

} // namespace

bool ParameterDatabase::setSignal(const QString &device, const QString &input, const SignalSource &source)
{
    if (!m_deviceModels.contains(device))
        return false;
    const Model model = m_models.value(m_deviceModels.value(device));
    const bool known = std::any_of(model.inputs.cbegin(), model.inputs.cend(),
                                   [&](const SignalPath &p) { return p.name == input; });
    if (!known)
        return false;
    Input &in = m_inputs[device + QLatin1Char('\n') + input];
    in.source = source;
    in.random = qHash(device + QLatin1Char('\n') + input) | 1u;
    in.wander = 0;
    return true;
}

void ParameterDatabase::advance(qint64 ms)
{
    if (ms <= 0)
        return;
    ms = qMin(ms, maxAdvanceMs);
    double left = double(ms);
    if (left > simulatedWindowMs) {
        m_clock += left - simulatedWindowMs;
        left = simulatedWindowMs;
    }
    while (left > 0) {
        const double dt = qMin(blockMs, left);
        step(dt);
        left -= dt;
    }
    for (const QString &dev : qAsConst(m_deviceOrder)) {
        const auto model = m_models.constFind(m_deviceModels.value(dev));
        if (model == m_models.cend())
            continue;
        for (const SignalPath &path : model->inputs) {
            const Input in = m_inputs.value(dev + QLatin1Char('\n') + path.name);
            showMeter(dev, path.level, in.level);
            if (!path.gainReduction.isEmpty())
                showMeter(dev, path.gainReduction, in.gainReduction);
        }
    }
}

double ParameterDatabase::sourceLevel(Input *in, double ms) const
{
    switch (in->source.kind) {
    case SignalSource::Off:
        return silenceDb;
    case SignalSource::Tone:
        return in->source.level;
    case SignalSource::Noise: {
        // A level that wanders about the set one, a few dB either way, as
        // programme material or pink noise reads on a meter.
        const double a = std::exp(-ms / 80);
        const double u = (nextRandom(&in->random) / 4294967295.0 - 0.5) * 2 * std::sqrt(3.0);
        in->wander = a * in->wander + std::sqrt(1 - a * a) * 4 * u;
        return in->source.level + in->wander;
    }
    case SignalSource::Envelope:
        return SignalSource::envelopeAt(in->source.envelope, m_clock);
    }
    return silenceDb;
}

void ParameterDatabase::step(double ms)
{
    m_clock += ms;
    for (const QString &dev : qAsConst(m_deviceOrder)) {
        const auto model = m_models.constFind(m_deviceModels.value(dev));
        if (model == m_models.cend())
            continue;
        for (const SignalPath &path : model->inputs) {
            Input &in = m_inputs[dev + QLatin1Char('\n') + path.name];
            auto value = [&](const QString &prmAddr) { return numericValue(dev, QString(), prmAddr); };
            double level = sourceLevel(&in, ms);
            if (!path.gain.isEmpty())
                level += value(path.gain);
            double reduction = 0;
            if (!path.compressorOn.isEmpty() && value(path.compressorOn) > 0 && !path.threshold.isEmpty()) {
                const double threshold = value(path.threshold);
                double ratio = 1;
                if (const ParameterDefinition *d = definition(model.key(), path.ratio))
                    ratio = ratioOf(d->displayText(value(path.ratio)));
                if (level > threshold)
                    reduction = (level - threshold) * (1 - 1 / ratio);
            }
            level -= reduction;
            if (!path.fader.isEmpty()) {
                const ParameterDefinition *d = definition(model.key(), path.fader);
                const double fader = value(path.fader);
                level = d && d->minusInfinity && fader <= d->minimum ? silenceDb : level + fader;
            }
            if (!path.mute.isEmpty() && value(path.mute) > 0)
                level = silenceDb;
            const ParameterDefinition *meter = definition(model.key(), path.level);
            in.level.advance(qMax(level, silenceDb), ms, path, meter ? meter->minimum : silenceDb);
            const ParameterDefinition *grMeter = definition(model.key(), path.gainReduction);
            in.gainReduction.advance(reduction, ms, path, grMeter ? grMeter->minimum : 0);
        }
    }
}

void ParameterDatabase::showMeter(const QString &device, const QString &prmAddr, const Ballistics &reading)
{
    const ParameterDefinition *d = definition(m_deviceModels.value(device), prmAddr);
    if (!d)
        return;
    const StateKey key = stateKey(device, QString(), prmAddr);
    State state = m_states.value(key, initialState(*d));
    const double level = qBound(d->minimum, reading.level, d->maximum);
    const double peak = qBound(d->minimum, reading.peak, d->maximum);
    const auto shown = [d](double v) { return ParameterDefinition::positionText(d->positionOf(v)); };
    const bool changed = shown(level) != shown(state.value)
        || shown(peak) != shown(qIsNaN(state.peak) ? state.value : state.peak)
        || d->displayText(level) != d->displayText(state.value);
    state.value = level;
    state.peak = peak;
    putState(key, state);
    if (changed)
        notify({{Key::dev_uniq_id, device}, {Key::prmAddr, prmAddr}});
}

extern "C" IAbstractDB *GetAbstractDB()
{
    return ParameterDatabase::instance();
}
