#pragma once

#include <cstdint>

namespace ht {

/// The hash of a text of `length` UTF-16 units. All hash functions of the library are 32-bit and wrapping, and
/// give 0 for a length below 1. They are meant for tables: none of them resists an attacker.
using THtStringHashFunc = uint32_t (*)(const char16_t* chars, int32_t length);

namespace detail {

// h = h * M + (c + A) for each unit, four units a step: h * M^4 + (c0 + A) * M^3 + … has the same value, and the
// four products do not wait for each other.
template <class TUnit>
constexpr uint32_t ShaPerfect(const TUnit* units, int32_t length) noexcept {
  constexpr uint32_t kM = 0x3E0F83E1, kA = 0x59D65D2F;
  constexpr uint32_t kM2 = kM * kM, kM3 = kM2 * kM, kM4 = kM3 * kM;
  constexpr uint32_t kA4 = kA * (kM3 + kM2 + kM + 1);
  uint32_t h = 0;
  for (; length >= 4; length -= 4, units += 4)
    h = h * kM4 + (units[0] * kM3 + units[1] * kM2 + units[2] * kM + units[3] + kA4);
  for (; length > 0; --length) h = h * kM + (*units++ + kA);
  return h * 0x90C03487;
}

// Bob Jenkins' one-at-a-time function.
template <class TUnit>
constexpr uint32_t OneAtATime(const TUnit* units, int32_t length) noexcept {
  uint32_t h = 0;
  for (; length > 0; --length) {
    h += *units++;
    h += h << 10;
    h ^= h >> 6;
  }
  h += h << 3;
  h ^= h >> 11;
  return h + (h << 15);
}

}  // namespace detail

/// The default of THtObjectDictionary.
constexpr uint32_t ShaPerfectHash(const char16_t* chars, int32_t length) noexcept {
  return detail::ShaPerfect(chars, length);
}

/// The same values as ShaPerfectHash, and 0 for a null pointer. The default of THtPointerDictionary.
constexpr uint32_t ShaPerfectHashAsm(const char16_t* chars, int32_t length) noexcept {
  return chars ? detail::ShaPerfect(chars, length) : 0;
}

/// ShaPerfectHash over bytes.
inline uint32_t ShaPerfectHashANSI(const char* bytes, int32_t length) noexcept {
  return detail::ShaPerfect(reinterpret_cast<const unsigned char*>(bytes), length);
}

/// Bob Jenkins' one-at-a-time function, a unit a step.
constexpr uint32_t JenkinsHash(const char16_t* chars, int32_t length) noexcept {
  return detail::OneAtATime(chars, length);
}

inline uint32_t JenkinsHashANSI(const char* bytes, int32_t length) noexcept {
  return detail::OneAtATime(reinterpret_cast<const unsigned char*>(bytes), length);
}

/// Robert Sedgewick's function: cheap on short identifiers, and the hash of all tag and colour names.
constexpr uint32_t RSHash(const char16_t* chars, int32_t length) noexcept {
  uint32_t a = 63689, h = 0;
  for (; length > 0; --length) {
    h = h * a + *chars++;
    a *= 378551;
  }
  return h;
}

}  // namespace ht
