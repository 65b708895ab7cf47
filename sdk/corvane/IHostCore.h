#ifndef CORVANE_IHOSTCORE_H
#define CORVANE_IHOSTCORE_H

#include <QColor>
#include <QMap>
#include <QString>
#include <QVariantMap>

#include "ParameterAddress.h"
#include "Value.h"

class QWidget;

/*!
    \class IHostTarget
    \brief The object a host currently directs integers at (for example the
    editor a control belongs to). Returned by IHostCore::currentTarget().
*/
class IHostTarget
{
public:
    virtual ~IHostTarget() = default;
    virtual void receiveInteger(int value) = 0;
};

/*!
    \class IHostCore
    \brief What a control asks of the host that placed it.

    The host hands one object to every control of a panel; the host owns it
    and it outlives the controls. Controls read parameter values through it,
    send their requests through it, and ask it for the zoom and a few facts
    about the panel. Every operation must be callable on the GUI thread at any
    time; none may delete the calling control.

    Request kinds: 0 set by position ("ui_prm_val", "set_prm_type"), 1 set by
    text ("ui_prm_str"), 2 step ("ui_prm_step", "ui_prm_val"), 3 back to the
    default (no arguments).
*/
class IHostCore
{
public:
    virtual ~IHostCore() = default;

    //! Fills \a value ("ui_prm_val", "ui_prm_str", ...) and \a attributes for the parameter of \a address; false when unknown.
    virtual bool readParameter(const ParameterAddress &address, Value &value, QMap<QString, QString> &attributes) = 0;
    /*!
        Passes a request of \a kind with its string arguments on the parameter
        named by \a address (the entry at \a index of \a control's address
        list) to the parameter database.
    */
    virtual bool sendRequest(QWidget *control, int index, const QVariantMap &address, int kind,
                             const QMap<QString, QString> &arguments) = 0;
    //! Reports that the user selected a parameter of \a control; the texts name it for display.
    virtual void selectParameter(QWidget *control, const QString &first, const QString &second) = 0;
    //! The zoom factor of the panel (1 at design size).
    virtual float zoomFactor() const = 0;
    //! The object integers from controls are handed to, or null.
    virtual IHostTarget *currentTarget() = 0;
    //! Keys ("dev_uniq_id", "dev_model", ...) of the device that owns \a control; empty when there is none.
    virtual QVariantMap ownerDevice(const QWidget *control) = 0;
    //! Whether the database holds the parameter named by \a address.
    virtual bool parameterExists(const QVariantMap &address) = 0;
    //! The host's mode (0 design, 1 online, ...).
    virtual int mode() const = 0;
    //! Whether the panel of \a control is the active one.
    virtual bool isActive(const QWidget *control) const = 0;
    //! A host state value, addressed by two numbers.
    virtual int state(int group, int item) const = 0;
    //! The editor information of the panel ("editor_info", "editor_hint", "editor_auto", ...).
    virtual QVariantMap editorInfo() const = 0;
    //! The folder that image names of a panel description are relative to.
    virtual QString imageBasePath() const = 0;
    //! A context-menu action ("Add to Parameter Set", ...) chosen on \a control, with the action's data.
    virtual void contextAction(QWidget *control, const QString &action, const QVariantMap &data) = 0;

    /*!
        A control asks the user for a colour, starting from \a initial. A host
        with a picker of its own, or one that plays a script, answers here:
        true with \a color set (invalid when cancelled). False leaves the
        asking to the control, which never blocks for it.
    */
    virtual bool answerColor(QWidget *control, const QColor &initial, QColor &color)
    {
        Q_UNUSED(control) Q_UNUSED(initial) Q_UNUSED(color)
        return false;
    }
    /*!
        A control asks for a file to open (\a save false) or to save to, as
        answerColor() asks for a colour: true with \a path set (empty when
        cancelled), false leaves it to the control's own dialog, which never
        blocks.
    */
    virtual bool answerFileName(QWidget *control, bool save, const QString &caption, const QString &filter,
                                QString &path)
    {
        Q_UNUSED(control) Q_UNUSED(save) Q_UNUSED(caption) Q_UNUSED(filter) Q_UNUSED(path)
        return false;
    }
    /*!
        \a control opened \a window, a panel it built through the host's
        panel factory (an editor named \a id), as a window of its own. The
        window belongs to the panel \a control sits in; the host may place
        it, decorate it and reach its controls.
    */
    virtual void windowOpened(QWidget *control, const QString &id, QWidget *window)
    {
        Q_UNUSED(control) Q_UNUSED(id) Q_UNUSED(window)
    }
    //! The window of editor \a id closes; it is deleted soon after. Not called when its panel is destroyed.
    virtual void windowClosed(const QString &id, QWidget *window) { Q_UNUSED(id) Q_UNUSED(window) }
};

/*!
    \class NullHostCore
    \brief A host that knows nothing: every read fails, every request is
    dropped, the zoom is 1. For using and testing the library by itself.
*/
class NullHostCore : public IHostCore
{
public:
    bool readParameter(const ParameterAddress &, Value &value, QMap<QString, QString> &) override
    {
        value.setPayload(QVariant());
        return false;
    }
    bool sendRequest(QWidget *, int, const QVariantMap &, int, const QMap<QString, QString> &) override { return false; }
    void selectParameter(QWidget *, const QString &, const QString &) override { }
    float zoomFactor() const override { return 1.0f; }
    IHostTarget *currentTarget() override { return nullptr; }
    QVariantMap ownerDevice(const QWidget *) override { return QVariantMap(); }
    bool parameterExists(const QVariantMap &) override { return false; }
    int mode() const override { return 0; }
    bool isActive(const QWidget *) const override { return false; }
    int state(int, int) const override { return 0; }
    QVariantMap editorInfo() const override { return QVariantMap(); }
    QString imageBasePath() const override { return QString(); }
    void contextAction(QWidget *, const QString &, const QVariantMap &) override { }
};

#endif
