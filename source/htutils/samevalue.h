#pragma once

#include <algorithm>
#include <cmath>
#include <concepts>
#include <type_traits>

namespace ht {

/// The two differ by no more than the tolerance. A tolerance of 0 stands for a ten-thousandth of the smaller of their
/// magnitudes, and at least for 1e-4.
template <std::floating_point T>
bool SameValue(T a, std::type_identity_t<T> b, std::type_identity_t<T> tolerance = 0) {
  constexpr T kResolution = static_cast<T>(1e-4);
  if (tolerance == 0) tolerance = std::max(std::min(std::fabs(a), std::fabs(b)) * kResolution, kResolution);
  return std::fabs(a - b) <= tolerance;
}

}  // namespace ht
