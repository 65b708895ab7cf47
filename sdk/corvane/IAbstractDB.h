#ifndef CORVANE_IABSTRACTDB_H
#define CORVANE_IABSTRACTDB_H

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariantMap>

/*!
    \class IParameterObserver
    \brief Told by the database about every parameter whose value changed.
*/
class IParameterObserver
{
public:
    virtual ~IParameterObserver() = default;
    //! \a address holds "dev_uniq_id", "prmAddr" and, where used, "zone_uniq_id".
    virtual void parameterChanged(const QVariantMap &address) = 0;
};

/*!
    \class IAbstractDB
    \brief The host's parameter database.

    Owns parameter values, units and formatting. Every answer about a
    parameter carries its display text ("ui_prm_str") and its normalised
    position from 0 to 1 ("ui_prm_val"). Requests carry string arguments only
    and are turned into values here:
    kind 0 sets by position ("ui_prm_val", "set_prm_type"), kind 1 by text
    ("ui_prm_str", units accepted), kind 2 steps ("ui_prm_step" "1" or "-1"),
    kind 3 restores the default.

    The operation order is part of the binary interface. A host library
    exports it as \c{extern "C" IAbstractDB *GetAbstractDB()}.
*/
class IAbstractDB
{
public:
    virtual ~IAbstractDB() = default;

    //! The unique identifiers of the devices the database knows.
    virtual QStringList devices() const = 0;
    //! Keys of one device ("dev_uniq_id", "dev_model", ...); empty when unknown.
    virtual QVariantMap device(const QString &devUniqId) const = 0;
    //! Fills \a answer ("ui_prm_val", "ui_prm_str", ...) for the parameter of \a address; false when unknown.
    virtual bool readParameter(const QVariantMap &address, QVariantMap &answer) const = 0;
    /*!
        Answers \a request ("prmAddr", "cptName", ...) for every device of
        \a model: \a answer maps each device's "dev_uniq_id" to its answer
        ("prmValue", "ui_prm_str", "ui_prm_val", "category", "componentname", ...).
        False when the model or the parameter is unknown.
    */
    virtual bool queryParameter(const QString &model, const QVariantMap &request,
                                QMap<QString, QVariantMap> &answer) const = 0;
    //! Applies a request; false when the parameter is unknown or the request is refused.
    virtual bool request(const QVariantMap &address, int kind, const QMap<QString, QString> &arguments) = 0;
    virtual bool parameterExists(const QVariantMap &address) const = 0;
    /*!
        Turns \a text, a delay typed in \a unit ("meter", "feet", "sample",
        "frame"), into the position ("ui_prm_val" text, 0 to 1) of the delay
        parameter of \a address; empty when it cannot.
    */
    virtual QString convertDelay(const QVariantMap &address, const QString &unit, const QString &text) const = 0;
    //! The observer told about changes, or null for none.
    virtual void setObserver(IParameterObserver *observer) = 0;
    /*!
        The position ("ui_prm_val" text, 0 to 1) that \a text, a value typed
        as a set-by-text request would take it, gives the parameter of
        \a address; empty when the text is no value of it. Nothing is set.
        Databases that cannot tell answer empty.
    */
    virtual QString positionOfText(const QVariantMap &address, const QString &text) const
    {
        Q_UNUSED(address)
        Q_UNUSED(text)
        return QString();
    }
};

extern "C" {
typedef IAbstractDB *(*GetAbstractDBFunction)();
}

#endif
