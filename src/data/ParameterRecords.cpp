#include "ParameterRecords.h"

#include "AbstractDatabase.h"
#include "ParameterKeys.h"

#include <QJsonArray>
#include <QStringList>

namespace {

QString text(const QVariantMap &properties, QLatin1String key)
{
    return properties.value(key).toString();
}

// Reads one field with the width of its type; anything that is not a
// decimal number of that width reads as 0.
quint32 toUnsigned32(const QString &field)
{
    bool ok = false;
    const uint v = field.toUInt(&ok, 10);
    return ok ? v : 0;
}

quint16 toUnsigned16(const QString &field)
{
    bool ok = false;
    const ushort v = field.toUShort(&ok, 10);
    return ok ? v : 0;
}

enum ModelTrait {
    PlainRecord = 0,
    MeterRecord = 1,       // adds "meter": {"meterid": ...}
    OrvNamedRecord = 2,    // label from "cptOrvName", adds "address"
    NoSnapshotRecord = 4,  // adds "snapshot": "false"
};

struct ModelProfile
{
    QLatin1String model;
    int traits;
};

constexpr ModelProfile modelProfiles[] = {
    { latin1Literal("Ferrule"), MeterRecord },
    { latin1Literal("Pallas-Net"), OrvNamedRecord },
    { latin1Literal("Tarsus"), MeterRecord },
    { latin1Literal("Lintel"), NoSnapshotRecord },
};

int traitsOf(const QString &model)
{
    for (const ModelProfile &p : modelProfiles) {
        if (model == p.model)
            return p.traits;
    }
    return PlainRecord;
}

} // namespace

bool parseParameterAddress(const QString &address, QString &memno, quint32 &componentid,
                           quint16 &elementno, quint16 &x, quint16 &y, quint16 &paramno,
                           quint32 &index)
{
    const QStringList parts = address.split(QLatin1Char('/'), Qt::KeepEmptyParts);
    if (parts.size() < 7)
        return false;
    memno = parts.at(0);
    componentid = toUnsigned32(parts.at(1));
    elementno = toUnsigned16(parts.at(2));
    x = toUnsigned16(parts.at(3));
    y = toUnsigned16(parts.at(4));
    paramno = toUnsigned16(parts.at(5));
    index = toUnsigned32(parts.at(6));
    return true;
}

bool parseParameterAddress(const QString &address, NumericParameterAddress &fields)
{
    return parseParameterAddress(address, fields.memno, fields.componentid, fields.elementno,
                                 fields.x, fields.y, fields.paramno, fields.index);
}

bool buildParameterFields(RecordFields &fields, const QVariantMap &properties,
                          const QString &componentLabel)
{
    const QString model = text(properties, Key::dev_model);
    const QString address = text(properties, Key::prmAddr);
    const QString component = text(properties, Key::cptName);
    if (model.isEmpty() || address.isEmpty() || component.isEmpty())
        return false;

    NumericParameterAddress a;
    if (!parseParameterAddress(address, a))
        return false;

    IAbstractDB *db = abstractDatabase();
    if (!db)
        return false;

    QVariantMap request;
    request.insert(Key::prmAddr, address);
    request.insert(Key::cptName, component);
    QMap<QString, QVariantMap> answer;
    if (!db->queryParameter(model, request, answer))
        return false;

    const QString deviceId = text(properties, Key::dev_uniq_id);
    QVariantMap deviceAnswer;
    if (answer.contains(deviceId))
        deviceAnswer = answer.value(deviceId);
    else if (!answer.isEmpty())
        deviceAnswer = answer.first();

    QString category = deviceAnswer.value(RecordKey::category).toString();
    if (category.isEmpty())
        category = component.section(QLatin1Char(':'), 0, 0);
    QString componentName = deviceAnswer.value(RecordKey::componentname).toString();
    if (componentName.isEmpty())
        componentName = component;

    RecordFields f;
    f.reserve(10);
    f.append({ RecordKey::category, category });
    f.append({ RecordKey::componentname, componentName });
    f.append({ RecordKey::componentlabel, componentLabel });
    f.append({ RecordKey::memno, a.memno });
    f.append({ RecordKey::componentid, QString::number(a.componentid, 10) });
    f.append({ RecordKey::elementno, QString::number(a.elementno, 10) });
    f.append({ RecordKey::x, QString::number(a.x, 10) });
    f.append({ RecordKey::y, QString::number(a.y, 10) });
    f.append({ RecordKey::paramno, QString::number(a.paramno, 10) });
    f.append({ RecordKey::index, QString::number(a.index, 10) });
    fields = f;
    return true;
}

