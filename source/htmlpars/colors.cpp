#include "htmlpars/colors.h"

#include <array>

#include "htdictionary/hash.h"
#include "htmlpars/lowername.h"
#include "htmlpars/stringparser.h"
#include "htruntime/rounding.h"
#include "htutils/strsearch.h"

namespace ht {

namespace {

constexpr THtColorName kColorNames[] = {
#define HT_COLOR(name, value) {u"" #name ""_hs, value},
#include "htmlpars/colornames.inc"
#undef HT_COLOR
};

class TColorDictionary : public THtPointerDictionary {
 public:
  TColorDictionary()
      : THtPointerDictionary(std::size(kColorNames), HtNameOffset(&THtColorName::Name), RSHash) {
    for (const THtColorName& row : kColorNames) AddPointer(const_cast<THtColorName*>(&row));
  }
};

constexpr uint32_t kOpaque = 0xFF000000;
constexpr int kNoDigit = 16;

constexpr int HexDigit(char16_t c) {
  const int letter = c | 32;
  if (HtIsDigit(c)) return c - u'0';
  return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : kNoDigit;
}

enum class TShortAlpha { Allowed, Refused };

// What stands behind the "#" of a colour.
uint32_t DecodeDigits(std::u16string_view digits, TShortAlpha shortAlpha) {
  std::array<uint32_t, 8> d{};
  for (size_t i = 0; i < digits.size(); ++i) {
    const int digit = HexDigit(digits[i]);
    if (digit == kNoDigit) return kColorInvalid;
    if (i < d.size()) d[i] = static_cast<uint32_t>(digit);
  }
  const auto argb = [](uint32_t a, uint32_t r, uint32_t g, uint32_t b) {
    return a << 24 | r << 16 | g << 8 | b;
  };
  switch (digits.size()) {
    case 0:
    case 1:
    case 2:
    case 5: return kColorInvalid;
    case 3: return argb(255, d[0] * 17, d[1] * 17, d[2] * 17);
    case 4:
      if (shortAlpha == TShortAlpha::Refused) return kColorInvalid;
      return argb(d[3] * 17, d[0] * 17, d[1] * 17, d[2] * 17);
    case 6:
    case 7: return argb(255, d[0] * 16 + d[1], d[2] * 16 + d[3], d[4] * 16 + d[5]);
    default: return argb(d[6] * 16 + d[7], d[0] * 16 + d[1], d[2] * 16 + d[3], d[4] * 16 + d[5]);
  }
}

constexpr std::u16string_view kRgba = u"rgba(";

bool IsRgba(std::u16string_view text) { return AnsiStartsWith(text, kRgba); }

uint32_t ReadChannel(TStringParser& parser) {
  const auto channel = static_cast<uint32_t>(parser.ReadInt());
  parser.Skipto(u',');
  parser.Next();
  return channel;
}

uint32_t DecodeRgba(std::u16string_view text) {
  TStringParser parser{hstring(text)};
  parser.Skip(static_cast<int32_t>(kRgba.size()));
  uint32_t color;
  if (HtIsDigit(parser.GetCurrent())) {
    color = ReadChannel(parser) << 16;
    color |= ReadChannel(parser) << 8;
    color |= ReadChannel(parser);
  } else {
    hstring inner;
    parser.ReadtoChar(u',', inner, true);
    // Only the colour of the innermost "rgba(" counts: each level keeps the low 24 bits, and no level but
    // this one can hold a comma. So the levels between are dropped here, and nesting costs no depth.
    std::u16string_view name = inner;
    for (std::u16string_view next = name; IsRgba(next); next = HtTrim(next.substr(kRgba.size()))) name = next;
    color = htmlHextoColor(name) & 0xFFFFFF;
  }
  const auto alpha = static_cast<int64_t>(HtRoundEven(parser.ReadNum() * 255));
  return color | static_cast<uint32_t>(alpha) << 24;
}

uint32_t NamedColor(std::u16string_view text, bool& isSystemColor) {
  if (const uint32_t color = HtStringtoColor(text)) return color;
  if (const uint32_t color = HtStringtoSysColor(text)) {
    isSystemColor = true;
    return color;
  }
  // A theme without these still reads as dark on light.
  if (text == u"window") return 0xFFFFFFFF;
  if (text == u"windowtext") return kColorBlack;
  return 0;
}

uint32_t Decode(std::u16string_view text, bool sys, bool& isSystemColor) {
  isSystemColor = false;
  if (text.empty()) return kColorBlack;
  if (text == u"transparent") return kColorTransparent;
  if (text == u"none") return kColorNone;
  if (text[0] == u'#') return DecodeDigits(text.substr(1), sys ? TShortAlpha::Refused : TShortAlpha::Allowed);
  if (!sys && IsRgba(text)) return DecodeRgba(text);
  if (const uint32_t color = NamedColor(text, isSystemColor)) return color;
  return DecodeDigits(text, TShortAlpha::Allowed);
}

// The last `count` hexadecimal digits of a number, in lower case.
hstring HexDigits(uint32_t value, size_t count) {
  std::array<char16_t, 8> digits;
  for (size_t i = count; i-- > 0; value >>= 4) digits[i] = u"0123456789abcdef"[value & 15];
  return {digits.data(), count};
}

}  // namespace

const THtPointerDictionary& GlobalColorDictionary() {
  static const TColorDictionary kDictionary;
  return kDictionary;
}

uint32_t HtStringtoColor(std::u16string_view name) {
  const THtLowerName lower(name);
  const THtColorName* row;
  return GlobalColorDictionary().Find(lower, row) ? kOpaque | row->Value : 0;
}

uint32_t htmlHextoColor(std::u16string_view text) {
  bool isSystemColor;
  return Decode(text, false, isSystemColor);
}

uint32_t htmlDigitstoColor(std::u16string_view digits) { return DecodeDigits(digits, TShortAlpha::Allowed); }

uint32_t htmlHextoColorSys(std::u16string_view text, bool& isSystemColor) {
  return Decode(text, true, isSystemColor);
}

hstring htmlColortoHex(uint32_t color) { return HexDigits(color, 6); }

hstring htmlColortoStr(uint32_t color) {
  return u"#"_hs + ((color >> 24) == 255 ? HexDigits(color, 6) : HexDigits(color << 8 | color >> 24, 8));
}

}  // namespace ht
