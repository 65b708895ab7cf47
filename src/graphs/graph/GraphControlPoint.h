#ifndef CORVANE_GRAPHS_GRAPH_GRAPHCONTROLPOINT_H
#define CORVANE_GRAPHS_GRAPH_GRAPHCONTROLPOINT_H

#include "core/BaseWidget.h"

class GraphControlPoint : public BaseWidget
{
    Q_OBJECT
public:
    GraphControlPoint(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
