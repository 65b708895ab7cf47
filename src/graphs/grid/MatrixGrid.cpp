#include "graphs/grid/MatrixGrid.h"
#include "core/FittedText.h"
#include "core/Saturating.h"

#include "data/ParameterKeys.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPaintEvent>

const QColor MatrixGrid::defaultOnColor(255, 160, 0, 255);
const QColor MatrixGrid::defaultOffColor(48, 48, 48, 255);
const QColor MatrixGrid::defaultGridColor(96, 96, 96, 255);
const QColor MatrixGrid::defaultTextColor(220, 220, 220, 255);
const QColor MatrixGrid::focusColor(255, 255, 255, 255);

MatrixGrid::MatrixGrid(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : BaseWidget(hostCore, registry, parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

const TagTable &MatrixGrid::tags()
{
    static const TagTable table = TagTable::of<MatrixGrid>(&BaseWidget::tags(), {
        {"Rows", &MatrixGrid::readRows},
        {"Columns", &MatrixGrid::readColumns},
        {"CellSize", &MatrixGrid::readCellSize},
        {"HeaderSize", TagTable::integer("headerSize", 0)},
        {"RowLabels", &MatrixGrid::readRowLabels},
        {"ColumnLabels", &MatrixGrid::readColumnLabels},
        {"AddressForm", &MatrixGrid::readAddressForm},
        {"XOffset", &MatrixGrid::readXOffset},
        {"YOffset", &MatrixGrid::readYOffset},
        {"OnColor", TagTable::color("onColor")},
        {"OffColor", TagTable::color("offColor")},
        {"GridColor", TagTable::color("gridColor")},
        {"TextColor", TagTable::color("textColor")},
    });
    return table;
}

QString MatrixGrid::addressForm() const
{
    return m_form.value(Key::prmAddr).toString();
}

// ---------------------------------------------------------------------------
// Properties

void MatrixGrid::setRows(int rows)
{
    // The cells' addresses are laid out by row and column; they cannot follow.
    if (rows < 1 || rows == m_rows || m_cellsBound || qint64(rows) * m_columns > maxCells)
        return;
    m_rows = rows;
    m_focusCell.setY(qMin(m_focusCell.y(), rows - 1));
    updateGeometry();
    update();
}

void MatrixGrid::setColumns(int columns)
{
    if (columns < 1 || columns == m_columns || m_cellsBound || qint64(m_rows) * columns > maxCells)
        return;
    m_columns = columns;
    m_focusCell.setX(qMin(m_focusCell.x(), columns - 1));
    updateGeometry();
    update();
}

void MatrixGrid::setCellSize(const QSize &size)
{
    if (size == m_cellSize || size.width() < 1 || size.height() < 1)
        return;
    m_cellSize = size;
    updateGeometry();
    update();
}

void MatrixGrid::setHeaderSize(int size)
{
    if (size == m_headerSize || size < 0)
        return;
    m_headerSize = size;
    updateGeometry();
    update();
}

void MatrixGrid::setRowLabels(const QStringList &labels)
{
    if (labels == m_rowLabels)
        return;
    m_rowLabels = labels;
    updateGeometry();
    update();
}

void MatrixGrid::setColumnLabels(const QStringList &labels)
{
    if (labels == m_columnLabels)
        return;
    m_columnLabels = labels;
    updateGeometry();
    update();
}

void MatrixGrid::setFocusCell(const QPoint &cell)
{
    const QPoint bounded(qBound(0, cell.x(), m_columns - 1), qBound(0, cell.y(), m_rows - 1));
    if (bounded == m_focusCell)
        return;
    const QPoint old = m_focusCell;
    m_focusCell = bounded;
    updateCell(old);
    updateCell(bounded);
}

void MatrixGrid::setOnColor(const QColor &color)
{
    if (color == m_onColor)
        return;
    m_onColor = color;
    update();
}

void MatrixGrid::setOffColor(const QColor &color)
{
    if (color == m_offColor)
        return;
    m_offColor = color;
    update();
}

void MatrixGrid::setGridColor(const QColor &color)
{
    if (color == m_gridColor)
        return;
    m_gridColor = color;
    update();
}

void MatrixGrid::setTextColor(const QColor &color)
{
    if (color == m_textColor)
        return;
    m_textColor = color;
    update();
}

// ---------------------------------------------------------------------------
// Description

static bool readPositiveInt(const QDomElement &e, int minimum, int *out)
{
    bool ok = false;
    const int v = e.text().trimmed().toInt(&ok);
    if (!ok || v < minimum)
        return false;
    *out = v;
    return true;
}

static QStringList splitLabels(const QString &text)
{
    QStringList labels = text.split(QLatin1Char(','));
    for (QString &l : labels)
        l = l.trimmed();
    return labels;
}

bool MatrixGrid::readRows(const QDomElement &e)
{
    int v = 0;
    if (m_cellsBound || !readPositiveInt(e, 1, &v))
        return false;
    setRows(v);
    return m_rows == v;
}

bool MatrixGrid::readColumns(const QDomElement &e)
{
    int v = 0;
    if (m_cellsBound || !readPositiveInt(e, 1, &v))
        return false;
    setColumns(v);
    return m_columns == v;
}

bool MatrixGrid::readCellSize(const QDomElement &e)
{
    bool okW = false, okH = false;
    const int w = e.attribute(QStringLiteral("width")).toInt(&okW);
    const int h = e.attribute(QStringLiteral("height")).toInt(&okH);
    if (!okW || !okH || w < 1 || h < 1)
        return false;
    setCellSize(QSize(w, h));
    return true;
}

bool MatrixGrid::readRowLabels(const QDomElement &e)
{
    setRowLabels(splitLabels(e.text()));
    return true;
}

bool MatrixGrid::readColumnLabels(const QDomElement &e)
{
    setColumnLabels(splitLabels(e.text()));
    return true;
}

bool MatrixGrid::readAddressForm(const QDomElement &e)
{
    if (m_cellsBound)
        return false;
    const QVariantMap keys = parseAddressKeys(e);
    if (keys.value(Key::prmAddr).toString().isEmpty())
        return false;
    m_form = keys;
    return true;
}

bool MatrixGrid::readXOffset(const QDomElement &e)
{
    bool ok = false;
    const int v = e.text().trimmed().toInt(&ok);
    if (!ok || m_cellsBound)
        return false;
    m_xOffset = v;
    return true;
}

bool MatrixGrid::readYOffset(const QDomElement &e)
{
    bool ok = false;
    const int v = e.text().trimmed().toInt(&ok);
    if (!ok || m_cellsBound)
        return false;
    m_yOffset = v;
    return true;
}

bool MatrixGrid::configure(const QDomNode &element)
{
    const bool ok = BaseWidget::configure(element);
    // Rows, Columns, the offsets and the form may come in any order.
    bindCells();
    return ok;
}

QVariantMap MatrixGrid::cellKeys(int row, int column) const
{
    QVariantMap keys = m_form;
    QString prmAddr = keys.value(Key::prmAddr).toString();
    prmAddr.replace(QLatin1String("{x}"), QString::number(column + m_xOffset));
    prmAddr.replace(QLatin1String("{y}"), QString::number(row + m_yOffset));
    keys.insert(Key::prmAddr, prmAddr);
    return keys;
}

bool MatrixGrid::bindCells()
{
    if (m_cellsBound || m_form.isEmpty())
        return false;
    m_cellsBound = true;
    const int n = cellAddressCount();
    for (int i = 0; i < n; ++i)
        appendAddress(cellKeys(i / m_columns, i % m_columns));
    update();
    return true;
}

// ---------------------------------------------------------------------------
// Cells

int MatrixGrid::cellIndex(int row, int column) const
{
    if (row < 0 || row >= m_rows || column < 0 || column >= m_columns)
        return -1;
    return row * m_columns + column;
}

bool MatrixGrid::cellHasAddress(int row, int column) const
{
    const int index = cellIndex(row, column);
    return index >= 0 && index < addressCount() && addressAt(index).isValid();
}

bool MatrixGrid::cellEnabled(int row, int column) const
{
    return cellHasAddress(row, column);
}

bool MatrixGrid::cellLit(int row, int column) const
{
    return cellEnabled(row, column) && !isOff(cellIndex(row, column));
}

QString MatrixGrid::cellText(int row, int column) const
{
    Q_UNUSED(row)
    Q_UNUSED(column)
    return QString();
}

int MatrixGrid::scaled(int design) const
{
    return Saturating::pixels(design, zoomFactor());
}

int MatrixGrid::leftHeader() const
{
    return m_rowLabels.isEmpty() ? 0 : scaled(m_headerSize);
}

int MatrixGrid::topHeader() const
{
    return m_columnLabels.isEmpty() ? 0 : scaled(m_headerSize);
}

QRect MatrixGrid::cellRect(int row, int column) const
{
    const int w = scaled(m_cellSize.width());
    const int h = scaled(m_cellSize.height());
    // In double: far cells of large grids at high zoom lie beyond the int range.
    return QRect(Saturating::toPixel(leftHeader() + double(column) * w),
                 Saturating::toPixel(topHeader() + double(row) * h), w, h);
}

QPoint MatrixGrid::cellAt(const QPoint &pos) const
{
    const int w = scaled(m_cellSize.width());
    const int h = scaled(m_cellSize.height());
    const int x = pos.x() - leftHeader();
    const int y = pos.y() - topHeader();
    if (w <= 0 || h <= 0 || x < 0 || y < 0)
        return QPoint(-1, -1);
    const int column = x / w;
    const int row = y / h;
    if (column >= m_columns || row >= m_rows)
        return QPoint(-1, -1);
    return QPoint(column, row);
}

QRect MatrixGrid::indexRect(int index) const
{
    if (index < 0 || index >= cellAddressCount())
        return QRect();
    return cellRect(index / m_columns, index % m_columns);
}

void MatrixGrid::updateCell(const QPoint &cell)
{
    // One pixel more on each side: the focus outline sits on the grid line.
    update(cellRect(cell.y(), cell.x()).adjusted(-1, -1, 1, 1));
}

QSize MatrixGrid::sizeHint() const
{
    return QSize(Saturating::toPixel(leftHeader() + double(m_columns) * scaled(m_cellSize.width()) + 1),
                 Saturating::toPixel(topHeader() + double(m_rows) * scaled(m_cellSize.height()) + 1));
}

bool MatrixGrid::setZoom(float zoom)
{
    if (!BaseWidget::setZoom(zoom))
        return false;
    updateGeometry();
    update();
    return true;
}

void MatrixGrid::ownValueChanged(int index)
{
    if (index >= cellAddressCount()) {
        BaseWidget::ownValueChanged(index);
        return;
    }
    update(indexRect(index).adjusted(-1, -1, 1, 1));
}

// ---------------------------------------------------------------------------
// Input

bool MatrixGrid::sendCellState(int row, int column, bool on)
{
    if (!cellEnabled(row, column))
        return false;
    return requestPosition(on ? 1 : 0, 1, 0, cellIndex(row, column));
}

void MatrixGrid::activateCell(int row, int column)
{
    sendCellState(row, column, !cellLit(row, column));
}

bool MatrixGrid::strokeState(int row, int column) const
{
    return !cellLit(row, column);
}

void MatrixGrid::strokeCell(int row, int column)
{
    if (cellLit(row, column) != m_stroke.state)
        sendCellState(row, column, m_stroke.state);
}

void MatrixGrid::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    const QPoint cell = cellAt(event->pos());
    if (cell.x() >= 0)
        selectAddress(cellIndex(cell.y(), cell.x()), false);
    if (handOverModifierPress(event))
        return;
    pressNotified(event);
    if (cell.x() < 0)
        return;
    setFocusCell(cell);
    if (!cellEnabled(cell.y(), cell.x()))
        return;
    m_stroke.active = true;
    m_stroke.state = strokeState(cell.y(), cell.x());
    m_stroke.last = cell;
    activateCell(cell.y(), cell.x());
}

void MatrixGrid::mouseMoveEvent(QMouseEvent *event)
{
    if (event->modifiers() != Qt::NoModifier) {
        maybeStartParameterDrag(event);
        m_stroke.active = false;
        return;
    }
    if (!m_stroke.active || !(event->buttons() & Qt::LeftButton))
        return;
    const QPoint cell = cellAt(event->pos());
    if (cell.x() < 0 || cell == m_stroke.last)
        return;
    m_stroke.last = cell;
    if (cellEnabled(cell.y(), cell.x()))
        strokeCell(cell.y(), cell.x());
}

void MatrixGrid::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_stroke.active = false;
    QWidget::mouseReleaseEvent(event);
}

