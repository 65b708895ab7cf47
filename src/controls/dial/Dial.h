#ifndef CORVANE_CONTROLS_DIAL_DIAL_H
#define CORVANE_CONTROLS_DIAL_DIAL_H

#include "core/BaseWidget.h"

class Dial : public BaseWidget
{
    Q_OBJECT
public:
    Dial(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
