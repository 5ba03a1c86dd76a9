#include "htmlpars/lower.h"

#include <algorithm>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace ht {

bool HtSameAscii(std::u16string_view a, std::u16string_view b) noexcept {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return HtAsciiLower(x) == HtAsciiLower(y); });
}

namespace {

// Eight characters a step: nearly all texts are in lower case.
bool HasAsciiUpper(const char16_t* p, const char16_t* end) {
#if defined(__SSE2__)
  const __m128i a = _mm_set1_epi16(u'A'), range = _mm_set1_epi16(u'Z' - u'A'), none = _mm_setzero_si128();
  for (; end - p >= 8; p += 8) {
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i upper = _mm_cmpeq_epi16(_mm_subs_epu16(_mm_sub_epi16(units, a), range), none);
    if (_mm_movemask_epi8(upper)) return true;
  }
#endif
  return std::any_of(p, end, HtIsAsciiUpper);
}

}  // namespace

void hLower(hstring& text) {
  if (HasAsciiUpper(text.begin(), text.end())) vLower(text);
}

void vLower(hstring& text) {
  char16_t* units = text.Unique();
  std::transform(units, units + text.Length(), units, HtAsciiLower);
}

}  // namespace ht
