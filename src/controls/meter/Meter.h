#ifndef CORVANE_CONTROLS_METER_METER_H
#define CORVANE_CONTROLS_METER_METER_H

#include "core/BaseWidget.h"

class Meter : public BaseWidget
{
    Q_OBJECT
public:
    Meter(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
