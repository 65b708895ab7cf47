#ifndef CORVANE_CORE_COLORS_H
#define CORVANE_CORE_COLORS_H

#include <QColor>
#include <QRgb>

/*
    The colours the library paints with that no description can change.
    Colours a description can set keep their defaults next to their
    property; the ones here are part of the look itself.
*/
namespace Colors {

// Disabled ink of graphs, their control points and scales.
constexpr QRgb disabledInk = qRgba(153, 153, 153, 153);
// Text of a disabled number box or value text, and of quiet hints.
constexpr QRgb disabledText = qRgb(153, 153, 153);

// Graph backgrounds and their level and frequency grid, dark to light.
constexpr QRgb graphBackground = qRgb(0, 0, 0);
constexpr QRgb gridLineMinor = qRgb(51, 51, 51);
constexpr QRgb gridLineMajor = qRgb(102, 102, 102);
constexpr QRgb gridLineCentre = qRgb(179, 179, 179);
// The fixed brush of a graphic equaliser's polygon.
constexpr QRgb graphicEqualizerFill = qRgba(0, 255, 0, 153);
// Defaults of the graphs' and control points' colour properties.
constexpr QRgb graphLine = qRgb(0, 255, 0);
constexpr QRgb parametricLine = qRgb(255, 255, 255);
constexpr QRgb parametricFill = qRgba(0, 160, 255, 96);
constexpr QRgb controlPoint = qRgb(255, 200, 0);

// Veil over an image button's picture while it is held down.
constexpr QRgb pressedImageVeil = qRgba(0, 0, 0, 80);
// Face of a flat button held down while off.
constexpr QRgb flatButtonDown = qRgba(0, 0, 0, 90);

// Fader: the scale ticks and the drawn knob (lit edge to dark edge, outline).
constexpr QRgb faderTick = qRgba(255, 255, 255, 48);
constexpr QRgb faderKnobLight = qRgb(150, 150, 156);
constexpr QRgb faderKnobMid = qRgb(96, 96, 102);
constexpr QRgb faderKnobDark = qRgb(62, 62, 68);
constexpr QRgb faderKnobOutline = qRgb(30, 30, 32);

// Dial: the pointer line of the drawn knob.
constexpr QRgb dialPointer = qRgb(242, 242, 242);

// Meter bars drawn when a panel asks for the built-in bar: level from
// low to high, gain reduction, and the single-colour bars.
constexpr QRgb meterLow = qRgb(32, 192, 64);
constexpr QRgb meterMid = qRgb(96, 208, 48);
constexpr QRgb meterHigh = qRgb(232, 208, 40);
constexpr QRgb meterClip = qRgb(232, 48, 32);
constexpr QRgb gainReductionLow = qRgb(240, 176, 32);
constexpr QRgb gainReductionHigh = qRgb(232, 96, 24);
constexpr QRgb meterAmber = qRgb(255, 160, 0);
constexpr QRgb meterGreen = qRgb(48, 208, 64);

inline QColor color(QRgb rgba) { return QColor::fromRgba(rgba); }

} // namespace Colors

#endif
