#include "htruntime/numformat.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "htruntime/decimal.h"
#include "htruntime/exception.h"

namespace ht {

namespace {

hstring Widen(std::string_view ascii) {
  hstring text = hstring::Uninitialized(ascii.size());
  std::copy(ascii.begin(), ascii.end(), text.Unique());
  return text;
}

// The places in front of the point beyond which FloatToStr changes to an exponent, and the zeros behind it.
constexpr int kFixedDigits = 15;
constexpr int kFixedZeros = 3;

hstring General(const detail::TDecimal& number, int fixedDigits) {
  if (number.IsZero()) return u"0"_hs;
  std::string text = number.Negative ? "-" : "";
  const bool exponent = number.Point > fixedDigits || number.Point < -kFixedZeros;
  detail::TDecimal shown = number;
  if (exponent) shown.Point = 1;
  if (shown.Point <= 0) text += '0';
  for (int weight = shown.IntDigits(); weight > 0; --weight) text += shown.DigitAt(weight);
  if (shown.Decimals() > 0) text += '.';
  for (int place = 0; place < shown.Decimals(); ++place) text += shown.DigitAt(-place);
  if (exponent) text += 'E' + std::to_string(number.Point - 1);
  return Widen(text);
}

hstring NotFinite(double value) { return std::isnan(value) ? u"NAN"_hs : value < 0 ? u"-INF"_hs : u"INF"_hs; }

}  // namespace

hstring detail::IntToStr(uint64_t magnitude, bool negative) {
  char buffer[21];
  buffer[0] = '-';
  const char* end = std::to_chars(buffer + 1, std::end(buffer), magnitude).ptr;
  const char* start = buffer + !negative;
  return Widen({start, static_cast<size_t>(end - start)});
}

hstring detail::IntToHex(uint64_t value, int digits) {
  char buffer[16];
  const auto size = static_cast<size_t>(std::to_chars(buffer, std::end(buffer), value, 16).ptr - buffer);
  const size_t zeros = static_cast<size_t>(std::max(digits - static_cast<int>(size), 0));
  hstring text(zeros + size, u'0');
  std::transform(buffer, buffer + size, text.Unique() + zeros,
                 [](char c) { return static_cast<char16_t>(c >= 'a' ? c - 32 : c); });
  return text;
}

hstring HtFloatToStr(double value) {
  return std::isfinite(value) ? General(detail::TDecimal::Shortest(value), kFixedDigits) : NotFinite(value);
}

hstring HtFloatToGeneral(double value, int digits) {
  if (!std::isfinite(value)) return NotFinite(value);
  detail::TDecimal number = detail::TDecimal::Of(value);
  number.Round(std::max(digits, 1));
  return General(number, digits);
}

namespace {

struct TIntText {
  uint64_t Magnitude = 0;
  bool Negative = false;
  bool Hexadecimal = false;
};

bool SkipPrefix(std::u16string_view& text, std::u16string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

int DigitOf(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  const int letter = (c | 32) - u'a';
  return letter >= 0 && letter < 6 ? letter + 10 : 16;
}

bool ReadInt(std::u16string_view text, TIntText& number) {
  while (SkipPrefix(text, u" ")) {}
  number.Negative = SkipPrefix(text, u"-");
  if (!number.Negative) SkipPrefix(text, u"+");
  number.Hexadecimal = SkipPrefix(text, u"$") || SkipPrefix(text, u"0x") || SkipPrefix(text, u"0X");
  const int base = number.Hexadecimal ? 16 : 10;
  if (text.empty()) return false;
  for (char16_t c : text) {
    const int digit = DigitOf(c);
    if (digit >= base) return false;
    if (__builtin_mul_overflow(number.Magnitude, static_cast<uint64_t>(base), &number.Magnitude) ||
        __builtin_add_overflow(number.Magnitude, static_cast<uint64_t>(digit), &number.Magnitude))
      return false;
  }
  return true;
}

template <class T>
bool TryStrToInt(std::u16string_view text, T& value) {
  TIntText number;
  if (!ReadInt(text, number)) return false;
  using TBits = std::make_unsigned_t<T>;
  const uint64_t largest = number.Hexadecimal ? std::numeric_limits<TBits>::max()
                                              : uint64_t{std::numeric_limits<T>::max()} + number.Negative;
  if (number.Magnitude > largest) return false;
  value = static_cast<T>(number.Negative ? 0 - number.Magnitude : number.Magnitude);
  return true;
}

[[noreturn]] void RaiseInvalid(std::u16string_view text, std::u16string_view type) {
  throw EConvertError(hstring(u"'") + text + u"' is not a valid " + type + u" value");
}

}  // namespace

bool HtTryStrToInt(std::u16string_view text, int32_t& value) { return TryStrToInt(text, value); }
bool HtTryStrToInt(std::u16string_view text, int64_t& value) { return TryStrToInt(text, value); }

int32_t HtStrToInt(std::u16string_view text) {
  int32_t value;
  if (!HtTryStrToInt(text, value)) RaiseInvalid(text, u"integer");
  return value;
}

bool HtTryStrToFloat(std::u16string_view text, double& value) {
  while (SkipPrefix(text, u" ")) {}
  while (text.ends_with(u' ')) text.remove_suffix(1);
  const bool negative = SkipPrefix(text, u"-");
  if (!negative) SkipPrefix(text, u"+");
  // Another sign and the words for infinity, which from_chars knows, are no numbers here.
  if (text.empty() || (text[0] != u'.' && (text[0] < u'0' || text[0] > u'9'))) return false;
  std::string narrow;
  for (char16_t c : text) narrow += c < 128 ? static_cast<char>(c) : '?';
  double magnitude;
  const char* end = narrow.data() + narrow.size();
  const auto [stop, error] = std::from_chars(narrow.data(), end, magnitude);
  if (error != std::errc() || stop != end) return false;
  value = negative ? -magnitude : magnitude;
  return true;
}

double HtStrToFloat(std::u16string_view text) {
  double value;
  if (!HtTryStrToFloat(text, value)) RaiseInvalid(text, u"floating point");
  return value;
}

}  // namespace ht
