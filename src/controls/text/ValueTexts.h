#ifndef CORVANE_CONTROLS_TEXT_VALUETEXTS_H
#define CORVANE_CONTROLS_TEXT_VALUETEXTS_H

#include "core/BaseWidget.h"

class AbstractValueText : public BaseWidget
{
    Q_OBJECT
public:
    AbstractValueText(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

class ValueText : public AbstractValueText
{
    Q_OBJECT
public:
    ValueText(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : AbstractValueText(hostCore, registry, parent)
    {
    }
};

class ParameterText : public AbstractValueText
{
    Q_OBJECT
public:
    ParameterText(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : AbstractValueText(hostCore, registry, parent)
    {
    }
};

class Text : public BaseWidget
{
    Q_OBJECT
public:
    Text(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

#endif
