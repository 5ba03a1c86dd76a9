#include "htruntime/latin1.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace ht {

void HtWidenLatin1(const uint8_t* bytes, size_t count, char16_t* units) noexcept {
  size_t i = 0;
#ifdef __SSE2__
  const __m128i zero = _mm_setzero_si128();
  for (; i + 16 <= count; i += 16) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + i));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(units + i), _mm_unpacklo_epi8(block, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(units + i + 8), _mm_unpackhi_epi8(block, zero));
  }
#endif
  for (; i < count; ++i) units[i] = bytes[i];
}

void HtNarrowLatin1(const char16_t* units, size_t count, uint8_t* bytes) noexcept {
  size_t i = 0;
#ifdef __SSE2__
  const __m128i low = _mm_set1_epi16(0x00FF);
  for (; i + 16 <= count; i += 16) {
    const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units + i));
    const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units + i + 8));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes + i),
                     _mm_packus_epi16(_mm_and_si128(a, low), _mm_and_si128(b, low)));
  }
#endif
  for (; i < count; ++i) bytes[i] = static_cast<uint8_t>(units[i]);
}

}  // namespace ht
