#include "FrequencySteps.h"

#include <data/FrequencyTable.h>

#include <cmath>

namespace FrequencySteps {

int count()
{
    return FrequencyTable::size();
}

double hertz(int row)
{
    return FrequencyTable::value(row) / 1000.0;
}

QString label(int row)
{
    return FrequencyTable::label(row);
}

int nearestRow(double hz)
{
    if (!(hz > 0))
        return 0;
    // Nearest on the table's own (logarithmic) spacing: 1.5 kHz typed lands
    // on the step a user would expect, not on the closer-in-hertz one below.
    const double target = std::log(hz * 1000);
    int best = 0;
    double bestDistance = HUGE_VAL;
    for (int i = 0; i < FrequencyTable::size(); ++i) {
        const double d = std::abs(std::log(double(FrequencyTable::value(i))) - target);
        if (d < bestDistance) {
            bestDistance = d;
            best = i;
        }
    }
    return best;
}

} // namespace FrequencySteps
