#include "FittedText.h"

#include <QCache>
#include <QFontMetrics>
#include <QPainter>
#include <QRegularExpression>

namespace FittedText {

Fit fit(const QFont &font, int width, const QString &text, Mode mode)
{
    Fit result{font, text};
    if (width <= 0 || QFontMetrics(font).horizontalAdvance(text) <= width)
        return result;
    // A text that does not fit is fitted again at every paint, each try
    // measuring with another font: keep recent answers. Painting happens in
    // the GUI thread only.
    static QCache<QString, Fit> recent(256);
    const QString key = font.key() + QLatin1Char('\n') + QString::number(width) + QLatin1Char('\n')
        + QString::number(int(mode)) + QLatin1Char('\n') + text;
    if (const Fit *known = recent.object(key))
        return *known;
    if (mode == Shrink && font.pointSizeF() > 0) {
        const qreal full = font.pointSizeF();
        const qreal smallest = full * minimumScale;
        for (qreal size = full - 0.5; size >= smallest; size -= 0.5) {
            result.font.setPointSizeF(size);
            if (QFontMetrics(result.font).horizontalAdvance(text) <= width) {
                recent.insert(key, new Fit(result));
                return result;
            }
        }
        result.font.setPointSizeF(smallest);
    }
    result.text = QFontMetrics(result.font).elidedText(text, Qt::ElideRight, width);
    recent.insert(key, new Fit(result));
    return result;
}

QString wrappable(const QFontMetrics &metrics, int width, const QString &text)
{
    // Wrapping breaks between words; a word wider than a line is elided.
    static const QRegularExpression space(QStringLiteral("(\\s+)"));
    QString result;
    int from = 0;
    QRegularExpressionMatchIterator it = space.globalMatch(text);
    const auto word = [&](int end) {
        const QString w = text.mid(from, end - from);
        result += metrics.horizontalAdvance(w) > width ? metrics.elidedText(w, Qt::ElideRight, width) : w;
    };
    while (it.hasNext()) {
        const QRegularExpressionMatch m = it.next();
        word(m.capturedStart());
        result += m.captured();
        from = m.capturedEnd();
    }
    word(text.size());
    return result;
}

void draw(QPainter &painter, const QRect &rect, int flags, const QString &text, Mode mode)
{
    if (flags & Qt::TextWordWrap) {
        painter.drawText(rect, flags, rect.width() > 0 ? wrappable(painter.fontMetrics(), rect.width(), text) : text);
        return;
    }
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
