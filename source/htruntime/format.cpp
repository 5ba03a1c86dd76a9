#include "htruntime/format.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "htruntime/exception.h"

namespace ht {

namespace {

// The largest width and precision: far above any use, far below what would exhaust memory.
constexpr int kMaxField = 9999;
constexpr int kDefaultDecimals = 2;

class TFormatter {
 public:
  TFormatter(std::u16string_view pattern, std::initializer_list<THtFormatArg> args)
      : FPattern(pattern), FNext(args.begin()), FEnd(args.end()) {}

  hstring Run() {
    while (FPos < FPattern.size()) {
      const size_t percent = std::min(FPattern.find(u'%', FPos), FPattern.size());
      FText.append(FPattern, FPos, percent - FPos);
      FPos = percent;
      if (FPos < FPattern.size()) Directive();
    }
    return hstring(FText);
  }

 private:
  std::u16string_view FPattern;
  size_t FPos = 0;
  const THtFormatArg* FNext;
  const THtFormatArg* FEnd;
  std::u16string FText;
  std::string FDigits;

  [[noreturn]] void Fail() {
    throw EConvertError(
        hstring::Concat(hstring::Concat(u"Format '", FPattern), u"' invalid or incompatible with argument"));
  }

  bool Skip(char16_t c) {
    const bool here = FPos < FPattern.size() && FPattern[FPos] == c;
    FPos += here;
    return here;
  }

  // A number of the pattern, or -1 if none stands here.
  int Field() {
    int value = -1;
    for (; FPos < FPattern.size() && FPattern[FPos] >= u'0' && FPattern[FPos] <= u'9'; ++FPos) {
      value = std::max(value, 0) * 10 + (FPattern[FPos] - u'0');
      if (value > kMaxField) Fail();
    }
    return value;
  }

  const THtFormatArg& Argument() {
    if (FNext == FEnd) Fail();
    return *FNext++;
  }

  int64_t IntArgument() {
    const THtFormatArg& arg = Argument();
    if (arg.Kind() != THtFormatArg::faInt) Fail();
    return arg.Int();
  }

  void Directive() {
    ++FPos;
    if (Skip(u'%')) return FText.push_back(u'%');
    const bool left = Skip(u'-');
    const size_t width = static_cast<size_t>(std::max(Field(), 0));
    int precision = -1;
    if (Skip(u'.') && (precision = Field()) < 0) Fail();
    if (FPos == FPattern.size()) Fail();

    const size_t start = FText.size();
    switch (FPattern[FPos++]) {
      case u's':
      case u'S': Text(precision); break;
      case u'd':
      case u'D': Decimal(precision); break;
      case u'x':
      case u'X': Hexadecimal(precision); break;
      case u'f':
      case u'F': Fixed(precision); break;
      default: Fail();
    }
    const size_t length = FText.size() - start;
    if (length < width) FText.insert(left ? FText.size() : start, width - length, u' ');
  }

  void Text(int precision) {
    const THtFormatArg& arg = Argument();
    if (arg.Kind() != THtFormatArg::faText) Fail();
    FText += precision < 0 ? arg.Text() : arg.Text().substr(0, static_cast<size_t>(precision));
  }

  void Decimal(int precision) {
    const int64_t value = IntArgument();
    const uint64_t magnitude = value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
    if (value < 0) FText.push_back(u'-');
    Digits(magnitude, 10, precision);
  }

  void Hexadecimal(int precision) { Digits(static_cast<uint64_t>(IntArgument()), 16, precision); }

  void Digits(uint64_t value, int base, int least) {
    char buffer[20];
    const auto end = std::to_chars(buffer, std::end(buffer), value, base).ptr;
    const int count = static_cast<int>(end - buffer);
    if (count < least) FText.append(static_cast<size_t>(least - count), u'0');
    for (const char* p = buffer; p != end; ++p)
      FText.push_back(static_cast<char16_t>(*p >= 'a' ? *p - 32 : *p));
  }

  void Fixed(int decimals) {
    const THtFormatArg& arg = Argument();
    if (arg.Kind() == THtFormatArg::faText) Fail();
    const double value = arg.Float();
    if (!std::isfinite(value)) {
      FText += std::isnan(value) ? u"NAN" : value < 0 ? u"-INF" : u"INF";
      return;
    }
    if (decimals < 0) decimals = kDefaultDecimals;
    FDigits.resize(static_cast<size_t>(decimals) + 312);  // 309 digits, the sign, the point
    const auto end = std::to_chars(FDigits.data(), FDigits.data() + FDigits.size(), value,
                                   std::chars_format::fixed, decimals)
                         .ptr;
    FText.append(FDigits.data(), end);
  }
};

}  // namespace

hstring HtFormatArgs(std::u16string_view pattern, std::initializer_list<THtFormatArg> args) {
  return TFormatter(pattern, args).Run();
}

}  // namespace ht
