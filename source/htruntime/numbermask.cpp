#include <algorithm>
#include <cmath>
#include <string>

#include "htruntime/decimal.h"
#include "htruntime/numformat.h"

namespace ht {

namespace {

// Digits by which a number without a usable mask is shown, and the size from which a mask is not used.
constexpr int kGeneralDigits = 15;
constexpr double kMaskLimit = 1e18;

enum TTokenKind : uint8_t { mkZero, mkDigit, mkPoint, mkComma, mkExponent, mkLiteral, mkSection, mkEnd };

struct TToken {
  TTokenKind Kind = mkEnd;
  std::u16string_view Text;  // of mkLiteral: what is written; of mkExponent: its letter and sign
  int Zeros = 0;             // of mkExponent
};

class TMaskReader {
 public:
  explicit TMaskReader(std::u16string_view mask) : FRest(mask) {}

  TToken Next() {
    if (FRest.empty()) return {};
    const char16_t c = FRest[0];
    switch (c) {
      case u'0': return Take(mkZero);
      case u'#': return Take(mkDigit);
      case u'.': return Take(mkPoint);
      case u',': return Take(mkComma);
      case u';': return Take(mkSection);
      case u'\'':
      case u'"': return Quoted();
      case u'E':
      case u'e':
        if (FRest.size() > 1 && (FRest[1] == u'+' || FRest[1] == u'-')) return Exponent();
        [[fallthrough]];
      default: return Take(mkLiteral);
    }
  }

 private:
  std::u16string_view FRest;

  TToken Take(TTokenKind kind, size_t count = 1) {
    const TToken token{kind, FRest.substr(0, count)};
    FRest.remove_prefix(count);
    return token;
  }

  TToken Quoted() {
    const char16_t quote = FRest[0];
    FRest.remove_prefix(1);
    const TToken token = Take(mkLiteral, std::min(FRest.find(quote), FRest.size()));
    FRest.remove_prefix(std::min<size_t>(1, FRest.size()));
    return token;
  }

  TToken Exponent() {
    TToken token = Take(mkExponent, 2);
    while (token.Zeros < 4 && FRest.starts_with(u'0')) {
      ++token.Zeros;
      FRest.remove_prefix(1);
    }
    return token;
  }
};

// One section of a mask, counted out.
struct TSection {
  std::u16string_view Mask;  // from the section on; it ends with mkSection or mkEnd
  bool Empty = true;
  int IntPlaces = 0;  // in front of the point
  int LeastInt = 0;   // digits that are always written
  int DecimalPlaces = 0;
  int LeastDecimals = 0;
  bool Thousands = false;
  bool Scientific = false;

  explicit TSection(std::u16string_view mask) : Mask(mask) {
    TMaskReader reader(mask);
    bool point = false;
    for (TToken token = reader.Next(); token.Kind != mkSection && token.Kind != mkEnd;
         token = reader.Next()) {
      Empty = false;
      switch (token.Kind) {
        case mkZero:
        case mkDigit: AddPlace(point, token.Kind == mkZero); break;
        case mkPoint: point = true; break;
        case mkComma: Thousands = true; break;
        case mkExponent: Scientific = true; break;
        default: break;
      }
    }
  }

 private:
  void AddPlace(bool decimal, bool always) {
    if (decimal) {
      ++DecimalPlaces;
      if (always) LeastDecimals = DecimalPlaces;
    } else {
      ++IntPlaces;
      if (always || LeastInt > 0) ++LeastInt;
    }
  }
};

// The section with that number; empty if the mask has no such.
TSection SectionOf(std::u16string_view mask, int number) {
  TMaskReader reader(mask);
  size_t start = 0;
  const char16_t* end = mask.data() + mask.size();
  for (TToken token = reader.Next(); number > 0; token = reader.Next()) {
    if (token.Kind == mkEnd) return TSection({});
    if (token.Kind != mkSection) continue;
    --number;
    start = static_cast<size_t>(token.Text.data() + 1 - mask.data());
  }
  return TSection({mask.data() + start, end});
}

class TMaskWriter {
 public:
  TMaskWriter(const TSection& section, const detail::TDecimal& number, char16_t decimalMark,
              char16_t thousandsMark)
      : FSection(section), FNumber(number), FDecimalMark(decimalMark), FThousandsMark(thousandsMark) {
    if (section.Scientific && !number.IsZero()) {
      FExponent = number.Point - section.IntPlaces;
      FNumber.Point = section.IntPlaces;
    }
  }

