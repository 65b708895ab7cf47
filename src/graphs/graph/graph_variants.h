#ifndef CORVANE_GRAPHS_GRAPH_GRAPH_VARIANTS_H
#define CORVANE_GRAPHS_GRAPH_GRAPH_VARIANTS_H

#include "data/ParameterKeys.h"
#include "core/AddressingMixins.h"
#include "graphs/graph/Graph.h"
#include "graphs/graph/GraphBack.h"
#include "graphs/graph/GraphControlPoint.h"
#include "graphs/graph/ParametricCurve.h"

/*!
    \class GraphicEqualizerGraph
    \brief The response of a graphic equaliser, filled, exaggerated 1.5-fold.

    Centred on the mid line, or rising from the bottom while the host's
    state (3, 1) is 3; address 1 is the parameter whose changes make the
    graph ask again.
*/
class GraphicEqualizerGraph : public Graph
{
    Q_OBJECT
    // The meaning of each address index, for hosts and panelview --describe.
    Q_CLASSINFO("Addresses", "0: the curve|1: the mode")
    Q_PROPERTY(bool bottomAnchored READ isBottomAnchored)

public:
    using Graph::Graph;

    bool isBottomAnchored() const { return m_bottomAnchored; }

protected:
    QPolygon scaled(const GraphCurves::FloatCurve &curve) const override;
    void ownValueChanged(int index) override;
    void paintCurve(QPainter &painter) override;

private:
    bool m_bottomAnchored = false;
};

/*!
    \class Halo3DGraph
    \brief Several curves in depth, one behind another.

    Every address is one curve text, as Graph reads it: address 0 in front,
    each further address one layer farther back. The layers share a plot
    area smaller than the widget by "Depth" design pixels (default 8) per
    layer behind the front; each layer farther back sits that much higher
    and further right, is drawn before the nearer ones, and fades. A text a
    layer cannot read leaves that layer as it was.
*/
class Halo3DGraph : public Graph
{
    Q_OBJECT
    Q_PROPERTY(int depth READ depth WRITE setDepth)
    Q_PROPERTY(int layerCount READ layerCount)
    CORVANE_TAG_TABLE
public:
    using Graph::Graph;

    static constexpr int defaultDepth = 8;
    static constexpr int maxDepth = 200;

    int depth() const { return m_depth; }
    void setDepth(int depth);
    //! The layers read so far: one per address up to the last with a curve.
    int layerCount() const { return m_layers.size(); }
    //! Layer \a i in pixels, placed; empty when it has no curve.
    QPolygon layer(int i) const { return m_layers.value(i); }
    //! Where layer \a i's plot area sits, of \a count layers.
    QRect layerRect(int i, int count) const;

protected:
    void ownValueChanged(int index) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintCurve(QPainter &painter) override;

private:
    void relayout();

    int m_depth = defaultDepth;
    QVector<GraphCurves::FloatCurve> m_curves;
    QVector<bool> m_read;
    QVector<QPolygon> m_layers;
};

/*!
    \class ParametricEqualizerGraph
    \brief The filled response of a parametric equaliser from address 0.

    Every value change reads the curve again. Online the curve is shown as
    it is; otherwise the graph takes the path that adds a second curve,
    which it has none of, and keeps what it showed.
*/
class ParametricEqualizerGraph : public ParametricCurve<BaseWidget>
{
    Q_OBJECT
    Q_PROPERTY(QColor LineColor READ lineColor WRITE setLineColor)
    Q_PROPERTY(QColor FillColor READ fillColor WRITE setFillColor)
    Q_PROPERTY(QString curve READ curveText)

public:
    using ParametricCurve::ParametricCurve;

protected:
    void ownValueChanged(int index) override;
};

/*!
    \class BrioParametricEqualizerGraph
    \brief A parametric equaliser graph that adds a second curve on request.

    Address 0 is the own curve, 1 the second curve and 2 the sum switch
    (on while its position is above 0).
*/
class BrioParametricEqualizerGraph : public ParametricCurve<BaseWidget>
{
    Q_OBJECT
    // The meaning of each address index, for hosts and panelview --describe.
    Q_CLASSINFO("Addresses", "0: curve A|1: curve B|2: the sum switch")
    Q_PROPERTY(QColor LineColor READ lineColor WRITE setLineColor)
    Q_PROPERTY(QColor FillColor READ fillColor WRITE setFillColor)
    Q_PROPERTY(QString curve READ curveText)
    Q_PROPERTY(bool sum READ isSumOn)

public:
    using ParametricCurve::ParametricCurve;

    bool isSumOn() const { return m_sum; }

protected:
    bool sumsCurves() const override { return m_sum; }
    void ownValueChanged(int index) override;

private:
    bool m_sum = false;
};

