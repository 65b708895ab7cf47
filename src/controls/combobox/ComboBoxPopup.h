#ifndef CORVANE_CONTROLS_COMBOBOX_COMBOBOXPOPUP_H
#define CORVANE_CONTROLS_COMBOBOX_COMBOBOXPOPUP_H

#include <QElapsedTimer>
#include <QStringList>
#include <QWidget>

class WheelSteps;

/*!
    \class ComboBoxPopup
    \brief The list a combo box drops down: one row per option, the current
    option checked, the row under the pointer or the keyboard highlighted.

    A popup window that never blocks: it is shown, and reports a choice
    through activated() or its closing through closed(). Up, Down, Home,
    End, Page Up and Page Down move the highlight; Return, Enter and Space
    choose it; Escape, F4 and Alt+Up close. Typing jumps to the next option
    that begins with the letters typed within a second. Lists longer than
    maxVisibleRows() scroll with the wheel and the keys, and a thin bar at
    the right shows where the view is.

    A release over a row chooses it only after the pointer moved over the
    list or was pressed in it, so the release of the press that opened the
    popup does not choose at once, while press, drag and release does.
*/
class ComboBoxPopup : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QStringList items READ items)
    Q_PROPERTY(int checkedRow READ checkedRow)
    Q_PROPERTY(int highlightedRow READ highlightedRow WRITE setHighlightedRow)
    Q_PROPERTY(int firstVisibleRow READ firstVisibleRow)

public:
    explicit ComboBoxPopup(QWidget *owner);
    ~ComboBoxPopup() override;

    static const QColor backgroundColor;
    static const QColor highlightColor;

    QStringList items() const { return m_items; }
    void setItems(const QStringList &items, int checkedRow);
    int checkedRow() const { return m_checked; }
    int highlightedRow() const { return m_highlighted; }
    void setHighlightedRow(int row);
    int firstVisibleRow() const { return m_first; }
    int maxVisibleRows() const { return m_maxVisible; }
    void setMaxVisibleRows(int rows);
    int visibleRows() const { return qMin(m_items.size(), m_maxVisible); }

    int rowHeight() const;
    //! The row at \a pos, or -1.
    int rowAt(const QPoint &pos) const;
    //! Where \a row is drawn, in popup coordinates; empty when it is scrolled away.
    QRect rowRect(int row) const;

    //! Sizes the popup for its rows, at least \a minimumWidth wide, and shows it below \a anchor (above when there is no room).
    void popup(const QRect &anchor, int minimumWidth);

signals:
    void activated(int row);
    void closed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void choose(int row);
    void scrollTo(int row);
    void setFirstVisible(int row);
    int margin() const;
    bool typeAhead(const QString &text);

    QStringList m_items;
    int m_checked = -1;
    int m_highlighted = -1;
    int m_first = 0;
    int m_maxVisible = 12;
    bool m_armed = false;
    QString m_typed;
    QElapsedTimer m_typedTimer;
    WheelSteps *m_wheel;
};

#endif
