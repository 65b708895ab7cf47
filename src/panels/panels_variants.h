#ifndef CORVANE_PANELS_PANELS_VARIANTS_H
#define CORVANE_PANELS_PANELS_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/text/ValueTexts.h"
#include "panels/DisablePanelContainer.h"
#include "panels/PanelContainer.h"
#include "panels/PanelStacker.h"

class QScrollArea;

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

/*!
    \class ScrollPanel
    \brief A panel container that scrolls its panel when the panel's design
    size is larger than the container; a smaller panel is stretched to fill
    it.
*/
class ScrollPanel : public PanelContainer
{
    Q_OBJECT
public:
    using PanelContainer::PanelContainer;

    QScrollArea *scrollArea() const { return m_area; }
    bool setZoom(float zoom) override;

protected:
    void installPanel(QWidget *panel) override;

private:
    void applyPanelSize(float zoom);

    QScrollArea *m_area = nullptr;
};

class AutomixerGroupController : public PanelContainer
{
    Q_OBJECT
public:
    using PanelContainer::PanelContainer;
};

#endif
