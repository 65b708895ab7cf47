#ifndef CORVANE_CONTROLS_FADER_FADER_H
#define CORVANE_CONTROLS_FADER_FADER_H

#include "core/BaseWidget.h"

class Fader : public BaseWidget
{
    Q_OBJECT
public:
    Fader(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
