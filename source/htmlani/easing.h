#pragma once

#include "htmlcss/cssenums.h"

namespace ht {

/// The value at time `t` of a course that begins with `b` and changes it by `c` within the time `d`. tmEase is quadratic in
/// and out, tmEaseIn and tmEaseOut quadratic, tmEaseInOut cubic, everything else linear.
/// Source: Robert Penner's easing functions.
float CalculateEase(float t, float b, float c, float d, TCSSTiming timing);
/// The value between `start` and `end` when `percent` of the time have passed.
float CalcEase(float start, float end, float percent, TCSSTiming timing);

}  // namespace ht
