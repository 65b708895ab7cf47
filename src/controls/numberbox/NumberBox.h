#ifndef CORVANE_CONTROLS_NUMBERBOX_NUMBERBOX_H
#define CORVANE_CONTROLS_NUMBERBOX_NUMBERBOX_H

#include "controls/common/AbstractValueInput.h"
#include "controls/numberbox/LineEdit.h"
#include "core/BaseWidget.h"

#include <QColor>

/*!
    \class NumberBox
    \brief Shows one parameter's value as text and changes it by typing,
    by the Up and Down keys, by the wheel and by dragging.

    The box never parses, clamps or formats a value: it sends what the user
    did as a request and shows the display text the database hands back.

    Typing: Return or Enter opens the editor over the box; Return or Enter,
    a click outside it or the loss of the focus commits the typed text as a
    set-by-text request; Escape, Up and Down throw it away.

    Dragging: a plain left press starts a drag from the current position on
    a scale of 300; every pixel up (or, with horizontal drag, every two
    pixels up or right) is one 300th of the parameter's range, whatever the
    box's size. Nothing is sent until the mouse moves; any modifier key held
    during a move ends the drag.

    Wheel: one step request per notch, up "1" and down "-1".
*/
class NumberBox : public ValueInputWidget<BaseWidget>, public EditorOwner
{
    Q_OBJECT
    Q_PROPERTY(bool editing READ isEditing)
    Q_PROPERTY(bool dragging READ isDragging)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)
    Q_PROPERTY(Qt::Alignment textAlignment READ textAlignment WRITE setTextAlignment)
    Q_PROPERTY(bool horizontalDrag READ horizontalDrag WRITE setHorizontalDrag)
    Q_PROPERTY(QColor textColor READ textColor)
    Q_PROPERTY(QString shownText READ shownText)
    Q_PROPERTY(QString editorText READ editorText)
    Q_PROPERTY(int dragStartPosition READ dragStartPosition)
    Q_PROPERTY(bool editable READ isEditable)

public:
    NumberBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
    ~NumberBox() override;

    static const TagTable &tags();
    const TagTable &tagTable() const override { return tags(); }

    static const QColor enabledTextColor;
    static const QColor disabledTextColor;

    //! How the box takes its gestures.
    static constexpr Policy valueInput{
        AltClick::Ignored,  // Alt-click starts a drag as a plain click does
        PressPoint::Silent, // nothing is sent while the pointer is at the press coordinate
        false,              // a relative drag on dragRange
        true,               // Up and Down step
        false,              // moves need no held button
        true,               // any button's release ends a drag
        true,               // the start coordinate is kept in 16 bits
    };

    LineEdit *editor() const { return m_editor; }
    bool isEditing() const;
    QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor &color);
    Qt::Alignment textAlignment() const { return m_alignment; }
    void setTextAlignment(Qt::Alignment alignment);
    bool horizontalDrag() const { return m_horizontalDrag; }
    void setHorizontalDrag(bool on) { m_horizontalDrag = on; }
    QColor textColor() const { return isEnabled() ? enabledTextColor : disabledTextColor; }
    QString editorText() const;

    //! The text the box draws.
    virtual QString shownText() const;
    bool setZoom(float zoom) override;

    // EditorOwner
    void endEditing(bool commit) override;
    void editorKeyPressed(QKeyEvent *event) override;

    //! Opens the editor, filled with the display text; does nothing while it is open.
    void startEditing();

    //! "Left", "Right" and "VCenter" found in \a text, case-sensitively, over the default centring.
    static Qt::Alignment alignmentFromText(const QString &text);

signals:
    void editingStarted();
    void editingFinished(bool committed);

protected:
    virtual bool readTextAlignment(const QDomElement &e);

    //! The text the editor opens with.
    virtual QString editorStartText() const;
    //! Sends a committed edit.
    virtual void commitText(const QString &text);
    //! Whether the editor is for numbers (the input method is closed).
    virtual bool numericInput() const { return true; }

    //! The drag coordinate of a mouse position: y, or (y - x) / 2 with horizontal drag.
    int dragCoordinate(const QPoint &pos) const override;

    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void createEditor();

    LineEdit *m_editor = nullptr;
    QColor m_backgroundColor{0, 0, 0, 255};
    Qt::Alignment m_alignment = Qt::AlignCenter;
    bool m_horizontalDrag = false;
};

#endif
