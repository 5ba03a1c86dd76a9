#pragma once

#include <cmath>

namespace ht {

/// The nearest whole number; of two that are as near the even one.
inline double HtRoundEven(double value) noexcept { return std::nearbyint(value); }

}  // namespace ht
