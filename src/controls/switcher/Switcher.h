#ifndef CORVANE_CONTROLS_SWITCHER_SWITCHER_H
#define CORVANE_CONTROLS_SWITCHER_SWITCHER_H

#include "controls/common/WheelSteps.h"
#include "core/BaseWidget.h"
#include "controls/common/LabelledItems.h"

#include <QColor>
#include <QStringList>
#include <QVector>

/*!
    \class Switcher
    \brief A row of labelled segments, one lit: the parameter's current choice.

    The segments come from "Items" (one "Item" each; its text is the label,
    its "value" attribute what a click sends, the label when absent).
    "Orientation" "Vertical" stacks them top to bottom.

    The lit segment is the one whose value, else label, equals the
    parameter's display text; when none does, the position picks it as a
    step on the segment count (position × (count − 1), rounded).

    A click on a segment other than the lit one sends its value as text
    (kind 1) on address 0. Right and Down step the parameter up (kind 2),
    Left and Up down, so the light moves the way the arrow points; the wheel
    steps once per notch, up is up. Control and Control+Shift presses go to
    the common selection and link handling.
*/
class Switcher : public BaseWidget
{
    Q_OBJECT
    Q_PROPERTY(QStringList items READ labels)
    Q_PROPERTY(QStringList itemValues READ values)
    Q_PROPERTY(int currentIndex READ currentIndex NOTIFY currentIndexChanged)
    Q_PROPERTY(QString orientation READ orientationText)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)
    Q_PROPERTY(QColor selectedColor READ selectedColor WRITE setSelectedColor)
    Q_PROPERTY(QColor selectedTextColor READ selectedTextColor WRITE setSelectedTextColor)
    CORVANE_TAG_TABLE

public:
    using Item = LabelledItem;

    Switcher(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    static const QColor defaultTextColor;
    static const QColor defaultBackgroundColor;
    static const QColor defaultSelectedColor;
    static const QColor defaultSelectedTextColor;
    static const QColor frameColor;

    QVector<Item> items() const { return m_items; }
    void setItems(const QVector<Item> &items);
    QStringList labels() const;
    QStringList values() const;
    //! The lit segment, or -1.
    int currentIndex() const { return m_currentIndex; }

    Qt::Orientation orientation() const { return m_orientation; }
    void setOrientation(Qt::Orientation orientation);
    QString orientationText() const;

    QColor textColor() const { return m_textColor; }
    void setTextColor(const QColor &color);
    QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor &color);
    QColor selectedColor() const { return m_selectedColor; }
    void setSelectedColor(const QColor &color);
    QColor selectedTextColor() const { return m_selectedTextColor; }
    void setSelectedTextColor(const QColor &color);

    //! Where segment \a index is drawn; empty outside the list.
    QRect segmentRect(int index) const;
    //! The segment under \a pos, or -1.
    int segmentAt(const QPoint &pos) const;
    //! Sends segment \a index's value; false when nothing was sent.
    bool choose(int index);

signals:
    void currentIndexChanged(int index);

protected:
    virtual bool readItems(const QDomElement &e);
    virtual bool readOrientation(const QDomElement &e);

    //! The segment the parameter's value lights, or -1.
    virtual int indexOfCurrent() const;
    void refresh() override;

    void ownValueChanged(int index) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    QVector<Item> m_items;
    int m_currentIndex = -1;
    Qt::Orientation m_orientation = Qt::Horizontal;
    QColor m_textColor = defaultTextColor;
    QColor m_backgroundColor = defaultBackgroundColor;
    QColor m_selectedColor = defaultSelectedColor;
    QColor m_selectedTextColor = defaultSelectedTextColor;
    WheelSteps m_wheel;
};

#endif
