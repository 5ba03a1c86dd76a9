#include "htutils/dates.h"

#include <algorithm>

#include "htruntime/exception.h"
#include "htruntime/format.h"
#include "htruntime/numformat.h"
#include "htruntime/unicode.h"
#include "htutils/strsearch.h"

namespace ht {

namespace {

constexpr char16_t kAny = u'?';       // in a prefix: any letter
constexpr char16_t kLastAscii = 128;  // characters above it belong to month names

struct TMonthPrefix {
  std::u16string_view Prefix;
  int Month;
};

// clang-format off
constexpr TMonthPrefix kEnglish[] = {
    {u"ja", 1}, {u"fe", 2}, {u"m?r", 3}, {u"ap", 4},  {u"m?y", 5}, {u"j?n", 6},
    {u"j?l", 7}, {u"au", 8}, {u"se", 9}, {u"oc", 10}, {u"no", 11}, {u"de", 12},
};
constexpr TMonthPrefix kRussian[] = {
    {u"я", 1}, {u"фе", 2}, {u"м?р", 3}, {u"ап", 4}, {u"м?й", 5}, {u"м?я", 5}, {u"и?н", 6},
    {u"и?л", 7}, {u"ав", 8}, {u"се", 9}, {u"ок", 10}, {u"но", 11}, {u"де", 12},
};
constexpr int kEnglishLength[] = {0, 7, 8, 5, 5, 3, 4, 4, 6, 9, 7, 8, 8};
// clang-format on

constexpr bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
constexpr bool IsNameLetter(char16_t c) {
  return (CharLower(c) >= u'a' && CharLower(c) <= u'z') || c > kLastAscii;
}

// `text` has at least three characters, as long as the longest prefix. The first one may be a capital.
template <size_t N>
int FindMonth(std::u16string_view text, const TMonthPrefix (&names)[N]) {
  for (const TMonthPrefix& name : names) {
    bool same = CharLower(text[0]) == name.Prefix[0];
    for (size_t i = 1; i < name.Prefix.size() && same; ++i)
      same = name.Prefix[i] == kAny ? HtIsLetter(text[i]) : text[i] == name.Prefix[i];
    if (same) return name.Month;
  }
  return 0;
}

class TDateReader {
 public:
  TDateReader(std::u16string_view text, std::u16string_view mask) : FText(text), FMask(mask), FRest(mask) {}

  TDateTime Read() {
    while (!FRest.empty() && FPos < FText.size()) Field();
    return Date() + Time();
  }

 private:
  std::u16string_view FText, FMask;
  std::u16string_view FRest;  // of the mask
  size_t FPos = 0;            // in the text
  int FYear = 0, FMonth = 0, FDay = 0, FHour = 0, FMinute = 0, FSecond = 0;
  bool FHasDate = false, FHasTime = false, FAfternoon = false;

  [[noreturn]] void Fail() const {
    throw EConvertError(HtFormat(u"Date/time string '%s' does not match mask '%s'", FText, FMask));
  }

  bool Take(std::u16string_view letters) {
    if (!FRest.starts_with(letters)) return false;
    FRest.remove_prefix(letters.size());
    return true;
  }

  // Longer forms stand in front of those that they begin with.
  void Field() {
    if (Take(u"dd"))
      SetDate(FDay, Two());
    else if (Take(u"d"))
      SetDate(FDay, OneOrTwo());
    else if (Take(u"hh"))
      SetTime(FHour, Two());
    else if (Take(u"h"))
      SetTime(FHour, OneOrTwo());
    else if (Take(u"mmmm"))
      MonthName(true);
    else if (Take(u"mmm"))
      MonthName(false);
    else if (Take(u"mm"))
      SetDate(FMonth, Natural(Two()));
    else if (Take(u"m"))
      SetDate(FMonth, Natural(OneOrTwo()));
    else if (Take(u"MMM"))
      EnglishMonthName();
    else if (Take(u"nn"))
      SetTime(FMinute, Natural(Two()));
    else if (Take(u"ss"))
      SetTime(FSecond, Natural(Number(Next(2))));
    else if (Take(u"pp"))
      FAfternoon = Next(2).starts_with(u'p') || FAfternoon;
    else if (Take(u"yyyy"))
      SetDate(FYear, FourDigitYear());
    else if (Take(u"yy"))
      SetDate(FYear, TwoDigitYear());
    else {
      FRest.remove_prefix(1);
      ++FPos;
    }
  }

  void SetDate(int& field, int value) {
    field = value;
    FHasDate = true;
  }

  void SetTime(int& field, int value) {
    field = value;
    FHasTime = true;
  }

  std::u16string_view Ahead() const { return FText.substr(std::min(FPos, FText.size())); }

  // The next characters, or as many as are left; the position moves by `count` in any case.
  std::u16string_view Next(size_t count) {
    const std::u16string_view result = Ahead().substr(0, count);
    FPos += count;
    return result;
  }

  int Number(std::u16string_view digits) const {
    int32_t value;
    if (!HtTryStrToInt(digits, value)) Fail();
    return value;
  }

  int Natural(int value) const {
    if (value < 0) Fail();
    return value;
  }

  int Two() { return Number(HtTrim(Next(2))); }

  int OneOrTwo() {
    const std::u16string_view ahead = Ahead();
    return ahead.size() < 2 || !IsDigit(ahead[1]) ? Number(Next(1)) : Two();
  }

