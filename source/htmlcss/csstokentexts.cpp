#include "htmlcss/csstokentexts.h"

#include <utility>

namespace ht {

namespace {

using TCharText = THtStringLiteral<2>;

template <size_t... C>
consteval std::array<TCharText, sizeof...(C)> MakeCharTexts(std::index_sequence<C...>) {
  return {TCharText({static_cast<char16_t>(C), u'\0'})...};
}

}  // namespace

constexpr std::array<TCharText, 256> detail::kCharTexts = MakeCharTexts(std::make_index_sequence<256>());

TCSSTokenTexts::TCSSTokenTexts(size_t sheetLength)
    : FWords(sheetLength > kShortSheet ? std::make_unique<hstring[]>(size_t{1} << kPlaceBits) : nullptr) {}

hstring TCSSTokenTexts::Learn(hstring& word, std::u16string_view text) { return word = HtPoolText(text); }

}  // namespace ht
