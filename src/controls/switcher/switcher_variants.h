#ifndef CORVANE_CONTROLS_SWITCHER_SWITCHER_VARIANTS_H
#define CORVANE_CONTROLS_SWITCHER_SWITCHER_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/switcher/Switcher.h"

class ChannelSelectSwitcher : public ChannelSelect<Switcher>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class SpeakerSwitcher : public Speaker<Switcher>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

#endif
