#include "WindowButton.h"

#include <corvane/IHostCore.h>

#include <QEvent>

namespace {

const char editorProperty[] = "corvaneEditorId";

// Tells the host that an editor window closes. Only a close does: a window
// that dies with its panel goes without a word, as the host is tearing
// down as well.
class CloseWatcher : public QObject
{
public:
    CloseWatcher(IHostCore *host, QWidget *window, const QString &id)
        : QObject(window), m_host(host), m_id(id)
    {
        window->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Close && m_host && !m_told) {
            m_told = true;
            m_host->windowClosed(m_id, static_cast<QWidget *>(watched));
        }
        return false;
    }

private:
    IHostCore *m_host;
    QString m_id;
    bool m_told = false;
};

} // namespace

WindowButton::WindowButton(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : Button(hostCore, registry, parent)
{
}

const TagTable &WindowButton::tags()
{
    static const TagTable table = TagTable::of<WindowButton>(&Button::tags(), {
        {"EditorID", TagTable::trimmedText("editorId")},
        {"Title", TagTable::trimmedText("windowTitle")},
        {"Panel", &WindowButton::readPanel},
    });
    return table;
}

bool WindowButton::readPanel(const QDomElement &e)
{
    m_panel = m_store.keep(e);
    return true;
}

QString WindowButton::windowName(const QString &id)
{
    return QStringLiteral("editor:") + id;
}

bool WindowButton::isEditorWindow(const QWidget *window)
{
    return window && window->isWindow() && window->property(editorProperty).isValid();
}

QWidget *WindowButton::editorWindow() const
{
    if (m_editorId.isEmpty() && m_panel.isNull())
        return nullptr;
    QWidget *home = window();
    if (!home || home == this)
        return nullptr;
    for (QWidget *w : home->findChildren<QWidget *>(windowName(m_editorId), Qt::FindDirectChildrenOnly)) {
        if (w->isWindow() && !w->testAttribute(Qt::WA_WState_Hidden) && w->property(editorProperty).isValid())
            return w;
    }
    return nullptr;
}

bool WindowButton::openWindow()
{
    if (QWidget *open = editorWindow()) {
        open->raise();
        open->activateWindow();
        return true;
    }
    QWidget *home = window();
    if (!home || home == this || (m_editorId.isEmpty() && m_panel.isNull()))
        return false;
    QDomElement page = m_panel;
    if (page.isNull()) {
        page = m_store.keep(QDomDocument().createElement(QStringLiteral("Page")));
        page.setAttribute(QStringLiteral("file"), m_editorId);
    }
    // Built as a child of the panel's window, so it goes with the panel.
    QWidget *editor = Panels::buildPage(Panels::sharedPanelFactory(), page, this, home,
                                        Panels::inheritedContext(*this));
    if (!editor)
        return false;
    editor->setParent(home, editorWindowFlags());
    editor->setObjectName(windowName(m_editorId));
    editor->setProperty(editorProperty, m_editorId);
    editor->setAttribute(Qt::WA_DeleteOnClose);
    editor->setWindowTitle(title());
    watch(editor);
    if (hostCore())
        hostCore()->windowOpened(this, m_editorId, editor);
    editor->show();
    update();
    return true;
}

void WindowButton::watch(QWidget *window)
{
    new CloseWatcher(hostCore(), window, m_editorId);
    // Every button naming the window shows whether it is open.
    for (WindowButton *b : this->window()->findChildren<WindowButton *>()) {
        if (b->m_editorId == m_editorId)
            connect(window, &QObject::destroyed, b, [b] { b->update(); });
    }
}

bool WindowButton::closeWindow()
{
    QWidget *open = editorWindow();
    if (!open)
        return false;
    open->close();
    update();
    return true;
}

void WindowButton::clickAction()
{
    if (isWindowOpen())
        closeWindow();
    else
        openWindow();
}
