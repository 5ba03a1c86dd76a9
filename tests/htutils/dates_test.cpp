#include "htutils/dates.h"

#include <gtest/gtest.h>

#include "htruntime/exception.h"

namespace ht {
namespace {

constexpr std::u16string_view kIso = u"yyyy-mm-dd hh:nn:ss";

struct TRow {
  std::u16string_view text, mask, expected;  // the result by kIso
};

// Each shape of a text selects its mask.
TEST(Dates, MaskFromTheShape) {
  // clang-format off
  constexpr std::u16string_view kRows[][2] = {
      {u"31.12.2020 10:20:30", u"2020-12-31 10:20:30"},  {u"31.12.2020 9:20:30", u"2020-12-31 09:20:30"},
      {u"31.12.2020 10:20", u"2020-12-31 10:20:00"},     {u"31.12.2020 9:20", u"2020-12-31 09:20:00"},
      {u"31.12.20 10:20", u"2020-12-31 10:20:00"},       {u"31.12.20 9:20", u"2020-12-31 09:20:00"},
      {u"31.12.2020 10:20:30x", u"1899-12-30 00:00:00"}, {u"31.12.2020  ", u"1899-12-30 00:00:00"},
      {u"31-12-2020 10:20:30", u"2020-12-31 10:20:30"},  {u"31-Dec-2020 10:20:30", u"2020-12-31 10:20:30"},
      {u"2020-12-31 10:20:30", u"2020-12-31 10:20:30"},  {u"2020-12-31T10:20", u"2020-12-31 10:20:00"},
      {u"31.12.2020", u"2020-12-31 00:00:00"},           {u"31.12.20", u"2020-12-31 00:00:00"},
      {u"31.1.2020", u"1899-12-30 00:00:00"},            {u"12/31/2020", u"2020-12-31 00:00:00"},
      {u"2020-12-31", u"2020-12-31 00:00:00"},           {u"31-Dec-2020", u"2020-12-31 00:00:00"},
      {u"1/31/2020", u"2020-01-31 00:00:00"},            {u"12/3/2020", u"2020-12-03 00:00:00"},
      {u"1/2/2020", u"2020-01-02 00:00:00"},             {u"31-dec-59", u"2059-12-31 00:00:00"},
      {u"31-dec-60", u"1960-12-31 00:00:00"},            {u"", u"1899-12-30 00:00:00"},
  };
  // clang-format on
  for (const auto& [text, expected] : kRows)
    EXPECT_EQ(HtFormatDateTime(kIso, StrtoDateFmt(text, u"")), expected) << HtToUtf8(text);
  EXPECT_EQ(StrtoDateFmt(u"", u"dd"), 0);
}

TEST(Dates, Masks) {
  constexpr TRow kRows[] = {
      {u"5.3.2021", u"d.m.yyyy", u"2021-03-05 00:00:00"},
      {u"15.03.2021", u"d.m.yyyy", u"2021-03-15 00:00:00"},
      {u" 5.03.2021", u"dd.mm.yyyy", u"2021-03-05 00:00:00"},
      {u"7:05", u"h:nn", u"1899-12-30 07:05:00"},
      {u"05.03.21", u"dd.mm.yyyy", u"!"},
      {u"21-03-05", u"yyyy-mm-dd", u"2021-03-05 00:00:00"},
      {u"05.03.021", u"dd.mm.yyyy", u"2002-03-05 00:00:00"},
      {u"17?30!", u"hh:nn", u"1899-12-30 17:30:00"},
      {u"2021-03-05 and more", u"yyyy-mm-dd", u"2021-03-05 00:00:00"},
      {u"2021-03-05 1", u"yyyy-mm-dd hh:nn", u"2021-03-05 01:00:00"},
      {u"05:30 pm", u"hh:nn pp", u"1899-12-30 17:30:00"},
      {u"12:30 pm", u"hh:nn pp", u"1899-12-30 12:30:00"},
      {u"05:30 am", u"hh:nn pp", u"1899-12-30 05:30:00"},
      {u"05:30 PM", u"hh:nn pp", u"1899-12-30 05:30:00"},
      {u"5 August 2021", u"d mmmm yyyy", u"2021-08-05 00:00:00"},
      {u"5 Aug 2021", u"d mmm yyyy", u"2021-08-05 00:00:00"},
      {u"5 августа 2021", u"d mmmm yyyy", u"2021-08-05 00:00:00"},
      {u"September 05 2021", u"MMM dd yyyy", u"2021-09-05 00:00:00"},
      {u"05.2021.03.04", u"mm.yyyy.mm.dd", u"2021-03-04 00:00:00"},
      {u"2021.07.05", u"YYYY.mm.dd", u"!"},
      {u"!9:05", u"pp:nn", u"1899-12-30 00:05:00"},
  };
  for (const TRow& row : kRows) {
    hstring result = u"!"_hs;
    try {
      result = HtFormatDateTime(kIso, StrtoDateFmt(row.text, row.mask));
    } catch (const EConvertError&) {}
    EXPECT_EQ(result, row.expected) << HtToUtf8(row.text) << " by " << HtToUtf8(row.mask);
  }
}

TEST(Dates, MonthNames) {
  const std::u16string_view kNames[][2] = {
      {u"January", u"января"},  {u"February", u"февраля"}, {u"March", u"марта"},
      {u"April", u"апреля"},    {u"May", u"мая"},          {u"June", u"июня"},
      {u"July", u"июля"},       {u"August", u"августа"},   {u"September", u"сентября"},
      {u"October", u"октября"}, {u"November", u"ноября"},  {u"December", u"декабря"},
  };
  const auto month = [](std::u16string_view name, std::u16string_view mask) {
    int y, m, d;
    HtDecodeDate(StrtoDateFmt(hstring(u"07 ") + name + u" 2021", mask), y, m, d);
    EXPECT_EQ(d, 7);
    EXPECT_EQ(y, 2021);
    return m;
  };
  int number = 0;
  for (const auto& [english, russian] : kNames) {
    ++number;
    EXPECT_EQ(month(english, u"dd mmmm yyyy"), number);
    EXPECT_EQ(month(russian, u"dd mmmm yyyy"), number);
    EXPECT_EQ(month(english, u"dd MMM yyyy"), number);
    EXPECT_EQ(month(english.substr(0, 3), u"dd mmm yyyy"), number);
    EXPECT_EQ(month(russian.substr(0, 3), u"dd mmm yyyy"), number);
    const hstring lower = hstring(1, static_cast<char16_t>(english[0] | 32)) + english.substr(1, 2);
    EXPECT_EQ(month(lower, u"dd mmm yyyy"), number);
  }
  EXPECT_EQ(month(u"май", u"dd mmmm yyyy"), 5);
  for (std::u16string_view wrong : {u"MAY", u"Января", u"m1r", u"xyz"})
    EXPECT_THROW(month(wrong, u"dd mmmm yyyy"), EConvertError) << HtToUtf8(wrong);
}

TEST(Dates, ErrorsNameTextAndMask) {
  // clang-format off
  constexpr TRow kRows[] = {
      {u"31.13.2020", u"", u"dd.mm.yyyy"},               {u"31.02.2020", u"", u"dd.mm.yyyy"},
      {u"00.01.2020", u"", u"dd.mm.yyyy"},               {u"xx.01.2020", u"", u"dd.mm.yyyy"},
      {u"2020-01-01 24:00:00", u"", kIso},               {u"2020-01-01 10:60:00", u"", kIso},
      {u"2020-01-01 10:00:60", u"", kIso},               {u"10:-5", u"hh:nn", u"hh:nn"},
      {u"-5:10", u"hh:nn", u"hh:nn"},                    {u"10:00:5 ", u"hh:nn:ss", u"hh:nn:ss"},
      {u"01.01.20", u"dd.mm.yyyy hh", u"dd.mm.yyyy hh"}, {u"-1.01.2020", u"dd.mm.yyyy", u"dd.mm.yyyy"},
      {u"2020", u"yyyy-mm-dd", u"yyyy-mm-dd"},           {u"01.-1.2020", u"dd.mm.yyyy", u"dd.mm.yyyy"},
      {u"01-Xyz-2020", u"", u"dd-mmm-yyyy"},             {u"0000-01-01", u"yyyy-mm-dd", u"yyyy-mm-dd"},
      {u"soon", u"", u"dd-mmm-yy"},
  };
  // clang-format on
  for (const TRow& row : kRows) {
    try {
      StrtoDateFmt(row.text, row.mask);
      ADD_FAILURE() << HtToUtf8(row.text);
    } catch (const EConvertError& error) {
      EXPECT_EQ(error.Message,
                hstring(u"Date/time string '") + row.text + u"' does not match mask '" + row.expected + u"'");
    }
  }
}

TEST(Dates, RouterClocks) {
  for (std::u16string_view text : {u"h323-setup-time=*10:20:30.123 UTC Thu Dec 31 2020",
                                   u"*10:20:30.123 UTC Thu Dec 31 2020", u"10:20:30.123 UTC Thu Dec 31 2020"})
    EXPECT_EQ(HtFormatDateTime(kIso, StrtoDateFmt(text, u"cisco")), u"2020-12-31 10:20:30") << HtToUtf8(text);
  EXPECT_EQ(HtFormatDateTime(kIso, StrtoDateFmt(u"08:01:02.000 UTC Fri Mar 1 2002", u"cisco")),
            u"2002-03-01 08:01:02");
  for (std::u16string_view text : {u"x", u"=", u"*", u"10:20:30", u"Thu"})
    EXPECT_THROW(StrtoDateFmt(text, u"cisco"), EConvertError) << HtToUtf8(text);
}

}  // namespace
}  // namespace ht
