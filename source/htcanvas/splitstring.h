#pragma once

#include "htcanvas/textrun.h"

namespace ht {

/// Splits a text where lines may break, and where its direction changes. Appends runs of the class, which has to have
/// instances; null stands for THtTextRun. The runs cover the text without gap and overlap.
void HtSplitString(const hstring& text, THtTextRuns& runs, const THtTextRunClass* runClass = nullptr);

}  // namespace ht
