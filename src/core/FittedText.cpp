#include "FittedText.h"

#include <QFontMetrics>
#include <QPainter>

namespace FittedText {

Fit fit(const QFont &font, int width, const QString &text, Mode mode)
{
    Fit result{font, text};
    if (width <= 0 || QFontMetrics(font).horizontalAdvance(text) <= width)
        return result;
    if (mode == Shrink && font.pointSizeF() > 0) {
        const qreal full = font.pointSizeF();
        const qreal smallest = full * minimumScale;
        for (qreal size = full - 0.5; size >= smallest; size -= 0.5) {
            result.font.setPointSizeF(size);
            if (QFontMetrics(result.font).horizontalAdvance(text) <= width)
                return result;
        }
        result.font.setPointSizeF(smallest);
    }
    result.text = QFontMetrics(result.font).elidedText(text, Qt::ElideRight, width);
    return result;
}

void draw(QPainter &painter, const QRect &rect, int flags, const QString &text, Mode mode)
{
    if (text.contains(QLatin1Char('\n'))) {
        painter.drawText(rect, flags, text);
        return;
    }
    const Fit fitted = fit(painter.font(), rect.width(), text, mode);
    if (fitted.text == text && fitted.font == painter.font()) {
        painter.drawText(rect, flags, text);
        return;
    }
    const QFont before = painter.font();
    painter.setFont(fitted.font);
    painter.drawText(rect, flags, fitted.text);
    painter.setFont(before);
}

} // namespace FittedText
