#ifndef CORVANE_CONTROLS_COMMON_ABSTRACTVALUEINPUT_H
#define CORVANE_CONTROLS_COMMON_ABSTRACTVALUEINPUT_H

#include "controls/common/LevelList.h"
#include "controls/common/WheelPolicy.h"
#include "controls/common/WheelSteps.h"

#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

#include <utility>

/*!
    \class AbstractValueInput
    \brief The gestures a value control shares, without the widget: the
    drag, the step keys, the wheel's notches and the level menu.

    A drag starts at a coordinate and a position on a scale of dragRange
    steps; every pixel the pointer moves up from the start coordinate is one
    step, clamped by boundDragPosition(). What the control sends at the
    press coordinate itself is the policy's pressPoint. A control whose knob
    follows the pointer instead takes the coordinate as the position.

    Controls differ in small rules only; each is one field of Policy, given
    by the control where it declares its policy.
*/
class AbstractValueInput
{
public:
    //! The drag scale: positions run from 0 to this.
    static constexpr int dragRange = 300;

    //! Where an Alt-click stands among a press's rules.
    enum class AltClick {
        Ignored,              //!< an Alt press is an ordinary press
        DefaultBeforeControl, //!< Alt asks for the default before Control-clicks are handed over
        DefaultAfterControl,  //!< Control-clicks are handed over first, then Alt asks for the default
    };

    //! What a drag sends while the pointer is at the press coordinate.
    enum class PressPoint {
        Sends,             //!< every move sends, the press coordinate included; a release sends after a move
        SendsAfterLeaving, //!< nothing until the pointer has left the press coordinate, then every position
        Silent,            //!< the press coordinate never sends, neither moving nor at release
    };

    struct Policy
    {
        AltClick altClick;
        PressPoint pressPoint;
        bool followsPointer; //!< the drag coordinate is the position itself, not a distance on dragRange
        bool stepKeys;       //!< the keys of stepOfKey() step the value
        bool needsButton;    //!< moves without the left button held are ignored
        bool anyButtonEnds;  //!< every button's release ends the drag, not only the left one's
        bool shortStart;     //!< the start coordinate is kept in 16 bits, wrapping as a 16-bit record does
    };

    explicit AbstractValueInput(const Policy &policy)
        : m_policy(policy)
    {
    }
    virtual ~AbstractValueInput() = default;

    const Policy &inputPolicy() const { return m_policy; }
    bool isDragging() const { return m_drag.index >= 0; }
    //! The address index being dragged, -1 when none.
    int dragIndex() const { return m_drag.index; }
    //! The position on the drag scale when the last drag began.
    int dragStartPosition() const { return m_drag.startPosition; }
    int dragStartCoordinate() const { return m_drag.startCoordinate; }

    //! The levels offered in the context menu, "label:value" each.
    QStringList levels() const { return m_levels.describe(); }
    const LevelList &levelList() const { return m_levels; }

    //! The position a drag reaches at \a coordinate.
    int dragPositionAt(int coordinate) const;
    //! The step Up, Down, Left or Right stands for: 1, -1, or 0 for none.
    virtual int stepOfKey(int key) const;

protected:
    //! Starts a drag on address \a index at \a coordinate from \a startPosition; a running drag ends first.
    void beginDrag(int index, int coordinate, int startPosition);
    //! Follows the pointer to \a coordinate, held or released; sends what the policy lets through.
    void dragTo(int coordinate, bool held);
    //! Sends the release at \a coordinate and ends the drag.
    void finishDrag(int coordinate);
    //! Ends the drag without sending.
    void abortDrag();

    //! Sends a drag position, held (1) or released (0).
    virtual void sendDragPosition(int position, bool held) = 0;
    //! Brings a drag position that left the scale back onto it.
    virtual int boundDragPosition(int position) const { return qBound(0, position, int(dragRange)); }

    //! Called when a drag starts and when it has ended (after its last request), for read-outs and the like.
    virtual void gestureStarted() { }
    virtual void gestureEnded() { }

    LevelList m_levels;
    WheelSteps m_wheel;

private:
    void endDrag();

    struct Drag
    {
        int index = -1;
        int startCoordinate = 0;
        int startPosition = 0;
        bool moved = false;
    };
    const Policy m_policy;
    Drag m_drag;
};

