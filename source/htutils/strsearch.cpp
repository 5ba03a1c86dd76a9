#include "htutils/strsearch.h"

#include <algorithm>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace ht {

namespace {

// Two loads that may overlap compare up to twice their width without a loop.
template <class TWord>
bool SameEnds(const char* a, const char* b, size_t size) {
  TWord a1, a2, b1, b2;
  std::memcpy(&a1, a, sizeof(TWord));
  std::memcpy(&b1, b, sizeof(TWord));
  std::memcpy(&a2, a + size - sizeof(TWord), sizeof(TWord));
  std::memcpy(&b2, b + size - sizeof(TWord), sizeof(TWord));
  return ((a1 ^ b1) | (a2 ^ b2)) == 0;
}

}  // namespace

bool detail::SameBytes(const void* a, const void* b, size_t size) noexcept {
  const char* x = static_cast<const char*>(a);
  const char* y = static_cast<const char*>(b);
  if (size > 16) return std::memcmp(x, y, size) == 0;
  if (size >= 8) return SameEnds<uint64_t>(x, y, size);
  if (size >= 4) return SameEnds<uint32_t>(x, y, size);
  if (size >= 2) return SameEnds<uint16_t>(x, y, size);
  return *x == *y;
}

size_t detail::FindUnit(const char16_t* units, size_t count, char16_t c) noexcept {
  size_t i = 0;
#ifdef __SSE2__
  const __m128i wanted = _mm_set1_epi16(static_cast<int16_t>(c));
  for (; i + 8 <= count; i += 8) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units + i));
    const int hits = _mm_movemask_epi8(_mm_cmpeq_epi16(block, wanted));
    if (hits) return i + static_cast<size_t>(__builtin_ctz(static_cast<unsigned>(hits))) / 2;
  }
#endif
  while (i < count && units[i] != c) ++i;
  return i;
}

int32_t FindChar(char16_t c, std::u16string_view text, int32_t start) noexcept {
  const size_t from = static_cast<size_t>(std::max(start, 1)) - 1;
  if (from >= text.size()) return 0;
  const size_t index = from + detail::FindUnit(text.data() + from, text.size() - from, c);
  return index < text.size() ? static_cast<int32_t>(index) + 1 : 0;
}

int32_t FindChar(char c, std::string_view text, int32_t start) noexcept {
  return static_cast<int32_t>(text.find(c, static_cast<size_t>(std::max(start, 1)) - 1) +
                              1);  // npos + 1 is 0
}

namespace {

template <class T>
bool InArray(std::u16string_view text, const T* array, int32_t high) {
  return high >= 0 && std::find(array, array + high + 1, text) != array + high + 1;
}

}  // namespace

bool StrIn(std::u16string_view text, const hstring* array, int32_t high) noexcept {
  return InArray(text, array, high);
}

bool StrIn(std::u16string_view text, const std::u16string_view* array, int32_t high) noexcept {
  return InArray(text, array, high);
}

void AddStr(hstring& text, const hstring& item, std::u16string_view separator) {
  const hstring kept = item;  // may be the text itself
  if (text.Empty())
    text = kept;
  else
    text.Append(separator).Append(kept);
}

namespace {

template <class TUnit>
bool Blank(std::basic_string_view<TUnit> text) {
  using TCode = std::make_unsigned_t<TUnit>;
  constexpr TCode kBlank = 32;
  const TUnit* p = text.data();
  const TUnit* end = p + text.size();
  for (; end - p >= 2; p += 2)
    if (std::max(static_cast<TCode>(p[0]), static_cast<TCode>(p[1])) > kBlank) return false;
  return p == end || static_cast<TCode>(*p) <= kBlank;
}

}  // namespace

bool BlankString(std::u16string_view text) noexcept { return Blank(text); }
bool BlankString(std::string_view text) noexcept { return Blank(text); }

bool BlankOrNBSP(std::u16string_view text) noexcept {
  return text.find_first_not_of(u" \xA0\t\r\n") == text.npos;
}

std::u16string_view Q_StrTok(std::u16string_view& text, std::u16string_view delimiters,
                             bool removeDelimiters) {
  if (text.empty() || delimiters.empty()) return {};
  const std::u16string_view whole = text;
  const size_t start = whole.find_first_not_of(delimiters);
  if (start == whole.npos) {
    text = {};
    return removeDelimiters ? std::u16string_view() : whole;
  }
  const size_t end = std::min(whole.find_first_of(delimiters, start), whole.size());
  const size_t first = removeDelimiters ? start : 0;
  text = whole.substr(std::min(end + removeDelimiters, whole.size()));
  return whole.substr(first, end - first);
}

hstring Q_StrTok(hstring& text, std::u16string_view delimiters, bool removeDelimiters) {
  std::u16string_view rest = text;
  hstring token = Q_StrTok(rest, delimiters, removeDelimiters);
  if (rest.size() != text.Size()) text = hstring(rest);
  return token;
}

}  // namespace ht
