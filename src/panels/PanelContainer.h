#ifndef CORVANE_PANELS_PANELCONTAINER_H
#define CORVANE_PANELS_PANELCONTAINER_H

#include "core/BaseWidget.h"

class PanelContainer : public BaseWidget
{
    Q_OBJECT
public:
    PanelContainer(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
