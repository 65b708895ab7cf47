#ifndef CORVANE_CONTROLS_NUMBERBOX_NUMBERBOX_H
#define CORVANE_CONTROLS_NUMBERBOX_NUMBERBOX_H

#include "controls/numberbox/LineEdit.h"
#include "controls/common/WheelPolicy.h"
#include "controls/common/WheelSteps.h"
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
class NumberBox : public BaseWidget, public EditorOwner
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
    //! The drag scale: positions run from 0 to this.
    static constexpr int dragRange = 300;

    LineEdit *editor() const { return m_editor; }
    bool isEditing() const;
    bool isDragging() const { return m_dragging; }
    QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor &color);
    Qt::Alignment textAlignment() const { return m_alignment; }
    void setTextAlignment(Qt::Alignment alignment);
    bool horizontalDrag() const { return m_horizontalDrag; }
    void setHorizontalDrag(bool on) { m_horizontalDrag = on; }
    QColor textColor() const { return isEnabled() ? enabledTextColor : disabledTextColor; }
    QString editorText() const;
    int dragStartPosition() const { return m_dragStartPosition; }

    //! The text the box draws.
    virtual QString shownText() const;
    //! Whether the user may change the value at all (typing, keys, wheel, drag).
    virtual bool isEditable() const { return true; }

    bool setZoom(float zoom) override;

    // EditorOwner
    void endEditing(bool commit) override;
    void editorKeyPressed(QKeyEvent *event) override;

    //! Opens the editor, filled with the display text; does nothing while it is open.
    void startEditing();

    virtual bool readBackgroundColor(const QDomElement &e);
    virtual bool readTextAlignment(const QDomElement &e);
    virtual bool readEnableHorizontalDrag(const QDomElement &e);

    //! "Left", "Right" and "VCenter" found in \a text, case-sensitively, over the default centring.
    static Qt::Alignment alignmentFromText(const QString &text);

signals:
    void editingStarted();
    void editingFinished(bool committed);

protected:
    //! The address the box shows and changes.
    virtual int valueIndex() const { return 0; }
    //! The text the editor opens with.
    virtual QString editorStartText() const;
    //! Sends a committed edit.
    virtual void commitText(const QString &text);
    //! Sends one step, up (1) or down (-1).
    virtual void stepValue(int step);
    //! Sends a drag position from 0 to dragRange, held (1) or released (0).
    virtual void sendDragPosition(int position, bool held);
    //! Brings a drag position that left the scale back onto it.
    virtual int boundDragPosition(int position) const { return qBound(0, position, int(dragRange)); }
    //! Whether the editor is for numbers (the input method is closed).
    virtual bool numericInput() const { return true; }

    //! The drag coordinate of a mouse position: y, or (y - x) / 2 with horizontal drag.
    int dragCoordinate(const QPoint &pos) const;
    void dragTo(int coordinate, bool held);

    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void createEditor();

    LineEdit *m_editor = nullptr;
    QColor m_backgroundColor{0, 0, 0, 255};
    qint16 m_dragStartPosition = 0;
    qint16 m_dragStartCoordinate = 0;
    bool m_dragging = false;
    Qt::Alignment m_alignment = Qt::AlignCenter;
    bool m_horizontalDrag = false;
    WheelSteps m_wheel;
    WheelPolicy m_wheelPolicy{this};
};

#endif
