#ifndef CORVANE_CONTROLS_IMAGE_IMAGE_VARIANTS_H
#define CORVANE_CONTROLS_IMAGE_IMAGE_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/image/Image.h"

#include <QVector>

#include <algorithm>

/*!
    Chooses the image by thresholds instead of steps: "Threshold" lists
    numbers (separated by ","; several elements add up), and image i of the
    list shows while the value is greater than i of them. The value is the
    parameter's step on "range" steps when given, else its position (0 to
    1).
*/
template <class Base>
class GreaterThan : public Base
{
public:
    using Base::Base;

    static const TagTable &tags()
    {
        static const TagTable table = TagTable::of<GreaterThan>(&Base::tags(), {
            {"Threshold", &GreaterThan::readThreshold},
        });
        return table;
    }
    const TagTable &tagTable() const override { return tags(); }

    QVector<double> thresholds() const { return m_thresholds; }
    QVariantList thresholdList() const
    {
        QVariantList list;
        for (double t : m_thresholds)
            list.append(t);
        return list;
    }

    bool readThreshold(const QDomElement &e)
    {
        bool any = false;
        for (const QString &part : e.text().split(QLatin1Char(','), Qt::SkipEmptyParts)) {
            bool ok = false;
            const double t = part.trimmed().toDouble(&ok);
            if (!ok)
                continue;
            m_thresholds.append(t);
            any = true;
        }
        std::sort(m_thresholds.begin(), m_thresholds.end());
        this->refresh();
        return any;
    }

protected:
    int imageIndex() const override
    {
        if (this->addressCount() == 0 || !this->addressAt(0).isValid())
            return -1;
        bool ok = false;
        const double position = this->positionText(0).toDouble(&ok);
        if (!ok)
            return -1;
        const double value = this->hasRange() ? this->parameterStep(this->listSteps()) : position;
        int index = 0;
        for (double t : m_thresholds)
            index += value > t ? 1 : 0;
        return index < this->imageList().size() ? index : -1;
    }

private:
    QVector<double> m_thresholds;
};

//! The parameter image on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectParameterImage : public ChannelSelect<ParameterImage>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class ChannelSelectParameterGreaterThanImage : public GreaterThan<ChannelSelectParameterImage>
{
    Q_OBJECT
    Q_PROPERTY(QVariantList thresholds READ thresholdList)
public:
    using GreaterThan::GreaterThan;
};

//! The image (a colour swatch, say) follows the loudspeaker model's parameter.
class SpeakerColorImage : public Speaker<ParameterImage>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerParameterGreaterThanImage : public GreaterThan<Speaker<ParameterImage>>
{
    Q_OBJECT
    Q_PROPERTY(QVariantList thresholds READ thresholdList)
public:
    using GreaterThan::GreaterThan;
};

/*!
    A stack of images, one shown per step like ParameterImage; besides an
    "ImageList", every "Image" element adds a page, in order.
*/
class ImageStacker : public ParameterImage
{
    Q_OBJECT
public:
    using ParameterImage::ParameterImage;

    bool readImage(const QDomElement &e) override
    {
        setImageList(imageList() << e.text().trimmed());
        return true;
    }
};

//! The pickup direction or pattern of a microphone: one image per step.
class MicDirection : public ParameterImage
{
    Q_OBJECT
public:
    using ParameterImage::ParameterImage;
};

//! The state of an audio codec: one image per step.
class AudioCodecStatus : public ParameterImage
{
    Q_OBJECT
public:
    using ParameterImage::ParameterImage;
};

#endif
