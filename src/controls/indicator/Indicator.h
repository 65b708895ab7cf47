#ifndef CORVANE_CONTROLS_INDICATOR_INDICATOR_H
#define CORVANE_CONTROLS_INDICATOR_INDICATOR_H

#include "core/BaseWidget.h"

class Indicator : public BaseWidget
{
    Q_OBJECT
public:
    Indicator(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
