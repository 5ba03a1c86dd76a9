#pragma once

#include <array>
#include <cstdint>
#include <cstring>

namespace ht {

namespace detail {

/// Any count above 32.
void FillManyLongs(uint32_t value, uint32_t* words, int32_t count);

}  // namespace detail

/// Fills `count` words; none if it is below 1. Short runs are a few stores of four words that overlap in the middle.
inline void HtFillLong(uint32_t value, uint32_t* words, int32_t count) {
  constexpr int32_t kStraightLine = 32;
  if (count > kStraightLine) return detail::FillManyLongs(value, words, count);
  const std::array<uint32_t, 4> four{value, value, value, value};
  const auto put = [&four](uint32_t* at) { std::memcpy(at, four.data(), sizeof four); };
  uint32_t* end = words + count;
  if (count >= 16) {
    put(words), put(words + 4), put(words + 8), put(words + 12);
    put(end - 16), put(end - 12), put(end - 8), put(end - 4);
  } else if (count >= 8) {
    put(words), put(words + 4), put(end - 8), put(end - 4);
  } else if (count >= 4) {
    put(words), put(end - 4);
  } else {
    for (; words < end; ++words) *words = value;
  }
}

}  // namespace ht
