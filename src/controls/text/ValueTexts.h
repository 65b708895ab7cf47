#ifndef CORVANE_CONTROLS_TEXT_VALUETEXTS_H
#define CORVANE_CONTROLS_TEXT_VALUETEXTS_H

#include "controls/numberbox/LineEdit.h"
#include "core/BaseWidget.h"

#include <QColor>
#include <QMap>

/*!
    \class AbstractValueText
    \brief The base of the texts that show a parameter: colours, alignment
    and painting of shownText().

    "TextColor", "BackgroundColor" (transparent unless given) and
    "TextAlignment" (the number box's words: "Left", "Right", "VCenter").
*/
class AbstractValueText : public BaseWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)
    Q_PROPERTY(Qt::Alignment textAlignment READ textAlignment WRITE setTextAlignment)
    Q_PROPERTY(QString shownText READ shownText)

public:
    AbstractValueText(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    static const TagTable &tags();
    const TagTable &tagTable() const override { return tags(); }

    QColor textColor() const { return m_textColor; }
    void setTextColor(const QColor &color);
    QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor &color);
    Qt::Alignment textAlignment() const { return m_alignment; }
    void setTextAlignment(Qt::Alignment alignment);

    //! The text drawn: the display text of the first address by default.
    virtual QString shownText() const;

protected:
    virtual bool readBackgroundColor(const QDomElement &e);
    virtual bool readTextAlignment(const QDomElement &e);

    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_textColor{204, 204, 204, 255};
    QColor m_backgroundColor{0, 0, 0, 0};
    Qt::Alignment m_alignment = Qt::AlignCenter;
};

/*!
    \class ValueText
    \brief Shows a parameter's value through a table of texts.

    "ValueText" elements map one display text (attribute "value") to the
    text shown; "ValueTextList" lists texts for the positions 0 to 1 in
    even steps (child elements, or one text split at ","). "unit" is
    written after the value.
*/
class ValueText : public AbstractValueText
{
    Q_OBJECT
    Q_PROPERTY(QStringList valueTextList READ valueTextList)
    Q_PROPERTY(QString unit READ unit WRITE setUnit)

public:
    ValueText(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    static const TagTable &tags();
    const TagTable &tagTable() const override { return tags(); }

    QStringList valueTextList() const { return m_list; }
    QString unit() const { return m_unit; }
    void setUnit(const QString &unit) { updateMember(m_unit, unit); }
    QString shownText() const override;

protected:
    virtual bool readValueTextList(const QDomElement &e);
    virtual bool readValueText(const QDomElement &e);

private:
    QStringList m_list;
    QMap<QString, QString> m_texts;
    QString m_unit;
};

/*!
    \class ParameterText
    \brief Shows a parameter's display text, after an "IntroText", through
    the "ValueTextItems" table where it has an entry.

    With "ReadOnly" "false" the text is edited in place like a number box:
    Return, Enter or a double-click opens the editor, and the commit sends
    the typed text.
*/
class ParameterText : public AbstractValueText, public EditorOwner
{
    Q_OBJECT
    Q_PROPERTY(bool readOnly READ isReadOnly WRITE setReadOnly)
    Q_PROPERTY(QString introText READ introText WRITE setIntroText)
    Q_PROPERTY(bool editing READ isEditing)
    Q_PROPERTY(QString editorText READ editorText)

public:
    ParameterText(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
    ~ParameterText() override;

    static const TagTable &tags();
    const TagTable &tagTable() const override { return tags(); }

    bool isReadOnly() const { return m_readOnly; }
    void setReadOnly(bool on);
    QString introText() const { return m_introText; }
    void setIntroText(const QString &text) { updateMember(m_introText, text); }
    QString shownText() const override;
    LineEdit *editor() const { return m_editor; }
    bool isEditing() const { return m_editor && m_editor->isVisible(); }
    QString editorText() const { return m_editor ? m_editor->text() : QString(); }

    void startEditing();
    void endEditing(bool commit) override;
    void editorKeyPressed(QKeyEvent *event) override;

signals:
    void editingFinished(bool committed);

protected:
    virtual bool readReadOnly(const QDomElement &e);
    virtual bool readValueTextItems(const QDomElement &e);

    //! Gives a new editor its validator.
    virtual void prepareEditor(LineEdit *editor) { Q_UNUSED(editor) }
    //! Whether the editor takes numbers only (the input method is closed).
    virtual bool numericInput() const { return false; }
    virtual void commitText(const QString &text) { requestText(text, 0); }

    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    bool m_readOnly = true;
    QString m_introText;
    QMap<QString, QString> m_items;
    LineEdit *m_editor = nullptr;
};

/*!
    \class Text
    \brief A fixed text ("Text"), or the display text of its parameter when
    it has one.

    "PadLeft" indents by design pixels; "TextDirection" "Upward" or
    "Downward" turns the text a quarter; "TextAlignment" takes "Left",
    "Right", "HCenter", "Top", "Bottom" and "VCenter" (left and vertically
    centred by default).
*/
class Text : public BaseWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(int padLeft READ padLeft WRITE setPadLeft)
    Q_PROPERTY(QString textDirection READ textDirection)
    Q_PROPERTY(Qt::Alignment textAlignment READ textAlignment)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)
    Q_PROPERTY(QString shownText READ shownText)

public:
    Text(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    static const TagTable &tags();
    const TagTable &tagTable() const override { return tags(); }

    QString text() const { return m_text; }
    void setText(const QString &text);
    int padLeft() const { return m_padLeft; }
    void setPadLeft(int pixels) { updateMember(m_padLeft, pixels); }
    QString textDirection() const { return m_direction; }
    Qt::Alignment textAlignment() const { return m_alignment; }
    QColor textColor() const { return m_textColor; }
    void setTextColor(const QColor &color);
    QColor backgroundColor() const { return m_backgroundColor; }
    //! An opaque colour makes the text opaque to Qt: it paints every pixel.
    void setBackgroundColor(const QColor &color);
    virtual QString shownText() const;

    //! The alignment words of a text, over left and vertically centred.
    static Qt::Alignment alignmentFromWords(const QString &text);

protected:
    virtual bool readTextDirection(const QDomElement &e);
    virtual bool readTextAlignment(const QDomElement &e);

    //! The area the text is drawn in.
    virtual QRect textRect() const;
    void paintEvent(QPaintEvent *event) override;
    void paintText(QPainter &painter);

private:
    QString m_text;
    int m_padLeft = 0;
    QString m_direction;
    Qt::Alignment m_alignment = Qt::AlignLeft | Qt::AlignVCenter;
    QColor m_textColor{204, 204, 204, 255};
    QColor m_backgroundColor{0, 0, 0, 0};
};

#endif
