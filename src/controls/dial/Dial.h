#ifndef CORVANE_CONTROLS_DIAL_DIAL_H
#define CORVANE_CONTROLS_DIAL_DIAL_H

#include "controls/common/AbstractValueInput.h"
#include "controls/common/ImageSource.h"
#include "core/BaseWidget.h"

#include <QColor>
#include <QRect>

/*!
    \class Dial
    \brief A rotary control: a knob turned to show one parameter's position.

    The knob turns through 300 degrees, from 7 o'clock (position 0) through
    12 o'clock (one half) to 5 o'clock (position 1).

    Dragging: a plain left press starts a drag from the current position on
    a scale of 300; every pixel of vertical movement is one 300th of the
    parameter's range, up raising it, whatever the dial's size. Every move
    sends; a click without movement sends nothing. Alt-click asks for the
    parameter's default.

    Up and Down step the parameter; so does the wheel, one step per notch.
    The levels of a "LevelList" are offered in the context menu.

    Painting, bottom to top: the indicator arc (when an "Indicator" element
    was read), the face (the "Round" rectangle filled with the colour), the
    knob (the knob image, or a shaded disc in the colour) and the index
    image, both turned by the position. The arc runs from "Start" to the
    current position along the same 300 degrees: "Start" counts degrees
    clockwise from 7 o'clock, which are also positions on the drag scale (0
    fills from the minimum, 150 from 12 o'clock as a pan dial does);
    "Width" is the arc's line width in design pixels.
*/
class Dial : public ValueInputWidget<BaseWidget>
{
    Q_OBJECT
    Q_PROPERTY(double position READ shownPosition)
    Q_PROPERTY(double angle READ angle)
    Q_PROPERTY(bool dragging READ isDragging)
    Q_PROPERTY(int dragStartPosition READ dragStartPosition)
    Q_PROPERTY(QColor color READ color WRITE setColor)
    Q_PROPERTY(QRect faceRect READ faceRect)
    Q_PROPERTY(QRect knobRect READ knobRect)
    Q_PROPERTY(QString knobImage READ knobImage WRITE setKnobImage)
    Q_PROPERTY(QString indexImage READ indexImage WRITE setIndexImage)
    Q_PROPERTY(bool indicatorShown READ isIndicatorShown WRITE setIndicatorShown)
    Q_PROPERTY(QColor indicatorColor READ indicatorColor WRITE setIndicatorColor)
    Q_PROPERTY(int indicatorStart READ indicatorStart WRITE setIndicatorStart)
    Q_PROPERTY(int indicatorWidth READ indicatorWidth WRITE setIndicatorWidth)
    Q_PROPERTY(QRect indicatorRect READ indicatorRect)
    Q_PROPERTY(QStringList levels READ levels)

    CORVANE_TAG_TABLE

public:
    Dial(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    //! How the dial takes its gestures.
    static constexpr Policy valueInput{
        AltClick::DefaultAfterControl, // Control-clicks are handed over first, then Alt asks for the default
        PressPoint::Sends,             // every move sends, even one back at the press height
        false,                         // a relative drag on dragRange
        true,                          // Up and Down step
        false,                         // moves need no held button
        false,                         // only the left button's release ends a drag
        false,                         // the start coordinate keeps its full width
    };

    //! The knob's travel in degrees, and its angle at position 0 (clockwise from 12 o'clock).
    static constexpr double sweep = 300.0;
    static constexpr double minimumAngle = -150.0;

    static const QColor defaultColor;
    static const QColor defaultIndicatorColor;
    static const char *const defaultIndexImage;

    //! The position the knob shows, 0 to 1.
    double shownPosition() const { return m_shownPosition; }
    //! The knob's angle in degrees clockwise from 12 o'clock.
    //! The pointer's turn in degrees clockwise from straight up.
    virtual double angle() const { return angleOf(m_shownPosition); }
    static double angleOf(double position) { return minimumAngle + sweep * qBound(0.0, position, 1.0); }

    QColor color() const { return m_color; }
    void setColor(const QColor &color);
    //! The "Round" rectangle at the current zoom; empty when there is none.
    QRect faceRect() const;
    //! Where the knob and index images are drawn.
    QRect knobRect() const;
    QString knobImage() const { return m_knobImage.name(); }
    void setKnobImage(const QString &name);
    QString indexImage() const { return m_indexImage.name(); }
    void setIndexImage(const QString &name);
    bool isIndicatorShown() const { return m_indicatorShown; }
    void setIndicatorShown(bool shown);
    QColor indicatorColor() const { return m_indicatorColor; }
    void setIndicatorColor(const QColor &color);
    int indicatorStart() const { return m_indicatorStart; }
    void setIndicatorStart(int start);
    int indicatorWidth() const { return m_indicatorWidth; }
    void setIndicatorWidth(int width);
    //! The arc's rectangle at the current zoom: 1 pixel in from the corner, the height less 2, unless "Rect" gave one.
    QRect indicatorRect() const;

    bool setZoom(float zoom) override;

protected:
    virtual bool readImage(const QDomElement &e);
    virtual bool readRound(const QDomElement &e);
    virtual bool readIndicator(const QDomElement &e);
    virtual bool readLevelList(const QDomElement &e);

    void ownValueChanged(int index) override;
    void paintEvent(QPaintEvent *event) override;

    void paintIndicator(QPainter &painter);
    //! The knob and its pointer, turned to angle().
    virtual void paintKnob(QPainter &painter);

private:
    QRect scaled(const QRect &design) const;

    ImageSource m_indexImage{QLatin1String(defaultIndexImage)};
    ImageSource m_knobImage;
    QColor m_color = defaultColor;
    QRect m_faceRect; // design pixels
    QColor m_indicatorColor = defaultIndicatorColor;
    qint16 m_indicatorStart = 0;
    qint16 m_indicatorWidth = 2;
    QRect m_indicatorRect; // design pixels; null: follows the widget's height
    bool m_indicatorShown = false;

    double m_shownPosition = 0;
};

#endif
