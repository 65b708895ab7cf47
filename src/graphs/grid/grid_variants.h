#ifndef CORVANE_GRAPHS_GRID_GRID_VARIANTS_H
#define CORVANE_GRAPHS_GRID_GRID_VARIANTS_H

#include "graphs/grid/MatrixGrid.h"

class RouterGrid : public MatrixGrid
{
    Q_OBJECT
public:
    using MatrixGrid::MatrixGrid;
};

class MatrixMixer : public MatrixGrid
{
    Q_OBJECT
public:
    using MatrixGrid::MatrixGrid;
};

class BrioMatrixMixer : public MatrixMixer
{
    Q_OBJECT
public:
    using MatrixMixer::MatrixMixer;
};

class Router : public RouterGrid
{
    Q_OBJECT
public:
    using RouterGrid::RouterGrid;
};

class BrioRouter : public Router
{
    Q_OBJECT
public:
    using Router::Router;
};

class RoomCombine : public MatrixGrid
{
    Q_OBJECT
public:
    using MatrixGrid::MatrixGrid;
};

class DelayMatrix : public MatrixGrid
{
    Q_OBJECT
public:
    using MatrixGrid::MatrixGrid;
};

class QuaySlotPatch : public RouterGrid
{
    Q_OBJECT
public:
    using RouterGrid::RouterGrid;
};

class BrioOutputPatch : public RouterGrid
{
    Q_OBJECT
public:
    using RouterGrid::RouterGrid;
};

class VelaMatrixMixer : public MatrixMixer
{
    Q_OBJECT
public:
    using MatrixMixer::MatrixMixer;
};

class BrioOscillatorRouter : public Router
{
    Q_OBJECT
public:
    using Router::Router;
};

class BrioZoneGroup : public MatrixGrid
{
    Q_OBJECT
public:
    using MatrixGrid::MatrixGrid;
};

class PallasMatrixMixer : public MatrixMixer
{
    Q_OBJECT
public:
    using MatrixMixer::MatrixMixer;
};

class PallasDelayMatrix : public DelayMatrix
{
    Q_OBJECT
public:
    using DelayMatrix::DelayMatrix;
};

class OstraMatrixMixer : public MatrixMixer
{
    Q_OBJECT
public:
    using MatrixMixer::MatrixMixer;
};

class OstraDelayMatrix : public DelayMatrix
{
    Q_OBJECT
public:
    using DelayMatrix::DelayMatrix;
};

class OstraZoneGroup : public MatrixGrid
{
    Q_OBJECT
public:
    using MatrixGrid::MatrixGrid;
};

class FenRouter : public Router
{
    Q_OBJECT
public:
    using Router::Router;
};

class KiteRouter : public Router
{
    Q_OBJECT
public:
    using Router::Router;
};

class RoomCombineChecker : public BaseWidget
{
    Q_OBJECT
public:
    using BaseWidget::BaseWidget;
};

#endif
