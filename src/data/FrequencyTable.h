#ifndef CORVANE_FREQUENCYTABLE_H
#define CORVANE_FREQUENCYTABLE_H

#include <QString>

/*!
    \class FrequencyTable
    \brief The 241 frequency steps of filter and equaliser frequencies.

    One shared, read-only table (a constant array, no static initialisation):
    rows in ascending value from 20 Hz (row 0) to about 19.95 kHz (row 240),
    one eightieth of a decade apart. Each row has a label (hertz, no unit:
    one decimal below 100 Hz, whole numbers from 100 Hz up; R40 preferred
    numbers on even rows, three significant figures on odd rows) and a value
    in thousandths of a hertz.
*/
class FrequencyTable
{
public:
    static int size();
    //! Label of \a row; a null string outside 0..size()-1.
    static QString label(int row);
    //! Value of \a row in thousandths of a hertz; 0 outside 0..size()-1.
    static qint32 value(int row);
    //! The row whose value equals \a value, or -1.
    static int rowOfValue(qint32 value);
    /*!
        The row whose value is nearest to \a value (absolute difference; the
        lower row on a tie). Values below 20 Hz give row 0, above the last
        row row 240.
    */
    static int nearestRow(qint32 value);
    //! The row whose label equals \a label exactly, or -1.
    static int rowOfLabel(const QString &label);
};

#endif
