#include "htruntime/decimal.h"

#include <charconv>

namespace ht::detail {

namespace {

constexpr int kDigits = 18;
constexpr size_t kBuffer = 40;  // sign, digits, point, exponent

}  // namespace

TDecimal TDecimal::Shortest(double value) {
  char buffer[kBuffer];
  return Parse(buffer, std::to_chars(buffer, buffer + kBuffer, value, std::chars_format::scientific).ptr);
}

TDecimal TDecimal::Of(double value) {
  char buffer[kBuffer];
  return Parse(
      buffer, std::to_chars(buffer, buffer + kBuffer, value, std::chars_format::scientific, kDigits - 1).ptr);
}

// Reads the form -d.ddde+dd.
TDecimal TDecimal::Parse(const char* start, const char* end) {
  TDecimal result;
  result.Negative = *start == '-';
  const char* p = start + result.Negative;
  for (; *p != 'e'; ++p)
    if (*p != '.') result.Digits += *p;
  ++p;
  std::from_chars(p + (*p == '+'), end, result.Point);
  ++result.Point;
  result.Normalize();
  return result;
}

void TDecimal::Normalize() {
  Digits.erase(Digits.find_last_not_of('0') + 1);
  if (Digits.empty()) {
    Negative = false;
    Point = 0;
  }
}

void TDecimal::Round(int count) {
  if (count >= static_cast<int>(Digits.size())) return;
  const bool up = count >= 0 && Digits[static_cast<size_t>(count)] >= '5';
  Digits.resize(count > 0 ? static_cast<size_t>(count) : 0);
  if (up) {
    while (!Digits.empty() && Digits.back() == '9') Digits.pop_back();
    if (Digits.empty()) {
      Digits.push_back('1');
      ++Point;
    } else {
      ++Digits.back();
    }
  }
  Normalize();
}

}  // namespace ht::detail
