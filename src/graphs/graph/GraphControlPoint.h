#ifndef CORVANE_GRAPHS_GRAPH_GRAPHCONTROLPOINT_H
#define CORVANE_GRAPHS_GRAPH_GRAPHCONTROLPOINT_H

#include "data/ParameterKeys.h"
#include "core/DisabledLook.h"
#include "core/BaseWidget.h"

#include <QMouseEvent>
#include <QPainter>

/*
    A draggable handle over a graph. Its parameter (address 0) holds the
    position as a curve text of exactly one point, "0:Rx/0:Ry/x:y"; the
    handle centres itself on that point inside its ControlRect, the graph
    area in its parent's coordinates. A drag sends the mouse position back
    as the fractions "fx:fy" (0 to 1, y up) by text, with "set_prm_type"
    "1" while the button is held and "0" at release, as position requests
    do; the handle moves when the new value comes back.

    Shift locks the drag to the axis of the first movement made with it
    held; letting Shift go frees it again.
*/
class ControlPointState
{
public:
    enum AxisLock { NoLock = 0, HorizontalLock = 1, VerticalLock = 2 };

    QRect controlRect() const { return m_controlRect; }
    QColor color() const { return m_color; }
    QString direction() const { return m_direction; }
    QString text() const { return m_text; }
    //! "value,max": the address index the handle selects when pressed, and its "max".
    QString valueText() const { return QStringLiteral("%1,%2").arg(m_value).arg(m_max); }
    int value() const { return m_value; }
    int valueMax() const { return m_max; }
    //! The point the handle is centred on, in the parent's pixels.
    QPoint point() const { return m_point; }
    int axisLock() const { return m_lock; }
    bool isDragging() const { return m_dragging; }

    //! The cursor of a Direction text: "Horizontal", "Vertical", both, or neither.
    static Qt::CursorShape directionCursor(const QString &direction);
    //! The point of a one-point curve text in \a rect; false when the text is not one.
    static bool pointOf(const QString &text, const QRect &rect, QPoint *point);
    //! The handle's geometry for \a point: a square of truncate(5 × zoom) centred on it.
    static QRect handleGeometry(const QPoint &point, float zoom);
    //! "fx:fy" for the mouse at \a pos over \a rect, both clamped to 0 ... 1.
    static QString fractionText(const QPoint &pos, const QRect &rect);

protected:
    //! ControlRect scaled by \a zoom and truncated, as every design rectangle is.
    QRect scaledControlRect(float zoom) const;
    //! Applies the axis lock to \a pos, locking on the first Shift movement; sets \a cursor when it changes.
    QPoint pinned(const QPoint &pos, bool shift, Qt::CursorShape *cursor);

    QRect m_controlRect;
    QColor m_color = Colors::color(Colors::controlPoint);
    QString m_direction;
    QString m_text;
    int m_value = 0;
    int m_max = 1;
    QPoint m_point;
    bool m_placed = false;
    QPoint m_anchor;
    int m_lock = NoLock;
    bool m_dragging = false;
};

