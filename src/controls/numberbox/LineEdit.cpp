#include "LineEdit.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#if defined(Q_OS_WIN)
#include <qt_windows.h>
#include <imm.h>
#endif

LineEdit::LineEdit(EditorOwner *owner, QWidget *parent)
    : QLineEdit(parent)
    , m_owner(owner)
{
    setFrame(false);
    setAlignment(Qt::AlignCenter);
    setContextMenuPolicy(Qt::NoContextMenu);
    // For the pointer's shape outside the editor while it holds the grab.
    setMouseTracking(true);
    hide();
}

LineEdit::~LineEdit()
{
    m_closing = true;
    setOutsideCursor(false);
}

bool LineEdit::open(const QString &text, Qt::Alignment alignment, bool numeric)
{
    setAlignment(alignment);
    if (isVisible())
        return false;
    setText(text);
    show();
    if (numeric)
        switchInputMethodOff();
    else
        switchInputMethodOn();
    return true;
}

bool LineEdit::close(bool commit, const std::function<void(const QString &)> &commitText)
{
    // Open means not hidden by itself: an edit whose box or page was just
    // hidden is still open and ends here.
    if (isHidden() || m_closing)
        return false;
    m_closing = true;
    if (QWidget *owner = parentWidget())
        owner->setFocus(Qt::OtherFocusReason);
    if (commit)
        commitText(text());
    hide();
    m_closing = false;
    return true;
}

void LineEdit::followOwnerFont()
{
    // The owner's font as it shows it (family, "FontSize", zoom), so the
    // text does not jump when the edit starts.
    if (QWidget *owner = parentWidget())
        setFont(owner->font());
}

void LineEdit::switchInputMethodOff()
{
#if defined(Q_OS_WIN)
    // A context of its own, closed; Windows keeps it for the thread.
    HIMC context = ImmCreateContext();
    ImmSetOpenStatus(context, FALSE);
#endif
    setAttribute(Qt::WA_InputMethodEnabled, false);
    m_inputMethodOff = true;
}

void LineEdit::switchInputMethodOn()
{
    setAttribute(Qt::WA_InputMethodEnabled, true);
    m_inputMethodOff = false;
}

void LineEdit::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
    case Qt::Key_Up:
    case Qt::Key_Down:
        m_owner->editorKeyPressed(event);
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void LineEdit::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    // The context menu is off, so a popup taking the focus is someone else's.
    if (isVisible() && !m_closing && event->reason() != Qt::PopupFocusReason)
        m_owner->endEditing(true);
}

void LineEdit::mousePressEvent(QMouseEvent *event)
{
    // With the mouse grabbed, presses anywhere on the screen arrive here.
    if (!rect().contains(event->pos())) {
        m_owner->endEditing(true);
        return;
    }
    QLineEdit::mousePressEvent(event);
}

void LineEdit::mouseMoveEvent(QMouseEvent *event)
{
    if (QWidget::mouseGrabber() == this)
        setOutsideCursor(!rect().contains(event->pos()));
    QLineEdit::mouseMoveEvent(event);
}

void LineEdit::showEvent(QShowEvent *event)
{
    QLineEdit::showEvent(event);
    setFocus(Qt::OtherFocusReason);
    selectAll();
    grabMouse();
}

void LineEdit::hideEvent(QHideEvent *event)
{
    releaseMouse();
    setOutsideCursor(false);
    QLineEdit::hideEvent(event);
    // Hidden with its box or page inside a shown window (a page switched
    // away): end the edit as a focus loss does, or it would come back with
    // the page holding the grab.
    if (!isHidden() && !m_closing && window()->isVisible())
        m_owner->endEditing(true);
}

void LineEdit::setOutsideCursor(bool outside)
{
    // The grab shows the editor's I-beam over the whole screen; outside the
    // editor the pointer should look like what it is.
    if (outside == m_overrideCursor)
        return;
    if (outside)
        QApplication::setOverrideCursor(Qt::ArrowCursor);
    else
        QApplication::restoreOverrideCursor();
    m_overrideCursor = outside;
}
