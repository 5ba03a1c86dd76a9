#pragma once

#include <bit>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace ht {

/// The first of two characters in [p, end), or end. The plain form of HtFindEither.
inline const char16_t* HtFindEitherPlain(const char16_t* p, const char16_t* end, char16_t a, char16_t b) {
  while (p < end && *p != a && *p != b) ++p;
  return p;
}

/// The same, eight characters a step: the scan over the text between two tags.
inline const char16_t* HtFindEither(const char16_t* p, const char16_t* end, char16_t a, char16_t b) {
#if defined(__SSE2__)
  const __m128i va = _mm_set1_epi16(static_cast<short>(a));
  const __m128i vb = _mm_set1_epi16(static_cast<short>(b));
  for (; end - p >= 8; p += 8) {
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i hit = _mm_or_si128(_mm_cmpeq_epi16(units, va), _mm_cmpeq_epi16(units, vb));
    if (const auto mask = static_cast<uint32_t>(_mm_movemask_epi8(hit)))
      return p + std::countr_zero(mask) / 2;
  }
#endif
  return HtFindEitherPlain(p, end, a, b);
}

}  // namespace ht