/*
    The speaker-processor graphs: address 0 is the curve, an optional
    address 1 a second curve added to it as the parametric graphs do while
    the host is not online. Phase graphs draw the open trace, centred on the
    mid line, broken where the phase wraps.
*/
template <class Base>
class SpeakerResponse : public ParametricCurve<Base>
{
public:
    using ParametricCurve<Base>::ParametricCurve;

protected:
    bool isOwn(int index) const
    {
        return index < this->addressCount() && !this->isSelector(index);
    }
    bool sumsCurves() const override { return isOwn(1); }
    void ownValueChanged(int index) override
    {
        if (!isOwn(index))
            Base::ownValueChanged(index);
        else if (index <= 1)
            this->curveChanged(index, index == 1);
        else
            this->update();
    }
};

//! The response of a speaker processor.
class SpeakerProcessorGraph : public SpeakerResponse<BaseWidget>
{
    Q_OBJECT
    Q_PROPERTY(QColor LineColor READ lineColor WRITE setLineColor)
    Q_PROPERTY(QColor FillColor READ fillColor WRITE setFillColor)
    Q_PROPERTY(QString curve READ curveText)

public:
    using SpeakerResponse::SpeakerResponse;
};

//! The response of a speaker processor.
class SpeakerProcessorPeqGraph : public SpeakerResponse<BaseWidget>
{
    Q_OBJECT
    Q_PROPERTY(QColor LineColor READ lineColor WRITE setLineColor)
    Q_PROPERTY(QColor FillColor READ fillColor WRITE setFillColor)
    Q_PROPERTY(QString curve READ curveText)

public:
    using SpeakerResponse::SpeakerResponse;
};

//! The phase response of a speaker processor.
class SpeakerProcessorPhaseGraph : public SpeakerResponse<BaseWidget>
{
    Q_OBJECT
    Q_PROPERTY(QColor LineColor READ lineColor WRITE setLineColor)
    Q_PROPERTY(QColor FillColor READ fillColor WRITE setFillColor)
    Q_PROPERTY(QString curve READ curveText)

public:
    using SpeakerResponse::SpeakerResponse;

protected:
    bool isPhase() const override { return true; }
};

//! The phase response of a speaker processor.
class SpeakerProcessorPeqPhaseGraph : public SpeakerResponse<BaseWidget>
{
    Q_OBJECT
    Q_PROPERTY(QColor LineColor READ lineColor WRITE setLineColor)
    Q_PROPERTY(QColor FillColor READ fillColor WRITE setFillColor)
    Q_PROPERTY(QString curve READ curveText)

public:
    using SpeakerResponse::SpeakerResponse;

protected:
    bool isPhase() const override { return true; }
};

//! The response of a speaker processor.
class ProtectSpeakerProcessorGraph : public SpeakerResponse<BaseWidget>
{
    Q_OBJECT
    Q_PROPERTY(QColor LineColor READ lineColor WRITE setLineColor)
    Q_PROPERTY(QColor FillColor READ fillColor WRITE setFillColor)
    Q_PROPERTY(QString curve READ curveText)

public:
    using SpeakerResponse::SpeakerResponse;
};

//! The phase response of a speaker processor.
class ProtectSpeakerProcessorPhaseGraph : public SpeakerResponse<BaseWidget>
{
    Q_OBJECT
    Q_PROPERTY(QColor LineColor READ lineColor WRITE setLineColor)
    Q_PROPERTY(QColor FillColor READ fillColor WRITE setFillColor)
    Q_PROPERTY(QString curve READ curveText)

public:
    using SpeakerResponse::SpeakerResponse;

protected:
    bool isPhase() const override { return true; }
};

/*
    The speaker-editor graphs show the curves of the loudspeaker connected to
    a channel: "ModelToBaseAddressMap" (and "DEFAULT") choose the base
    address from the connected model, which fills "{BaseAddress}" in the
    curve addresses.
*/
//! The response of the connected loudspeaker.
class SpeakerEditorGraph : public Speaker<SpeakerResponse<BaseWidget>>
{
    Q_OBJECT
    Q_PROPERTY(QColor LineColor READ lineColor WRITE setLineColor)
    Q_PROPERTY(QColor FillColor READ fillColor WRITE setFillColor)
    Q_PROPERTY(QString curve READ curveText)

public:
    using Speaker::Speaker;
};

//! The response of the connected loudspeaker.
class SpeakerEditorPeqGraph : public Speaker<SpeakerResponse<BaseWidget>>
{
    Q_OBJECT
    Q_PROPERTY(QColor LineColor READ lineColor WRITE setLineColor)
    Q_PROPERTY(QColor FillColor READ fillColor WRITE setFillColor)
    Q_PROPERTY(QString curve READ curveText)

public:
    using Speaker::Speaker;
};

//! The phase response of the connected loudspeaker.
class SpeakerEditorPhaseGraph : public Speaker<SpeakerResponse<BaseWidget>>
{
    Q_OBJECT
    Q_PROPERTY(QColor LineColor READ lineColor WRITE setLineColor)
    Q_PROPERTY(QColor FillColor READ fillColor WRITE setFillColor)
    Q_PROPERTY(QString curve READ curveText)

public:
    using Speaker::Speaker;

protected:
    bool isPhase() const override { return true; }
};

