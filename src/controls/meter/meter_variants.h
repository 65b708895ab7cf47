#ifndef CORVANE_CONTROLS_METER_METER_VARIANTS_H
#define CORVANE_CONTROLS_METER_METER_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/meter/Meter.h"

#include <QColor>

//! The meter on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectMeter : public ChannelSelect<Meter>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

/*!
    \class GRMeter
    \brief A gain-reduction meter: lit from the top edge downwards, so that
    more reduction hangs further down from the 0 dB line at the top.
*/
class GRMeter : public Meter
{
    Q_OBJECT
public:
    using Meter::Meter;

protected:
    bool litFromTop() const override { return true; }
    QGradientStops fallbackStops() const override;
};

//! The gain-reduction meter on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectMeterGR : public ChannelSelect<GRMeter>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

//! The meter on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerMeter : public Speaker<Meter>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! The gain-reduction meter on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerMeterGR : public Speaker<GRMeter>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

/*!
    \class PallasGRMeter
    \brief The gain-reduction meter of the Pallas panels: a GRMeter whose
    built-in bar is the single amber of those panels.
*/
class PallasGRMeter : public GRMeter
{
    Q_OBJECT
public:
    using GRMeter::GRMeter;

protected:
    QGradientStops fallbackStops() const override;
};

/*!
    \class PeakMeter
    \brief A meter with a one-pixel peak mark.

    Address 1 switches the mark (shown while it is on), address 2 is the
    online state. The mark sits at the height of the level address's
    "ui_prm_prak" (truncated, without the half pixel of the level) and is
    that row of the meter's image. A mark switched off keeps its height and
    reappears there.
*/
class PeakMeter : public Meter
{
    Q_OBJECT
    // The meaning of each address index, for hosts and panelview --describe.
    Q_CLASSINFO("Addresses", "0: the level|1: the peak switch|2: the online state (optional)")
    Q_PROPERTY(bool peakShown READ isPeakShown WRITE setPeakShown NOTIFY peakShownChanged)
    Q_PROPERTY(int peak READ peak WRITE setPeak NOTIFY peakChanged)

public:
    using Meter::Meter;

    bool isPeakShown() const { return m_peakShown; }
    void setPeakShown(bool shown);
    //! The mark's height in pixels.
    int peak() const { return m_peak; }
    void setPeak(int pixels);

signals:
    void peakShownChanged(bool shown);
    void peakChanged(int pixels);

protected:
    int onlineIndex() const override { return 2; }
    void ownValueChanged(int index) override;
    void paintMeter(QPainter &painter) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void readPeak();
    int peakPixels() const;
    QRect peakRow(int pixels) const { return QRect(0, height() - pixels, width(), 1); }

    bool m_peakShown = false;
    qint16 m_peak = 0;
    double m_peakPosition = 0.0;
};

/*!
    \class IndicatorStyleMeter
    \brief A signal lamp: fully lit while the level is above 0 at all, dark
    otherwise.
*/
class IndicatorStyleMeter : public Meter
{
    Q_OBJECT
public:
    using Meter::Meter;

protected:
    int levelPixels(double v) const override;
    QGradientStops fallbackStops() const override;
};

/*!
    \class BorderMeter
    \brief A meter framed by a border drawn over its edges ("BorderColor",
    "BorderWidth" in design pixels).
*/
class BorderMeter : public Meter
{
    Q_OBJECT
    Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor)
    Q_PROPERTY(int borderWidth READ borderWidth WRITE setBorderWidth)
    CORVANE_TAG_TABLE

public:
    using Meter::Meter;

    QColor borderColor() const { return m_borderColor; }
    void setBorderColor(const QColor &color);
    //! Width in design pixels; 0 draws no border.
    int borderWidth() const { return m_borderWidth; }
    void setBorderWidth(int width);

    bool setZoom(float zoom) override;

protected:
    void paintMeter(QPainter &painter) override;

private:
    QColor m_borderColor{96, 96, 96, 255};
    int m_borderWidth = 1;
    float m_zoom = 0.0f;
};

#endif
