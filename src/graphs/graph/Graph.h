#ifndef CORVANE_GRAPHS_GRAPH_GRAPH_H
#define CORVANE_GRAPHS_GRAPH_GRAPH_H

#include "core/BaseWidget.h"

class Graph : public BaseWidget
{
    Q_OBJECT
public:
    Graph(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
