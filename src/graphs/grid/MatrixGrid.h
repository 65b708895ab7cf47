#ifndef CORVANE_GRAPHS_GRID_MATRIXGRID_H
#define CORVANE_GRAPHS_GRID_MATRIXGRID_H

#include "core/BaseWidget.h"

class MatrixGrid : public BaseWidget
{
    Q_OBJECT
public:
    MatrixGrid(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
