#include "ComboBox.h"
#include "core/DisabledLook.h"
#include "core/Saturating.h"

#include "ComboBoxPopup.h"
#include "data/ParameterKeys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

const QColor ComboBox::defaultTextColor(230, 230, 230, 255);
const QColor ComboBox::defaultBackgroundColor(52, 52, 52, 255);
const QColor ComboBox::frameColor(96, 96, 96, 255);

ComboBox::ComboBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

ComboBox::~ComboBox() = default;

const TagTable &ComboBox::tags()
{
    static const TagTable table = TagTable::of<ComboBox>(&BaseWidget::tags(), {
        {"Items", &ComboBox::readItems},
        {"ReadOnly", TagTable::boolean("readOnly").ignoringCase()},
        {"TextColor", TagTable::color("textColor")},
        {"BackgroundColor", TagTable::color("backgroundColor")},
    });
    return table;
}

// ---------------------------------------------------------------------------
// Options and state

QStringList ComboBox::options() const
{
    return LabelledItemList::labels(m_options);
}

QStringList ComboBox::optionValues() const
{
    return LabelledItemList::values(m_options);
}

QVector<ComboBox::Option> ComboBox::parameterOptions() const
{
    QVector<Option> options;
    if (addressCount() == 0)
        return options;
    const QString list = addressAt(0).value().text(Key::ui_prm_option);
    if (list.isEmpty())
        return options;
    for (const QString &text : list.split(QLatin1Char('|')))
        options.append({text, text});
    return options;
}

int ComboBox::indexOfCurrent(const QVector<Option> &options) const
{
    if (addressCount() == 0)
        return -1;
    const QString shown = displayText(0);
    if (shown.isEmpty())
        return -1;
    // What the host shows is what it was sent, unless the description renamed it.
    for (int i = 0; i < options.size(); ++i) {
        if (options.at(i).value == shown)
            return i;
    }
    for (int i = 0; i < options.size(); ++i) {
        if (options.at(i).label == shown)
            return i;
    }
    return -1;
}

void ComboBox::refresh()
{
    const QVector<Option> options = m_items.isEmpty() ? parameterOptions() : m_items;
    const int current = indexOfCurrent(options);
    const QString text = current >= 0 ? options.at(current).label : (addressCount() ? displayText(0) : QString());
    const bool optionsChanged = options != m_options;
    const bool indexChanged = current != m_currentIndex;
    const bool textChanged = text != m_currentText;
    if (!optionsChanged && !indexChanged && !textChanged)
        return;
    m_options = options;
    m_currentIndex = current;
    m_currentText = text;
    if (m_popup && (optionsChanged || indexChanged)) {
        if (m_options.isEmpty())
            hidePopup();
        else
            m_popup->setItems(LabelledItemList::labels(m_options), m_currentIndex);
    }
    if (textChanged) {
        update();
        emit currentTextChanged(m_currentText);
    }
}

void ComboBox::setItems(const QVector<Option> &items)
{
    if (items == m_items)
        return;
    m_items = items;
    refresh();
}

void ComboBox::ownValueChanged(int index)
{
    if (index == 0)
        refresh();
}

// ---------------------------------------------------------------------------
// Settings

void ComboBox::setReadOnly(bool readOnly)
{
    if (m_readOnly == readOnly)
        return;
    m_readOnly = readOnly;
    if (readOnly)
        hidePopup();
    update();
}

void ComboBox::setTextColor(const QColor &color)
{
    if (m_textColor == color)
        return;
    m_textColor = color;
    update();
}

void ComboBox::setBackgroundColor(const QColor &color)
{
    if (m_backgroundColor == color)
        return;
    m_backgroundColor = color;
    update();
}

void ComboBox::setMaxVisibleItems(int count)
{
    count = qMax(1, count);
    if (m_maxVisibleItems == count)
        return;
    m_maxVisibleItems = count;
    if (m_popup)
        m_popup->setMaxVisibleRows(count);
}

bool ComboBox::readItems(const QDomElement &e)
{
    setItems(LabelledItemList::read(e));
    return !m_items.isEmpty();
}

// ---------------------------------------------------------------------------
// Popup and requests

bool ComboBox::isPopupOpen() const
{
    return m_popup && m_popup->isVisible();
}

