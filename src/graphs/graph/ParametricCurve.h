#ifndef CORVANE_GRAPHS_GRAPH_PARAMETRICCURVE_H
#define CORVANE_GRAPHS_GRAPH_PARAMETRICCURVE_H

#include "core/BaseWidget.h"
#include "core/Colors.h"
#include "graphs/graph/GraphCurves.h"

#include <QPainter>

/*
    The filled response curve of the parametric equaliser graphs and the
    speaker-processor graphs, written once and mixed into each of them (they
    all derive from BaseWidget directly, like the control families'
    variants).

    Curve A is the graph's own curve, B an optional second curve (another
    filter block of the same channel). Online the device delivers the
    complete response in A, so A is shown as it is; otherwise the graph adds
    B to A itself, point by point around the mid line.
*/
class ParametricCurveState
{
public:
    QColor lineColor() const { return m_lineColor; }
    QColor fillColor() const { return m_fillColor; }
    //! The polygon drawn while active (S).
    QPolygon shownCurve() const { return m_shown; }
    //! The own curve (A), drawn while inactive.
    QPolygon ownCurve() const { return m_own; }
    //! The second curve (B).
    QPolygon secondCurve() const { return m_second; }
    QString curveText() const { return GraphCurves::pointsText(m_shown); }

protected:
    //! Reads \a text into A (or B, \a second); false when it was rejected or scaled to the same polygon.
    bool parseCurve(const QString &text, const QSize &size, bool second);
    //! Scales the accepted curves anew for \a size; true when either polygon changed.
    bool rescaleCurves(const QSize &size);
    //! S becomes A when \a copy, else the sum of A and B; true when S changed.
    bool combine(bool copy, int height);
    void paintCurves(QPainter &painter, bool active) const;
    void paintPhase(QPainter &painter, bool active, int height) const;

    QColor m_lineColor = Colors::color(Colors::parametricLine);
    QColor m_fillColor = Colors::color(Colors::parametricFill);

private:
    struct Source
    {
        GraphCurves::IntCurve curve;
        bool accepted = false;
    };
    Source m_sources[2];
    QPolygon m_shown;
    QPolygon m_own;
    QPolygon m_second;
};

template <class Base>
class ParametricCurve : public Base, public ParametricCurveState
{
public:
    using Base::Base;

    static const TagTable &tags()
    {
        static const TagTable table = TagTable::of<ParametricCurve>(&Base::tags(), {
            {"LineColor", &ParametricCurve::readLineColor},
            {"FillColor", &ParametricCurve::readFillColor},
        });
        return table;
    }
    const TagTable &tagTable() const override { return tags(); }

    bool readLineColor(const QDomElement &e) { return readColor(e, &m_lineColor); }
    bool readFillColor(const QDomElement &e) { return readColor(e, &m_fillColor); }
    void setLineColor(const QColor &color) { setColor(color, &m_lineColor); }
    void setFillColor(const QColor &color) { setColor(color, &m_fillColor); }

protected:
    //! Whether B is added to A while the host is not online.
    virtual bool sumsCurves() const { return true; }
    //! Phase curves wrap around; they are drawn open, broken where they wrap.
    virtual bool isPhase() const { return false; }

    //! Runs the sum after A or B changed.
    bool combineCurves()
    {
        const bool online = this->hostCore() && this->hostCore()->mode() == 1;
        return combine(online || !sumsCurves(), this->height());
    }
    //! Reads A or B from the display text of \a index; runs the sum when the polygon changed; repaints.
    void curveChanged(int index, bool second)
    {
        if (parseCurve(this->displayText(index), this->size(), second))
            combineCurves();
        this->update();
    }

    void resizeEvent(QResizeEvent *event) override
    {
        Base::resizeEvent(event);
        if (rescaleCurves(this->size()))
            combineCurves();
    }
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        if (isPhase())
            paintPhase(painter, this->isActive(), this->height());
        else
            paintCurves(painter, this->isActive());
        this->paintBase(painter);
    }

private:
    bool readColor(const QDomElement &e, QColor *color)
    {
        const QColor c = BaseWidget::parseColor(e.text());
        if (!c.isValid())
            return false;
        setColor(c, color);
        return true;
    }
    void setColor(const QColor &c, QColor *color)
    {
        if (*color == c)
            return;
        *color = c;
        this->update();
    }
};

#endif
