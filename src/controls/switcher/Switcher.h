#ifndef CORVANE_CONTROLS_SWITCHER_SWITCHER_H
#define CORVANE_CONTROLS_SWITCHER_SWITCHER_H

#include "core/BaseWidget.h"

class Switcher : public BaseWidget
{
    Q_OBJECT
public:
    Switcher(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
