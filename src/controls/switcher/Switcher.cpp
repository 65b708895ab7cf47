#include "Switcher.h"
#include "core/DisabledLook.h"

#include "core/FittedText.h"

#include "data/ParameterKeys.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

const QColor Switcher::defaultTextColor(200, 200, 200, 255);
const QColor Switcher::defaultBackgroundColor(45, 45, 45, 255);
const QColor Switcher::defaultSelectedColor(0, 153, 221, 255);
const QColor Switcher::defaultSelectedTextColor(255, 255, 255, 255);
const QColor Switcher::frameColor(96, 96, 96, 255);

Switcher::Switcher(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

const TagTable &Switcher::tags()
{
    static const TagTable table = TagTable::of<Switcher>(&BaseWidget::tags(), {
        {"Items", &Switcher::readItems},
        {"Orientation", &Switcher::readOrientation},
        {"TextColor", TagTable::color("textColor")},
        {"BackgroundColor", TagTable::color("backgroundColor")},
        {"SelectedColor", TagTable::color("selectedColor")},
        {"SelectedTextColor", TagTable::color("selectedTextColor")},
    });
    return table;
}

QStringList Switcher::labels() const
{
    return LabelledItemList::labels(m_items);
}

QStringList Switcher::values() const
{
    return LabelledItemList::values(m_items);
}

void Switcher::setItems(const QVector<Item> &items)
{
    if (m_items == items)
        return;
    m_items = items;
    update();
    refresh();
}

int Switcher::indexOfCurrent() const
{
    if (addressCount() == 0 || m_items.isEmpty())
        return -1;
    const QString shown = displayText(0);
    if (!shown.isEmpty()) {
        for (int i = 0; i < m_items.size(); ++i) {
            if (m_items.at(i).value == shown)
                return i;
        }
        for (int i = 0; i < m_items.size(); ++i) {
            if (m_items.at(i).label == shown)
                return i;
        }
    }
    // Hosts that show a unit or a translation still give the position.
    if (!hasPosition(0))
        return -1;
    return qBound(0, stepOfPosition(m_items.size() - 1, 0), m_items.size() - 1);
}

void Switcher::refresh()
{
    const int current = indexOfCurrent();
    if (current == m_currentIndex)
        return;
    m_currentIndex = current;
    update();
    emit currentIndexChanged(current);
}

void Switcher::ownValueChanged(int index)
{
    if (index == 0)
        refresh();
}

void Switcher::setOrientation(Qt::Orientation orientation)
{
    if (m_orientation == orientation)
        return;
    m_orientation = orientation;
    update();
}

QString Switcher::orientationText() const
{
    return m_orientation == Qt::Vertical ? QStringLiteral("Vertical") : QStringLiteral("Horizontal");
}

void Switcher::setTextColor(const QColor &color) { updateMember(m_textColor, color); }
void Switcher::setBackgroundColor(const QColor &color) { updateMember(m_backgroundColor, color); }
void Switcher::setSelectedColor(const QColor &color) { updateMember(m_selectedColor, color); }
void Switcher::setSelectedTextColor(const QColor &color) { updateMember(m_selectedTextColor, color); }

bool Switcher::readItems(const QDomElement &e)
{
    setItems(LabelledItemList::read(e));
    return !m_items.isEmpty();
}

bool Switcher::readOrientation(const QDomElement &e)
{
    const QString text = e.text().trimmed().toLower();
    if (text == QLatin1String("vertical"))
        setOrientation(Qt::Vertical);
    else if (text == QLatin1String("horizontal"))
        setOrientation(Qt::Horizontal);
    else
        return false;
    return true;
}

QRect Switcher::segmentRect(int index) const
{
    const int n = m_items.size();
    if (index < 0 || index >= n)
        return QRect();
    // Integer edges, so neighbours share a boundary and the last segment reaches the edge.
    if (m_orientation == Qt::Vertical) {
        const int top = index * height() / n;
        const int bottom = (index + 1) * height() / n;
        return QRect(0, top, width(), bottom - top);
    }
    const int left = index * width() / n;
    const int right = (index + 1) * width() / n;
    return QRect(left, 0, right - left, height());
}

int Switcher::segmentAt(const QPoint &pos) const
{
    if (!rect().contains(pos))
        return -1;
    for (int i = 0; i < m_items.size(); ++i) {
        if (segmentRect(i).contains(pos))
            return i;
    }
    return -1;
}

bool Switcher::choose(int index)
{
    if (index < 0 || index >= m_items.size() || index == m_currentIndex)
        return false;
    return requestText(m_items.at(index).value, 0);
}

void Switcher::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    if (handOverModifierPress(event))
        return;
    pressNotified(event);
    if (event->modifiers() & (Qt::ShiftModifier | Qt::AltModifier | Qt::MetaModifier))
        return;
    choose(segmentAt(event->pos()));
}

void Switcher::keyPressEvent(QKeyEvent *event)
{
    if (!isEnabled() || (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        BaseWidget::keyPressEvent(event);
        return;
    }
    const bool vertical = m_orientation == Qt::Vertical;
    int step = 0;
    switch (event->key()) {
    case Qt::Key_Right:
        step = vertical ? 0 : 1;
        break;
    case Qt::Key_Left:
        step = vertical ? 0 : -1;
        break;
    case Qt::Key_Down:
        step = vertical ? 1 : 0;
        break;
    case Qt::Key_Up:
        step = vertical ? -1 : 0;
        break;
    default:
        break;
    }
    if (step == 0) {
        BaseWidget::keyPressEvent(event);
        return;
    }
    requestStep(step, 0);
}

void Switcher::wheelEvent(QWheelEvent *event)
{
    if (!isEnabled()) {
        event->ignore();
        return;
    }
    event->accept();
    m_wheel.deliver(event, [this](int step) { requestStep(step, 0); });
}

void Switcher::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const bool enabled = isEnabled();
    auto dim = [enabled](const QColor &c) { return DisabledLook::faded(c, enabled); };
    painter.fillRect(rect(), dim(m_backgroundColor));
    for (int i = 0; i < m_items.size(); ++i) {
        const QRect r = segmentRect(i);
        const bool lit = i == m_currentIndex;
        if (lit)
            painter.fillRect(r, dim(m_selectedColor));
        painter.setPen(dim(lit ? m_selectedTextColor : m_textColor));
        FittedText::draw(painter, r.adjusted(2, 0, -2, 0), Qt::AlignCenter | Qt::TextSingleLine,
                         m_items.at(i).label, FittedText::Elide);
        if (i > 0) {
            painter.setPen(dim(frameColor));
            if (m_orientation == Qt::Vertical)
                painter.drawLine(r.left(), r.top(), r.right(), r.top());
            else
                painter.drawLine(r.left(), r.top(), r.left(), r.bottom());
        }
    }
    painter.setPen(dim(frameColor));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    paintBase(painter);
}
