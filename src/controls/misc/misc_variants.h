#ifndef CORVANE_CONTROLS_MISC_MISC_VARIANTS_H
#define CORVANE_CONTROLS_MISC_MISC_VARIANTS_H

#include "controls/misc/ColorBox.h"
#include "controls/misc/PairDeviceList.h"

#endif