/*!
    \class ValueInputWidget
    \brief AbstractValueInput on a control: the mouse, key, wheel and menu
    events of \a Base turned into its gestures and into requests on
    valueIndex().

    A left press hands Control-clicks over and tells the core of the press,
    asks for the default on Alt where the policy says so, and starts a drag
    when startDragAt() agrees. Any modifier held during a move ends the drag
    (with Control it may become a drag-and-drop of the parameter). The wheel
    steps the value one notch at a time when the WheelPolicy lets it.
*/
template <class Base>
class ValueInputWidget : public Base, public AbstractValueInput
{
public:
    template <class... Args>
    ValueInputWidget(const Policy &policy, Args &&...args)
        : Base(std::forward<Args>(args)...)
        , AbstractValueInput(policy)
        , m_wheelPolicy(this)
    {
    }

    //! Whether the user may change the value at all (drag, keys, wheel).
    virtual bool isEditable() const { return true; }

protected:
    //! The address the control shows and changes.
    virtual int valueIndex() const { return 0; }
    //! Sends one step, up (1) or down (-1).
    virtual void stepValue(int step) { this->requestStep(step, valueIndex()); }
    //! The drag coordinate of a mouse position: y, growing downward.
    virtual int dragCoordinate(const QPoint &pos) const { return pos.y(); }
    //! Whether a plain press at \a pos starts a drag.
    virtual bool startDragAt(const QPoint &pos)
    {
        Q_UNUSED(pos)
        return isEditable();
    }
    //! Whether the wheel may step the value now.
    virtual bool wheelOperable() const
    {
        return isEditable() && this->isEnabled() && this->addressAt(valueIndex()).isValid();
    }

    //! Starts a drag on address \a index from the pointer at \a pos and the address's current position.
    void beginDragAt(int index, const QPoint &pos)
    {
        // A knob that follows the pointer has no start position to read.
        const int start = inputPolicy().followsPointer ? 0 : qBound(0, this->stepOfPosition(dragRange, index), dragRange);
        beginDrag(index, dragCoordinate(pos), start);
    }

    void sendDragPosition(int position, bool held) override
    {
        this->requestPosition(position, dragRange, held ? 1 : 0, dragIndex());
    }

    void buildContextMenu(QMenu *menu) override
    {
        Base::buildContextMenu(menu);
        m_levels.addToMenu(menu);
    }
    bool menuEntryChosen(QAction *action) override
    {
        return m_levels.sendChoice(action, *this) || Base::menuEntryChosen(action);
    }

    void keyPressEvent(QKeyEvent *event) override
    {
        if (!inputPolicy().stepKeys) {
            Base::keyPressEvent(event);
            return;
        }
        if (!this->isVisible()) {
            event->ignore();
            return;
        }
        const int step = isEditable() ? stepOfKey(event->key()) : 0;
        if (step)
            stepValue(step);
        else
            Base::keyPressEvent(event);
    }

    void mousePressEvent(QMouseEvent *event) override
    {
        if (event->button() != Qt::LeftButton) {
            QWidget::mousePressEvent(event);
            return;
        }
        const bool alt = event->modifiers() & Qt::AltModifier;
        if (alt && inputPolicy().altClick == AltClick::DefaultBeforeControl) {
            this->requestDefault(valueIndex());
            return;
        }
        if (this->handOverModifierPress(event))
            return;
        this->pressNotified(event);
        if (alt && inputPolicy().altClick == AltClick::DefaultAfterControl) {
            this->requestDefault(valueIndex());
            return;
        }
        if (startDragAt(event->pos()))
            beginDragAt(valueIndex(), event->pos());
    }

    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (event->modifiers() != Qt::NoModifier) {
            this->maybeStartParameterDrag(event);
            abortDrag();
            return;
        }
        if (!isDragging() || (inputPolicy().needsButton && !(event->buttons() & Qt::LeftButton)))
            return;
        dragTo(dragCoordinate(event->pos()), true);
    }

    void mouseReleaseEvent(QMouseEvent *event) override
    {
        const bool left = event->button() == Qt::LeftButton;
        if (!left && !inputPolicy().anyButtonEnds) {
            QWidget::mouseReleaseEvent(event);
            return;
        }
        if (left && (event->modifiers() & Qt::ControlModifier)) {
            this->controlClick(event);
            abortDrag();
            return;
        }
        if (isDragging())
            finishDrag(dragCoordinate(event->pos()));
    }

    void wheelEvent(QWheelEvent *event) override
    {
        if (!m_wheelPolicy.accepts(event, wheelOperable())) {
            event->ignore();
            return;
        }
        event->accept();
        m_wheel.deliver(event, [this](int step) { stepValue(step); });
    }

private:
    WheelPolicy m_wheelPolicy;
};

#endif
