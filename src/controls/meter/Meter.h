#ifndef CORVANE_CONTROLS_METER_METER_H
#define CORVANE_CONTROLS_METER_METER_H

#include "controls/common/ImageSource.h"
#include "core/BaseWidget.h"

#include <QGradientStops>
#include <QPixmap>

/*!
    \class Meter
    \brief Shows a level as an image revealed from the bottom up to the
    level's height.

    The level arrives as the normalised position ("ui_prm_val") of address
    0; the database owns the decibel law, the ballistics and the peak hold,
    so the meter only turns a position into pixels and paints. Address 1 is
    the device's online state: a device that is not "online" drops the level
    to 0 at once.

    The image ("Image", relative to the host's image folder) is rendered at
    the meter's size once and kept in the cache shared by every control, so
    a level change only changes the clip. Without a usable image the meter
    draws a gradient bar of its own over a dimmed track.
*/
class Meter : public BaseWidget
{
    Q_OBJECT
    // The meaning of each address index, for hosts and panelview --describe.
    Q_CLASSINFO("Addresses", "0: the level|1: the online state (optional)")
    Q_PROPERTY(QString image READ image WRITE setImage)
    Q_PROPERTY(int level READ level WRITE setLevel NOTIFY levelChanged)
    Q_PROPERTY(bool online READ isOnline)
    Q_PROPERTY(bool imageLoaded READ isImageLoaded)
    CORVANE_TAG_TABLE

public:
    Meter(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);
    ~Meter() override;

    QString image() const { return m_source.name(); }
    void setImage(const QString &name);
    //! The file the image name resolves to; empty when there is none.
    QString imagePath() const;
    //! Whether the image was found and rendered; false while the meter falls back to its own bar.
    bool isImageLoaded() const;

    //! The lit height in pixels.
    int level() const { return m_level; }
    void setLevel(int pixels);

    //! Whether the device is online; a meter without an online address always is.
    bool isOnline() const;

    //! Pixels lit by position \a v on a meter \a height pixels high: int(height × v + 0.5).
    static int pixelsOf(double v, int height);

    //! "BuiltInBar" "true": without a usable image, draw the built-in bar instead of nothing.
    virtual bool readBuiltInBar(const QDomElement &e);

signals:
    void levelChanged(int pixels);

protected:
    //! Address of the online state.
    virtual int onlineIndex() const { return 1; }
    //! The lit height for position \a v of the level address.
    virtual int levelPixels(double v) const { return pixelsOf(v, height()); }
    //! Whether the meter fills downwards from the top edge.
    virtual bool litFromTop() const { return false; }
    //! The colours of the bar drawn without an image, from the lit end outwards.
    virtual QGradientStops fallbackStops() const;

    //! The rows lit by \a pixels.
    QRect litRect(int pixels) const;
    //! The image the meter shows at its current size: the loaded image, the built-in bar when chosen, or none.
    QPixmap meterImage() const;
    //! Re-reads the level from the level address (0 while offline).
    void readLevel();
    //! Repaints the meter when two lit heights show differently.
    void updateBetween(int fromPixels, int toPixels);

    void ownValueChanged(int index) override;
    //! A meter paints only what its level reads; unchanged values paint nothing.
    bool repaintsOnMatch() const override { return false; }
    void paintEvent(QPaintEvent *event) override;
    //! Paints the lit part; variants add their marks afterwards.
    virtual void paintMeter(QPainter &painter);
    void resizeEvent(QResizeEvent *event) override;

    double m_levelPosition = 0.0;

private:
    QPixmap fallbackImage(const QSize &size, qreal dpr) const;

    ImageSource m_source;
    qint16 m_level = 0;
    mutable QPixmap m_shown;
    //! The built-in bar's dimmed track, made once per size.
    mutable QPixmap m_track;
    mutable QSize m_shownSize;
    mutable bool m_shownIsImage = false;
    //! Whether the built-in bar is fully opaque: then the track need not be drawn under its lit part.
    mutable bool m_shownOpaque = false;
    bool m_builtInBar = false;
};

#endif
