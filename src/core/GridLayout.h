#ifndef CORVANE_GRIDLAYOUT_H
#define CORVANE_GRIDLAYOUT_H

#include <QGridLayout>

class QDomElement;

/*!
    \class GridLayout
    \brief The layout a control installs for `<Layout type="grid">`.

    Places the control's child widgets row by row, in the order they are
    added, into a grid of "columns" columns (default 1). "spacing" and
    "margin" are design pixels, scaled by the zoom.
*/
class GridLayout : public QGridLayout
{
    Q_OBJECT
public:
    GridLayout(const QDomElement &e, float zoom);

    int columns() const { return m_columns; }
    //! Puts \a widget into the next free cell; a widget already in the grid stays where it is.
    void place(QWidget *widget);

private:
    int m_columns = 1;
    int m_next = 0;
};

#endif
