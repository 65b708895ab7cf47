#ifndef CORVANE_CONTROLS_MISC_MISC_VARIANTS_H
#define CORVANE_CONTROLS_MISC_MISC_VARIANTS_H


class ColorBox : public BaseWidget
{
    Q_OBJECT
public:
    using BaseWidget::BaseWidget;
};

class PairDeviceList : public BaseWidget
{
    Q_OBJECT
public:
    using BaseWidget::BaseWidget;
};

#endif
