#ifndef CORVANE_CONTROLS_FADER_FADER_H
#define CORVANE_CONTROLS_FADER_FADER_H

#include "controls/common/AbstractValueInput.h"
#include "controls/common/ImageSource.h"
#include "core/BaseWidget.h"

#include <QColor>
#include <QRect>
#include <QVector>

/*!
    \class Fader
    \brief A sliding control: a knob dragged along a rail.

    The knob follows the mouse pixel for pixel. Its place on the travel (the
    widget's height less the knob's, counted up from the bottom) becomes the
    parameter's position through the scale kind: "normal" is linear over the
    whole travel; "0dB" and "10dB" are fixed fader laws over 132 and 136
    design pixels, scaled by the zoom, above which the position is 1. The
    knob is placed from the parameter's position by the same law read the
    other way.

    Only a press on the knob starts a drag (the knob never jumps to the
    mouse); a click without movement sends nothing. Alt-click asks for the
    parameter's default. Up and Down step the parameter; so does the wheel,
    one step per notch. The levels of a "LevelList" are offered in the
    context menu, and those that give their "position" are marked beside the
    rail.

    Painting, bottom to top: the base image over the whole widget; the rail
    in the rail colour (when a "RailRect" was read or there is no base
    image); the rail below the knob in the fill colour when "FillLevel" is
    set; the level marks; the knob image, or a drawn cap.
*/
class Fader : public ValueInputWidget<BaseWidget>
{
    Q_OBJECT
    Q_PROPERTY(int knobPosition READ knobPosition)
    Q_PROPERTY(QRect knobRect READ knobRect)
    Q_PROPERTY(QRect railRect READ railRect)
    Q_PROPERTY(int travel READ travel)
    Q_PROPERTY(ScaleKind scaleKind READ scaleKind WRITE setScaleKind)
    Q_PROPERTY(Qt::Orientation orientation READ orientation)
    Q_PROPERTY(bool dragging READ isDragging)
    Q_PROPERTY(bool fillLevel READ fillLevel WRITE setFillLevel)
    Q_PROPERTY(QColor railColor READ railColor WRITE setRailColor)
    Q_PROPERTY(QColor fillColor READ fillColor WRITE setFillColor)
    Q_PROPERTY(QString knobImage READ knobImage WRITE setKnobImage)
    Q_PROPERTY(QString baseImage READ baseImage WRITE setBaseImage)
    Q_PROPERTY(QStringList levels READ levels)

    CORVANE_TAG_TABLE

public:
    enum ScaleKind { ZeroDbLaw = 0, TenDbLaw = 1, Normal = 2 };
    Q_ENUM(ScaleKind)

    Fader(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    //! How the fader takes its gestures.
    static constexpr Policy valueInput{
        AltClick::DefaultBeforeControl, // Alt asks for the default before anything else, Alt+Control included
        PressPoint::Sends,              // every move sends; a click on the knob without movement sends nothing
        true,                           // the knob follows the pointer pixel for pixel
        true,                           // Up and Down step, Left and Right too when horizontal
        false,                          // moves need no held button
        false,                          // only the left button's release ends a drag
        false,                          // the start coordinate keeps its full width
    };

    //! The knob's size at zoom 1 when the description gives none (width along the rail's cross axis).
    static const QSize defaultKnobSize;
    static const QColor defaultRailColor;
    static const QColor defaultFillColor;

    //! The knob's place on the travel in pixels, 0 at the bottom (left when horizontal).
    int knobPosition() const { return m_knobPosition; }
    QRect knobRect() const;
    //! The rail at the current zoom: "RailRect", or a slot along the knob's path.
    QRect railRect() const;
    //! Pixels the knob can move: the widget's length along the rail less the knob's.
    int travel() const;
    ScaleKind scaleKind() const { return ScaleKind(m_scaleKind); }
    void setScaleKind(ScaleKind kind);
    Qt::Orientation orientation() const { return m_orientation; }
    bool fillLevel() const { return m_fillLevel; }
    void setFillLevel(bool on);
    QColor railColor() const { return m_railColor; }
    void setRailColor(const QColor &color);
    QColor fillColor() const { return m_fillColor; }
    void setFillColor(const QColor &color);
    QString knobImage() const { return m_knobImage.name(); }
    void setKnobImage(const QString &name);
    QString baseImage() const { return m_baseImage.name(); }
    void setBaseImage(const QString &name);

    bool setZoom(float zoom) override;

    //! The parameter position (0 to 1) of knob position \a p under the current scale kind and zoom.
    virtual double knobPositionToRatio(int p) const;
    //! The knob position that shows parameter position \a ratio: the law read the other way.
    virtual int ratioToKnobPosition(double ratio) const;
    //! Moves the knob to where the parameter's position puts it.
    virtual void placeKnob();

    //! The law of \a kind as (pixel, ratio) points, pixels scaled by \a zoom and truncated; empty for "normal".
    static QVector<QPair<int, double>> law(int kind, float zoom);

protected:
    virtual bool readImage(const QDomElement &e);
    virtual bool readParameterType(const QDomElement &e);
    virtual bool readLevelList(const QDomElement &e);
    virtual bool readRailRect(const QDomElement &e);
    virtual bool readKnobPosition(const QDomElement &e);
    virtual bool readKnobSize(const QDomElement &e);

    void setOrientation(Qt::Orientation orientation);
    //! Knob size, at the current zoom.
    QSize knobSize() const;
    //! The knob's top (left when horizontal) for knob position \a p.
    int knobStartFor(int p) const;
    //! The mouse coordinate along the rail, growing toward the top (right).
    int knobPositionAt(const QPoint &pos) const;
    void setKnobPosition(int p);
    virtual void sendKnobPosition(int p, bool held);

    //! Left and Right step as Up and Down do while the rail lies horizontally.
    int stepOfKey(int key) const override;
    //! Only a press on the knob grabs it; the knob never jumps to the pointer.
    bool startDragAt(const QPoint &pos) override;
    int dragCoordinate(const QPoint &pos) const override { return knobPositionAt(pos); }
    void sendDragPosition(int p, bool held) override;
    //! The knob settles where the parameter puts it.
    void gestureEnded() override { placeKnob(); }

    void ownValueChanged(int index) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

    void paintRail(QPainter &painter);
    void paintLevelMarks(QPainter &painter);
    void paintKnob(QPainter &painter);

private:
    //! The rectangle worth repainting when the knob moves between \a from and \a to.
    QRect knobTrail(const QRect &from, const QRect &to) const;

    ImageSource m_knobImage;
    ImageSource m_baseImage;
    QSize m_knobDesignSize;
    QPoint m_knobDesignPosition;
    bool m_knobPositionGiven = false;
    QRect m_railDesignRect;
    qint16 m_scaleKind = Normal;
    qint16 m_grabOffset = 0;
    bool m_fillLevel = false;
    QColor m_railColor = defaultRailColor;

    QColor m_fillColor = defaultFillColor;
    Qt::Orientation m_orientation = Qt::Vertical;
    int m_knobPosition = 0;
};

#endif
