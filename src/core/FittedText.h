#ifndef CORVANE_FITTEDTEXT_H
#define CORVANE_FITTEDTEXT_H

#include <QFont>
#include <QString>

class QFontMetrics;
class QPainter;
class QRect;

/*!
    Text drawn into a fixed rectangle without cutting characters.

    Labels are elided ("Netw…"). Value displays first shrink their font, down
    to minimumScale of its size, so that a value stays readable whole, and
    are elided only below that. Wrapped texts elide only the words wider
    than a line. A text that fits is drawn exactly as
    QPainter::drawText would draw it.
*/
namespace FittedText {

enum Mode { Elide, Shrink };

constexpr qreal minimumScale = 0.6;

struct Fit
{
    QFont font;
    QString text;
};

//! The font and text that fit \a width pixels, starting from \a font.
Fit fit(const QFont &font, int width, const QString &text, Mode mode);
//! \a text with every word wider than \a width elided, for word wrapping.
QString wrappable(const QFontMetrics &metrics, int width, const QString &text);
//! Draws \a text into \a rect with \a flags, fitted to the rectangle's width; wrapped
//! text (Qt::TextWordWrap) keeps its lines and elides only words wider than a line.
void draw(QPainter &painter, const QRect &rect, int flags, const QString &text, Mode mode);

} // namespace FittedText

#endif
