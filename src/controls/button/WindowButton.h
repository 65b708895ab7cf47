#ifndef CORVANE_CONTROLS_BUTTON_WINDOWBUTTON_H
#define CORVANE_CONTROLS_BUTTON_WINDOWBUTTON_H

#include "controls/button/Button.h"
#include "panels/PageBuilder.h"

#include <QPointer>

/*!
    \class WindowButton
    \brief Opens a panel in a window of its own, and closes it again.

    "EditorID" names the panel, a file of the host's panel folder built
    through the host's panel factory; a "Panel" element holds it inline
    instead. "Title" is the window's title (the panel name by default).

    A click opens the window, or closes it while it is open; the button is
    lit while it is open. There is one window per panel name and panel
    window: every button naming it opens and closes the same one. The
    window's controls inherit the keys of the button's first address (its
    device) as a stacker's pages do. The host hears of each window through
    IHostCore::windowOpened() and IHostCore::windowClosed().
*/
class WindowButton : public Button
{
    Q_OBJECT
    Q_PROPERTY(QString editorId READ editorId WRITE setEditorId)
    Q_PROPERTY(QString windowTitle READ title WRITE setTitle)
    Q_PROPERTY(bool windowOpen READ isWindowOpen)
    CORVANE_TAG_TABLE

public:
    WindowButton(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    QString editorId() const { return m_editorId; }
    // Nothing of the button itself shows them: they name and title its window.
    void setEditorId(const QString &id) { m_editorId = id; }
    QString title() const { return m_title.isEmpty() ? m_editorId : m_title; }
    void setTitle(const QString &title) { m_title = title; }

    //! The open window of this button's panel, or null.
    QWidget *editorWindow() const;
    bool isWindowOpen() const { return editorWindow() != nullptr; }
    //! Opens (or raises) the window; false when the panel cannot be built.
    bool openWindow();
    //! Closes the window; false when it was not open.
    bool closeWindow();

    bool isOn() const override { return isWindowOpen(); }
    void clickAction() override;

    //! The object name an editor window of \a id carries.
    static QString windowName(const QString &id);
    //! Whether \a window was opened by a window button.
    static bool isEditorWindow(const QWidget *window);

protected:
    virtual bool readPanel(const QDomElement &e);

    //! The kind of window: a window of its own, or a tool window kept above the panel's.
    virtual Qt::WindowFlags editorWindowFlags() const { return Qt::Window; }

private:
    void watch(QWidget *window);

    QString m_editorId;
    QString m_title;
    QDomElement m_panel;
    Panels::ElementStore m_store;
};

#endif
