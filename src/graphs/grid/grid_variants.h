#ifndef CORVANE_GRAPHS_GRID_GRID_VARIANTS_H
#define CORVANE_GRAPHS_GRID_GRID_VARIANTS_H

#include "controls/button/Button.h"
#include "controls/common/AbstractValueInput.h"
#include "controls/numberbox/LineEdit.h"
#include "graphs/grid/MatrixGrid.h"

/*!
    \class RouterGrid
    \brief One source per output: each column binds one parameter whose
    position selects the row.

    The form names the column's parameter with {x}; {y} is not used. The
    column's parameter runs over Rows steps: row r is the position
    r / (Rows - 1), so the first row is 0 and the last 1; the lit cell of a
    column is the row its position rounds to. A click selects the row at
    once ("set_prm_type" "0"); dragging on selects the row under the pointer
    in every column it enters.
*/
class RouterGrid : public MatrixGrid
{
    Q_OBJECT
public:
    using MatrixGrid::MatrixGrid;

    int cellIndex(int row, int column) const override;
    int cellAddressCount() const override { return columns(); }
    bool cellLit(int row, int column) const override;
    QRect indexRect(int index) const override;

    //! The row column \a column selects, or -1 when the column is unbound or its value unknown.
    int selectedRow(int column) const;

protected:
    void activateCell(int row, int column) override;
    void strokeCell(int row, int column) override { activateCell(row, column); }
    bool strokeState(int, int) const override { return true; }
};

// Crosspoints: row = input, column = output, lit while the crosspoint is
// on. The grid's own on/off cells and brush strokes; the device families'
// mixers below keep them unchanged.
class MatrixMixer : public MatrixGrid
{
    Q_OBJECT
public:
    using MatrixGrid::MatrixGrid;
};

//! Behaves as MatrixMixer: nothing of its own.
class BrioMatrixMixer : public MatrixMixer
{
    Q_OBJECT
public:
    using MatrixMixer::MatrixMixer;
};

// The routers and patches of the device families keep RouterGrid's
// behaviour unchanged.
class Router : public RouterGrid
{
    Q_OBJECT
public:
    using RouterGrid::RouterGrid;
};

//! Behaves as Router: nothing of its own.
class BrioRouter : public Router
{
    Q_OBJECT
public:
    using Router::Router;
};

/*!
    \class RoomCombine
    \brief Which rooms are combined: the cell in row a and column b is on
    while rooms a and b form one room.

    Combining is symmetric, so only the cells right of the diagonal take
    input and light; the rest are drawn dimmed. Every cell still has its
    address (index row × Columns + column), so a form may bind the upper
    triangle only and leave the others to nothing.
*/
class RoomCombine : public MatrixGrid
{
    Q_OBJECT
public:
    using MatrixGrid::MatrixGrid;

    bool cellEnabled(int row, int column) const override
    {
        return column > row && MatrixGrid::cellEnabled(row, column);
    }
};

