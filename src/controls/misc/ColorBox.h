#ifndef CORVANE_CONTROLS_MISC_COLORBOX_H
#define CORVANE_CONTROLS_MISC_COLORBOX_H

#include "core/BaseWidget.h"

#include <QColor>
#include <QPointer>

class QColorDialog;

/*!
    \class ColorBox
    \brief A swatch filled with its parameter's colour; a click picks another.

    The display text of address 0 is read as "R,G,B[,A]" (0 to 255 each) or
    "#rrggbb"; anything else shows "DefaultColor". A left click opens a
    colour dialog on the current colour; the colour chosen is sent as text
    "R,G,B" (kind 1). Cancelling, or choosing the colour shown, sends
    nothing. The host may answer the question itself
    (IHostCore::answerColor); otherwise the dialog is not modal, so nothing
    waits for it.
*/
class ColorBox : public BaseWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor color READ color NOTIFY colorChanged)
    Q_PROPERTY(QColor defaultColor READ defaultColor WRITE setDefaultColor)
    Q_PROPERTY(QColor frameColor READ frameColor WRITE setFrameColor)
    CORVANE_TAG_TABLE

public:
    ColorBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    //! The colour of a display text, invalid when the text is not one.
    static QColor colorOfText(const QString &text);
    //! The text a colour is sent as.
    static QString textOfColor(const QColor &color);

    QColor color() const { return m_color; }
    QColor defaultColor() const { return m_defaultColor; }
    void setDefaultColor(const QColor &color);
    QColor frameColor() const { return m_frameColor; }
    void setFrameColor(const QColor &color);

    //! Sends \a color unless it is invalid or the one shown; true when sent.
    bool choose(const QColor &color);
    //! The colour dialog while it is open, or null.
    QColorDialog *dialog() const;

signals:
    void colorChanged(const QColor &color);

protected:
    virtual bool readDefaultColor(const QDomElement &e);
    virtual bool readFrameColor(const QDomElement &e);

    //! Asks for a colour starting from \a initial: the host's answer, or a dialog that does not block.
    virtual void pickColor(const QColor &initial);
    void refresh() override;

    void ownValueChanged(int index) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    // m_color starts as the default colour: it must come after it.
    QColor m_defaultColor{128, 128, 128, 255};
    QColor m_frameColor{96, 96, 96, 255};
    QColor m_color;
    QPointer<QColorDialog> m_dialog;
};

#endif
