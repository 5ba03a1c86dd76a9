#include "htutils/fontname.h"

#include <algorithm>

#include "htruntime/numformat.h"

namespace ht {

hstring HtDecodeFontNameStr(std::u16string_view text, int32_t& weight, int32_t& style) {
  constexpr char16_t kSeparator = u'|';
  constexpr int32_t kNormalWeight = 400, kLastStyle = 2;
  weight = style = 0;
  text = HtTrim(text);
  const std::u16string_view name = text.substr(0, text.find(kSeparator));
  if (std::count(text.begin(), text.end(), kSeparator) != 2) return name;
  const std::u16string_view rest = text.substr(name.size() + 1);
  const size_t separator = rest.find(kSeparator);
  if (!HtTryStrToInt(rest.substr(0, separator), weight) || weight == 0) weight = kNormalWeight;
  style = HtTryStrToInt(rest.substr(separator + 1), style) ? std::clamp(style, 0, kLastStyle) : 0;
  return name;
}

}  // namespace ht
