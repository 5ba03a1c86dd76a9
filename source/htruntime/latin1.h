#pragma once

#include <cstddef>
#include <cstdint>

namespace ht {

/// Each byte becomes the unit of the same number. `units` has room for `count`; the two do not overlap.
void HtWidenLatin1(const uint8_t* bytes, size_t count, char16_t* units) noexcept;
/// Each unit gives its low byte. `bytes` has room for `count`; the two do not overlap.
void HtNarrowLatin1(const char16_t* units, size_t count, uint8_t* bytes) noexcept;

}  // namespace ht
