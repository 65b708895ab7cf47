#ifndef CORVANE_CONTROLS_IMAGE_IMAGE_VARIANTS_H
#define CORVANE_CONTROLS_IMAGE_IMAGE_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/image/Image.h"

class ParameterImage : public Image
{
    Q_OBJECT
public:
    using Image::Image;
};

class ChannelSelectParameterImage : public ChannelSelect<ParameterImage>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class ChannelSelectParameterGreaterThanImage : public ChannelSelectParameterImage
{
    Q_OBJECT
public:
    using ChannelSelectParameterImage::ChannelSelectParameterImage;
};

class SpeakerColorImage : public Speaker<ParameterImage>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerParameterGreaterThanImage : public Speaker<ParameterImage>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SelectFrame : public Image
{
    Q_OBJECT
public:
    using Image::Image;
};

class ParameterColor : public Image
{
    Q_OBJECT
public:
    using Image::Image;
};

class ImageStacker : public Image
{
    Q_OBJECT
public:
    using Image::Image;
};

class MicDirection : public Image
{
    Q_OBJECT
public:
    using Image::Image;
};

class AudioCodecStatus : public Image
{
    Q_OBJECT
public:
    using Image::Image;
};

#endif
