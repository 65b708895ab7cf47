#ifndef CORVANE_TESTS_RECORDINGHOST_H
#define CORVANE_TESTS_RECORDINGHOST_H

#include <corvane/IHostCore.h>

#include <QList>
#include <QMap>
#include <QVariantMap>
#include <QWidget>

/*
    A host for tests: keeps parameter values in a table, records every
    request, selection and context action, and answers the rest with
    settable values.
*/
class RecordingHost : public IHostCore
{
public:
    struct Request
    {
        QWidget *control;
        int index;
        QVariantMap address;
        int kind;
        QMap<QString, QString> arguments;
        QString arg(const char *key) const { return arguments.value(QLatin1String(key)); }
    };
    struct Action
    {
        QWidget *control;
        QString text;
        QVariantMap data;
    };

    //! The keys a notification about \a prmAddr on \a device carries.
    static QVariantMap parameterKeys(const QString &prmAddr, const QString &device = QStringLiteral("dev1"))
    {
        return {{QStringLiteral("prmAddr"), prmAddr}, {QStringLiteral("dev_uniq_id"), device}};
    }

    //! Forgets the parameter table and the recorded requests, selections and context actions.
    void clear()
    {
        parameters.clear();
        requests.clear();
        selections.clear();
        actions.clear();
    }

    // Parameter table, keyed by "dev_uniq_id|prmAddr".
    void setParameter(const QString &device, const QString &prmAddr, const QString &val, const QString &str)
    {
        QMap<QString, QString> &p = parameters[device + QLatin1Char('|') + prmAddr];
        p.insert(QStringLiteral("ui_prm_val"), val);
        p.insert(QStringLiteral("ui_prm_str"), str);
    }

    bool readParameter(const ParameterAddress &address, Value &value, QMap<QString, QString> &) override
    {
        ++reads;
        const auto it = parameters.constFind(address.deviceId() + QLatin1Char('|') + address.prmAddr());
        if (it == parameters.cend())
            return false;
        for (auto a = it->cbegin(); a != it->cend(); ++a)
            value.set(a.key(), a.value());
        return true;
    }
    bool sendRequest(QWidget *control, int index, const QVariantMap &address, int kind,
                     const QMap<QString, QString> &arguments) override
    {
        requests.append({control, index, address, kind, arguments});
        return true;
    }
    void selectParameter(QWidget *, const QString &first, const QString &second) override
    {
        selections.append({first, second});
    }
    float zoomFactor() const override { return zoom; }
    IHostTarget *currentTarget() override { return target; }
    QVariantMap ownerDevice(const QWidget *) override { return owner; }
    bool parameterExists(const QVariantMap &address) override
    {
        return parameters.contains(address.value(QStringLiteral("dev_uniq_id")).toString() + QLatin1Char('|')
                                   + address.value(QStringLiteral("prmAddr")).toString());
    }
    int mode() const override { return 0; }
    bool isActive(const QWidget *) const override { return active; }
    int state(int, int) const override { return 0; }
    QVariantMap editorInfo() const override { return editor; }
    QString imageBasePath() const override { return imagePath; }
    void contextAction(QWidget *control, const QString &text, const QVariantMap &data) override
    {
        actions.append({control, text, data});
    }
    void windowOpened(QWidget *, const QString &id, QWidget *) override { windowEvents << "open " + id; }
    void windowClosed(const QString &id, QWidget *) override { windowEvents << "close " + id; }
    bool answerColor(QWidget *, const QColor &initial, QColor &color) override
    {
        if (!answersColors)
            return false;
        colorsAsked.append(initial);
        color = colorAnswer;
        return true;
    }

    QMap<QString, QMap<QString, QString>> parameters;
    QList<Request> requests;
    QList<QPair<QString, QString>> selections;
    QList<Action> actions;
    QVariantMap owner{{QStringLiteral("dev_uniq_id"), QStringLiteral("dev1")},
                      {QStringLiteral("dev_model"), QStringLiteral("Model1")}};
    QVariantMap editor;
    QString imagePath;
    IHostTarget *target = nullptr;
    float zoom = 1.0f;
    bool active = false;
    int reads = 0;
    bool answersColors = false;   // answerColor() answers colorAnswer
    QColor colorAnswer;
    QList<QColor> colorsAsked;
    QStringList windowEvents;
};

#endif
