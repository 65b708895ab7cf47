#ifndef CORVANE_CONTROLS_IMAGE_IMAGE_H
#define CORVANE_CONTROLS_IMAGE_IMAGE_H

#include "core/BaseWidget.h"

class Image : public BaseWidget
{
    Q_OBJECT
public:
    Image(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