bool buildParameterRecord(QJsonObject &record, const QVariantMap &properties,
                          const QString &componentLabel)
{
    RecordFields fields;
    if (!buildParameterFields(fields, properties, componentLabel))
        return false;
    QJsonObject parameter;
    for (const auto &member : qAsConst(fields))
        parameter.insert(member.first, member.second);
    record.insert(RecordKey::parameter, QJsonArray { parameter });
    return true;
}

bool buildDeviceRecord(QJsonObject &device, const QVariantMap &properties,
                       const QString &componentLabel)
{
    const QString model = text(properties, Key::dev_model);
    const QString identifier = text(properties, Key::dev_uniq_id);
    if (model.isEmpty() || identifier.isEmpty())
        return false;

    const int traits = traitsOf(model);
    QString label = componentLabel;
    if ((traits & OrvNamedRecord) && label.isEmpty())
        label = text(properties, Key::cptOrvName);

    QJsonObject d = device;
    if (!buildParameterRecord(d, properties, label))
        return false;
    d.insert(RecordKey::model, model);
    d.insert(RecordKey::identifier, identifier);

    if (traits & MeterRecord) {
        const QString meterId = text(properties, Key::meterID);
        if (!meterId.isEmpty())
            d.insert(RecordKey::meter, QJsonObject { { RecordKey::meterid, meterId } });
    }
    if (traits & OrvNamedRecord) {
        const QString orvAddress = text(properties, Key::orv_address);
        if (!orvAddress.isEmpty())
            d.insert(RecordKey::address, orvAddress);
    }
    if (traits & NoSnapshotRecord)
        d.insert(RecordKey::snapshot, QStringLiteral("false"));

    device = d;
    return true;
}

bool queryDesiredSampleRate(const QVariantMap &properties, float &hertz)
{
    const QString model = text(properties, Key::dev_model);
    const QString deviceId = text(properties, Key::dev_uniq_id);
    if (model.isEmpty() || deviceId.isEmpty())
        return false;

    IAbstractDB *db = abstractDatabase();
    if (!db)
        return false;

    QVariantMap request;
    request.insert(Key::cptName, QString(FixedAddress::desiredFsComponent));
    request.insert(Key::prmAddr, QString(FixedAddress::desiredFs));
    QMap<QString, QVariantMap> answer;
    if (!db->queryParameter(model, request, answer))
        return false;

    const auto it = answer.constFind(deviceId);
    if (it == answer.constEnd())
        return false;
    const QVariant value = it.value().value(Key::prmValue);
    if (!value.isValid())
        return false;
    bool ok = false;
    const float v = value.toFloat(&ok);
    if (!ok)
        return false;
    hertz = v;
    return true;
}

QString delayTimeAddress(const QVariantMap &properties)
{
    const auto it = properties.constFind(Key::DelayScale);
    if (it != properties.constEnd()) {
        const QString scale = it.value().toString();
        if (scale == DelayUnit::ms)
            return FixedAddress::delayTimeMs;
        if (scale == DelayUnit::meter)
            return FixedAddress::delayTimeMeter;
        if (scale == DelayUnit::feet)
            return FixedAddress::delayTimeFeet;
    }
    return text(properties, Key::orv_address);
}
