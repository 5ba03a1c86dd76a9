#pragma once

#include <cstddef>
#include <string_view>

#include "htruntime/bytes.h"

namespace ht {

// CRC-32 with the reflected polynomial 0xEDB88320, without the final inversion: the complement of what zlib and
// others call CRC-32. No bytes give 0xFFFFFFFF.

uint32_t CalcCRC32(const void* pointer, size_t size) noexcept;
uint32_t CalcBytesCRC32(const THtBytes& bytes) noexcept;
/// Over the low byte of each unit, up to the first zero unit.
uint32_t CalcStrCRC32(std::u16string_view text) noexcept;

}  // namespace ht
