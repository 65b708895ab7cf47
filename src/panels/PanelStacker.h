#ifndef CORVANE_PANELS_PANELSTACKER_H
#define CORVANE_PANELS_PANELSTACKER_H

#include "core/BaseWidget.h"

class PanelStacker : public BaseWidget
{
    Q_OBJECT
public:
    PanelStacker(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
