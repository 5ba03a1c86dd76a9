#pragma once

#include "htruntime/enums.h"

namespace ht {

/// How attribute values are compared when nodes are sorted.
HT_ENUM(THtSortCompareType, uint8_t, scCaseSensitive, scCaseInsensitive, scFloat, scDate);

}  // namespace ht