bool ComboBox::showPopup()
{
    if (!canOperate() || m_options.isEmpty())
        return false;
    if (isPopupOpen())
        return true;
    if (!m_popup) {
        m_popup = new ComboBoxPopup(this);
        connect(m_popup, &ComboBoxPopup::activated, this, [this](int row) {
            emit activated(row);
            choose(row);
        });
        connect(m_popup, &ComboBoxPopup::closed, this, &ComboBox::popupClosed);
    }
    m_popup->setFont(font());
    m_popup->setMaxVisibleRows(m_maxVisibleItems);
    m_popup->setItems(LabelledItemList::labels(m_options), m_currentIndex);
    m_popup->popup(QRect(mapToGlobal(QPoint(0, 0)), size()), width());
    update();
    emit popupOpenChanged(true);
    return true;
}

void ComboBox::hidePopup()
{
    if (isPopupOpen())
        m_popup->hide();
}

void ComboBox::popupClosed()
{
    update();
    emit popupOpenChanged(false);
}

bool ComboBox::choose(int index)
{
    if (index < 0 || index >= m_options.size() || index == m_currentIndex)
        return false;
    return sendOption(index, m_options.at(index));
}

bool ComboBox::sendOption(int index, const Option &option)
{
    Q_UNUSED(index)
    return requestText(option.value, 0);
}

void ComboBox::stepValue(int step)
{
    requestStep(step, 0);
}

// ---------------------------------------------------------------------------
// Input

void ComboBox::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    const Qt::KeyboardModifiers mods = event->modifiers();
    if (handOverModifierPress(event))
        return;
    pressNotified(event);
    if (mods & (Qt::ShiftModifier | Qt::AltModifier | Qt::MetaModifier))
        return;
    if (isPopupOpen())
        hidePopup();
    else
        showPopup();
}

void ComboBox::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && (event->modifiers() & Qt::ControlModifier)) {
        controlClick(event);
        return;
    }
    QWidget::mouseReleaseEvent(event);
}

void ComboBox::keyPressEvent(QKeyEvent *event)
{
    // Hosts that send keys to the control rather than the popup still reach the list.
    if (isPopupOpen()) {
        QApplication::sendEvent(m_popup, event);
        return;
    }
    if (!isVisible() || !canOperate()) {
        BaseWidget::keyPressEvent(event);
        return;
    }
    const bool alt = event->modifiers() & Qt::AltModifier;
    switch (event->key()) {
    case Qt::Key_Up:
        if (!alt) {
            stepValue(1);
            return;
        }
        break;
    case Qt::Key_Down:
        if (alt)
            showPopup();
        else
            stepValue(-1);
        return;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F4:
        if (!event->isAutoRepeat())
            showPopup();
        return;
    default:
        break;
    }
    BaseWidget::keyPressEvent(event);
}

void ComboBox::wheelEvent(QWheelEvent *event)
{
    if (!canOperate()) {
        event->ignore();
        return;
    }
    event->accept();
    m_wheel.deliver(event, [this](int step) { stepValue(step); });
}

void ComboBox::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        hidePopup();
    BaseWidget::changeEvent(event);
}

// ---------------------------------------------------------------------------
// Painting

QRect ComboBox::arrowRect() const
{
    if (m_readOnly)
        return QRect();
    const int w = qBound(8, Saturating::pixels(16, zoomFactor()), qMax(8, width() / 2));
    return QRect(width() - w, 0, w, height());
}

void ComboBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool enabled = isEnabled();
    const bool open = isPopupOpen();
    const qreal radius = qMax<qreal>(2.0, 3.0 * zoomFactor());

    QColor fill = open ? m_backgroundColor.darker(130) : m_backgroundColor;
    painter.setPen(QPen(DisabledLook::faded(open ? ComboBoxPopup::highlightColor : frameColor, enabled), 1));
    painter.setBrush(DisabledLook::faded(fill, enabled));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);

    const QColor ink = DisabledLook::faded(m_textColor, enabled);
    const QRect arrow = arrowRect();
    if (!arrow.isEmpty()) {
        const qreal w = arrow.width() * 0.5;
        const qreal h = w * 0.5;
        const QPointF c = QRectF(arrow).center();
        const QPointF points[3] = {QPointF(c.x() - w / 2, c.y() - h / 2), QPointF(c.x() + w / 2, c.y() - h / 2),
                                   QPointF(c.x(), c.y() + h / 2)};
        painter.setPen(Qt::NoPen);
        painter.setBrush(ink);
        painter.drawPolygon(points, 3);
    }

    const int pad = qMax(2, Saturating::pixels(4, zoomFactor()));
    const QRect textRect = rect().adjusted(pad, 0, arrow.isEmpty() ? -pad : -arrow.width(), 0);
    if (!m_currentText.isEmpty() && textRect.width() > 0) {
        painter.setPen(ink);
        painter.setFont(font());
        painter.drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter,
                         painter.fontMetrics().elidedText(m_currentText, Qt::ElideRight, textRect.width()));
    }

    paintBase(painter);
}
