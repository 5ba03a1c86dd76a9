#include <cmath>
#include <limits>

#include "htmlpars/stringparser.h"
#include "htruntime/exception.h"

namespace ht {

namespace {

// Below these a value times ten plus a digit stays within 32 bits.
constexpr int64_t kIntLimit = 0x0CCCCCCC;
constexpr int64_t kNumLimit = 0x0CCCCCCD;
constexpr int32_t kFractionLimit = 10000000;

}  // namespace

void TStringParser::RaiseNumber() { throw EConvertError(u"Incorrect number"); }

// False at the end of the text.
bool TStringParser::ReadHead(bool comma, bool& negative) {
  negative = false;
  SkipBlanks();
  if (comma && *p == u',') {
    ++p;
    SkipBlanks();
  }
  if (Empty()) return false;
  negative = *p == u'-';
  if (*p == u'-' || *p == u'+') ++p;
  if (Empty()) return false;
  if (RaiseException && !AtDigit()) RaiseNumber();
  return true;
}

int64_t TStringParser::ReadDigits(int64_t limit) {
  int64_t value = 0;
  for (; AtDigit() && value < limit; ++p) value = value * 10 + (*p - u'0');
  return value;
}

int32_t TStringParser::ReadInt() {
  bool negative;
  if (!ReadHead(true, negative)) return 0;
  const auto value = static_cast<int32_t>(ReadDigits(kIntLimit));
  return negative ? -value : value;
}

int32_t TStringParser::ReadInt1() {
  bool negative;
  if (!ReadHead(true, negative) || !AtDigit()) return 0;
  const int32_t digit = *p++ - u'0';
  return negative ? -digit : digit;
}

int64_t TStringParser::ReadBased(int base) {
  SkipBlanks();
  if (*p == u',') {
    ++p;
    SkipBlanks();
  }
  if (*p == u'+') ++p;
  const bool negative = *p == u'-';
  if (negative) ++p;
  uint64_t value = 0;
  for (;; ++p) {
    const char16_t c = *p;
    const char16_t letter = c | 32;
    const int digit = AtDigit()                                     ? c - u'0'
                      : letter >= u'a' && letter <= u'f' && c < 128 ? letter - u'a' + 10
                                                                    : base;
    if (digit >= base) break;
    value = value * static_cast<uint64_t>(base) + static_cast<uint64_t>(digit);
  }
  return static_cast<int64_t>(negative ? 0 - value : value);
}

int64_t TStringParser::ReadHex() { return ReadBased(16); }
int64_t TStringParser::ReadBin() { return ReadBased(2); }

// The digits behind a "." that was stepped over.
double TStringParser::ReadFraction() {
  int32_t fraction = 0;
  int32_t divisor = 1;
  for (; AtDigit(); ++p) {
    if (divisor >= kFractionLimit) continue;
    fraction = fraction * 10 + (*p - u'0');
    divisor *= 10;
  }
  return static_cast<double>(fraction) / divisor;
}

double TStringParser::ReadNum() {
  bool negative;
  if (!ReadHead(true, negative)) return 0;
  auto value = static_cast<double>(ReadDigits(kNumLimit));
  if (*p == u'.') {
    ++p;
    value += ReadFraction();
  }
  return negative ? -value : value;
}

void TStringParser::CheckStrictInteger() const {
  if (RaiseException && *p == u'0' && p[1] >= u'0' && p[1] <= u'9') RaiseNumber();
}

bool TStringParser::AtExponent() const {
  if (*p != u'e' && *p != u'E') return false;
  return p[1] == u'+' || p[1] == u'-' || (p[1] >= u'0' && p[1] <= u'9');
}

double TStringParser::ReadNumEx() {
  bool negative;
  if (!ReadHead(true, negative)) {
    if (RaiseException) RaiseNumber();
    return 0;
  }
  CheckStrictInteger();
  auto value = static_cast<double>(ReadDigits(kIntLimit));
  for (; AtDigit(); ++p) value = value * 10 + (*p - u'0');
  if (*p == u'.') {
    ++p;
    if (RaiseException && !AtDigit()) RaiseNumber();
    value += ReadFraction();
  }
  if (AtExponent()) {
    ++p;
    const int32_t exponent = ReadInt();
    if (value != 0 && (exponent < 38 || RaiseException)) value *= std::pow(10.0, exponent);
  }
  return negative ? -value : value;
}

bool TStringParser::ReadIntOrFloat(int64_t& i, long double& f) {
  i = 0;
  f = 0;
  bool negative;
  if (!ReadHead(false, negative)) {
    if (RaiseException) RaiseNumber();
    return true;
  }
  CheckStrictInteger();
  bool whole = true;
  constexpr int64_t kMax = std::numeric_limits<int64_t>::max();
  for (; AtDigit(); ++p) {
    const int digit = *p - u'0';
    if (whole && i > (kMax - digit) / 10) {
      whole = false;
      f = static_cast<long double>(i);
    }
    if (whole)
      i = i * 10 + digit;
    else
      f = f * 10 + digit;
  }
  if (whole) f = static_cast<long double>(i);
  if (*p == u'.' && p[1] != u'.') {
    ++p;
    if (RaiseException && !AtDigit()) RaiseNumber();
    f += static_cast<long double>(ReadFraction());
    whole = false;
  }
  if (AtExponent()) {
    ++p;
    const int32_t exponent = ReadInt();
    if (exponent < 300) f *= std::pow(10.0L, exponent);
    whole = false;
  }
  if (negative) {
    i = -i;
    f = -f;
  }
  if (!whole) i = 0;
  return whole;
}

}  // namespace ht
