#include "htmlcss/csstokentexts.h"

#include <array>
#include <cstring>
#include <utility>

#include "htmlpars/namecache.h"
#include "htruntime/arena.h"

namespace ht {

namespace {

using TCharText = THtStringLiteral<2>;

template <size_t... C>
consteval std::array<TCharText, sizeof...(C)> MakeCharTexts(std::index_sequence<C...>) {
  return {TCharText({static_cast<char16_t>(C), u'\0'})...};
}

constexpr auto kCharTexts = MakeCharTexts(std::make_index_sequence<256>());

uint64_t FourUnits(const char16_t* p) {
  uint64_t units;
  std::memcpy(&units, p, sizeof units);
  return units;
}

}  // namespace

uint32_t HtWordHash(const char16_t* chars, int32_t length) noexcept {
  if (length < 1) return 0;
  const uint64_t head = length >= 4 ? FourUnits(chars) : chars[0] | uint64_t{chars[length / 2]} << 16;
  const uint64_t tail = length >= 4 ? FourUnits(chars + length - 4) : chars[length - 1];
  const uint64_t mixed =
      (head * 0x9E3779B97F4A7C15 ^ (tail + static_cast<uint64_t>(length))) * 0xD6E8FEB86659FD93;
  return static_cast<uint32_t>(mixed >> 32);
}

TCSSTokenTexts::TCSSTokenTexts(size_t sheetLength)
    : FWords(sheetLength > kShortSheet ? std::make_unique<hstring[]>(size_t{1} << kPlaceBits) : nullptr) {}

hstring TCSSTokenTexts::OfChar(char16_t c) { return hstring::OfLiteral(kCharTexts[c].Header); }

hstring TCSSTokenTexts::Of(const char16_t* chars, size_t length) {
  if (length == 0) return {};
  if (length == 1 && *chars < kCharTexts.size()) return OfChar(*chars);
  if (!FWords || length == 1 || length > kLongestWord) return HtPoolText({chars, length});
  hstring& word = FWords[HtWordHash(chars, static_cast<int32_t>(length)) >> (32 - kPlaceBits)];
  if (word.Size() != length || !HtSameShortText(word.Data(), chars, length))
    word = HtPoolText({chars, length});
  return word;
}

}  // namespace ht
