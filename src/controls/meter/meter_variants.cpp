#include "meter_variants.h"
#include "core/Colors.h"
#include "core/Saturating.h"

#include <data/ParameterKeys.h>

#include <QPainter>

#include <cmath>
#include <limits>

QGradientStops GRMeter::fallbackStops() const
{
    return {{0.0, Colors::color(Colors::gainReductionLow)}, {1.0, Colors::color(Colors::gainReductionHigh)}};
}

QGradientStops PallasGRMeter::fallbackStops() const
{
    return {{0.0, Colors::color(Colors::meterAmber)}, {1.0, Colors::color(Colors::meterAmber)}};
}

// ---------------------------------------------------------------------------

void PeakMeter::setPeakShown(bool shown)
{
    if (m_peakShown == shown)
        return;
    m_peakShown = shown;
    if (m_peak > 0)
        update(peakRow(m_peak));
    emit peakShownChanged(shown);
}

void PeakMeter::setPeak(int pixels)
{
    pixels = qBound(0, pixels, int(std::numeric_limits<qint16>::max()));
    if (m_peak == pixels)
        return;
    const int old = m_peak;
    m_peak = qint16(pixels);
    if (m_peakShown) {
        if (old > 0)
            update(peakRow(old));
        if (pixels > 0)
            update(peakRow(pixels));
    }
    emit peakChanged(pixels);
}

int PeakMeter::peakPixels() const
{
    // Unlike the level, the peak gets no half pixel.
    const double p = qBound(0.0, m_peakPosition, 1.0);
    return height() > 0 ? int(height() * p) : 0;
}

void PeakMeter::readPeak()
{
    bool ok = false;
    const double p = addressAt(0).value().text(Key::ui_prm_prak).toDouble(&ok);
    m_peakPosition = ok && std::isfinite(p) ? p : 0.0;
    setPeak(peakPixels());
}

void PeakMeter::ownValueChanged(int index)
{
    switch (index) {
    case 0:
        Meter::ownValueChanged(0);
        readPeak();
        break;
    case 1:
        setPeakShown(!isOff(1));
        break;
    default:
        if (index != onlineIndex())
            break;
        Meter::ownValueChanged(index);
        if (!isOnline()) {
            m_peakPosition = 0.0;
            setPeak(0);
        } else if (m_peakShown) {
            readPeak();
        }
        break;
    }
}

void PeakMeter::resizeEvent(QResizeEvent *event)
{
    Meter::resizeEvent(event);
    setPeak(peakPixels());
}

void PeakMeter::paintMeter(QPainter &painter)
{
    Meter::paintMeter(painter);
    if (!m_peakShown || m_peak <= 0)
        return;
    const QPixmap image = meterImage();
    if (image.isNull())
        return;
    painter.save();
    painter.setClipRect(peakRow(m_peak));
    painter.drawPixmap(QPoint(0, 0), image);
    painter.restore();
}

// ---------------------------------------------------------------------------

int IndicatorStyleMeter::levelPixels(double v) const
{
    return std::isfinite(v) && v > 0.0 ? height() : 0;
}

QGradientStops IndicatorStyleMeter::fallbackStops() const
{
    return {{0.0, Colors::color(Colors::meterGreen)}, {1.0, Colors::color(Colors::meterGreen)}};
}

// ---------------------------------------------------------------------------

const TagTable &BorderMeter::tags()
{
    static const TagTable table = TagTable::of<BorderMeter>(&Meter::tags(), {
        {"BorderColor", TagTable::color("borderColor")},
        {"BorderWidth", TagTable::integer("borderWidth", 0)},
    });
    return table;
}

void BorderMeter::setBorderColor(const QColor &color)
{
    if (m_borderColor == color)
        return;
    m_borderColor = color;
    update();
}

void BorderMeter::setBorderWidth(int width)
{
    width = qMax(0, width);
    if (m_borderWidth == width)
        return;
    m_borderWidth = width;
    update();
}

bool BorderMeter::setZoom(float zoom)
{
    if (!Meter::setZoom(zoom))
        return false;
    m_zoom = zoom;
    return true;
}

void BorderMeter::paintMeter(QPainter &painter)
{
    Meter::paintMeter(painter);
    if (m_borderWidth <= 0 || !m_borderColor.isValid())
        return;
    // At least one device pixel, however far the panel is zoomed out.
    const float zoom = m_zoom > 0.0f ? m_zoom : zoomFactor();
    const int w = qMax(1, Saturating::pixels(m_borderWidth, zoom));
    const QRect r = rect();
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_borderColor);
    const QRegion frame = QRegion(r).subtracted(QRegion(r.adjusted(w, w, -w, -w)));
    for (const QRect &part : frame)
        painter.drawRect(part);
    painter.restore();
}
