#include "PadArea.h"
#include "core/DisabledLook.h"
#include "core/Saturating.h"

#include "data/ParameterKeys.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>

const QColor PadArea::defaultHandleColor(255, 200, 0, 255);
const QColor PadArea::defaultBackgroundColor(30, 30, 30, 255);

PadArea::PadArea(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
    // The background covers every pixel while it is fully opaque.
    setAttribute(Qt::WA_OpaquePaintEvent, m_backgroundColor.alpha() == 255);
}

const TagTable &PadArea::tags()
{
    static const TagTable table = TagTable::of<PadArea>(&BaseWidget::tags(), {
        {"HandleColor", &PadArea::readHandleColor},
        {"BackgroundColor", &PadArea::readBackgroundColor},
    });
    return table;
}

void PadArea::setHandleColor(const QColor &color)
{
    updateMember(m_handleColor, color);
}

void PadArea::setBackgroundColor(const QColor &color)
{
    if (updateMember(m_backgroundColor, color))
        setAttribute(Qt::WA_OpaquePaintEvent, color.alpha() == 255);
}

bool PadArea::readHandleColor(const QDomElement &e)
{
    const QColor color = parseColor(e.text());
    if (!color.isValid())
        return false;
    setHandleColor(color);
    return true;
}

bool PadArea::readBackgroundColor(const QDomElement &e)
{
    const QColor color = parseColor(e.text());
    if (!color.isValid())
        return false;
    setBackgroundColor(color);
    return true;
}

QPointF PadArea::handleCentre() const
{
    return QPointF(m_position.x() * (width() - 1), (1.0 - m_position.y()) * (height() - 1));
}

int PadArea::handleRadius() const
{
    return qMax(3, Saturating::pixels(6, zoomFactor()));
}

QPointF PadArea::positionAt(const QPointF &pos) const
{
    const double w = qMax(1, width() - 1);
    const double h = qMax(1, height() - 1);
    return QPointF(qBound(0.0, pos.x() / w, 1.0), qBound(0.0, 1.0 - pos.y() / h, 1.0));
}

void PadArea::ownValueChanged(int index)
{
    if (index != 0 && index != 1)
        return;
    bool ok = false;
    const double v = positionText(index).toDouble(&ok);
    if (!ok || !std::isfinite(v))
        return;
    QPointF p = m_position;
    if (index == 0)
        p.setX(qBound(0.0, v, 1.0));
    else
        p.setY(qBound(0.0, v, 1.0));
    updateMember(m_position, p);
}

QPointF PadArea::pinned(const QPointF &target, bool shift)
{
    if (!shift) {
        m_lock = NoLock;
        return target;
    }
    if (m_lock == NoLock && target != m_grab)
        m_lock = target.x() != m_grab.x() ? HorizontalLock : VerticalLock;
    if (m_lock == HorizontalLock)
        return QPointF(target.x(), m_grab.y());
    if (m_lock == VerticalLock)
        return QPointF(m_grab.x(), target.y());
    return target;
}

void PadArea::send(const QPointF &target, int setType)
{
    const QPointF p = positionAt(target);
    requestPosition(p.x(), 1.0, setType, 0);
    requestPosition(p.y(), 1.0, setType, 1);
}

void PadArea::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    if (handOverModifierPress(event))
        return;
    pressNotified(event);
    const QPointF centre = handleCentre();
    const QPointF d = QPointF(event->pos()) - centre;
    const double reach = handleRadius() + 2;
    if (!isEnabled() || d.x() * d.x() + d.y() * d.y() > reach * reach)
        return;
    m_dragging = true;
    m_moved = false;
    m_lock = NoLock;
    m_grab = centre;
    m_offset = d;
}

void PadArea::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_dragging) {
        BaseWidget::mouseMoveEvent(event);
        return;
    }
    const QPointF target = pinned(QPointF(event->pos()) - m_offset, event->modifiers() & Qt::ShiftModifier);
    if (!m_moved && target == m_grab)
        return;
    m_moved = true;
    send(target, 1);
}

void PadArea::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_dragging || event->button() != Qt::LeftButton) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    const QPointF target = pinned(QPointF(event->pos()) - m_offset, event->modifiers() & Qt::ShiftModifier);
    if (m_moved || target != m_grab)
        send(target, 0);
    m_dragging = false;
    m_moved = false;
    m_lock = NoLock;
}

void PadArea::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_backgroundColor);
    painter.setRenderHint(QPainter::Antialiasing);
    paintField(painter);
    const QColor handle = DisabledLook::faded(m_handleColor, isEnabled());
    const int r = handleRadius();
    painter.setPen(Qt::NoPen);
    painter.setBrush(handle);
    painter.drawEllipse(handleCentre(), r, r);
    painter.setRenderHint(QPainter::Antialiasing, false);
    paintBase(painter);
}
