#ifndef CORVANE_PANELS_PANELS_VARIANTS_H
#define CORVANE_PANELS_PANELS_VARIANTS_H

#include "core/AddressingMixins.h"
#include "controls/text/ValueTexts.h"
#include "panels/DisablePanelContainer.h"
#include "panels/PanelContainer.h"
#include "panels/PanelStacker.h"

class QScrollArea;

//! Behaves as PanelStacker, for protection settings: nothing of its own.
class ProtectPanelStacker : public PanelStacker
{
    Q_OBJECT
public:
    using PanelStacker::PanelStacker;
};

//! The stacker on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectPanelStacker : public ChannelSelect<PanelStacker>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

//! The container for one tuning zone (Zone): the base and its addressing do it all.
class TuningZonePanelContainer : public TuningZone<PanelContainer>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

//! The stacker for one tuning zone (Zone): the base and its addressing do it all.
class TuningZonePanelStacker : public TuningZone<PanelStacker>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

//! The stacker for one tuning zone (Zone), paging by the zone's device: the base and its addressing do it all.
class TuningZoneDevicePanelStacker : public TuningZone<PanelStacker>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

//! The stacker for one shared band (BandNum): the base and its addressing do it all.
class BandSharingPanelStacker : public BandSharing<PanelStacker>
{
    Q_OBJECT
public:
    using BandSharing::BandSharing;
};

//! The container on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerPanelContainer : public Speaker<PanelContainer>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! The stacker on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerPanelStacker : public Speaker<PanelStacker>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! The protection stacker on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerProtectPanelStacker : public Speaker<ProtectPanelStacker>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

//! The container on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT), for the loudspeaker type: the base and its addressing do it all.
class SpeakerTypePanelContainer : public Speaker<PanelContainer>
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

/*!
    \class DragPanel
    \brief A panel container whose panel the user moves by dragging it.

    As ScrollPanel, without scroll bars: a panel larger than the container
    follows a left-button drag on its background (where no control takes
    the press), showing the part the user pulls into view, never beyond its
    edges. The wheel scrolls as in ScrollPanel. The cursor is an open hand
    over a panel that can move, a closed one while it is dragged.
*/
class DragPanel : public ScrollPanel
{
    Q_OBJECT
    Q_PROPERTY(bool dragging READ isDragging)
    Q_PROPERTY(QPoint offset READ offset)
public:
    using ScrollPanel::ScrollPanel;

    bool isDragging() const { return m_dragging; }
    //! How far the panel is moved: the part of it shown starts there.
    QPoint offset() const;
    //! Whether the panel is larger than the container in either direction.
    bool canMove() const;

protected:
    void installPanel(QWidget *panel) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void updateCursor();

    bool m_dragging = false;
    QPoint m_grabPoint;   // global position of the press
    QPoint m_grabOffset;  // offset() at the press
};

//! The drag panel on the channel its selector picks (ChNum): the base and its addressing do it all.
class ChannelSelectDragPanel : public ChannelSelect<DragPanel>
{
    Q_OBJECT
public:
    using ChannelSelect::ChannelSelect;
};

//! The drag panel on the connected loudspeaker's parameters (ModelToBaseAddressMap, DEFAULT): the base and its addressing do it all.
class SpeakerDragPanel : public Speaker<DragPanel>
{
    Q_OBJECT
public:
    using Speaker::Speaker;
};

/*!
    \class AutomixerGroupController
    \brief The panel of one automixer group, live while the group is.

    A panel container whose address 0 is the group's on/off parameter: while
    the group is off (position 0 or less, or no number) the panel's controls
    are disabled and drawn dimmed; while it is on they work. Without an
    address the panel stays enabled.
*/
class AutomixerGroupController : public PanelContainer
{
    Q_OBJECT
    Q_PROPERTY(bool groupOn READ isGroupOn)
public:
    using PanelContainer::PanelContainer;

    bool isGroupOn() const;

protected:
    void installPanel(QWidget *panel) override;
    void ownValueChanged(int index) override;

private:
    void applyGroupState();
};

#endif
