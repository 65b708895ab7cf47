#ifndef CORVANE_GRAPHS_AREA_AREA_VARIANTS_H
#define CORVANE_GRAPHS_AREA_AREA_VARIANTS_H

#include "graphs/area/PadArea.h"

#define CORVANE_PAD_PROPERTIES \
    Q_CLASSINFO("Addresses", "0: the horizontal position, 0 at the left|1: the vertical position, 0 at the bottom") \
    Q_PROPERTY(double horizontal READ horizontal) \
    Q_PROPERTY(double vertical READ vertical) \
    Q_PROPERTY(bool dragging READ isDragging) \
    Q_PROPERTY(int axisLock READ axisLock) \
    Q_PROPERTY(QColor handleColor READ handleColor WRITE setHandleColor) \
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)

/*!
    A pad that follows a source: the handle at the position of address 0
    (left to right) and address 1 (bottom to top).
*/
class TrackingArea : public PadArea
{
    Q_OBJECT
    CORVANE_PAD_PROPERTIES
public:
    using PadArea::PadArea;
};

/*!
    A pad that steers a beam: as TrackingArea, with a wedge "Angle" degrees
    wide drawn from the bottom centre toward the handle.
*/
class BeamArea : public PadArea
{
    Q_OBJECT
    CORVANE_PAD_PROPERTIES
    Q_PROPERTY(double angle READ angle WRITE setAngle)
    Q_PROPERTY(QColor beamColor READ beamColor WRITE setBeamColor)
    CORVANE_TAG_TABLE

public:
    BeamArea(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    static const QColor defaultBeamColor;

    double angle() const { return m_angle; }
    //! The wedge's full width in degrees, 0 to 360.
    void setAngle(double degrees);
    QColor beamColor() const { return m_beamColor; }
    void setBeamColor(const QColor &color);
    //! Where the beam starts: the middle of the bottom edge.
    QPointF beamOrigin() const { return QPointF((width() - 1) / 2.0, height() - 1); }

protected:
    void paintField(QPainter &painter) override;

private:
    double m_angle = 30.0;
    QColor m_beamColor = defaultBeamColor;
};

#undef CORVANE_PAD_PROPERTIES

#endif
