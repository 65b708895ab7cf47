#include "data/ParameterKeys.h"
#include "core/Saturating.h"
#include "Image.h"
#include "core/DisabledLook.h"

#include <QPainter>

Image::Image(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
}

Image::~Image() = default;

const TagTable &Image::tags()
{
    static const TagTable table = TagTable::of<Image>(&BaseWidget::tags(), {
        {"Image", &Image::readImage},
        {"Stretch", TagTable::boolean("stretch").ignoringCase()},
    });
    return table;
}

QString Image::basePath() const
{
    return hostCore() ? hostCore()->imageBasePath() : QString();
}

void Image::setImage(const QString &name)
{
    if (m_image == name)
        return;
    m_image = name;
    refresh();
}

void Image::setStretched(bool stretch)
{
    if (m_stretch == stretch)
        return;
    m_stretch = stretch;
    if (!m_current.isEmpty())
        update();
}

void Image::refresh()
{
    if (!m_current.setName(chooseImage()))
        return;
    update();
    emit currentImageChanged(m_current.name());
}

int Image::parameterStep(int steps) const
{
    if (addressCount() == 0 || !addressAt(0).isValid() || isSelector(0))
        return -1;
    return hasPosition(0) ? stepOfPosition(steps, 0) : -1;
}

void Image::ownValueChanged(int index)
{
    Q_UNUSED(index)
    refresh();
}

bool Image::readImage(const QDomElement &e)
{
    setImage(e.text().trimmed());
    return true;
}

bool Image::setRange(int steps)
{
    if (steps <= 0)
        return false;
    if (steps != m_range) {
        m_range = steps;
        refresh();
    }
    return true;
}

bool Image::readRange(const QDomElement &e)
{
    bool ok = false;
    const int range = e.text().trimmed().toInt(&ok);
    return ok && setRange(range);
}

bool Image::isImageLoaded() const
{
    return !imageRect().isEmpty();
}

QRect Image::imageRect() const
{
    const QString path = m_current.path(basePath());
    if (path.isEmpty() || size().isEmpty())
        return QRect();
    const QSize natural = ImageSource::naturalSize(path);
    if (!natural.isValid() || natural.isEmpty())
        return QRect();
    if (m_stretch)
        return rect();
    const QSize fitted = natural.scaled(size(), Qt::KeepAspectRatio);
    return QRect(QPoint((width() - fitted.width()) / 2, (height() - fitted.height()) / 2), fitted);
}

void Image::paintContent(QPainter &painter)
{
    const QRect target = imageRect();
    if (target.isEmpty())
        return;
    const QPixmap pixmap = ImageSource::render(m_current.path(basePath()), target.size(), devicePixelRatioF());
    if (!pixmap.isNull())
        painter.drawPixmap(target.topLeft(), pixmap);
}

void Image::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(DisabledLook::opacity);
    paintContent(painter);
    painter.setOpacity(1.0);
    paintBase(painter);
}

void Image::resizeEvent(QResizeEvent *event)
{
    BaseWidget::resizeEvent(event);
    update();
}

// ---------------------------------------------------------------------------

const TagTable &ParameterImage::tags()
{
    static const TagTable table = TagTable::of<ParameterImage>(&Image::tags(), {
        {"ImageList", &ParameterImage::readImageList},
        {"range", &ParameterImage::readRange},
    });
    return table;
}

void ParameterImage::setImageList(const QStringList &names)
{
    if (m_images == names)
        return;
    m_images = names;
    refresh();
}

bool ParameterImage::readImageList(const QDomElement &e)
{
    QStringList names;
    for (QDomElement c = e.firstChildElement(QStringLiteral("Image")); !c.isNull();
         c = c.nextSiblingElement(QStringLiteral("Image")))
        names.append(c.text().trimmed());
    if (e.hasAttribute(QStringLiteral("range")))
        setRange(e.attribute(QStringLiteral("range")).toInt());
    setImageList(names);
    return !names.isEmpty();
}

int ParameterImage::imageIndex() const
{
    const int step = parameterStep(listSteps());
    return step >= 0 && step < m_images.size() ? step : -1;
}

QString ParameterImage::chooseImage() const
{
    const int index = imageIndex();
    const QString name = index >= 0 ? m_images.at(index) : QString();
    return name.isEmpty() ? Image::chooseImage() : name;
}

// ---------------------------------------------------------------------------

const QColor SelectFrame::defaultFrameColor(255, 190, 40, 255);

SelectFrame::SelectFrame(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : Image(hostCore, registry, parent)
{
}

const TagTable &SelectFrame::tags()
{
    static const TagTable table = TagTable::of<SelectFrame>(&Image::tags(), {
        {"Value", TagTable::integer("value")},
        {"FrameColor", TagTable::color("frameColor")},
        {"FrameWidth", TagTable::integer("frameWidth", 1)},
        {"range", &SelectFrame::readRange},
    });
    return table;
}

void SelectFrame::refresh()
{
    Image::refresh();
    const bool selected = parameterStep(steps(1)) == m_value;
    if (selected == m_selected)
        return;
    m_selected = selected;
    update();
    emit selectedChanged(selected);
}

void SelectFrame::setValue(int value)
{
    if (m_value == value)
        return;
    m_value = value;
    refresh();
}

void SelectFrame::setFrameColor(const QColor &color)
{
    if (m_frameColor == color)
        return;
    m_frameColor = color;
    if (m_selected)
        update();
}

void SelectFrame::setFrameWidth(int width)
{
    width = qMax(1, width);
    if (m_frameWidth == width)
        return;
    m_frameWidth = width;
    if (m_selected)
        update();
}

void SelectFrame::paintContent(QPainter &painter)
{
    Image::paintContent(painter);
    if (!m_selected)
        return;
    const int w = qMax(1, Saturating::pixels(m_frameWidth, zoomFactor()));
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_frameColor);
    // Four bands rather than a wide pen: crisp edges at any width.
    painter.drawRect(QRect(0, 0, width(), w));
    painter.drawRect(QRect(0, height() - w, width(), w));
    painter.drawRect(QRect(0, w, w, height() - 2 * w));
    painter.drawRect(QRect(width() - w, w, w, height() - 2 * w));
    painter.restore();
}

// ---------------------------------------------------------------------------

const TagTable &ParameterColor::tags()
{
    static const TagTable table = TagTable::of<ParameterColor>(&Image::tags(), {
        {"ColorList", &ParameterColor::readColorList},
        {"range", &ParameterColor::readRange},
    });
    return table;
}

bool ParameterColor::readColorList(const QDomElement &e)
{
    QList<QColor> colors;
    for (QDomElement c = e.firstChildElement(QStringLiteral("Color")); !c.isNull();
         c = c.nextSiblingElement(QStringLiteral("Color")))
        colors.append(parseColor(c.text())); // an unreadable entry keeps its step, empty
    m_colors = colors;
    refresh();
    return !colors.isEmpty();
}

void ParameterColor::refresh()
{
    Image::refresh();
    const int step = parameterStep(steps(qMax(1, int(m_colors.size()) - 1)));
    QColor color = step >= 0 && step < m_colors.size() ? m_colors.at(step) : QColor();
    if (!color.isValid())
        color = Qt::transparent;
    if (color == m_currentColor)
        return;
    m_currentColor = color;
    update();
    emit currentColorChanged(color);
}

void ParameterColor::paintContent(QPainter &painter)
{
    if (m_currentColor.alpha() > 0)
        painter.fillRect(rect(), m_currentColor);
    Image::paintContent(painter);
}
