#include "fader_variants.h"
#include "core/DisabledLook.h"

#include <QPainter>
#include <QPainterPath>

const QColor LevelScalePointer::defaultPointerColor(255, 170, 0, 255);

const TagTable &LevelScalePointer::tags()
{
    static const TagTable table = TagTable::of<LevelScalePointer>(&Fader::tags(), {
        {"PointerColor", TagTable::color("pointerColor")},
    });
    return table;
}

void LevelScalePointer::setPointerColor(const QColor &color)
{
    if (!color.isValid() || m_pointerColor == color)
        return;
    m_pointerColor = color;
    update();
}

QPoint LevelScalePointer::tip() const
{
    // The level along the scale, the rail's middle across it.
    const QRect knob = knobRect();
    if (orientation() == Qt::Horizontal)
        return QPoint(knob.center().x(), railRect().center().y());
    return QPoint(railRect().center().x(), knob.center().y());
}

void LevelScalePointer::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(DisabledLook::opacity);
    paintLevelMarks(painter);
    const QPoint t = tip();
    const int size = qMax(4, int(6 * zoomFactor()));
    QPainterPath pointer;
    painter.setPen(QPen(m_pointerColor, 1));
    if (orientation() == Qt::Horizontal) {
        painter.drawLine(t.x(), 0, t.x(), height() - 1);
        pointer.moveTo(t);
        pointer.lineTo(t.x() - size, height() - 1);
        pointer.lineTo(t.x() + size, height() - 1);
    } else {
        painter.drawLine(0, t.y(), width() - 1, t.y());
        pointer.moveTo(t);
        pointer.lineTo(width() - 1, t.y() - size);
        pointer.lineTo(width() - 1, t.y() + size);
    }
    pointer.closeSubpath();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(pointer, m_pointerColor);
    painter.setOpacity(1.0);
    paintBase(painter);
}
