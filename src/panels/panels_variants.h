#ifndef CORVANE_PANELS_PANELS_VARIANTS_H
#define CORVANE_PANELS_PANELS_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/text/ValueTexts.h"
#include "panels/PanelContainer.h"
#include "panels/PanelStacker.h"

class DisablePanelContainer : public ParameterText
{
    Q_OBJECT
public:
    using ParameterText::ParameterText;
};

class DisablePanelMulti : public DisablePanelContainer
{
    Q_OBJECT
public:
    using DisablePanelContainer::DisablePanelContainer;
};

class DragPanel : public PanelContainer
{
    Q_OBJECT
public:
    using PanelContainer::PanelContainer;
};

class ProtectPanelStacker : public PanelStacker
{
    Q_OBJECT
public:
    using PanelStacker::PanelStacker;
};

class ChannelSelectPanelStacker : public ChannelSelect<PanelStacker>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class ChannelSelectDragPanel : public ChannelSelect<DragPanel>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

class TuningZonePanelContainer : public TuningZone<PanelContainer>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class TuningZonePanelStacker : public TuningZone<PanelStacker>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class TuningZoneDevicePanelStacker : public TuningZone<PanelStacker>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class BandSharingPanelStacker : public BandSharing<PanelStacker>
{
    Q_OBJECT
public:
    using BandSharing::BandSharing;
};

class SpeakerPanelContainer : public Speaker<PanelContainer>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerPanelStacker : public Speaker<PanelStacker>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerProtectPanelStacker : public Speaker<ProtectPanelStacker>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerTypePanelContainer : public Speaker<PanelContainer>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class SpeakerDragPanel : public Speaker<DragPanel>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

class ScrollPanel : public PanelContainer
{
    Q_OBJECT
public:
    using PanelContainer::PanelContainer;
};

class AutomixerGroupController : public PanelContainer
{
    Q_OBJECT
public:
    using PanelContainer::PanelContainer;
};

#endif
