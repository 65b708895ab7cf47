#include "graphs/grid/grid_variants.h"
#include "core/DisabledLook.h"

#include "core/FittedText.h"

#include <QKeyEvent>
#include <QPainter>
#include <QMouseEvent>
#include <QWheelEvent>

// ---------------------------------------------------------------------------
// RouterGrid

int RouterGrid::cellIndex(int row, int column) const
{
    if (row < 0 || row >= rows() || column < 0 || column >= columns())
        return -1;
    return column;
}

int RouterGrid::selectedRow(int column) const
{
    if (!cellHasAddress(0, column))
        return -1;
    // A value not known yet (or not a number) selects no row; row 0 must
    // stay clickable.
    bool ok = false;
    const double position = positionText(column).trimmed().toDouble(&ok);
    if (!ok || !qIsFinite(position))
        return -1;
    return qBound(0, stepOfPosition(qMax(1, rows() - 1), column), rows() - 1);
}

bool RouterGrid::cellLit(int row, int column) const
{
    return cellEnabled(row, column) && selectedRow(column) == row;
}

QRect RouterGrid::indexRect(int index) const
{
    if (index < 0 || index >= columns())
        return QRect();
    return cellRect(0, index).united(cellRect(rows() - 1, index));
}

void RouterGrid::activateCell(int row, int column)
{
    if (!cellEnabled(row, column) || selectedRow(column) == row)
        return;
    // A single row spans nothing: its only position is 0.
    if (rows() > 1)
        requestPosition(row, rows() - 1, 0, column);
    else
        requestPosition(0, 1, 0, column);
}

// ---------------------------------------------------------------------------
// DelayMatrix

DelayMatrix::DelayMatrix(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : ValueInputWidget<MatrixGrid>(valueInput, hostCore, registry, parent)
{
}

DelayMatrix::~DelayMatrix()
{
    delete m_editor;
}

QString DelayMatrix::cellText(int row, int column) const
{
    if (!cellHasAddress(row, column))
        return QString();
    const int index = cellIndex(row, column);
    const QString text = displayText(index);
    return text.isEmpty() ? positionText(index) : text;
}

bool DelayMatrix::isEditing() const
{
    return m_editor && m_editor->isVisible();
}

bool DelayMatrix::startEditing(int row, int column)
{
    if (!cellEnabled(row, column) || isEditing())
        return false;
    if (!m_editor) {
        m_editor = new LineEdit(this, this);
        m_editor->followOwnerFont();
    }
    m_editIndex = cellIndex(row, column);
    m_editor->setGeometry(cellRect(row, column));
    return m_editor->open(displayText(m_editIndex), Qt::AlignCenter, true);
}

void DelayMatrix::endEditing(bool commit)
{
    if (!m_editor)
        return;
    const int index = m_editIndex;
    if (m_editor->close(commit, [this, index](const QString &text) { requestText(text, index); }))
        update(indexRect(index).adjusted(-1, -1, 1, 1));
}

void DelayMatrix::editorKeyPressed(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        endEditing(true);
        break;
    case Qt::Key_Escape:
    case Qt::Key_Up:
    case Qt::Key_Down:
        endEditing(false);
        break;
    default:
        break;
    }
}

bool DelayMatrix::setZoom(float zoom)
{
    if (!MatrixGrid::setZoom(zoom))
        return false;
    if (m_editor)
        m_editor->followOwnerFont();
    return true;
}

void DelayMatrix::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        startEditing(focusCell().y(), focusCell().x());
        return;
    }
    MatrixGrid::keyPressEvent(event);
}

void DelayMatrix::mousePressEvent(QMouseEvent *event)
{
    // The grid's handling selects, focuses and hands modifier clicks over;
    // activateCell() does nothing here, so no toggle is sent.
    MatrixGrid::mousePressEvent(event);
    m_stroke.active = false;
    abortDrag();
    if (event->button() != Qt::LeftButton || event->modifiers() != Qt::NoModifier)
        return;
    const QPoint cell = cellAt(event->pos());
    if (cell.x() >= 0 && cellEnabled(cell.y(), cell.x()))
        beginDragAt(cellIndex(cell.y(), cell.x()), event->pos());
}

void DelayMatrix::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        finishDrag(dragCoordinate(event->pos()));
    MatrixGrid::mouseReleaseEvent(event);
}

void DelayMatrix::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || event->modifiers() != Qt::NoModifier)
        return;
    const QPoint cell = cellAt(event->pos());
    if (cell.x() >= 0)
        startEditing(cell.y(), cell.x());
}

void DelayMatrix::wheelEvent(QWheelEvent *event)
{
    event->accept();
    if (isEditing())
        return;
    const QPoint cell = cellAt(event->position().toPoint());
    if (cell.x() < 0 || !cellEnabled(cell.y(), cell.x()))
        return;
    const int index = cellIndex(cell.y(), cell.x());
    m_wheel.deliver(event, [this, index](int step) { requestStep(step, index); });
}

// ---------------------------------------------------------------------------
// RoomCombineChecker

QRect RoomCombineChecker::boxRect() const
{
    const int side = qMax(4, qMin(height() - 2, int(13 * zoomFactor())));
    return QRect(1, (height() - side) / 2, side, side);
}

void RoomCombineChecker::paintButton(QPainter &painter, int state)
{
    const bool checked = state & 2;
    const QRect box = boxRect();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(DisabledLook::ink(this, Button::frameColor), 1));
    painter.setBrush((state & 1) ? Button::faceColor.darker(130) : Button::faceColor);
    painter.drawRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5));
    if (checked) {
        const qreal w = box.width();
        QPen pen(DisabledLook::ink(this, Button::litColor), qMax<qreal>(1.5, w / 6));
        pen.setCapStyle(Qt::RoundCap);
        painter.setPen(pen);
        const QPointF o = box.topLeft();
        painter.drawPolyline(QVector<QPointF>{o + QPointF(w * 0.22, w * 0.52), o + QPointF(w * 0.42, w * 0.74),
                                              o + QPointF(w * 0.80, w * 0.26)});
    }
    const QString label = textFor(checked);
    if (label.isEmpty())
        return;
    painter.setPen(DisabledLook::ink(this, textColor()));
    FittedText::draw(painter, rect().adjusted(box.right() + 4, 0, 0, 0),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, label, FittedText::Elide);
}
