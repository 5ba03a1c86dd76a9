#pragma once

#include "htcanvas/path.h"

namespace ht {

/// The point lies in the path, by its fill rule. Figures count as closed.
bool HitsPath(const TPointF& point, const THtPath& path);
/// The point is not further than `tolerance` from the line of the path.
bool HitsLine(const TPointF& point, const THtPath& path, float tolerance);

}  // namespace ht
