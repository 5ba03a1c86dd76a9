#include "htutils/numbers.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "htruntime/exception.h"

namespace ht {
namespace {

TEST(Numbers, LenientFloats) {
  // clang-format off
  const std::pair<std::u16string_view, double> kRows[] = {
      {u"", 0},                                  {u"1,5", 1.5},
      {u"1.5", 1.5},                             {u"1.5px", 0},
      {u" +2", 2},                               {u"1e17", 0},
      {u"1e16", 1e16},                           {u"1e+2", 0},
      {u"0.12345678", 0.1234567},                {u"-,25", -0.25},
      {u".5", 0.5},                              {u"5.", 5},
      {u"1.5e-3", 0.0015},                       {u"-2E2", -200},
      {u"\t1", 0},                               {u"1 ", 0},
      {u"1.2.3", 0},                             {u"x", 0},
      {u"--1", 0},                               {u"+", 0},
      {u".", 0},                                 {u"1e", 1},
      {u"1e-", 1},                               {u"1e-16", 1e-16},
      {u"1e-17", 0},                             {u"0.1", 0.1},
      {u"123456789.1234567", 123456789.1234567}, {u"1e00000019", 10},
      {u"1.00000009e2", 100},                    {u"e5", 0},
      {u"- 1", 0},                               {u"1e1.5", 0},
      {u"9007199254740993", 9007199254740992},
  };
  // clang-format on
  for (const auto& [text, value] : kRows) EXPECT_EQ(iStrtoFloat(text), value) << HtToUtf8(text);
  EXPECT_TRUE(std::signbit(iStrtoFloat(u"-0"))) << "the sign is applied last";
}

TEST(Numbers, StrictFloats) {
  const std::pair<std::u16string_view, double> kGood[] = {
      {u"1.234,5", 1234.5}, {u"  -1.2.3,25e2", -12325}, {u",5", 0.5}, {u"1e16", 1e16}, {u"+7", 7},
      {u"1..2", 12},        {u"1,23456789", 1.2345678},
  };
  for (const auto& [text, value] : kGood)
    EXPECT_EQ(StrtoFloatCheck(text, u',', u'.'), value) << HtToUtf8(text);
  EXPECT_EQ(StrtoFloatCheck(u"1.5", u'.', 0), 1.5);
  for (std::u16string_view text :
       {u"", u" ", u"x", u".5", u"1,5.0", u"1,2,3", u"1e17", u"1e+2", u"1 ", u"12px"}) {
    try {
      StrtoFloatCheck(text, u',', u'.');
      ADD_FAILURE() << HtToUtf8(text);
    } catch (const EHtException& error) {
      EXPECT_EQ(error.Message, hstring(u"Invalid number ") + text);
    }
  }
}

TEST(Numbers, Integers) {
  EXPECT_EQ(iStrtoInt(u" -12"), -12);
  EXPECT_EQ(iStrtoInt(u"$1F"), 31);
  for (std::u16string_view text : {u"", u"12px", u"1.5", u"2147483648"}) EXPECT_EQ(iStrtoInt(text), 0);
  // clang-format off
  const std::pair<std::u16string_view, int64_t> kHex[] = {
      {u"", 0},                   {u"0xFF", 255},             {u"FFh", 255},
      {u"ff", 255},               {u"0x1H", 1},               {u"g", 16},
      {u"Z", 35},                 {u"1g", 32},                {u"1-", 15},
      {u"-", -1},                 {u"0x", 0},                 {u"h", 0},
      {u"FFFFFFFF", 0xFFFFFFFF},  {u"100000000000000000", 0}, {u"0X1", 33 * 16 + 1},
  };
  // clang-format on
  for (const auto& [text, value] : kHex) EXPECT_EQ(HexToDec(text), value) << HtToUtf8(text);
}

TEST(Numbers, FormatDecimal) {
  struct TRow {
    double value;
    int digits;
    std::u16string_view text;
  };
  // clang-format off
  const TRow kRows[] = {
      {0.5, 2, u".5"},          {-0.25, 2, u"-.25"},      {2.0, 2, u"2"},           {1.23456, 4, u"1.2346"},
      {2.00001, 2, u"2"},       {1.005, 2, u"1"},         {1.015, 2, u"1.01"},      {0, 2, u"0"},
      {-0.001, 2, u"0"},        {0.05, 2, u".05"},        {-0.05, 2, u"-.05"},      {10.5, 0, u"10"},
      {11.5, 0, u"12"},         {-0.4, 0, u"0"},          {12.7, -1, u"13"},        {0.125, 2, u".12"},
      {0.375, 2, u".38"},       {-1234.5, 3, u"-1234.5"}, {1e20, 2, u"100000000000000000000"},
      {0.99, 1, u"1"},          {0.000001, 6, u".000001"},                          {100.25, 1, u"100.2"},
      {9.96, 1, u"10"},         {0.005, 2, u"0"},         {-0.005, 2, u"0"},
      {std::numeric_limits<double>::infinity(), 2, u"INF"},                         {1e-300, 400, u"0"},
  };
  // clang-format on
  for (const TRow& row : kRows)
    EXPECT_EQ(HtFormatDecimal(row.value, row.digits), row.text) << row.value << " " << row.digits;
  EXPECT_EQ(HtFormatFloat(u",0.00", 1234.5), u"1 234.50");
}

TEST(Numbers, MathRound) {
  // clang-format off
  const std::pair<double, int64_t> kRows[] = {
      {0.5, 1},                                     {-0.5, -1},
      {2.5, 3},                                     {-2.5, -3},
      {2.49, 2},                                    {0, 0},
      {-0.49, 0},                                   {1e19, std::numeric_limits<int64_t>::max()},
      {-1e19, std::numeric_limits<int64_t>::min()}, {std::nan(""), 0},
  };
  // clang-format on
  for (const auto& [value, rounded] : kRows) EXPECT_EQ(MathRound(value), rounded) << value;
}

}  // namespace
}  // namespace ht
