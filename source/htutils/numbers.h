#pragma once

#include "htruntime/hstring.h"

namespace ht {

// Numbers from and to text, without a locale. Nothing raises but StrtoFloatCheck.

/// A number with "." or "," for the decimal mark: "1.5", "1,5", "-.5", " +2", "1e16", "1.5E-3".
///
/// Blanks in front are skipped. Seven digits of the fraction count, later ones are read and dropped. The exponent
/// may have a "-" but no "+". 0 for what is no number, for anything behind it, for an exponent of 17 or more.
double iStrtoFloat(std::u16string_view text) noexcept;
/// The same strictly, with the given marks; thousands marks (0: none) are skipped among integer digits. Raises
/// EHtException "Invalid number %s" with the whole text where iStrtoFloat would give 0 for what is no number.
double StrtoFloatCheck(std::u16string_view text, char16_t decimalMark, char16_t thousandsMark);

/// The strict conversion of HtTryStrToInt; 0 for what is no 32-bit integer.
int32_t iStrtoInt(std::u16string_view text) noexcept;

/// A hexadecimal number, "0x" in front and "h" or "H" behind left out. Digits are not checked: they go on to z, which
/// counts 35, and any other character counts -1. Wraps at 64 bits.
int64_t HexToDec(std::u16string_view text) noexcept;

/// HtFormatFloatMask with "." for the decimal mark and a blank for the thousands mark.
hstring HtFormatFloat(std::u16string_view format, double value);

/// The shortest fixed-point text with at most `digits` decimals and no zero before the point: "2", ".5", "-.25",
/// "1.2346". Rounded to the nearest, ties to even. HtFloatToStr for what is not finite.
hstring HtFormatDecimal(double value, int digits);

/// Rounds half away from zero. Beyond the range of the type: its end; 0 for what is no number.
int64_t MathRound(double value) noexcept;

}  // namespace ht
