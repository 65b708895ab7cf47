#ifndef CORVANE_CONTROLS_MISC_PAIRDEVICELIST_H
#define CORVANE_CONTROLS_MISC_PAIRDEVICELIST_H

#include "controls/common/WheelSteps.h"
#include "core/BaseWidget.h"

#include <QColor>
#include <QStringList>

/*!
    \class PairDeviceList
    \brief The devices a parameter offers for pairing, one row each.

    The rows are the display text of address 0 split at "|", or at "," when
    the text has no "|"; each row is trimmed and empty rows are dropped. A
    click on a row selects it and sends its text (kind 1) to address 1, the
    parameter that holds the choice; address 0 is never written, and without
    address 1 the choice stays local. A display text of address 1 selects
    its row. The selection is kept by text, so it survives a new list that still holds the row. The
    wheel scrolls a row per notch while the rows overflow the widget.
*/
class PairDeviceList : public BaseWidget
{
    Q_OBJECT
    Q_PROPERTY(QStringList rows READ rows)
    Q_PROPERTY(int selectedRow READ selectedRow)
    Q_PROPERTY(QString selectedText READ selectedText)
    Q_PROPERTY(int firstVisibleRow READ firstVisibleRow WRITE setFirstVisibleRow)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)
    Q_PROPERTY(QColor selectedColor READ selectedColor WRITE setSelectedColor)
    CORVANE_TAG_TABLE

public:
    PairDeviceList(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    //! The rows of a display text.
    static QStringList rowsOfText(const QString &text);

    QStringList rows() const { return m_rows; }
    int selectedRow() const { return m_rows.indexOf(m_selected); }
    QString selectedText() const { return selectedRow() >= 0 ? m_selected : QString(); }
    int firstVisibleRow() const { return m_first; }
    void setFirstVisibleRow(int row);
    //! The rows that fit the widget.
    int visibleRowCount() const;
    int rowHeight() const;
    //! Where row \a row is drawn now; empty when it is scrolled away or does not exist.
    QRect rowRect(int row) const;
    //! The row under \a pos, or -1.
    int rowAt(const QPoint &pos) const;
    //! Where the choice is sent; address 0 holds the list.
    static constexpr int ChoiceIndex = 1;

    //! Selects \a row and sends its text to address 1; false when there is no such row or nothing was sent.
    bool choose(int row);

    QColor textColor() const { return m_textColor; }
    void setTextColor(const QColor &color);
    QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor &color);
    QColor selectedColor() const { return m_selectedColor; }
    void setSelectedColor(const QColor &color);

protected:
    void ownValueChanged(int index) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    bool assignColor(QColor &member, const QColor &color);

    QStringList m_rows;
    QString m_selected;
    int m_first = 0;
    QColor m_textColor{220, 220, 220, 255};
    QColor m_backgroundColor{35, 35, 35, 255};
    QColor m_selectedColor{0, 120, 215, 255};
    WheelSteps m_wheel;
};

#endif
