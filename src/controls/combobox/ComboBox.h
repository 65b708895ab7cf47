#ifndef CORVANE_CONTROLS_COMBOBOX_COMBOBOX_H
#define CORVANE_CONTROLS_COMBOBOX_COMBOBOX_H

#include "controls/combobox/ComboBoxPopup.h"
#include "controls/common/WheelSteps.h"
#include "core/BaseWidget.h"
#include "controls/common/LabelledItems.h"

#include <QColor>
#include <QPointer>
#include <QStringList>
#include <QVector>

/*!
    \class ComboBox
    \brief Shows a parameter's display text in a box with a drop-down arrow
    and offers its options in a list.

    The options come from the description ("Items", one "Item" per option;
    an item's "value" attribute is what choosing it sends, its text what is
    shown) or else from the parameter itself, whose "ui_prm_option" lists
    them separated by "|". Choosing an option sends its text (request kind
    1) on address 0; choosing the current one sends nothing.

    A click, Space, Return, F4 or Alt+Down opens the list. Up and Down step
    the parameter (kind 2, "1" and "-1"), the wheel one step per notch.
    Control and Control+Shift presses go to the common selection and link
    handling. A read-only combo box shows its text without an arrow and
    takes no input but those presses.
*/
class ComboBox : public BaseWidget
{
    Q_OBJECT
    Q_PROPERTY(QString currentText READ currentText NOTIFY currentTextChanged)
    Q_PROPERTY(int currentIndex READ currentIndex)
    Q_PROPERTY(QStringList options READ options)
    Q_PROPERTY(QStringList optionValues READ optionValues)
    Q_PROPERTY(bool popupOpen READ isPopupOpen NOTIFY popupOpenChanged)
    Q_PROPERTY(bool readOnly READ isReadOnly WRITE setReadOnly)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)
    Q_PROPERTY(int maxVisibleItems READ maxVisibleItems WRITE setMaxVisibleItems)
    CORVANE_TAG_TABLE

public:
    using Option = LabelledItem;

    ComboBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
    ~ComboBox() override;

    static const QColor defaultTextColor;
    static const QColor defaultBackgroundColor;
    static const QColor frameColor;

    //! The options offered now, in list order.
    QVector<Option> optionList() const { return m_options; }
    QStringList options() const;
    QStringList optionValues() const;
    //! The option the parameter holds, or -1.
    int currentIndex() const { return m_currentIndex; }
    //! The text in the box: the current option's label, else the parameter's display text.
    QString currentText() const { return m_currentText; }

    bool isPopupOpen() const;
    ComboBoxPopup *popup() const { return m_popup; }
    //! Opens the list; false when there is nothing to choose or the box is read only.
    bool showPopup();
    void hidePopup();
    //! Sends option \a index as the parameter's new value; false when nothing was sent.
    bool choose(int index);
    //! Steps the parameter by \a step (1 or -1).
    void stepValue(int step);

    bool isReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly);
    QColor textColor() const { return m_textColor; }
    void setTextColor(const QColor &color);
    QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor &color);
    int maxVisibleItems() const { return m_maxVisibleItems; }
    void setMaxVisibleItems(int count);

    //! The description's own options; empty when the parameter's are used.
    QVector<Option> items() const { return m_items; }
    void setItems(const QVector<Option> &items);

    //! Where the arrow is drawn; empty when read only.
    QRect arrowRect() const;

signals:
    void currentTextChanged(const QString &text);
    void popupOpenChanged(bool open);
    //! The user chose option \a index from the list.
    void activated(int index);

protected:
    virtual bool readItems(const QDomElement &e);

    //! The options when the description lists none: the parameter's "ui_prm_option".
    virtual QVector<Option> parameterOptions() const;
    //! Which of \a options the parameter holds, or -1.
    virtual int indexOfCurrent(const QVector<Option> &options) const;
    //! Sends \a option; the base sends its value as text on address 0.
    virtual bool sendOption(int index, const Option &option);
    //! Re-reads options, current option and text; repaints what changed.
    void refresh() override;

    bool canOperate() const { return !m_readOnly && isEnabled(); }

    void ownValueChanged(int index) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void popupClosed();

    QVector<Option> m_items;
    QVector<Option> m_options;
    int m_currentIndex = -1;
    QString m_currentText;
    bool m_readOnly = false;
    QColor m_textColor = defaultTextColor;
    QColor m_backgroundColor = defaultBackgroundColor;
    int m_maxVisibleItems = 12;
    QPointer<ComboBoxPopup> m_popup;
    WheelSteps m_wheel;
};

#endif