  void Write(std::u16string& text) {
    TMaskReader reader(FSection.Mask);
    for (TToken token = reader.Next(); token.Kind != mkSection && token.Kind != mkEnd;
         token = reader.Next()) {
      switch (token.Kind) {
        case mkZero:
        case mkDigit: Place(text); break;
        case mkPoint: Point(text); break;
        case mkExponent: Exponent(text, token); break;
        case mkLiteral: text += token.Text; break;
        default: break;
      }
    }
  }

 private:
  const TSection& FSection;
  detail::TDecimal FNumber;
  char16_t FDecimalMark, FThousandsMark;
  int FExponent = 0;
  int FPlace = 0;        // places of the mask that have been passed, on either side of the point
  bool FBehind = false;  // behind the point

  void Place(std::u16string& text) {
    if (FBehind) {
      if (FPlace < std::max(FNumber.Decimals(), FSection.LeastDecimals))
        text += char16_t(FNumber.DigitAt(-FPlace));
    } else {
      if (FPlace == 0) Surplus(text);
      IntDigit(text, FSection.IntPlaces - FPlace);
    }
    ++FPlace;
  }

  // Digits in front of the first place.
  void Surplus(std::u16string& text) {
    for (int weight = FNumber.IntDigits(); weight > FSection.IntPlaces; --weight) IntDigit(text, weight);
  }

  void IntDigit(std::u16string& text, int weight) {
    if (weight > std::max(FNumber.IntDigits(), FSection.LeastInt)) return;
    text += char16_t(FNumber.DigitAt(weight));
    if (FSection.Thousands && FThousandsMark && weight > 1 && weight % 3 == 1) text += FThousandsMark;
  }

  void Point(std::u16string& text) {
    if (FBehind) return;
    if (FSection.IntPlaces == 0) Surplus(text);
    FBehind = true;
    FPlace = 0;
    if (std::max(FNumber.Decimals(), FSection.LeastDecimals) > 0) text += FDecimalMark;
  }

  void Exponent(std::u16string& text, const TToken& token) {
    text += token.Text[0];
    if (FExponent < 0 || token.Text[1] == u'+') text += FExponent < 0 ? u'-' : u'+';
    const std::string digits = std::to_string(std::abs(FExponent));
    text.append(static_cast<size_t>(std::max(token.Zeros - static_cast<int>(digits.size()), 0)), u'0');
    text.append(digits.begin(), digits.end());
  }
};

detail::TDecimal Rounded(detail::TDecimal number, const TSection& section) {
  number.Round((section.Scientific ? section.IntPlaces : number.Point) + section.DecimalPlaces);
  return number;
}

}  // namespace

hstring HtFormatFloatMask(std::u16string_view mask, double value, char16_t decimalMark,
                          char16_t thousandsMark) {
  if (!std::isfinite(value)) return HtFloatToStr(value);
  const detail::TDecimal exact = detail::TDecimal::Of(value);
  TSection section = SectionOf(mask, 0);
  bool sign = exact.Negative;
  if (const TSection negative = SectionOf(mask, 1); exact.Negative && !negative.Empty) {
    section = negative;
    sign = false;
  }
  detail::TDecimal number = Rounded(exact, section);
  if (number.IsZero()) {
    const TSection zero = SectionOf(mask, 2);
    section = zero.Empty ? SectionOf(mask, 0) : zero;
    sign = false;
  }
  if (section.Empty || (!section.Scientific && std::abs(value) >= kMaskLimit))
    return HtFloatToGeneral(value, kGeneralDigits);

  std::u16string text = sign ? u"-" : u"";
  TMaskWriter(section, number, decimalMark, thousandsMark).Write(text);
  return hstring(text);
}

}  // namespace ht
