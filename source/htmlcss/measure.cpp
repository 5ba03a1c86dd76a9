#include "htmlcss/measure.h"

#include <cmath>

#include "htmlcss/tokensequence.h"
#include "htmlpars/lower.h"
#include "htmlpars/lowername.h"
#include "htruntime/numformat.h"
#include "htutils/numbers.h"

namespace ht {

namespace {

// A word that stands for a length, and what it adds to the flags.
struct TLengthWord {
  std::u16string_view Word;
  TMeasureUnit Unit;
  float Value;
  TMeasureFlags Flags;
};

constexpr TLengthWord kLengthWords[] = {
    // clang-format off
    {u"left",     muPercent,   0, {mfLeft}},
    {u"right",    muPercent, 100, {mfRight}},
    {u"top",      muPercent,   0, {mfTop}},
    {u"bottom",   muPercent, 100, {mfBottom}},
    {u"center",   muPercent,  50, {mfCenter}},
    {u"thin",     muPX,        1, {}},
    {u"medium",   muPX,        2, {}},
    {u"thick",    muPX,        3, {}},
    {u"xx-small", muPX,        9, {}},
    {u"x-small",  muPX,       10, {}},
    {u"small",    muPX,       14, {}},
    {u"large",    muPX,       22, {}},
    {u"x-large",  muPX,       24, {}},
    {u"xx-large", muPX,       26, {}},
    {u"smaller",  muPercent,  80, {}},
    {u"larger",   muPercent, 120, {}},
    // clang-format on
};

constexpr std::u16string_view kUnitTexts[] = {u"px", u"%",  u"in", u"mm",  u"pt", u"cm", u"em",  u"ex",
                                              u"pc", u"ms", u"s",  u"rem", u"vw", u"vh", u"deg", u""};

// The unit behind a number in plain text; muNone for what is none.
TMeasureUnit PlainUnit(std::u16string_view text) {
  const char16_t first = text.empty() ? u'\0' : text[0], second = text.size() < 2 ? u'\0' : text[1];
  switch (first) {
    case u'%': return muPercent;
    case u'p': return second == u'x' ? muPX : second == u't' ? muPt : second == u'c' ? muPC : muNone;
    case u'm': return second == u'm' ? muMM : muNone;
    case u'c': return second == u'm' ? muCM : muNone;
    case u'i': return second == u'n' ? muIN : muNone;
    case u'e': return second == u'm' ? muEM : second == u'x' ? muEX : muNone;
    case u'r': return muREM;
    case u's': return muS;
    case u'v': return second == u'w' ? muVW : second == u'h' ? muVH : muNone;
    default: return muNone;
  }
}

std::u16string_view LeadingRun(std::u16string_view text, std::u16string_view marks) {
  size_t length = 0;
  while (length < text.size() && (HtIsDigit(text[length]) || marks.find(text[length]) != marks.npos))
    ++length;
  return text.substr(0, length);
}

// Behind the number: a power of ten, or nothing.
double PlainExponent(std::u16string_view text) {
  if (text.size() < 2 || text[0] != u'e') return 0;
  const std::u16string_view run = LeadingRun(text.substr(1), u"-");
  int32_t exponent;
  return !run.empty() && HtTryStrToInt(run, exponent) ? exponent : 0;
}

}  // namespace

void TMeasureValue::SetAuto(bool isAuto) {
  if (isAuto) {
    Flags.Exclude(mfNotAuto);
    Calc = nullptr;
  } else {
    Flags.Include(mfNotAuto);
  }
}

void TMeasureValue::SetValue(float value) {
  if (value == FValue) return;
  FValue = value;
  Flags.Include(mfNotAuto);
  Flags.Exclude(mfInitial);
  value == 0 ? Flags.Include(mfZero) : Flags.Exclude(mfZero);
  Calc = nullptr;
}

void TMeasureValue::SetFPixels(float value) {
  SetValue(value);
  Flags.Include(mfNotAuto);
  FMUnit = muPX;
}

void TMeasureValue::Decode(const TCSSTokenSequence& sequence) {
  Flags = {mfNotAuto};
  Calc = nullptr;
  if (!sequence.T) return;
  const TCSSToken& token = *sequence.T;
  switch (token.CType) {
    case ctNumber:
      SetValue(token.AsFloat());
      FMUnit = muPX;
      break;
    case ctPercentage:
    case ctDimension:
      SetValue(token.AsFloat());
      FMUnit = token.MUnit;
      break;
    case ctFunction:
      Flags = {};
      if (!HtSameAscii(token.Name, u"calc")) break;
      Calc = sequence.Tokens();
      Flags = {mfNotAuto};
      break;
    case ctIdent: DecodeWord(token.Name); break;
    default: break;
  }
}

void TMeasureValue::DecodeWord(std::u16string_view text) {
  const THtLowerName lower(text);
  const std::u16string_view word = lower;
  if (word == u"auto") {
    FValue = 0;
    SetAuto(true);
  } else if (word == u"inherit") {
    Flags.Include(mfInherit);
  } else if (word == u"initial") {
    Flags = {mfInitial};
  } else if (word == u"normal") {
    Flags = {mfNotAuto, mfInitial};
    FMUnit = muNone;
    FValue = 0;
  } else if (text == u"none") {
    Flags = {};
  } else {
    for (const TLengthWord& row : kLengthWords) {
      if (row.Word != word) continue;
      SetValue(row.Value);
      FMUnit = row.Unit;
      Flags = Flags + row.Flags;
      return;
    }
  }
}

void TMeasureValue::Parse(std::u16string_view text) {
  if (text.empty()) return;
  if (text == u"auto") {
    SetValue(0);
    SetAuto(true);
    return;
  }
  if (text == u"inherit") {
    SetAuto(false);
    Flags.Include(mfInherit);
    return;
  }
  Flags.Exclude(mfInherit);
  const std::u16string_view number = LeadingRun(text, u"-.");
  if (number.empty()) return;
  const std::u16string_view behind = text.substr(number.size());
  const double value = iStrtoFloat(number) * std::pow(10.0, PlainExponent(behind));
  SetAuto(false);
  SetValue(std::abs(value) < kLargestNumber ? static_cast<float>(value) : 0);
  FMUnit = PlainUnit(behind);
}

hstring TMeasureValue::AsString() const {
  if (GetAuto()) return u"auto"_hs;
  if (Flags.Contains(mfZero)) return u"0"_hs;
  return HtFormatFloat(u"0.###", FValue) + kUnitTexts[FMUnit];
}

}  // namespace ht
