#pragma once

#include "htruntime/enums.h"

namespace ht {

/// The unit of a CSS length, time or angle. muNone is a bare multiplier.
HT_ENUM(TMeasureUnit, uint8_t, muPX, muPercent, muIN, muMM, muPt, muCM, muEM, muEX, muPC, muMS, muS, muREM,
        muVW, muVH, muDeg, muNone);

}  // namespace ht
