#ifndef CORVANE_GRAPHS_AREA_AREA_VARIANTS_H
#define CORVANE_GRAPHS_AREA_AREA_VARIANTS_H


class BeamArea : public BaseWidget
{
    Q_OBJECT
public:
    using BaseWidget::BaseWidget;
};

class TrackingArea : public BaseWidget
{
    Q_OBJECT
public:
    using BaseWidget::BaseWidget;
};

#endif
