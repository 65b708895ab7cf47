#ifndef CORVANE_GRAPHS_GRAPH_GRAPH_VARIANTS_H
#define CORVANE_GRAPHS_GRAPH_GRAPH_VARIANTS_H

#include "core/AddressingMixins.h"
#include "graphs/graph/Graph.h"
#include "graphs/graph/GraphBack.h"
#include "graphs/graph/GraphControlPoint.h"

class ParametricEqualizerGraph : public Graph
{
    Q_OBJECT
public:
    using Graph::Graph;
};

class BrioParametricEqualizerGraph : public ParametricEqualizerGraph
{
    Q_OBJECT
public:
    using ParametricEqualizerGraph::ParametricEqualizerGraph;
};

class PeqGraphControlPoint : public GraphControlPoint
{
    Q_OBJECT
public:
    using GraphControlPoint::GraphControlPoint;
};

class HpfGraphControlPoint : public GraphControlPoint
{
    Q_OBJECT
public:
    using GraphControlPoint::GraphControlPoint;
};

class SpeakerProcessorGraph : public ParametricEqualizerGraph
{
    Q_OBJECT
public:
    using ParametricEqualizerGraph::ParametricEqualizerGraph;
};

class SpeakerProcessorPhaseGraph : public SpeakerProcessorGraph
{
    Q_OBJECT
public:
    using SpeakerProcessorGraph::SpeakerProcessorGraph;
};

class ProtectSpeakerProcessorGraph : public SpeakerProcessorGraph
{
    Q_OBJECT
public:
    using SpeakerProcessorGraph::SpeakerProcessorGraph;
};

class ProtectSpeakerProcessorPhaseGraph : public SpeakerProcessorPhaseGraph
{
    Q_OBJECT
public:
    using SpeakerProcessorPhaseGraph::SpeakerProcessorPhaseGraph;
};

class SpeakerProcessorGraphBack : public ParametricEqualizerGraphBack
{
    Q_OBJECT
public:
    using ParametricEqualizerGraphBack::ParametricEqualizerGraphBack;
};

class SpeakerProcessorPeqGraph : public SpeakerProcessorGraph
{
    Q_OBJECT
public:
    using SpeakerProcessorGraph::SpeakerProcessorGraph;
};

class SpeakerProcessorPeqGraphBack : public ParametricEqualizerGraphBack
{
    Q_OBJECT
public:
    using ParametricEqualizerGraphBack::ParametricEqualizerGraphBack;
};

class SpeakerProcessorPeqPhaseGraphBack : public ParametricEqualizerGraphBack
{
    Q_OBJECT
public:
    using ParametricEqualizerGraphBack::ParametricEqualizerGraphBack;
};

class SpeakerProcessorPeqPhaseGraph : public SpeakerProcessorPhaseGraph
{
    Q_OBJECT
public:
    using SpeakerProcessorPhaseGraph::SpeakerProcessorPhaseGraph;
};

class SpeakerProcessorPhaseGraphBack : public ParametricEqualizerGraphBack
{
    Q_OBJECT
public:
    using ParametricEqualizerGraphBack::ParametricEqualizerGraphBack;
};

class TuningZoneGraphControlPoint : public TuningZone<GraphControlPoint>
{
    Q_OBJECT
public:
    using TuningZone::TuningZone;
};

class SpeakerEditorGraph : public SpeakerProcessorGraph
{
    Q_OBJECT
public:
    using SpeakerProcessorGraph::SpeakerProcessorGraph;
};

class SpeakerEditorPhaseGraph : public SpeakerProcessorPhaseGraph
{
    Q_OBJECT
public:
    using SpeakerProcessorPhaseGraph::SpeakerProcessorPhaseGraph;
};

class SpeakerEditorPeqGraph : public SpeakerProcessorPeqGraph
{
    Q_OBJECT
public:
    using SpeakerProcessorPeqGraph::SpeakerProcessorPeqGraph;
};

class SpeakerEditorPeqPhaseGraph : public SpeakerProcessorPeqPhaseGraph
{
    Q_OBJECT
public:
    using SpeakerProcessorPeqPhaseGraph::SpeakerProcessorPeqPhaseGraph;
};

class SpeakerGraphControlPoint : public GraphControlPoint
{
    Q_OBJECT
public:
    using GraphControlPoint::GraphControlPoint;
};

class GraphicEqualizerGraph : public Graph
{
    Q_OBJECT
public:
    using Graph::Graph;
};

class Halo3DGraph : public Graph
{
    Q_OBJECT
public:
    using Graph::Graph;
};

#endif
