#ifndef CORVANE_CONTROLS_BUTTON_BUTTON_H
#define CORVANE_CONTROLS_BUTTON_BUTTON_H

#include "core/BaseWidget.h"

class Button : public BaseWidget
{
    Q_OBJECT
public:
    Button(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
