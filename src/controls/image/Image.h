#ifndef CORVANE_CONTROLS_IMAGE_IMAGE_H
#define CORVANE_CONTROLS_IMAGE_IMAGE_H

#include "controls/common/ImageSource.h"
#include "core/BaseWidget.h"

#include <QColor>
#include <QStringList>

/*!
    \class Image
    \brief Draws a named image, scaled to the control with its aspect ratio
    kept (centred) unless "Stretch" is true.

    The base class of the controls that show an image or a colour chosen
    from a parameter: subclasses override chooseImage(), and repaint only
    when the chosen image changes. Renderings come from the cache every
    control shares.
*/
class Image : public BaseWidget
{
    Q_OBJECT
    Q_PROPERTY(QString image READ image WRITE setImage)
    Q_PROPERTY(bool stretch READ isStretched WRITE setStretched)
    Q_PROPERTY(QString currentImage READ currentImage NOTIFY currentImageChanged)
    Q_PROPERTY(bool imageLoaded READ isImageLoaded)
    CORVANE_TAG_TABLE

public:
    Image(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
    ~Image() override;

    QString image() const { return m_image; }
    void setImage(const QString &name);
    bool isStretched() const { return m_stretch; }
    void setStretched(bool stretch);

    //! The name of the image drawn now; empty when none.
    QString currentImage() const { return m_current.name(); }
    //! Whether the current image was found and can be drawn.
    bool isImageLoaded() const;
    //! Where the current image is drawn; empty when there is none.
    QRect imageRect() const;

    //! "range": the number of steps the parameter's position is read on.

signals:
    void currentImageChanged(const QString &name);

protected:
    virtual bool readImage(const QDomElement &e);
    bool readRange(const QDomElement &e);

    //! The image to draw now; the base draws "Image".
    virtual QString chooseImage() const { return m_image; }
    //! Re-evaluates what the parameter chooses; repaints what changed. The base re-chooses the image.
    void refresh() override;
    //! The steps given by "range", or \a fallback when there was none.
    int steps(int fallback) const { return m_range > 0 ? m_range : fallback; }
    bool hasRange() const { return m_range > 0; }
    bool setRange(int steps);
    //! Address 0's step on \a steps steps, or -1 when it is unbound or not a number.
    int parameterStep(int steps) const;

    void ownValueChanged(int index) override;
    void paintEvent(QPaintEvent *event) override;
    //! Draws the control; the base draws the current image.
    virtual void paintContent(QPainter &painter);
    void resizeEvent(QResizeEvent *event) override;

private:
    QString basePath() const;

    QString m_image;
    ImageSource m_current;
    bool m_stretch = false;
    int m_range = 0;
};

/*!
    \class ParameterImage
    \brief Shows one of several images by the parameter's step.

    "ImageList" holds one "Image" per step, from the position 0 upwards;
    the position is read on "range" steps (an attribute of the list or a
    tag of its own), by default one step less than there are images. A step
    without an image, or a parameter without a number, shows "Image" when
    given.
*/
class ParameterImage : public Image
{
    Q_OBJECT
    Q_PROPERTY(QStringList imageList READ imageList)
    Q_PROPERTY(int currentStep READ currentStep)
    CORVANE_TAG_TABLE

public:
    using Image::Image;

    QStringList imageList() const { return m_images; }
    void setImageList(const QStringList &names);
    //! The list entry shown, or -1.
    int currentStep() const { return imageIndex(); }

protected:
    virtual bool readImageList(const QDomElement &e);

    //! The entry of the list to show, or -1.
    virtual int imageIndex() const;
    QString chooseImage() const override;
    int listSteps() const { return steps(qMax(1, int(m_images.size()) - 1)); }

private:
    QStringList m_images;
};

/*!
    \class SelectFrame
    \brief Draws a frame while its parameter's step equals "Value".

    The position is read on "range" steps (1 by default, so "Value" 1
    frames while an on/off parameter is on). "FrameColor" and "FrameWidth"
    (design pixels) style the frame; an "Image" is drawn under it.
*/
class SelectFrame : public Image
{
    Q_OBJECT
    Q_PROPERTY(bool selected READ isSelected NOTIFY selectedChanged)
    Q_PROPERTY(int value READ value WRITE setValue)
    Q_PROPERTY(QColor frameColor READ frameColor WRITE setFrameColor)
    Q_PROPERTY(int frameWidth READ frameWidth WRITE setFrameWidth)
    CORVANE_TAG_TABLE

public:
    SelectFrame(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    static const QColor defaultFrameColor;

    bool isSelected() const { return m_selected; }
    int value() const { return m_value; }
    void setValue(int value);
    QColor frameColor() const { return m_frameColor; }
    void setFrameColor(const QColor &color);
    int frameWidth() const { return m_frameWidth; }
    void setFrameWidth(int width);

signals:
    void selectedChanged(bool selected);

protected:
    void refresh() override;
    void paintContent(QPainter &painter) override;

private:

    bool m_selected = false;
    int m_value = 0;
    QColor m_frameColor = defaultFrameColor;
    int m_frameWidth = 2;
};

/*!
    \class ParameterColor
    \brief Fills the control with a colour chosen by the parameter's step.

    "ColorList" holds one "Color" (r,g,b[,a]) per step, read on "range"
    steps like ParameterImage's list; a step without a colour (or with
    one that cannot be read) fills nothing. An "Image" is drawn over the colour.
*/
class ParameterColor : public Image
{
    Q_OBJECT
    Q_PROPERTY(QColor currentColor READ currentColor NOTIFY currentColorChanged)
    Q_PROPERTY(int colorCount READ colorCount)
    CORVANE_TAG_TABLE

public:
    using Image::Image;

    //! The colour filled now; transparent when none.
    QColor currentColor() const { return m_currentColor; }
    QList<QColor> colors() const { return m_colors; }
    int colorCount() const { return m_colors.size(); }

signals:
    void currentColorChanged(const QColor &color);

protected:
    virtual bool readColorList(const QDomElement &e);

    void refresh() override;
    void paintContent(QPainter &painter) override;

private:

    QList<QColor> m_colors;
    QColor m_currentColor = Qt::transparent;
};

#endif
