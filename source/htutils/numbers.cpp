#include "htutils/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "htruntime/exception.h"
#include "htruntime/format.h"
#include "htruntime/numformat.h"
#include "htruntime/rounding.h"
#include "htutils/strsearch.h"

namespace ht {

namespace {

constexpr int kFractionDigits = 7;
constexpr int kMaxExponent = 16;
constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                              1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22, 1e23};
static_assert(std::size(kPowers) == kFractionDigits + kMaxExponent + 1);

constexpr bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

struct TMarks {
  char16_t Decimal, OtherDecimal, Thousands;  // 0: none
};

class TNumberReader {
 public:
  TNumberReader(std::u16string_view text, TMarks marks)
      : FNext(text.data()), FEnd(FNext + text.size()), FMarks(marks) {}

  // False if the text is no number. The digits stay exact as long as they fit 53 bits, and one operation scales
  // them, so the result is the nearest double.
  bool Read(double& value) {
    while (Is(u' ')) ++FNext;
    if (FNext == FEnd || !(Is(u'+') || Is(u'-') || IsDecimal() || IsDigit(*FNext))) return false;
    const bool negative = Is(u'-');
    if (negative || Is(u'+')) ++FNext;

    double mantissa = 0;
    for (; FNext != FEnd && (IsDigit(*FNext) || IsThousands()); ++FNext)
      if (IsDigit(*FNext)) mantissa = mantissa * 10 + (*FNext - u'0');
    int scale = 0;
    if (IsDecimal()) {
      ++FNext;
      scale = -ReadDigits(mantissa);
    }
    if (Is(u'e') || Is(u'E')) {
      ++FNext;
      const bool down = Is(u'-');
      FNext += down;
      double exponent = 0;
      ReadDigits(exponent);
      if (exponent > kMaxExponent) return false;
      scale += down ? -static_cast<int>(exponent) : static_cast<int>(exponent);
    }
    if (FNext != FEnd) return false;
    mantissa = scale < 0 ? mantissa / kPowers[-scale] : mantissa * kPowers[scale];
    value = negative ? -mantissa : mantissa;
    return true;
  }

 private:
  const char16_t* FNext;
  const char16_t* FEnd;
  TMarks FMarks;

  bool Is(char16_t c) const { return FNext != FEnd && *FNext == c; }
  bool IsDecimal() const { return Is(FMarks.Decimal) || (FMarks.OtherDecimal && Is(FMarks.OtherDecimal)); }
  bool IsThousands() const { return FMarks.Thousands && *FNext == FMarks.Thousands && !IsDecimal(); }

  // Appends the first seven digits to a number and returns how many those were.
  int ReadDigits(double& number) {
    int count = 0;
    for (; FNext != FEnd && IsDigit(*FNext); ++FNext) {
      if (count == kFractionDigits) continue;
      number = number * 10 + (*FNext - u'0');
      ++count;
    }
    return count;
  }
};

}  // namespace

double iStrtoFloat(std::u16string_view text) noexcept {
  double value;
  return TNumberReader(text, {u'.', u',', 0}).Read(value) ? value : 0;
}

double StrtoFloatCheck(std::u16string_view text, char16_t decimalMark, char16_t thousandsMark) {
  double value;
  if (!TNumberReader(text, {decimalMark, 0, thousandsMark}).Read(value))
    throw EHtException(HtFormat(u"Invalid number %s", text));
  return value;
}

int32_t iStrtoInt(std::u16string_view text) noexcept {
  int32_t value;
  return HtTryStrToInt(text, value) ? value : 0;
}

int64_t HexToDec(std::u16string_view text) noexcept {
  if (text.starts_with(u"0x")) text.remove_prefix(2);
  if (text.ends_with(u'h') || text.ends_with(u'H')) text.remove_suffix(1);
  uint64_t value = 0;
  for (char16_t c : text) {
    const char16_t lower = CharLower(c);
    const int digit = IsDigit(c) ? c - u'0' : lower >= u'a' && lower <= u'z' ? lower - u'a' + 10 : -1;
    value = value * 16 + static_cast<uint64_t>(digit);
  }
  return static_cast<int64_t>(value);
}

hstring HtFormatFloat(std::u16string_view format, double value) {
  return HtFormatFloatMask(format, value, u'.', u' ');
}

namespace {

// More decimals than any double has digits for; it keeps the scaled value finite.
constexpr int kMaxDecimals = 290;

// The decimal text of a whole number, however large.
std::string WholeText(double value) {
  char buffer[320];
  const auto end =
      std::to_chars(buffer, std::end(buffer), value == 0 ? 0 : value, std::chars_format::fixed, 0).ptr;
  return {buffer, end};
}

hstring Widen(const std::string& ascii) {
  hstring text = hstring::Uninitialized(ascii.size());
  std::copy(ascii.begin(), ascii.end(), text.Unique());
  return text;
}

}  // namespace

hstring HtFormatDecimal(double value, int digits) {
  if (!std::isfinite(value)) return HtFloatToStr(value);
  digits = std::min(digits, kMaxDecimals);
  const double power =
      digits >= 0 && digits < static_cast<int>(std::size(kPowers)) ? kPowers[digits] : std::pow(10, digits);
  const double whole = HtRoundEven(value);
  if (std::abs(value - whole) * power < 0.5) return Widen(WholeText(whole));

  const double scaled = HtRoundEven(value * power);
  std::string text = WholeText(scaled);
  // A tie may still round down to nothing; then there is no fraction to show.
  if (digits < 1 || scaled == 0) return Widen(text);
  const size_t sign = text[0] == '-';
  const size_t decimals = static_cast<size_t>(digits);
  if (text.size() < decimals + sign) text.insert(sign, decimals + sign - text.size(), '0');
  text.insert(text.size() - decimals, 1, '.');
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return Widen(text);
}

int64_t MathRound(double value) noexcept {
  if (std::isnan(value)) return 0;
  const double moved = value >= 0 ? value + 0.5 : value - 0.5;
  constexpr double kLimit = 9223372036854775808.0;  // 2 to the power 63
  if (moved >= kLimit) return std::numeric_limits<int64_t>::max();
  if (moved < -kLimit) return std::numeric_limits<int64_t>::min();
  return static_cast<int64_t>(moved);
}

}  // namespace ht
