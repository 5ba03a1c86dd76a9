#include "htruntime/datetime.h"

#include <array>
#include <cmath>

#include "htruntime/exception.h"

namespace ht {

namespace {

constexpr int64_t kDayMs = 86400000;
// Days count from 0001-01-01, which is day 1.
constexpr int64_t kEpoch = 693594;     // 1899-12-30
constexpr int64_t kLastDay = 3652059;  // 9999-12-31

constexpr bool IsLeap(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

// The days of a year before each month; the thirteenth entry is the length of the year.
constexpr std::array<int, 13> DaysBefore(bool leap) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  std::array<int, 13> before{};
  for (size_t m = 0; m < 12; ++m) before[m + 1] = before[m] + kDays[m] + (leap && m == 1);
  return before;
}

constexpr std::array<std::array<int, 13>, 2> kDaysBefore = {DaysBefore(false), DaysBefore(true)};

// The days of the years before `year`.
constexpr int64_t YearDays(int64_t year) {
  const int64_t y = year - 1;
  return y * 365 + y / 4 - y / 100 + y / 400;
}

static_assert(YearDays(1899) + kDaysBefore[0][11] + 30 == kEpoch);

struct TStamp {
  int64_t Day = 0;  // 0 outside the years 1 to 9999
  int64_t Ms = 0;
};

// The time is rounded to milliseconds before it is parted from the day, so that it never becomes 24:00.
TStamp StampOf(TDateTime value) {
  if (!(std::abs(value) < 1e7)) return {};
  const int64_t ms = std::llround(value * kMillisecondsPerDay);
  const int64_t day = ms / kDayMs + kEpoch;
  return {day >= 1 && day <= kLastDay ? day : 0, std::abs(ms % kDayMs)};
}

}  // namespace

bool HtTryEncodeDate(int year, int month, int day, TDateTime& date) {
  if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1) return false;
  const auto& before = kDaysBefore[IsLeap(year)];
  const auto m = static_cast<size_t>(month);
  if (day > before[m] - before[m - 1]) return false;
  date = static_cast<TDateTime>(YearDays(year) + before[m - 1] + day - kEpoch);
  return true;
}

TDateTime HtEncodeDate(int year, int month, int day) {
  TDateTime date;
  if (!HtTryEncodeDate(year, month, day, date)) throw EConvertError(u"Invalid argument to date encode");
  return date;
}

bool HtTryEncodeTime(int hour, int minute, int second, int millisecond, TDateTime& time) {
  const auto within = [](int value, int limit) { return value >= 0 && value < limit; };
  if (!within(hour, 24) || !within(minute, 60) || !within(second, 60) || !within(millisecond, 1000))
    return false;
  time = (((hour * 60 + minute) * 60 + second) * 1000 + millisecond) / kMillisecondsPerDay;
  return true;
}

TDateTime HtEncodeTime(int hour, int minute, int second, int millisecond) {
  TDateTime time;
  if (!HtTryEncodeTime(hour, minute, second, millisecond, time))
    throw EConvertError(u"Invalid argument to time encode");
  return time;
}

void HtDecodeDate(TDateTime value, int& year, int& month, int& day) {
  year = month = day = 0;
  const int64_t days = StampOf(value).Day;
  if (days == 0) return;
  // 400 years have 146097 days. Counted by their mean, the year is never ahead of the calendar, at most one behind.
  year = static_cast<int>((days - 1) * 400 / 146097) + 1;
  if (YearDays(year + 1) < days) ++year;
  int rest = static_cast<int>(days - YearDays(year));
  const auto& before = kDaysBefore[IsLeap(year)];
  month = 1;
  while (before[static_cast<size_t>(month)] < rest) ++month;
  day = rest - before[static_cast<size_t>(month) - 1];
}

void HtDecodeTime(TDateTime value, int& hour, int& minute, int& second, int& millisecond) {
  const int ms = static_cast<int>(StampOf(value).Ms);
  millisecond = ms % 1000;
  second = ms / 1000 % 60;
  minute = ms / 60000 % 60;
  hour = ms / 3600000;
}

int HtDayOfWeek(TDateTime value) {
  const int64_t days = StampOf(value).Day;  // day 1 was a Monday
  return days == 0 ? 0 : static_cast<int>(days % 7) + 1;
}

}  // namespace ht