template <class Base>
class GraphHandle : public Base, public ControlPointState
{
public:
    GraphHandle(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : Base(hostCore, registry, parent)
    {
        this->setCursor(directionCursor(m_direction));
    }

    static const TagTable &tags()
    {
        static const TagTable table = TagTable::of<GraphHandle>(&Base::tags(), {
            {"ControlRect", &GraphHandle::readControlRect},
            {"Color", &GraphHandle::readColor},
            {"Direction", &GraphHandle::readDirection},
            {"Text", &GraphHandle::readText},
            {"Value", &GraphHandle::readValue},
        });
        return table;
    }
    const TagTable &tagTable() const override { return tags(); }

    bool readControlRect(const QDomElement &e)
    {
        setControlRect(BaseWidget::parseRect(e));
        return true;
    }
    bool readColor(const QDomElement &e)
    {
        const QColor c = BaseWidget::parseColor(e.text());
        if (!c.isValid())
            return false;
        setColor(c);
        return true;
    }
    bool readDirection(const QDomElement &e)
    {
        setDirection(e.text());
        return true;
    }
    bool readText(const QDomElement &e)
    {
        setText(e.text());
        return true;
    }
    bool readValue(const QDomElement &e)
    {
        const QString max = e.attribute(QStringLiteral("max"), QStringLiteral("1"));
        setValue(e.text().trimmed().toInt(), max.trimmed().toInt());
        return true;
    }
    bool readRect(const QDomElement &e) override
    {
        const bool used = Base::readRect(e);
        place();
        return used;
    }

    void setControlRect(const QRect &rect)
    {
        if (m_controlRect == rect)
            return;
        m_controlRect = rect;
        readPoint();
    }
    void setColor(const QColor &color)
    {
        if (m_color == color)
            return;
        m_color = color;
        this->update();
    }
    void setDirection(const QString &direction)
    {
        if (m_direction == direction)
            return;
        m_direction = direction;
        if (!m_dragging)
            this->setCursor(directionCursor(m_direction));
    }
    void setText(const QString &text)
    {
        if (m_text == text)
            return;
        m_text = text;
        this->setToolTip(text);
    }
    void setValue(int value, int max)
    {
        m_value = value;
        m_max = max;
    }
    void setValueText(const QString &text)
    {
        const QStringList parts = text.split(QLatin1Char(','));
        setValue(parts.value(0).trimmed().toInt(), parts.size() > 1 ? parts.at(1).trimmed().toInt() : 1);
    }

    bool setZoom(float zoom) override
    {
        if (!Base::setZoom(zoom))
            return false;
        readPoint();
        place();
        return true;
    }

protected:
    //! Sends the value text \a text to address 0, held or released.
    bool sendPoint(const QString &text, bool held)
    {
        QMap<QString, QString> args;
        args.insert(Key::ui_prm_str, text);
        args.insert(Key::set_prm_type, held ? QStringLiteral("1") : QStringLiteral("0"));
        return this->sendRequest(1, 0, args);
    }

    //! Reads the point from address 0; repaints and re-places when it moved.
    void readPoint()
    {
        QPoint p;
        if (!pointOf(this->displayText(0), scaledControlRect(this->zoomFactor()), &p))
            return;
        if (m_placed && p == m_point)
            return;
        m_point = p;
        m_placed = true;
        this->update();
        place();
    }
    void place()
    {
        if (m_placed)
            this->setGeometry(handleGeometryAt(m_point));
    }
    //! The handle's geometry when centred on \a point; variants draw larger handles.
    virtual QRect handleGeometryAt(const QPoint &point) const { return handleGeometry(point, this->zoomFactor()); }

    //! The mouse position of \a event in the coordinates ControlRect is given in.
    QPoint parentPosition(QMouseEvent *event) const { return this->mapToParent(event->pos()); }

    void ownValueChanged(int index) override
    {
        if (index == 0)
            readPoint();
        else
            Base::ownValueChanged(index);
    }

    void mousePressEvent(QMouseEvent *event) override
    {
        if (event->button() != Qt::LeftButton) {
            Base::mousePressEvent(event);
            return;
        }
        if (this->handOverModifierPress(event)) {
            event->accept();
            return;
        }
        m_dragging = true;
        m_anchor = parentPosition(event);
        m_lock = NoLock;
        this->selectAddress(m_value, true);
        this->update();
        event->accept();
    }
    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (!m_dragging) {
            Base::mouseMoveEvent(event);
            return;
        }
        Qt::CursorShape cursor = this->cursor().shape();
        const QPoint pos = pinned(parentPosition(event), event->modifiers() & Qt::ShiftModifier, &cursor);
        this->setCursor(cursor);
        sendPoint(fractionText(pos, scaledControlRect(this->zoomFactor())), true);
        event->accept();
    }
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (!m_dragging || event->button() != Qt::LeftButton) {
            Base::mouseReleaseEvent(event);
            return;
        }
        Qt::CursorShape cursor = this->cursor().shape();
        const QPoint pos = pinned(parentPosition(event), event->modifiers() & Qt::ShiftModifier, &cursor);
        sendPoint(fractionText(pos, scaledControlRect(this->zoomFactor())), false);
        m_dragging = false;
        m_anchor = QPoint();
        m_lock = NoLock;
        this->setCursor(directionCursor(m_direction));
        this->update();
        event->accept();
    }

    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        paintHandle(painter);
        this->paintBase(painter);
    }
    //! Draws the handle; variants change how it looks in their states.
    virtual void paintHandle(QPainter &painter)
    {
        painter.fillRect(this->rect(), DisabledLook::greyed(m_color, this->isEnabled()));
    }
};

/*!
    \class GraphControlPoint
    \brief A handle dragged over an equaliser graph.
*/
class GraphControlPoint : public GraphHandle<BaseWidget>
{
    Q_OBJECT
    Q_PROPERTY(QRect ControlRect READ controlRect WRITE setControlRect)
    Q_PROPERTY(QColor Color READ color WRITE setColor)
    Q_PROPERTY(QString Direction READ direction WRITE setDirection)
    Q_PROPERTY(QString Text READ text WRITE setText)
    Q_PROPERTY(QString Value READ valueText WRITE setValueText)
    Q_PROPERTY(QPoint point READ point)
    Q_PROPERTY(int axisLock READ axisLock)
    Q_PROPERTY(bool dragging READ isDragging)

public:
    using GraphHandle::GraphHandle;
};

#endif
