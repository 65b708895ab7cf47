#ifndef CORVANE_HOST_FREQUENCYSTEPS_H
#define CORVANE_HOST_FREQUENCYSTEPS_H

#include <QString>

/*
    The 241 frequency steps of frequency parameters, 20 Hz to 20 kHz, as
    the database moves through them.
*/
namespace FrequencySteps {

int count();
//! The frequency of \a row in hertz.
double hertz(int row);
//! The label of \a row, in hertz without a unit ("20.0", "1060").
QString label(int row);
//! The row nearest to \a hertz on a logarithmic scale.
int nearestRow(double hertz);

} // namespace FrequencySteps

#endif