  int TwoDigitYear() {
    const int year = Two();
    return year < 60 ? 2000 + year : 1900 + year;
  }

  int FourDigitYear() {
    const std::u16string_view ahead = Ahead();
    if (ahead.size() < 3) Fail();
    if (ahead.size() == 3 || !IsDigit(ahead[2])) return TwoDigitYear();
    return Natural(Number(Next(4)));
  }

  void MonthName(bool whole) {
    const std::u16string_view ahead = Ahead();
    if (ahead.size() >= 3)
      SetDate(FMonth, ahead[0] > kLastAscii ? FindMonth(ahead, kRussian) : FindMonth(ahead, kEnglish));
    else
      SetDate(FMonth, 0);
    if (!whole) {
      FPos += 3;
      return;
    }
    while (FPos < FText.size() && IsNameLetter(FText[FPos])) ++FPos;
  }

  void EnglishMonthName() {
    const std::u16string_view ahead = Ahead();
    SetDate(FMonth, ahead.size() >= 3 ? FindMonth(ahead, kEnglish) : 0);
    FPos += static_cast<size_t>(kEnglishLength[FMonth]);
  }

  TDateTime Date() const {
    TDateTime date = 0;
    if (FHasDate && !HtTryEncodeDate(FYear, FMonth, FDay, date)) Fail();
    return date;
  }

  TDateTime Time() const {
    TDateTime time = 0;
    const int hour = FAfternoon && FHour < 12 ? FHour + 12 : FHour;
    if (FHasTime && !HtTryEncodeTime(hour, FMinute, FSecond, 0, time)) Fail();
    return time;
  }
};

// A mask for texts of a length and with these second and third characters (0: any). An empty mask: no date.
struct TShape {
  size_t Shortest, Longest;
  char16_t Second, Third;
  std::u16string_view Mask;
};

constexpr size_t kNoLimit = static_cast<size_t>(-1);

// The first row that fits counts.
// clang-format off
constexpr TShape kShapes[] = {
    {19, 19,       0,    u'.', u"dd.mm.yyyy hh:nn:ss"},
    {18, 18,       0,    u'.', u"dd.mm.yyyy h:nn:ss"},
    {16, 16,       0,    u'.', u"dd.mm.yyyy hh:nn"},
    {15, 15,       0,    u'.', u"dd.mm.yyyy h:nn"},
    {14, 14,       0,    u'.', u"dd.mm.yy hh:nn"},
    {13, 13,       0,    u'.', u"dd.mm.yy h:nn"},
    {12, kNoLimit, 0,    u'.', u""},
    {19, 19,       0,    u'-', u"dd-mm-yyyy hh:nn:ss"},
    {12, kNoLimit, 0,    u'-', u"dd-mmm-yyyy hh:nn:ss"},
    {12, kNoLimit, 0,    0,    u"yyyy-mm-dd hh:nn:ss"},
    {10, 10,       0,    u'.', u"dd.mm.yyyy"},
    {8,  8,        0,    u'.', u"dd.mm.yy"},
    {0,  11,       0,    u'.', u""},
    {10, 10,       0,    u'/', u"mm/dd/yyyy"},
    {10, 10,       0,    0,    u"yyyy-mm-dd"},
    {11, 11,       0,    0,    u"dd-mmm-yyyy"},
    {9,  9,        u'/', 0,    u"m/dd/yyyy"},
    {9,  9,        0,    u'/', u"mm/d/yyyy"},
    {8,  8,        u'/', 0,    u"m/d/yyyy"},
    {0,  11,       0,    0,    u"dd-mmm-yy"},
};
// clang-format on

std::u16string_view MaskOf(std::u16string_view text) {
  const auto fits = [&](char16_t wanted, size_t index) {
    return wanted == 0 || (index < text.size() && text[index] == wanted);
  };
  for (const TShape& shape : kShapes)
    if (text.size() >= shape.Shortest && text.size() <= shape.Longest && fits(shape.Second, 1) &&
        fits(shape.Third, 2))
      return shape.Mask;
  return {};
}

// "Thu Dec 31 2020", the date of a router's clock: the longest form of it.
constexpr size_t kCiscoDate = 15;
constexpr size_t kCiscoTime = 8;
constexpr size_t kWeekday = 3;

// "name=*10:20:30.123 UTC Thu Dec 31 2020" as "10:20:30 Dec 31 2020".
hstring CiscoDateTime(std::u16string_view text) {
  if (const size_t equals = text.find(u'='); equals != text.npos) text.remove_prefix(equals + 1);
  if (text.starts_with(u'*')) text.remove_prefix(1);
  std::u16string_view date = text.substr(text.size() - std::min(kCiscoDate, text.size()));
  date = HtTrim(date);
  date = HtTrim(date.substr(std::min(kWeekday, date.size())));
  return hstring(text.substr(0, kCiscoTime)) + u" " + date;
}

}  // namespace

TDateTime StrtoDateFmt(std::u16string_view text, std::u16string_view mask) {
  if (text.empty()) return 0;
  if (mask == u"cisco") return TDateReader(CiscoDateTime(text), u"hh:nn:ss mmm d yyyy").Read();
  if (mask.empty()) mask = MaskOf(text);
  return mask.empty() ? 0 : TDateReader(text, mask).Read();
}

}  // namespace ht
