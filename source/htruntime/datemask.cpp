#include <algorithm>
#include <string>

#include "htruntime/datetime.h"

namespace ht {

namespace {

constexpr std::u16string_view kMonths[] = {u"January",   u"February", u"March",    u"April",
                                           u"May",       u"June",     u"July",     u"August",
                                           u"September", u"October",  u"November", u"December"};
constexpr std::u16string_view kDays[] = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                         u"Thursday", u"Friday", u"Saturday"};

constexpr char16_t Lower(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; }

bool StartsWith(std::u16string_view text, std::u16string_view lowerPrefix) {
  return text.size() >= lowerPrefix.size() &&
         std::equal(lowerPrefix.begin(), lowerPrefix.end(), text.begin(),
                    [](char16_t a, char16_t b) { return a == Lower(b); });
}

// The length of the marker of half days at the start of a mask, or 0.
size_t HalfDayMarker(std::u16string_view mask) {
  for (std::u16string_view marker : {u"am/pm", u"ampm", u"a/p"})
    if (StartsWith(mask, marker)) return marker.size();
  return 0;
}

class TDateFormatter {
 public:
  TDateFormatter(std::u16string_view mask, TDateTime value) : FMask(mask) {
    HtDecodeDate(value, FYear, FMonth, FDay);
    HtDecodeTime(value, FHour, FMinute, FSecond, FMillisecond);
    FWeekday = HtDayOfWeek(value);
    for (size_t i = 0; i < mask.size() && !FHalfDays; i = Behind(i))
      FHalfDays = HalfDayMarker(mask.substr(i)) > 0;
  }

  hstring Run() {
    for (size_t i = 0; i < FMask.size();) {
      const size_t next = Behind(i);
      Piece(FMask.substr(i, next - i));
      i = next;
    }
    return hstring(FText);
  }

 private:
  std::u16string_view FMask;
  std::u16string FText;
  int FYear, FMonth, FDay, FHour, FMinute, FSecond, FMillisecond, FWeekday;
  bool FHalfDays = false;
  bool FAfterHour = false;  // the last field was the hour

  // The end of the piece of the mask at `start`: a quoted text, a marker, a run of one letter, or a character.
  size_t Behind(size_t start) const {
    const char16_t c = FMask[start];
    if (c == u'"' || c == u'\'') {
      const size_t end = FMask.find(c, start + 1);
      return end == FMask.npos ? FMask.size() : end + 1;
    }
    if (const size_t marker = HalfDayMarker(FMask.substr(start))) return start + marker;
    size_t end = start + 1;
    while (end < FMask.size() && Lower(FMask[end]) == Lower(c)) ++end;
    return end;
  }

  void Piece(std::u16string_view piece) {
    const char16_t first = piece[0];
    if (first == u'"' || first == u'\'') {
      const bool closed = piece.size() > 1 && piece.back() == first;
      FText += piece.substr(1, piece.size() - 1 - closed);
    } else if (HalfDayMarker(piece)) {
      HalfDay(piece);
    } else {
      Field(Lower(first), piece);
    }
  }

  void Field(char16_t letter, std::u16string_view piece) {
    const int length = static_cast<int>(piece.size());
    const bool afterHour = FAfterHour;
    switch (letter) {
      case u'd': Named(FDay, length, FWeekday, kDays); break;
      case u'm':
        if (afterHour)
          Number(FMinute, length, 2);
        else
          Named(FMonth, length, FMonth, kMonths);
        break;
      case u'y':
        if (length <= 2)
          Number(FYear % 100, 2, 2);
        else
          Number(FYear, 4, 4);
        break;
      case u'h': Number(FHalfDays ? (FHour + 11) % 12 + 1 : FHour, length, 2); break;
      case u'n': Number(FMinute, length, 2); break;
      case u's': Number(FSecond, length, 2); break;
      case u'z': Number(FMillisecond, length, 3); break;
      default: FText += piece; return;
    }
    FAfterHour = letter == u'h';
  }

  // `least` digits, but no more than `most` of them are zeros in front.
  void Number(int value, int least, int most) {
    const std::string digits = std::to_string(value);
    const int zeros = std::min(least, most) - static_cast<int>(digits.size());
    if (zeros > 0) FText.append(static_cast<size_t>(zeros), u'0');
    FText.append(digits.begin(), digits.end());
  }

  // A number in one or two digits, or the name with that index from 1 in three letters or in full.
  template <size_t N>
  void Named(int number, int length, int index, const std::u16string_view (&names)[N]) {
    if (length <= 2) return Number(number, length, 2);
    if (index < 1) return;
    const std::u16string_view name = names[index - 1];
    FText += length == 3 ? name.substr(0, 3) : name;
  }

  void HalfDay(std::u16string_view marker) {
    FAfterHour = false;
    const bool morning = FHour < 12;
    const size_t bar = marker.find(u'/');
    if (bar == marker.npos)
      FText += morning ? u"AM" : u"PM";
    else
      FText += morning ? marker.substr(0, bar) : marker.substr(bar + 1);
  }
};

}  // namespace

hstring HtFormatDateTime(std::u16string_view mask, TDateTime value) {
  return TDateFormatter(mask, value).Run();
}

}  // namespace ht
