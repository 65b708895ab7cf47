#ifndef CORVANE_CONTROLS_SWITCHER_SWITCHER_VARIANTS_H
#define CORVANE_CONTROLS_SWITCHER_SWITCHER_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/switcher/Switcher.h"

//! The switcher on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectSwitcher : public ChannelSelect<Switcher>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

//! The switcher on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerSwitcher : public Speaker<Switcher>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

#endif
