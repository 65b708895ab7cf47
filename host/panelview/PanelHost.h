#ifndef CORVANE_HOST_PANELHOST_H
#define CORVANE_HOST_PANELHOST_H

#include <corvane/IAbstractDB.h>
#include <corvane/IHostCore.h>
#include <corvane/ParameterManagement.h>

#include <QDomDocument>
#include <QHash>
#include <QPointer>
#include <QSet>
#include <QWidget>

#include <functional>

class IPanelFactory;
class IWidgetCore;
class ParameterDatabase;

/*!
    \class PanelHost
    \brief What the design application is to the controls of one panel.

    Holds the panel description, its devices and its registry, builds the
    panel through the panel factory, answers the controls' reads from the
    parameter database, passes their requests on, and delivers every change
    the database reports to the controls registered for it. The registry is
    committed after building and after every script line; a delivery
    commits the tables it reads first.

    Requests, selections and context-menu actions are also handed to the
    event sink as JSON lines.
*/
class PanelHost : public IHostCore, public IParameterObserver
{
public:
    explicit PanelHost(ParameterDatabase *database);
    ~PanelHost() override;

    //! Reads a panel description and declares its devices; false with \a error set when it cannot be used.
    //! With \a keepValues, devices already declared with the same model keep their values (a reload).
    bool load(const QByteArray &xml, const QString &path, QString *error, bool keepValues = false);
    //! Builds the panel as a top-level widget; false when the factory built nothing.
    bool build(IPanelFactory *factory, QString *error);

    //! "LINE: warning: ..." for what load() could not use (values a parameter refuses, signals of unknown inputs, unreadable envelopes).
    QStringList warnings() const { return m_warnings; }
    QWidget *panel() const { return m_panel; }
    QSize designSize() const { return m_designSize; }
    const QDomDocument &document() const { return m_document; }
    ParameterManagementRegistry *registry() { return &m_registry; }
    ParameterDatabase *database() const { return m_database; }

    void setZoom(float zoom);
    void setEventSink(std::function<void(const QString &)> sink) { m_sink = std::move(sink); }

    //! Every live control of the panel, pages included, in creation order.
    QList<IWidgetCore *> controls() const;
    //! The panel factory's tiles on the page (see panelTileProperty), in order.
    QList<QWidget *> tiles() const;
    //! The first control named \a name, or null.
    IWidgetCore *control(const QString &name) const;
    static QString nameOf(IWidgetCore *core);

    //! Commits the tables that hold \a address and tells every control registered for it.
    void deliver(const QVariantMap &address);
    //! Commits the whole registry; the host's own code commits through here rather than through registry().
    void commitRegistry();
    //! The committed registrations as a "registry" event.
    QString registryEvent() const;

    bool readParameter(const ParameterAddress &address, Value &value, QMap<QString, QString> &attributes) override;
    bool sendRequest(QWidget *control, int index, const QVariantMap &address, int kind,
                     const QMap<QString, QString> &arguments) override;
    void selectParameter(QWidget *control, const QString &first, const QString &second) override;
    float zoomFactor() const override { return m_zoom; }
    IHostTarget *currentTarget() override { return nullptr; }
    QVariantMap ownerDevice(const QWidget *control) override;
    bool parameterExists(const QVariantMap &address) override;
    int mode() const override { return 1; }
    bool isActive(const QWidget *) const override { return true; }
    int state(int, int) const override { return 0; }
    QVariantMap editorInfo() const override { return QVariantMap(); }
    QString imageBasePath() const override { return m_basePath; }
    void contextAction(QWidget *control, const QString &action, const QVariantMap &data) override;
    bool answerColor(QWidget *control, const QColor &initial, QColor &color) override;
    bool answerFileName(QWidget *control, bool save, const QString &caption, const QString &filter,
                        QString &path) override;
    void windowOpened(QWidget *control, const QString &id, QWidget *window) override;
    void windowClosed(const QString &id, QWidget *window) override;
    //! The editor windows open now, in opening order.
    QList<QWidget *> windows() const;

    /*!
        While set, colour questions are answered here with \a answer (an
        invalid colour cancels) instead of a dialog: scripts never wait for
        a user.
    */
    void setColorAnswer(bool scripted, const QColor &answer = QColor());
    //! As setColorAnswer(), for file questions; an empty \a answer cancels.
    void setFileAnswer(bool scripted, const QString &answer = QString());

    void parameterChanged(const QVariantMap &address) override;

private:
    void emitEvent(const QString &json);
    void readDeviceSetup(const QDomElement &device, const QString &id);
    bool registryHasAdditions() const;
    QWidget *livingWidget(void *item);

    ParameterDatabase *m_database;
    ParameterManagementRegistry m_registry;
    QDomDocument m_document;
    QString m_basePath;
    QSize m_designSize;
    QVariantMap m_owner;
    QStringList m_warnings;
    QPointer<QWidget> m_panel;
    // The controls of the panel by their registry item, filled on a miss so
    // that a delivery does not walk the whole panel; items known to be gone
    // until the next registration.
    QHash<void *, QPointer<QWidget>> m_living;
    QSet<void *> m_gone;
    float m_zoom = 1.0f;
    bool m_scriptedColor = false;
    QColor m_colorAnswer;
    QList<QPointer<QWidget>> m_windows;
    bool m_scriptedFile = false;
    QString m_fileAnswer;
    std::function<void(const QString &)> m_sink;
    bool m_tearingDown = false;
};

#endif
