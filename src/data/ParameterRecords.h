#ifndef CORVANE_PARAMETERRECORDS_H
#define CORVANE_PARAMETERRECORDS_H

#include <QJsonObject>
#include <QPair>
#include <QString>
#include <QVariantMap>
#include <QVector>

/*
    Numeric parameter addresses, JSON parameter records and the fixed queries
    of value conversions. The database is reached through
    abstractDatabase() (AbstractDatabase.h). Every routine answers false (or
    an empty string) on a missing key, a short address, a missing database or
    a refused query, and logs nothing.
*/

//! The seven fields of a numeric parameter address.
struct NumericParameterAddress
{
    QString memno;
    quint32 componentid = 0;
    quint16 elementno = 0;
    quint16 x = 0;
    quint16 y = 0;
    quint16 paramno = 0;
    quint32 index = 0;
};

/*!
    Splits \a address at "/" (empty parts kept) into memno (text as is),
    componentid (unsigned 32-bit), elementno, x, y, paramno (unsigned 16-bit)
    and index (unsigned 32-bit). A field that is not a decimal number of its
    width reads as 0; fields after the seventh are ignored. Answers false, with
    every output untouched, when fewer than seven parts result.
*/
bool parseParameterAddress(const QString &address, QString &memno, quint32 &componentid,
                           quint16 &elementno, quint16 &x, quint16 &y, quint16 &paramno,
                           quint32 &index);
bool parseParameterAddress(const QString &address, NumericParameterAddress &fields);

//! The members of one parameter object, in their specified order.
using RecordFields = QVector<QPair<QString, QString>>;

/*!
    The parameter object of a record as an ordered member list: "category",
    "componentname", "componentlabel", "memno", "componentid", "elementno",
    "x", "y", "paramno", "index", all strings.

    Reads "dev_model", "prmAddr" and "cptName" from \a properties (false when
    one is empty), parses "prmAddr" (false when short), asks the database's
    queryParameter for the model with {"prmAddr", "cptName"} (false when there
    is no database or it refuses). The answer used is that of the device named
    by "dev_uniq_id" when the database answered for it, otherwise the first
    device of the answer. "category" is that answer's "category", or the
    component name up to its first ":" when the answer has none;
    "componentname" is the answer's "componentname", or the component name
    when the answer has none. On false \a fields is untouched.
*/
bool buildParameterFields(RecordFields &fields, const QVariantMap &properties,
                          const QString &componentLabel);

/*!
    Builds the parameter object (see buildParameterFields(), inserted member
    by member in that order), wraps it in a one-element array and inserts it
    into \a record under "parameter". On false \a record is untouched.

    Note: QJsonObject keeps its members sorted by name, so the insertion order
    is not visible in the object itself; buildParameterFields() gives it.
*/
bool buildParameterRecord(QJsonObject &record, const QVariantMap &properties,
                          const QString &componentLabel);

/*!
    The device record of a bound parameter: the "parameter" part through
    buildParameterRecord(), then "model" ("dev_model") and "identifier"
    ("dev_uniq_id"; false when empty). Per model:
    - "Ferrule", "Tarsus" (models that carry meters): when the properties hold
      a non-empty "meterID", the device also gets "meter": {"meterid": id}.
    - "Pallas-Net" (named in the maker's control-product form): an empty
      \a componentLabel is replaced by "cptOrvName", and a non-empty
      "orv_address" is added as "address".
    - "Lintel" (wall controllers, kept out of scene snapshots): the device
      gets "snapshot": "false".
    - any other model: the three members only.
    On false \a device is untouched.
*/
bool buildDeviceRecord(QJsonObject &device, const QVariantMap &properties,
                       const QString &componentLabel);

/*!
    The device's desired sampling frequency in hertz: asks the database with
    {"cptName": "Setup:1:1x1", "prmAddr": "Setup/0/Config/DesiredFs:0:0"} for
    the model in "dev_model" and reads "prmValue" of the answer of the device
    in "dev_uniq_id". False (\a hertz untouched) when a key is missing, there
    is no database, it refuses, it has no answer for that device, or the value
    is not a number.
*/
bool queryDesiredSampleRate(const QVariantMap &properties, float &hertz);

/*!
    The delay-time address of a delay widget: "DelayScale" "ms" gives
    "Ch/Delay/Time", "meter" "Ch/Delay/Time_m", "feet" "Ch/Delay/Time_ft";
    any other scale ("sample", "frame", ...) or none gives "orv_address" as
    text (empty when absent).
*/
QString delayTimeAddress(const QVariantMap &properties);

#endif
