#ifndef CORVANE_GRAPHS_GRID_MATRIXGRID_H
#define CORVANE_GRAPHS_GRID_MATRIXGRID_H

#include "core/BaseWidget.h"

#include <QColor>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QStringList>
#include <QVariantMap>

/*!
    \class MatrixGrid
    \brief A grid of Rows × Columns cells, each bound to one parameter.

    The cells' addresses come from one template, "AddressForm": its
    "prmAddr" may hold {x} (column + "XOffset", 1 by default) and {y} (row +
    "YOffset", 1 by default). The grid substitutes them itself, once per
    cell, when the description has been read, and appends one address per
    cell: the cell in row r and column c has the address index
    r × Columns + c. Any other placeholder in the form is left for the
    widget's own placeholder mechanism. Because the cells are bound from
    the description, rows and columns are fixed once the cells exist.

    Cells are on/off switches by default: lit while the parameter is not
    off. A click sends the opposite state as a position, "1" or "0", set at
    once ("set_prm_type" "0"); dragging on paints that same state over every
    cell the pointer enters, as a brush stroke would. Cells that already hold
    the state are left alone.

    Keyboard: the arrow keys move the focus cell, Space activates it (as a
    click would) and Shift+Up and Shift+Down step its parameter.
*/
class MatrixGrid : public BaseWidget
{
    Q_OBJECT
    Q_PROPERTY(int rows READ rows WRITE setRows)
    Q_PROPERTY(int columns READ columns WRITE setColumns)
    Q_PROPERTY(QSize cellSize READ cellSize WRITE setCellSize)
    Q_PROPERTY(int headerSize READ headerSize WRITE setHeaderSize)
    Q_PROPERTY(int xOffset READ xOffset)
    Q_PROPERTY(int yOffset READ yOffset)
    Q_PROPERTY(QString addressForm READ addressForm)
    Q_PROPERTY(QStringList rowLabels READ rowLabels WRITE setRowLabels)
    Q_PROPERTY(QStringList columnLabels READ columnLabels WRITE setColumnLabels)
    Q_PROPERTY(QPoint focusCell READ focusCell WRITE setFocusCell)
    Q_PROPERTY(QColor onColor READ onColor WRITE setOnColor)
    Q_PROPERTY(QColor offColor READ offColor WRITE setOffColor)
    Q_PROPERTY(QColor gridColor READ gridColor WRITE setGridColor)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(bool cellsBound READ cellsBound)
    Q_PROPERTY(bool stroking READ isStroking)

    CORVANE_TAG_TABLE

public:
    MatrixGrid(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    static const QColor defaultOnColor;
    static const QColor defaultOffColor;
    static const QColor defaultGridColor;
    static const QColor defaultTextColor;
    static const QColor focusColor;

    int rows() const { return m_rows; }
    void setRows(int rows);
    int columns() const { return m_columns; }
    void setColumns(int columns);
    QSize cellSize() const { return m_cellSize; }
    void setCellSize(const QSize &size);
    int headerSize() const { return m_headerSize; }
    void setHeaderSize(int size);
    int xOffset() const { return m_xOffset; }
    int yOffset() const { return m_yOffset; }
    QString addressForm() const;
    QStringList rowLabels() const { return m_rowLabels; }
    void setRowLabels(const QStringList &labels);
    QStringList columnLabels() const { return m_columnLabels; }
    void setColumnLabels(const QStringList &labels);
    //! The keyboard's cell: x is the column, y the row.
    QPoint focusCell() const { return m_focusCell; }
    void setFocusCell(const QPoint &cell);
    QColor onColor() const { return m_onColor; }
    void setOnColor(const QColor &color);
    QColor offColor() const { return m_offColor; }
    void setOffColor(const QColor &color);
    QColor gridColor() const { return m_gridColor; }
    void setGridColor(const QColor &color);
    QColor textColor() const { return m_textColor; }
    void setTextColor(const QColor &color);
    bool cellsBound() const { return m_cellsBound; }
    bool isStroking() const { return m_stroke.active; }

    bool configure(const QDomNode &element) override;
    bool setZoom(float zoom) override;
    QSize sizeHint() const override;

    //! The address index of the cell, or -1 when the cell is outside the grid.
    virtual int cellIndex(int row, int column) const;
    //! The number of addresses the cells need.
    virtual int cellAddressCount() const { return m_rows * m_columns; }
    //! The most cells a grid takes; rows and columns that would exceed it are refused.
    static constexpr int maxCells = 1 << 18;
    //! Whether the cell takes input and can be lit.
    virtual bool cellEnabled(int row, int column) const;
    //! Whether the cell is drawn in the on colour.
    virtual bool cellLit(int row, int column) const;
    //! The text drawn in the cell; none by default.
    virtual QString cellText(int row, int column) const;

    //! The cell's rectangle at the current zoom, headers included in the offset.
    QRect cellRect(int row, int column) const;
    //! The cell under \a pos as (column, row); (-1, -1) outside the cells.
    QPoint cellAt(const QPoint &pos) const;
    //! The area to repaint when address \a index changed.
    virtual QRect indexRect(int index) const;

    //! Binds one address per cell from the "AddressForm"; false without a form or when already bound.
    bool bindCells();

protected:
    virtual bool readRows(const QDomElement &e);
    virtual bool readColumns(const QDomElement &e);
    virtual bool readCellSize(const QDomElement &e);
    virtual bool readRowLabels(const QDomElement &e);
    virtual bool readColumnLabels(const QDomElement &e);
    virtual bool readAddressForm(const QDomElement &e);
    virtual bool readXOffset(const QDomElement &e);
    virtual bool readYOffset(const QDomElement &e);

    //! The address keys of one cell: the form with {x} and {y} replaced.
    virtual QVariantMap cellKeys(int row, int column) const;
    //! What a click (or Space) on a cell does; the default toggles it.
    virtual void activateCell(int row, int column);
    //! Called for every further cell a stroke enters; the default paints the stroke's state.
    virtual void strokeCell(int row, int column);
    //! The state a stroke started on this cell paints.
    virtual bool strokeState(int row, int column) const;

    void ownValueChanged(int index) override;
    //! A grid repaints only the cells whose values changed.
    bool repaintsOnMatch() const override { return false; }

    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

    virtual void paintCell(QPainter &painter, int row, int column, const QRect &rect);
    void paintHeaders(QPainter &painter, const QRect &clip);

    //! Left and top header extents at the current zoom.
    int leftHeader() const;
    int topHeader() const;
    int scaled(int design) const;
    bool cellHasAddress(int row, int column) const;
    //! Sends the on/off state of a cell; false when nothing was sent.
    bool sendCellState(int row, int column, bool on);

    struct Stroke
    {
        bool active = false;
        bool state = false;
        QPoint last{-1, -1};
    };
    Stroke m_stroke;

private:
    void updateCell(const QPoint &cell);
    void moveFocusCell(int dx, int dy);

    int m_rows = 1;
    int m_columns = 1;
    QSize m_cellSize{20, 20};
    int m_headerSize = 24;
    int m_xOffset = 1;
    int m_yOffset = 1;
    QVariantMap m_form;
    QStringList m_rowLabels;
    QStringList m_columnLabels;
    QPoint m_focusCell{0, 0};
    QColor m_onColor = defaultOnColor;
    QColor m_offColor = defaultOffColor;
    QColor m_gridColor = defaultGridColor;
    QColor m_textColor = defaultTextColor;
    bool m_cellsBound = false;
};

#endif
