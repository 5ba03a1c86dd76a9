#include "htruntime/datetime.h"

#include <array>
#include <chrono>
#include <gtest/gtest.h>
#include <limits>
#include <tuple>

#include "htruntime/exception.h"

namespace ht {
namespace {

using TParts = std::array<int, 7>;

TParts Parts(TDateTime value) {
  TParts p;
  HtDecodeDate(value, p[0], p[1], p[2]);
  HtDecodeTime(value, p[3], p[4], p[5], p[6]);
  return p;
}

// Every day of the calendar, against the calendar of the standard library.
TEST(DateTime, EveryDay) {
  using namespace std::chrono;
  const sys_days epoch = year{1899} / 12 / 30;
  for (sys_days day = year{1} / 1 / 1; day <= sys_days(year{9999} / 12 / 31); day += days{1}) {
    const year_month_day date = day;
    const int y = int{date.year()}, m = static_cast<int>(unsigned{date.month()}),
              d = static_cast<int>(unsigned{date.day()});
    const TDateTime value = HtEncodeDate(y, m, d);
    ASSERT_EQ(value, (day - epoch).count());
    ASSERT_EQ(Parts(value), (TParts{y, m, d})) << value;
    ASSERT_EQ(HtDayOfWeek(value), static_cast<int>(weekday(day).c_encoding()) + 1);
  }
}

TEST(DateTime, ImpossibleDaysAndTimes) {
  using TDate = std::tuple<int, int, int>;
  for (const auto& [y, m, d] :
       {TDate{2023, 2, 29}, TDate{1900, 2, 29}, TDate{2024, 4, 31}, TDate{2024, 0, 1}, TDate{2024, 13, 1},
        TDate{2024, 1, 0}, TDate{2024, 1, 32}, TDate{0, 1, 1}, TDate{10000, 1, 1}, TDate{2024, -1, 1}})
    EXPECT_THROW(HtEncodeDate(y, m, d), EConvertError) << y << "-" << m << "-" << d;
  EXPECT_EQ(HtEncodeDate(2000, 2, 29), 36585);
  EXPECT_EQ(HtEncodeTime(18, 0, 0, 0), 0.75);
  for (const TParts& p : {TParts{24}, TParts{0, 60}, TParts{0, 0, 60}, TParts{0, 0, 0, 1000}, TParts{-1}})
    EXPECT_THROW(HtEncodeTime(p[0], p[1], p[2], p[3]), EConvertError);
}

TEST(DateTime, TimesAndEdges) {
  const std::pair<TDateTime, TParts> kRows[] = {
      {0, {1899, 12, 30}},
      {1.5, {1899, 12, 31, 12}},
      {-1.25, {1899, 12, 29, 6}},
      {-0.75, {1899, 12, 30, 18}},
      {44000 + 86399.9996 / 86400, {2020, 6, 19}},  // rounds to midnight, of the next day
      {44000 + 86399.999 / 86400, {2020, 6, 18, 23, 59, 59, 999}},
      {1e300, {}},
      {-693594, {}},
      {2958466, {}},
      {std::numeric_limits<double>::quiet_NaN(), {}},
  };
  for (const auto& [value, parts] : kRows) EXPECT_EQ(Parts(value), parts) << value;
  for (int s = 0; s < 86400; s += 7)
    ASSERT_EQ(Parts(40000 + HtEncodeTime(s / 3600, s / 60 % 60, s % 60, s % 1000)),
              (TParts{2009, 7, 6, s / 3600, s / 60 % 60, s % 60, s % 1000}));
}

TEST(DateTime, Masks) {
  const TDateTime morning = HtEncodeDate(2024, 3, 7) + HtEncodeTime(9, 5, 3, 45);  // a Thursday
  const TDateTime night = HtEncodeDate(1999, 12, 25) + HtEncodeTime(0, 30, 0, 0);
  struct TRow {
    TDateTime value;
    std::u16string_view mask, text;
  };
  const TRow kRows[] = {
      {morning, u"yyyy-mm-dd hh:nn:ss", u"2024-03-07 09:05:03"},
      {morning, u"yyy-mm-dd\"T\"hh:nn:ss", u"2024-03-07T09:05:03"},
      {morning, u"d.m.yy h:n:s.z", u"7.3.24 9:5:3.45"},
      {morning, u"dd/mm/y hh-nn-ss.zzz", u"07/03/24 09-05-03.045"},
      {morning, u"ddd dddd mmm mmmm", u"Thu Thursday Mar March"},
      {morning, u"DD.MM.YYYY HH:NN:SS", u"07.03.2024 09:05:03"},
      {morning, u"hh:mm mm", u"09:05 03"},
      {morning, u"h 'm' m", u"9 m 5"},
      {morning, u"hh:nn am/pm", u"09:05 am"},
      {morning, u"h AM/PM a/p A/P", u"9 AM a A"},
      {night, u"hh:nn am/pm h ampm", u"12:30 am 12 AM"},
      {morning + 0.5, u"h:nn Am/Pm ampm a/p", u"9:05 Pm PM p"},
      {morning + 0.5, u"hh 'am/pm'", u"21 am/pm"},
      {morning, u"'it''s' \"d'd\" x\"", u"its d'd x"},
      {morning, u"'open d", u"open d"},
      {morning, u"dddddd yyyyyyyy zzzzzz", u"Thursday 2024 045"},
      {morning, u"qÄ!", u"qÄ!"},
      {morning, u"", u""},
      {HtEncodeDate(7, 1, 2), u"yyyy yy", u"0007 07"},
      {-1.25, u"yyyy-mm-dd hh", u"1899-12-29 06"},
      {1e9, u"yyyy-mm-dd ddd", u"0000-00-00 "},
  };
  for (const TRow& row : kRows)
    EXPECT_EQ(HtFormatDateTime(row.mask, row.value), row.text) << HtToUtf8(row.mask);
}

}  // namespace
}  // namespace ht
