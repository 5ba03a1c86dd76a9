#pragma once

#include <concepts>
#include <type_traits>

#include "htruntime/hstring.h"

namespace ht {

// Numbers as text, always with "." for the decimal point and no locale.

namespace detail {
hstring IntToStr(uint64_t magnitude, bool negative);
hstring IntToHex(uint64_t value, int digits);
}  // namespace detail

template <std::integral T>
hstring HtIntToStr(T value) {
  const auto bits = static_cast<uint64_t>(value);
  return value < 0 ? detail::IntToStr(0 - bits, true) : detail::IntToStr(bits, false);
}

/// Upper-case hexadecimal digits, at least `digits` of them. A negative number shows the bits of its type.
template <std::integral T>
hstring HtIntToHex(T value, int digits) {
  return detail::IntToHex(static_cast<std::make_unsigned_t<T>>(value), digits);
}

/// The shortest text that reads back as the same number: "0.1", "-25", "1E15", "1.5E-5". Numbers below 0.0001
/// and from 1E15 on have an exponent. "NAN", "INF" and "-INF" for those.
hstring HtFloatToStr(double value);
/// The same form with the number rounded to `digits` significant digits, 1 to 18.
hstring HtFloatToGeneral(double value, int digits);

/// A number by a mask:
///
///   HtFormatFloatMask(u"0.##", 2.5, u'.', u' ');            // "2.5"
///   HtFormatFloatMask(u"# ##0.00;(0.00);-", -3, u'.', 0);   // "(3.00)"
///
/// `0` a digit, or "0" where the number has none; `#` a digit, or nothing; the first `.` the decimal mark, which is
/// written only before digits; `,` anywhere separates groups of three digits by the thousands mark (0: by nothing);
/// `E+0`, `E-0`, `e+0`, `e-0` scientific form, with as many exponent digits as zeros, the sign "+" written with "+"
/// only; text in either kind of quotes and every other character stand for themselves. Digits that find no place
/// before the decimal mark are written before its first place.
///
/// ";" parts the mask into sections for positive, negative and zero numbers; an absent or empty section is that of
/// positive ones, with "-" before a negative number. What rounds to zero is zero. The number is rounded half away
/// from zero on its first 18 digits. With an empty positive section, from 1E18 on without an exponent, and for
/// what is not finite: HtFloatToGeneral with 15 digits.
hstring HtFormatFloatMask(std::u16string_view mask, double value, char16_t decimalMark,
                          char16_t thousandsMark);

// Strict reading. Blanks may stand in front of a number.

/// Decimal with an optional sign, or hexadecimal behind "$" or "0x"; false if anything else is there or the number
/// does not fit. Hexadecimal numbers may use all bits of the type: "$FFFFFFFF" is -1.
bool HtTryStrToInt(std::u16string_view text, int32_t& value);
bool HtTryStrToInt(std::u16string_view text, int64_t& value);
/// Raises EConvertError "'%s' is not a valid integer value".
int32_t HtStrToInt(std::u16string_view text);

/// Digits with an optional sign, fraction and exponent, blanks around; false if anything else is there or the
/// number does not fit.
bool HtTryStrToFloat(std::u16string_view text, double& value);
/// Raises EConvertError "'%s' is not a valid floating point value".
double HtStrToFloat(std::u16string_view text);

}  // namespace ht
