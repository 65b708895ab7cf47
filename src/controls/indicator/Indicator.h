#ifndef CORVANE_CONTROLS_INDICATOR_INDICATOR_H
#define CORVANE_CONTROLS_INDICATOR_INDICATOR_H

#include "controls/common/ImageSource.h"
#include "core/BaseWidget.h"

#include <QColor>

/*!
    \class Indicator
    \brief A lamp: lit while its parameter is on.

    The parameter is on when its position is a number above 0. The lamp is
    drawn with "OnImage" or "OffImage" when the state has an image that can
    be read, else as a face filled with "OnColor" or "OffColor"; "Shape"
    "round" makes the face a circle. An optional "Text" is drawn centred on
    top in "TextColor".

    Variants decide what "on" means by overriding computeOn(); the lamp
    repaints only when the state or its look changes.
*/
class Indicator : public BaseWidget
{
    Q_OBJECT
    Q_PROPERTY(bool on READ isOn NOTIFY onChanged)
    Q_PROPERTY(QColor onColor READ onColor WRITE setOnColor)
    Q_PROPERTY(QColor offColor READ offColor WRITE setOffColor)
    Q_PROPERTY(QString onImage READ onImage WRITE setOnImage)
    Q_PROPERTY(QString offImage READ offImage WRITE setOffImage)
    Q_PROPERTY(QString currentImage READ currentImage)
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(QString shownText READ shownText)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(bool round READ isRound WRITE setRound)
    CORVANE_TAG_TABLE

public:
    Indicator(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
    ~Indicator() override;

    static const QColor defaultOnColor;
    static const QColor defaultOffColor;
    static const QColor defaultTextColor;

    bool isOn() const { return m_on; }

    QColor onColor() const { return m_onColor; }
    void setOnColor(const QColor &color);
    QColor offColor() const { return m_offColor; }
    void setOffColor(const QColor &color);
    QString onImage() const { return m_onImage.name(); }
    void setOnImage(const QString &name);
    QString offImage() const { return m_offImage.name(); }
    void setOffImage(const QString &name);
    //! The image drawn for the current state; empty when the lamp is drawn in colour.
    QString currentImage() const;
    QString text() const { return m_text; }
    void setText(const QString &text);
    //! The text drawn on the lamp.
    virtual QString shownText() const { return m_text; }
    QColor textColor() const { return m_textColor; }
    void setTextColor(const QColor &color);
    bool isRound() const { return m_round; }
    void setRound(bool round);

signals:
    void onChanged(bool on);

protected:
    virtual bool readShape(const QDomElement &e);

    //! Whether the lamp is lit; the base: address 0 is bound and on.
    virtual bool computeOn() const;
    //! Whether own address \a index is bound and on.
    bool addressOn(int index) const;
    //! How many of the own addresses are on.
    int addressesOn() const;
    //! Re-evaluates the state; repaints when it changed.
    void refresh() override;

    void ownValueChanged(int index) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap stateImage() const;

    bool m_on = false;
    QColor m_onColor = defaultOnColor;
    QColor m_offColor = defaultOffColor;
    QColor m_textColor = defaultTextColor;
    ImageSource m_onImage;
    ImageSource m_offImage;
    QString m_text;
    bool m_round = false;
};

#endif
