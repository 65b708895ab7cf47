#ifndef CORVANE_CONTROLS_SCALE_SCALES_H
#define CORVANE_CONTROLS_SCALE_SCALES_H

#include "core/BaseWidget.h"

class GraphScale : public BaseWidget
{
    Q_OBJECT
public:
    GraphScale(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

class MeterScale : public BaseWidget
{
    Q_OBJECT
public:
    MeterScale(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
