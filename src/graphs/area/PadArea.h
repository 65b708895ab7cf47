#ifndef CORVANE_GRAPHS_AREA_PADAREA_H
#define CORVANE_GRAPHS_AREA_PADAREA_H

#include "core/BaseWidget.h"

#include <QColor>
#include <QPointF>

/*
    The behaviour the two-dimensional pads share: a handle at the position
    of two parameters (address 0 horizontal, address 1 vertical, both 0 to
    1, vertical counted upward), dragged with the left button. Every move
    sends both positions (kind 0, "set_prm_type" "1"); the release sends
    them again with "0", a press and release without movement nothing.
    Shift locks the drag to the axis of the first movement made with it
    held; letting Shift go frees it.

    Not a QObject of its own: the pads' Qt superclass stays BaseWidget, and
    each declares its properties.
*/
class PadArea : public BaseWidget
{
    CORVANE_TAG_TABLE

public:
    enum AxisLock { NoLock = 0, HorizontalLock = 1, VerticalLock = 2 };

    PadArea(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    static const QColor defaultHandleColor;
    static const QColor defaultBackgroundColor;

    double horizontal() const { return m_position.x(); }
    double vertical() const { return m_position.y(); }
    bool isDragging() const { return m_dragging; }
    int axisLock() const { return m_lock; }
    QColor handleColor() const { return m_handleColor; }
    void setHandleColor(const QColor &color);
    QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor &color);

    //! The handle's centre in pixels for the current position.
    QPointF handleCentre() const;
    //! The handle's radius at the current zoom.
    int handleRadius() const;
    //! The positions (0 to 1, vertical upward) of pixel \a pos, clamped.
    QPointF positionAt(const QPointF &pos) const;

protected:
    virtual bool readHandleColor(const QDomElement &e);
    virtual bool readBackgroundColor(const QDomElement &e);
    //! Draws what lies between the background and the handle.
    virtual void paintField(QPainter &painter) { Q_UNUSED(painter) }

    void ownValueChanged(int index) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QPointF pinned(const QPointF &target, bool shift);
    void send(const QPointF &target, int setType);

    QPointF m_position{0.5, 0.5};
    QPointF m_grab;   // the handle centre at the press
    QPointF m_offset; // press point minus handle centre
    bool m_dragging = false;
    bool m_moved = false;
    int m_lock = NoLock;
    QColor m_handleColor = defaultHandleColor;
    QColor m_backgroundColor = defaultBackgroundColor;
};

#endif
