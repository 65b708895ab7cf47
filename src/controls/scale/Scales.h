#ifndef CORVANE_CONTROLS_SCALE_SCALES_H
#define CORVANE_CONTROLS_SCALE_SCALES_H

#include "core/BaseWidget.h"

#include <QColor>
#include <QList>

class GraphScale : public BaseWidget
{
    Q_OBJECT
public:
    GraphScale(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
        : BaseWidget(hostCore, registry, parent)
    {
    }
};

/*!
    \class MeterScale
    \brief The tick scale beside a meter: a mark and its value at every
    listed value, placed where a meter of the same height lights up to it.

    Values run linearly from "Bottom" at the lower edge to "Top" at the
    upper edge; "Marks" lists the values to mark. "Side" puts the ticks on
    the "Left" or the "Right" edge (the meter's side), labels beside them;
    labels that would overlap a label already drawn are left out, their
    ticks stay.
*/
class MeterScale : public BaseWidget
{
    Q_OBJECT
    Q_PROPERTY(double top READ top WRITE setTop)
    Q_PROPERTY(double bottom READ bottom WRITE setBottom)
    Q_PROPERTY(QString marks READ marksText)
    Q_PROPERTY(QString side READ side)
    Q_PROPERTY(QColor color READ color WRITE setColor)
    CORVANE_TAG_TABLE

public:
    MeterScale(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    double top() const { return m_top; }
    void setTop(double value);
    double bottom() const { return m_bottom; }
    void setBottom(double value);
    QList<double> marks() const { return m_marks; }
    void setMarks(const QList<double> &marks);
    QString marksText() const;
    bool ticksOnLeft() const { return m_ticksOnLeft; }
    void setTicksOnLeft(bool left);
    QString side() const { return m_ticksOnLeft ? QStringLiteral("Left") : QStringLiteral("Right"); }
    QColor color() const { return m_color; }
    void setColor(const QColor &color);

    //! The row of \a value: where a meter of this height lit up to it ends; -1 outside the scale.
    int rowOf(double value) const;
    //! The label of \a value.
    virtual QString label(double value) const;

    virtual bool readTop(const QDomElement &e);
    virtual bool readBottom(const QDomElement &e);
    virtual bool readMarks(const QDomElement &e);
    virtual bool readSide(const QDomElement &e);
    virtual bool readColor(const QDomElement &e);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double m_top = 0.0;
    double m_bottom = -60.0;
    QList<double> m_marks{0, -6, -12, -18, -24, -36, -48, -60};
    bool m_ticksOnLeft = false;
    QColor m_color{204, 204, 204, 255};
};

#endif