void MatrixGrid::moveFocusCell(int dx, int dy)
{
    setFocusCell(m_focusCell + QPoint(dx, dy));
}

void MatrixGrid::keyPressEvent(QKeyEvent *event)
{
    const bool shift = event->modifiers() & Qt::ShiftModifier;
    const int row = m_focusCell.y();
    const int column = m_focusCell.x();
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (shift) {
            if (cellEnabled(row, column))
                requestStep(event->key() == Qt::Key_Up ? 1 : -1, cellIndex(row, column));
        } else {
            moveFocusCell(0, event->key() == Qt::Key_Up ? -1 : 1);
        }
        return;
    case Qt::Key_Left:
        moveFocusCell(-1, 0);
        return;
    case Qt::Key_Right:
        moveFocusCell(1, 0);
        return;
    case Qt::Key_Space:
        if (cellEnabled(row, column))
            activateCell(row, column);
        return;
    default:
        break;
    }
    BaseWidget::keyPressEvent(event);
}

void MatrixGrid::focusInEvent(QFocusEvent *event)
{
    BaseWidget::focusInEvent(event);
    updateCell(m_focusCell);
}

void MatrixGrid::focusOutEvent(QFocusEvent *event)
{
    BaseWidget::focusOutEvent(event);
    m_stroke.active = false;
    updateCell(m_focusCell);
}

