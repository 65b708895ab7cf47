#ifndef CORVANE_CONTROLS_NUMBERBOX_NUMBERBOX_H
#define CORVANE_CONTROLS_NUMBERBOX_NUMBERBOX_H

#include "core/BaseWidget.h"

class NumberBox : public BaseWidget
{
    Q_OBJECT
public:
    NumberBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
