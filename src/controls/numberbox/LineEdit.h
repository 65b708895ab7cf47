#ifndef CORVANE_CONTROLS_NUMBERBOX_LINEEDIT_H
#define CORVANE_CONTROLS_NUMBERBOX_LINEEDIT_H

#include <QLineEdit>

#include <functional>

/*!
    \class EditorOwner
    \brief A control that opens a LineEdit over itself.

    The editor hands back what a line editor has no use for: the end of the
    edit (commit or discard) and the keys Return, Enter, Escape, Up and Down.
*/
class EditorOwner
{
public:
    virtual ~EditorOwner() = default;
    virtual void endEditing(bool commit) = 0;
    virtual void editorKeyPressed(QKeyEvent *event) = 0;
};

/*!
    \class LineEdit
    \brief The in-place editor of number boxes and text boxes.

    While shown it has the keyboard focus, its text selected and the mouse
    grabbed, so that a click anywhere ends the edit: inside the editor the
    click places the cursor as usual, outside it commits. Losing the focus
    commits as well. Its owner decides what committing means.
*/
class LineEdit : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(bool inputMethodSwitchedOff READ inputMethodSwitchedOff)

public:
    LineEdit(EditorOwner *owner, QWidget *parent);
    ~LineEdit() override;

    EditorOwner *owner() const { return m_owner; }

    //! Shows the editor over its parent filled with \a text; false when it was open already.
    bool open(const QString &text, Qt::Alignment alignment, bool numeric);
    /*!
        Ends an open edit: the keyboard focus goes back to the parent (that
        focus loss is no second commit), \a commitText gets the text when
        \a commit is set, and the editor hides. False when nothing was open.
    */
    bool close(bool commit, const std::function<void(const QString &)> &commitText);

    //! Takes the owner's font; call again when the owner's font changes (zoom).
    void followOwnerFont();

    //! Closes the input method for numeric input; on Windows with a fresh input context.
    void switchInputMethodOff();
    //! Lets the input method work again (letters, names).
    void switchInputMethodOn();
    bool inputMethodSwitchedOff() const { return m_inputMethodOff; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void setOutsideCursor(bool outside);

    EditorOwner *m_owner;
    bool m_inputMethodOff = false;
    bool m_overrideCursor = false;
    bool m_closing = false;
};

#endif