// ---------------------------------------------------------------------------
// Painting

void MatrixGrid::paintCell(QPainter &painter, int row, int column, const QRect &rect)
{
    QColor fill = cellLit(row, column) ? m_onColor : m_offColor;
    if (!cellEnabled(row, column))
        fill = m_offColor.darker(160);
    painter.fillRect(rect, fill);
    const QString text = cellText(row, column);
    if (!text.isEmpty()) {
        painter.setPen(m_textColor);
        FittedText::draw(painter, rect, Qt::AlignCenter, text, FittedText::Shrink);
    }
}

void MatrixGrid::paintHeaders(QPainter &painter, const QRect &clip)
{
    painter.setPen(m_textColor);
    const int left = leftHeader();
    const int top = topHeader();
    if (left > 0) {
        for (int r = 0; r < m_rows; ++r) {
            const QRect cell = cellRect(r, 0);
            const QRect label(0, cell.y(), left, cell.height());
            if (label.intersects(clip))
                FittedText::draw(painter, label.adjusted(2, 0, -2, 0), Qt::AlignVCenter | Qt::AlignRight,
                                 m_rowLabels.value(r, QString::number(r + m_yOffset)), FittedText::Elide);
        }
    }
    if (top > 0) {
        for (int c = 0; c < m_columns; ++c) {
            const QRect cell = cellRect(0, c);
            const QRect label(cell.x(), 0, cell.width(), top);
            if (label.intersects(clip))
                FittedText::draw(painter, label, Qt::AlignCenter,
                                 m_columnLabels.value(c, QString::number(c + m_xOffset)), FittedText::Elide);
        }
    }
}

void MatrixGrid::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const QRect clip = event->rect();
    paintHeaders(painter, clip);
    for (int r = 0; r < m_rows; ++r) {
        for (int c = 0; c < m_columns; ++c) {
            const QRect rect = cellRect(r, c);
            if (rect.adjusted(-1, -1, 1, 1).intersects(clip))
                paintCell(painter, r, c, rect);
        }
    }
    // Grid lines over the cells: one pixel on every cell boundary.
    const QRect all = cellRect(0, 0).united(cellRect(m_rows - 1, m_columns - 1));
    painter.setPen(m_gridColor);
    for (int c = 0; c <= m_columns; ++c) {
        const int x = c < m_columns ? cellRect(0, c).x() : all.right() + 1;
        painter.drawLine(x, all.top(), x, all.bottom() + 1);
    }
    for (int r = 0; r <= m_rows; ++r) {
        const int y = r < m_rows ? cellRect(r, 0).y() : all.bottom() + 1;
        painter.drawLine(all.left(), y, all.right() + 1, y);
    }
    if (hasFocus()) {
        painter.setPen(focusColor);
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(cellRect(m_focusCell.y(), m_focusCell.x()).adjusted(1, 1, -1, -1));
    }
    paintBase(painter);
}
