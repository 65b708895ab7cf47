#ifndef CORVANE_HOST_SCRIPTRUNNER_H
#define CORVANE_HOST_SCRIPTRUNNER_H

#include <QString>
#include <QStringList>
#include <QTextStream>
#include <Qt>

class IWidgetCore;
class PanelHost;
class QWidget;

/*!
    \class ScriptRunner
    \brief Plays a scripted session on a built panel.

    Every command drives the controls the way a user or the database would;
    what happens is written to the output as JSON lines. A command that
    cannot be carried out stops the script with a message naming the line.
*/
class ScriptRunner
{
public:
    ScriptRunner(PanelHost *host, QTextStream *out);
    ~ScriptRunner();

    //! Runs \a script; false with error() set ("FILE:LINE: message") when a command fails.
    bool run(const QString &script, const QString &fileName);
    QString error() const { return m_error; }

    //! Runs one command given as tokens; false with \a message set when it fails.
    bool execute(const QStringList &tokens, QString *message);

private:
    struct Pointer
    {
        IWidgetCore *core = nullptr;
        QWidget *widget = nullptr;
        int x = 0;
        int y = 0;
    };

    bool control(const QString &name, IWidgetCore **core, QWidget **widget, QString *message) const;
    bool pointer(const QStringList &tokens, Pointer *p, QString *message) const;
    bool mouse(const QStringList &tokens, QString *message);
    bool wheel(const QStringList &tokens, QString *message);
    bool key(const QStringList &tokens, QString *message);
    bool typeText(const QStringList &tokens, QString *message);
    bool set(const QStringList &tokens, QString *message);
    bool menu(const QStringList &tokens, bool choose, QString *message);
    QString dump(IWidgetCore *core) const;
    void sendMouse(QWidget *widget, int type, const QPoint &pos, Qt::MouseButton button,
                   Qt::KeyboardModifiers modifiers);
    void print(const QString &line);

    PanelHost *m_host;
    QTextStream *m_out;
    QString m_error;
    //! Where the files a script names are looked for: the script's folder.
    QString m_folder;
    Qt::MouseButtons m_held = Qt::NoButton;
};

#endif
