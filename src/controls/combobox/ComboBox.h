#ifndef CORVANE_CONTROLS_COMBOBOX_COMBOBOX_H
#define CORVANE_CONTROLS_COMBOBOX_COMBOBOX_H

#include "core/BaseWidget.h"

class ComboBox : public BaseWidget
{
    Q_OBJECT
public:
    ComboBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