//! The phase response of the connected loudspeaker.
class SpeakerEditorPeqPhaseGraph : public Speaker<SpeakerResponse<BaseWidget>>
{
    Q_OBJECT
    Q_PROPERTY(QColor LineColor READ lineColor WRITE setLineColor)
    Q_PROPERTY(QColor FillColor READ fillColor WRITE setFillColor)
    Q_PROPERTY(QString curve READ curveText)

public:
    using Speaker::Speaker;

protected:
    bool isPhase() const override { return true; }
};

//! The background of a speaker-processor graph: the grid the mixin draws is all of it.
class SpeakerProcessorGraphBack : public EqualizerGridBack<BaseWidget>
{
    Q_OBJECT
public:
    using EqualizerGridBack::EqualizerGridBack;
};

//! The background of a speaker-processor equaliser graph: the grid the mixin draws is all of it.
class SpeakerProcessorPeqGraphBack : public EqualizerGridBack<BaseWidget>
{
    Q_OBJECT
public:
    using EqualizerGridBack::EqualizerGridBack;
};

//! The background of a speaker-processor phase graph: the grid the mixin draws is all of it.
class SpeakerProcessorPhaseGraphBack : public EqualizerGridBack<BaseWidget>
{
    Q_OBJECT
public:
    using EqualizerGridBack::EqualizerGridBack;
};

//! The background of a speaker-processor equaliser phase graph: the grid the mixin draws is all of it.
class SpeakerProcessorPeqPhaseGraphBack : public EqualizerGridBack<BaseWidget>
{
    Q_OBJECT
public:
    using EqualizerGridBack::EqualizerGridBack;
};

/*!
    \class PeqGraphControlPoint
    \brief The handle of a parametric band; address 2 switches the band.

    A band switched off stays draggable and is drawn hollow.
*/
class PeqGraphControlPoint : public GraphControlPoint
{
    Q_OBJECT
    Q_PROPERTY(bool bandOn READ isBandOn)

public:
    using GraphControlPoint::GraphControlPoint;

    bool isBandOn() const { return m_bandOn; }

protected:
    void ownValueChanged(int index) override;
    void paintHandle(QPainter &painter) override;

private:
    bool m_bandOn = true;
};

/*!
    \class HpfGraphControlPoint
    \brief The handle of a high-pass filter, enabled while address 2 is non-zero.
*/
class HpfGraphControlPoint : public GraphControlPoint
{
    Q_OBJECT
    Q_PROPERTY(bool filterEnabled READ isFilterEnabled)

public:
    using GraphControlPoint::GraphControlPoint;

    bool isFilterEnabled() const { return m_filterEnabled; }

protected:
    void ownValueChanged(int index) override;

private:
    bool m_filterEnabled = true;
};

/*!
    \class TuningZoneGraphControlPoint
    \brief The handle of a tuning zone: its addresses carry the zone, and it
    is a round grip of its own.

    The handle is a disc of truncate(13 × zoom) pixels centred on its point,
    in "Color", with "Text" (the zone's mark) written in it. It is grabbed
    where it is pressed: the point keeps its distance to the pointer, so a
    press off the centre does not make it jump, and nothing is sent before
    the pointer has moved the platform's drag distance, so a click only
    selects. Shift locks the axis as on every handle; a release after a
    drag sends the point released.
*/
class TuningZoneGraphControlPoint : public TuningZone<GraphControlPoint>
{
    Q_OBJECT
    Q_PROPERTY(bool moved READ hasMoved)
public:
    using TuningZone::TuningZone;

    //! Whether the current press has become a drag.
    bool hasMoved() const { return m_moved; }
    //! The side of the disc at \a zoom.
    static int discSide(float zoom) { return qMax(5, int(13 * zoom)); }

protected:
    QRect handleGeometryAt(const QPoint &point) const override;
    void paintHandle(QPainter &painter) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    //! Where the point goes for the pointer at \a event, the grab offset and the axis lock applied.
    QPoint draggedPoint(QMouseEvent *event);

    QPoint m_grabOffset;  // the point less the pointer, at the press
    QPoint m_pressPos;    // the pointer at the press, parent coordinates
    bool m_moved = false;
};

//! A handle on a speaker-editor graph, addressed through the connected loudspeaker's model.
class SpeakerGraphControlPoint : public Speaker<GraphHandle<BaseWidget>>
{
    Q_OBJECT
    Q_PROPERTY(QRect ControlRect READ controlRect WRITE setControlRect)
    Q_PROPERTY(QColor Color READ color WRITE setColor)
    Q_PROPERTY(QString Direction READ direction WRITE setDirection)
    Q_PROPERTY(QString Text READ text WRITE setText)
    Q_PROPERTY(QString Value READ valueText WRITE setValueText)
    Q_PROPERTY(QPoint point READ point)
    Q_PROPERTY(int axisLock READ axisLock)
    Q_PROPERTY(bool dragging READ isDragging)

public:
    using Speaker::Speaker;
};

#endif
