#ifndef CORVANE_TESTS_RENDER_H
#define CORVANE_TESTS_RENDER_H

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QSize>
#include <QWidget>

/*
    How a widget is rendered into an image for pixel checks: the ground the
    image is filled with first, the render flags (by default the children but
    not the window background), the image format, and optionally another
    size, a painter zoom and a device pixel ratio.
*/
struct RenderOptions
{
    RenderOptions(const QColor &fill = Qt::black, QWidget::RenderFlags renderFlags = QWidget::DrawChildren,
                  QImage::Format imageFormat = QImage::Format_ARGB32)
        : ground(fill), flags(renderFlags), format(imageFormat)
    {
    }

    QColor ground;
    QWidget::RenderFlags flags;
    QImage::Format format;
    QSize size;        // in device-independent pixels; empty: the widget's size (times the zoom)
    qreal zoom = 1.0;  // painter scale
    qreal dpr = 1.0;   // the image's device pixel ratio
};

inline QImage render(QWidget *w, const RenderOptions &o = RenderOptions())
{
    const QSize logical = o.size.isEmpty() ? w->size() * o.zoom : o.size;
    QImage image(logical * o.dpr, o.format);
    image.setDevicePixelRatio(o.dpr);
    image.fill(o.ground);
    if (qFuzzyCompare(o.zoom, 1.0)) {
        w->render(&image, QPoint(), QRegion(), o.flags);
    } else {
        QPainter painter(&image);
        painter.scale(o.zoom, o.zoom);
        w->render(&painter, QPoint(), QRegion(), o.flags);
    }
    return image;
}

inline QImage render(QWidget *w, const QColor &ground, QWidget::RenderFlags flags = QWidget::DrawChildren,
                     QImage::Format format = QImage::Format_ARGB32)
{
    return render(w, RenderOptions(ground, flags, format));
}

#endif
