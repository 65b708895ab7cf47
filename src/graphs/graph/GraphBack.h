#ifndef CORVANE_GRAPHS_GRAPH_GRAPHBACK_H
#define CORVANE_GRAPHS_GRAPH_GRAPHBACK_H

#include "core/BaseWidget.h"

class ParametricEqualizerGraphBack : public BaseWidget
{
    Q_OBJECT
public:
    ParametricEqualizerGraphBack(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
