#ifndef CORVANE_CONTROLS_SCALE_SCALES_H
#define CORVANE_CONTROLS_SCALE_SCALES_H

#include "core/BaseWidget.h"

#include <QColor>
#include <QList>

/*!
    \class GraphScale
    \brief A strip of labels beside an equaliser graph, each on the grid line
    of its value at the current zoom.

    A variant gives the values to label, the rule that places a value in
    design pixels and the label text. A value whose rule position lies
    within a pixel of a line of the graph background's grid takes that
    line's position, so labels sit on the lines as drawn; other values (the
    ends of the range) keep the rule's. Positions are multiplied by the zoom
    and truncated, as the grid's are.

    Horizontal scales centre each label on its column, vertical scales on
    its row; labels are kept inside the strip and a label that would overlap
    one already drawn is left out. The strip binds no parameter; addresses
    it is given are ignored.
*/
class GraphScale : public BaseWidget
{
    Q_OBJECT
    Q_PROPERTY(QString marks READ marksText)
    Q_PROPERTY(QColor color READ color WRITE setColor)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)
    Q_PROPERTY(QString alignment READ alignmentText)
    CORVANE_TAG_TABLE

public:
    GraphScale(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent);

    static const QColor defaultColor;

    //! Horizontal scales label frequencies along x, vertical ones levels along y.
    virtual Qt::Orientation orientation() const = 0;
    //! Where \a value lies by the variant's rule, in design pixels.
    virtual double rulePosition(double value) const = 0;
    //! The text shown for \a value.
    virtual QString label(double value) const = 0;
    //! The design position of \a value: the grid line within a pixel of its rule position, else the rule's.
    double designPosition(double value) const;
    //! The pixel column (horizontal) or row (vertical) of \a value at the current zoom.
    int pixelOf(double value) const;

    QList<double> marks() const { return m_marks; }
    void setMarks(const QList<double> &marks);
    QString marksText() const;
    QColor color() const { return m_color; }
    void setColor(const QColor &color);
    //! Transparent unless the description gives one.
    QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor &color);
    //! Horizontal placement of a vertical scale's labels: Qt::AlignLeft, AlignRight or AlignHCenter.
    Qt::Alignment alignment() const { return m_alignment; }
    void setAlignment(Qt::Alignment alignment);
    QString alignmentText() const;

    //! Where the label of \a value is drawn; empty when it falls outside the strip.
    QRect labelRect(double value) const;

protected:
    virtual bool readMarks(const QDomElement &e);
    virtual bool readAlign(const QDomElement &e);

    /*
        The level rule of the vertical scales: \a perLine units between
        neighbouring level lines (13.5 design pixels), 0 on the mid line at
        81, so the graph's 162 rows span six lines either way.
    */
    static double levelRow(double value, double perLine);
    //! "+12", "0", "-12".
    static QString signedLabel(double value);

    void ownValueChanged(int index) override { Q_UNUSED(index) }
    void paintEvent(QPaintEvent *event) override;

private:
    QList<double> m_marks;
    QColor m_color = defaultColor;
    QColor m_backgroundColor = Qt::transparent;
    Qt::Alignment m_alignment = Qt::AlignRight;
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

protected:
    virtual bool readMarks(const QDomElement &e);
    virtual bool readSide(const QDomElement &e);

    void paintEvent(QPaintEvent *event) override;

private:
    double m_top = 0.0;
    double m_bottom = -60.0;
    QList<double> m_marks{0, -6, -12, -18, -24, -36, -48, -60};
    bool m_ticksOnLeft = false;
    QColor m_color{204, 204, 204, 255};
};

#endif
