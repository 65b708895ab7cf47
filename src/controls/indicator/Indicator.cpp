#include "data/ParameterKeys.h"
#include "core/DisabledLook.h"
#include "Indicator.h"

#include <QPainter>

const QColor Indicator::defaultOnColor(60, 210, 80, 255);
const QColor Indicator::defaultOffColor(58, 58, 58, 255);
const QColor Indicator::defaultTextColor(230, 230, 230, 255);

namespace {
}

Indicator::Indicator(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
}

Indicator::~Indicator() = default;

const TagTable &Indicator::tags()
{
    static const TagTable table = TagTable::of<Indicator>(&BaseWidget::tags(), {
        {"OnColor", TagTable::color("onColor")},
        {"OffColor", TagTable::color("offColor")},
        {"OnImage", TagTable::trimmedText("onImage")},
        {"OffImage", TagTable::trimmedText("offImage")},
        {"Text", TagTable::text("text")},
        {"TextColor", TagTable::color("textColor")},
        {"Shape", &Indicator::readShape},
    });
    return table;
}

// ---------------------------------------------------------------------------
// State

bool Indicator::addressOn(int index) const
{
    // An address still waiting for its placeholders, or not read yet, is dark.
    return index >= 0 && index < addressCount() && addressAt(index).isValid() && !isOff(index);
}

int Indicator::addressesOn() const
{
    int on = 0;
    for (int i = 0, n = ownAddressCount(); i < n; ++i)
        on += addressOn(i) ? 1 : 0;
    return on;
}

bool Indicator::computeOn() const
{
    return addressOn(0) && !isSelector(0);
}

void Indicator::refresh()
{
    const bool on = computeOn();
    if (on == m_on)
        return;
    m_on = on;
    update();
    emit onChanged(on);
}

void Indicator::ownValueChanged(int index)
{
    Q_UNUSED(index)
    refresh();
}

// ---------------------------------------------------------------------------
// Look

void Indicator::setOnColor(const QColor &color)
{
    if (m_onColor == color)
        return;
    m_onColor = color;
    if (m_on)
        update();
}

void Indicator::setOffColor(const QColor &color)
{
    if (m_offColor == color)
        return;
    m_offColor = color;
    if (!m_on)
        update();
}

void Indicator::setOnImage(const QString &name)
{
    if (m_onImage.setName(name) && m_on)
        update();
}

void Indicator::setOffImage(const QString &name)
{
    if (m_offImage.setName(name) && !m_on)
        update();
}

void Indicator::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    update();
}

void Indicator::setTextColor(const QColor &color)
{
    if (m_textColor == color)
        return;
    m_textColor = color;
    update();
}

void Indicator::setRound(bool round)
{
    if (m_round == round)
        return;
    m_round = round;
    update();
}

bool Indicator::readShape(const QDomElement &e)
{
    const QString shape = e.text().trimmed().toLower();
    if (shape == QLatin1String("round") || shape == QLatin1String("circle"))
        setRound(true);
    else if (shape == QLatin1String("rect") || shape == QLatin1String("rectangle"))
        setRound(false);
    else
        return false;
    return true;
}

// ---------------------------------------------------------------------------
// Painting

QPixmap Indicator::stateImage() const
{
    const ImageSource &source = m_on ? m_onImage : m_offImage;
    if (source.isEmpty())
        return QPixmap();
    return source.pixmap(size(), devicePixelRatioF(), hostCore() ? hostCore()->imageBasePath() : QString());
}

QString Indicator::currentImage() const
{
    return stateImage().isNull() ? QString() : (m_on ? m_onImage : m_offImage).name();
}

void Indicator::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QPixmap image = stateImage();
    if (!image.isNull()) {
        painter.drawPixmap(0, 0, image);
    } else {
        const QColor fill = DisabledLook::faded(m_on ? m_onColor : m_offColor, isEnabled());
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(fill.darker(150), 1));
        painter.setBrush(fill);
        const QRectF r = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
        if (m_round) {
            const qreal d = qMin(r.width(), r.height());
            painter.drawEllipse(QRectF(r.center().x() - d / 2, r.center().y() - d / 2, d, d));
        } else {
            const qreal radius = qMax<qreal>(1.5, 2.0 * zoomFactor());
            painter.drawRoundedRect(r, radius, radius);
        }
    }
    const QString label = shownText();
    if (!label.isEmpty()) {
        painter.setPen(DisabledLook::faded(m_textColor, isEnabled()));
        painter.setFont(font());
        const QRect area = rect().adjusted(2, 0, -2, 0);
        painter.drawText(area, Qt::AlignCenter, painter.fontMetrics().elidedText(label, Qt::ElideRight, area.width()));
    }
    paintBase(painter);
}
