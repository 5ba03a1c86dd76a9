#pragma once

#include <cstddef>
#include <string>

namespace ht::detail {

/// A number as decimal digits: 0.d1d2d3… times 10 to the power Point, without zeros at either end. Zero has no
/// digits.
struct TDecimal {
  bool Negative = false;
  std::string Digits;
  int Point = 0;

  /// The shortest digits that read back as the same number. `value` is finite.
  static TDecimal Shortest(double value);
  /// The first 18 digits. `value` is finite.
  static TDecimal Of(double value);

  bool IsZero() const { return Digits.empty(); }
  /// Keeps the first `count` digits, rounded half away from zero.
  void Round(int count);
  /// The digit in front of the point with that weight (1: units), behind it from 0 on downward; "0" where none is.
  char DigitAt(int weight) const {
    const int index = Point - weight;
    return index >= 0 && index < static_cast<int>(Digits.size()) ? Digits[static_cast<size_t>(index)] : '0';
  }
  int IntDigits() const { return Point > 0 ? Point : 0; }
  int Decimals() const {
    const int count = static_cast<int>(Digits.size()) - Point;
    return !IsZero() && count > 0 ? count : 0;
  }

 private:
  static TDecimal Parse(const char* start, const char* end);
  void Normalize();
};

}  // namespace ht::detail
