#ifndef CORVANE_HOST_PARAMETERDATABASE_H
#define CORVANE_HOST_PARAMETERDATABASE_H

#include <corvane/IAbstractDB.h>
#include <corvane/Value.h>

#include "Equalizer.h"
#include "ParameterDefinition.h"
#include "SignalPath.h"

#include <QHash>
#include <QMap>

/*!
    \class ParameterDatabase
    \brief A parameter database that simulates devices from model files.

    Device models are XML files (one \c DeviceModel each) that declare typed
    parameters; devices are instances of a model under a unique identifier.
    Values live per device, zone and parameter address and start at the
    declared default. Requests are turned into values the way the design
    application's database does it, and every applied request or stored
    text is reported to the observer.

    Texts stored with store() override what the parameter's type would
    answer until the next applied request; they can also give a device a
    parameter that its model does not declare.

    Equaliser sections of a model compute their curves and handle positions
    from the band parameters (see Equalizer). Inputs of a model are fed by a
    signal source each; advance() moves the simulated time on and lets the
    meters follow with their ballistics.
*/
class Q_DECL_EXPORT ParameterDatabase : public IAbstractDB
{
public:
    ParameterDatabase();
    ~ParameterDatabase() override;

    //! The process's database, the one GetAbstractDB() returns; the models of the application directory are loaded.
    static ParameterDatabase *instance();

    //! Reads every "*.xml" model file in \a folder; problems are appended to \a errors.
    bool loadModels(const QString &folder, QStringList *errors = nullptr);
    bool loadModelFile(const QString &path, QStringList *errors = nullptr);
    bool loadModel(const QByteArray &xml, const QString &origin, QStringList *errors = nullptr);
    QStringList models() const;
    bool hasModel(const QString &model) const;
    const ParameterDefinition *definition(const QString &model, const QString &prmAddr) const;
    QList<ParameterDefinition> definitions(const QString &model) const;

    //! Adds a device of \a model; false when the identifier is taken. An unknown model gives a device without parameters.
    bool addDevice(const QString &id, const QString &model);
    //! Forgets every device and every value.
    void clearDevices();

    void setApplyRequests(bool apply) { m_apply = apply; }
    bool applyRequests() const { return m_apply; }

    //! Stores \a texts, unchanged, for the parameter of \a address and reports the change; false for an unknown device.
    bool store(const QVariantMap &address, const QMap<QString, QString> &texts);

    //! Feeds input \a input of \a device from \a source; false for an unknown device or input.
    bool setSignal(const QString &device, const QString &input, const SignalSource &source);
    //! Moves the simulated time on by \a ms (0 to one day) and reports every meter that changed.
    void advance(qint64 ms);
    //! Milliseconds of simulated time since the database was made.
    double simulatedTime() const { return m_clock; }
    //! The settings of \a equalizer of \a device as the device holds them now.
    Equalizer::Settings equalizerSettings(const QString &device, const QString &zone, const Equalizer &equalizer) const;
    const Equalizer *equalizerOf(const QString &model, const QString &prmAddr, Equalizer::Role *role = nullptr,
                                 int *band = nullptr) const;

    QStringList devices() const override;
    QVariantMap device(const QString &devUniqId) const override;
    bool readParameter(const QVariantMap &address, QVariantMap &answer) const override;
    /*!
        Answers the same texts as the map overload as \a value, replacing
        what it held; its payload is the "ui_prm_val" text when there is
        one. The answer is formatted at the first read after a change of
        the parameter and shared with the reads that follow.
    */
    bool readParameter(const QVariantMap &address, Value &value) const;
    bool queryParameter(const QString &model, const QVariantMap &request,
                        QMap<QString, QVariantMap> &answer) const override;
    bool request(const QVariantMap &address, int kind, const QMap<QString, QString> &arguments) override;
    bool parameterExists(const QVariantMap &address) const override;
    QString convertDelay(const QVariantMap &address, const QString &unit, const QString &text) const override;
    void setObserver(IParameterObserver *observer) override { m_observer = observer; }
    QString positionOfText(const QVariantMap &address, const QString &text) const override;

private:
    struct StateKey
    {
        QString device;
        QString zone;
        QString prmAddr;

        bool operator==(const StateKey &other) const
        {
            return prmAddr == other.prmAddr && device == other.device && zone == other.zone;
        }
        friend uint qHash(const StateKey &key, uint seed = 0)
        {
            return qHash(key.prmAddr, seed) ^ (qHash(key.device, seed) * 31u) ^ (qHash(key.zone, seed) * 961u);
        }
    };
    struct State
    {
        double value = 0;
        double peak = qQNaN();
        QString text;
        QMap<QString, QString> stored;
        // The answer formatted from the members above, empty until the
        // first read; putState() and store() drop it.
        Value answer;
    };
    struct Model
    {
        QList<ParameterDefinition> order;
        QHash<QString, int> byAddress;
        QList<Equalizer> equalizers;
        QHash<QString, int> equalizerOf;
        QList<SignalPath> inputs;
    };
    struct Input
    {
        SignalSource source;
        quint32 random = 1;
        double wander = 0;
        Ballistics level;
        Ballistics gainReduction{0};
    };

    // The answers of a definition that no state changes, formatted once.
    struct FixedTexts
    {
        // The texts every answer holds: range, unit, type and options.
        Value answer;
        // The whole answer of a parameter still in its initial state, made
        // at the first read of one.
        Value initial;
        // An equaliser's curve or handle, whose texts follow other parameters.
        bool computed = false;
    };

    FixedTexts &fixedTexts(const ParameterDefinition &definition, const QString &model) const;
    static StateKey stateKey(const QString &device, const QString &zone, const QString &prmAddr);
    static StateKey stateKey(const QVariantMap &address);
    Value answerOf(const ParameterDefinition *definition, const State &state, const StateKey &key,
                   const QString &model) const;
    void putState(const StateKey &key, State state);
    const ParameterDefinition *specFor(const QVariantMap &address) const;
    State initialState(const ParameterDefinition &definition) const;
    bool apply(const ParameterDefinition &definition, State *state, int kind, const QMap<QString, QString> &arguments) const;
    void notify(const QVariantMap &address);
    double numericValue(const QString &device, const QString &zone, const QString &prmAddr) const;
    QString computedText(const QString &device, const QString &zone, const Equalizer &equalizer,
                         Equalizer::Role role, int band) const;
    bool requestPoint(const QVariantMap &address, const Equalizer &equalizer, Equalizer::Role role, int band,
                      int kind, const QMap<QString, QString> &arguments);
    void notifyDependents(const QVariantMap &address, const Equalizer &equalizer, Equalizer::Role role, int band);
    void step(double ms);
    double sourceLevel(Input *input, double ms) const;
    void showMeter(const QString &device, const QString &prmAddr, const Ballistics &reading);

    QMap<QString, Model> m_models;
    QStringList m_deviceOrder;
    QHash<QString, QString> m_deviceModels;
    mutable QHash<StateKey, State> m_states;
    mutable QHash<StateKey, QString> m_curves;
    mutable QHash<const ParameterDefinition *, FixedTexts> m_fixedTexts;
    QHash<QString, Input> m_inputs;
    double m_clock = 0;
    IParameterObserver *m_observer = nullptr;
    bool m_apply = true;
};

extern "C" Q_DECL_EXPORT IAbstractDB *GetAbstractDB();

#endif