/*!
    \class DelayMatrix
    \brief Cells that show their parameter's text and edit it as a number
    box does.

    Double-click or Return opens the editor over the cell; what is typed is
    sent as text. A vertical drag on a cell changes it on a scale of 300
    from its current position, one pixel one step, held ("set_prm_type" "1")
    while the button is down and set at release; a press without movement
    sends nothing. The wheel steps the cell under the pointer.
*/
class DelayMatrix : public ValueInputWidget<MatrixGrid>, public EditorOwner
{
    Q_OBJECT
    Q_PROPERTY(bool editing READ isEditing)
    Q_PROPERTY(int editIndex READ editIndex)
    Q_PROPERTY(int dragIndex READ dragIndex)
public:
    DelayMatrix(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
    ~DelayMatrix() override;

    //! How a cell takes its gestures.
    static constexpr Policy valueInput{
        AltClick::Ignored,             // Alt-clicks are the grid's
        PressPoint::SendsAfterLeaving, // nothing until the pointer leaves the press height, then every move
        false,                         // a relative drag on dragRange
        false,                         // the arrow keys move the focus cell
        true,                          // a cell drags only while the left button is held
        false,                         // only the left button's release ends a drag
        false,                         // the start coordinate keeps its full width
    };

    bool cellLit(int, int) const override { return false; }
    QString cellText(int row, int column) const override;

    LineEdit *editor() const { return m_editor; }
    bool isEditing() const;
    //! The address index being typed into, -1 when none.
    int editIndex() const { return isEditing() ? m_editIndex : -1; }

    //! Opens the editor over the cell; false when it is not editable or an edit is open.
    bool startEditing(int row, int column);

    bool setZoom(float zoom) override;

    // EditorOwner
    void endEditing(bool commit) override;
    void editorKeyPressed(QKeyEvent *event) override;

protected:
    void activateCell(int, int) override { }
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    LineEdit *m_editor = nullptr;
    int m_editIndex = -1;
};

//! Behaves as RouterGrid, patching card slots: nothing of its own.
class QuaySlotPatch : public RouterGrid
{
    Q_OBJECT
public:
    using RouterGrid::RouterGrid;
};

//! Behaves as RouterGrid, patching outputs: nothing of its own.
class BrioOutputPatch : public RouterGrid
{
    Q_OBJECT
public:
    using RouterGrid::RouterGrid;
};

//! Behaves as MatrixMixer: nothing of its own.
class VelaMatrixMixer : public MatrixMixer
{
    Q_OBJECT
public:
    using MatrixMixer::MatrixMixer;
};

//! Behaves as Router, routing the oscillator: nothing of its own.
class BrioOscillatorRouter : public Router
{
    Q_OBJECT
public:
    using Router::Router;
};

// Zone groups: row = zone, column = group, lit while the zone belongs to
// the group. The grid's on/off cells, unchanged.
class BrioZoneGroup : public MatrixGrid
{
    Q_OBJECT
public:
    using MatrixGrid::MatrixGrid;
};

//! Behaves as MatrixMixer: nothing of its own.
class PallasMatrixMixer : public MatrixMixer
{
    Q_OBJECT
public:
    using MatrixMixer::MatrixMixer;
};

//! Behaves as DelayMatrix: nothing of its own.
class PallasDelayMatrix : public DelayMatrix
{
    Q_OBJECT
public:
    using DelayMatrix::DelayMatrix;
};

//! Behaves as MatrixMixer: nothing of its own.
class OstraMatrixMixer : public MatrixMixer
{
    Q_OBJECT
public:
    using MatrixMixer::MatrixMixer;
};

//! Behaves as DelayMatrix: nothing of its own.
class OstraDelayMatrix : public DelayMatrix
{
    Q_OBJECT
public:
    using DelayMatrix::DelayMatrix;
};

//! Behaves as BrioZoneGroup: nothing of its own.
class OstraZoneGroup : public MatrixGrid
{
    Q_OBJECT
public:
    using MatrixGrid::MatrixGrid;
};

//! Behaves as Router: nothing of its own.
class FenRouter : public Router
{
    Q_OBJECT
public:
    using Router::Router;
};

//! Behaves as Router: nothing of its own.
class KiteRouter : public Router
{
    Q_OBJECT
public:
    using Router::Router;
};

// Not a grid: it stays a plain BaseWidget.
/*!
    \class RoomCombineChecker
    \brief A check box on whether two rooms are combined.

    Address 0 is the combining parameter of one pair of rooms (the cell of a
    RoomCombine). The box shows a check mark while the rooms are combined;
    a click, Space or Return toggles it as a Button toggles its parameter.
    "Text" is written to the right of the box.
*/
class RoomCombineChecker : public Button
{
    Q_OBJECT
public:
    using Button::Button;

    //! The box, at the left, square, as high as the widget allows.
    QRect boxRect() const;

protected:
    void paintButton(QPainter &painter, int state) override;
    //! No text of the parameter's beside the box: the check says it.
    QString fallbackText() const override { return QString(); }
};

#endif
