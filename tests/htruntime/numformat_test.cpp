#include "htruntime/numformat.h"

#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "htruntime/exception.h"

namespace ht {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(NumFormat, Masks) {
  struct TRow {
    std::u16string_view mask;
    double value;
    std::u16string_view text;
  };
  // clang-format off
  const TRow kRows[] = {
      {u"0.##", 2, u"2"},       {u"0.##", 2.5, u"2.5"},   {u"0.##", 0.256, u"0.26"},
      {u"0.##", -0.001, u"0"},  {u"0.##", 0.125, u"0.13"},
      {u"0.##", -0.125, u"-0.13"},                        {u"0.##", 1.005, u"1"},   {u"0.##", 9.999, u"10"},
      {u"#.##", 0, u""},        {u"#.##", 0.5, u".5"},    {u".00", 12.5, u"12.50"}, {u".00", 0.25, u".25"},
      {u"0.00", 1e-9, u"0.00"}, {u"000", 7, u"007"},      {u"0#0", 7, u"007"},      {u"0.0#0", 1, u"1.000"},
      {u"#", 1234, u"1234"},    {u"0.00", 123456789012345678.0, u"123456789012345680.00"},
      {u"# ### ##0.00", 1234567.5, u"1 234 567.50"},      {u"# ### ##0.00", 12345678.25, u"12 345 678.25"},
      {u",0.00", 1234567.891, u"1 234 567.89"},           {u"0,", 999, u"999"},
      {u"#,##0", 1000, u"1 000"},                         {u",0000000", 12, u"0 000 012"},
      {u"0.00E+00", 12345, u"1.23E+04"},                  {u"0.00E+00", 0.00012355, u"1.24E-04"},
      {u"0.0e-0", 1e10, u"1.0e10"},                       {u"0.00E+00", 9.999, u"1.00E+01"},
      {u"00.#E+0", 5, u"50E-1"},                          {u"0E+0", 0, u"0E+0"},
      {u"0.0E+000", -1e-300, u"-1.0E-300"},               {u"#E", 5, u"5E"},        {u"0;(0)", -5, u"(5)"},
      {u"0;(0);-", 0, u"-"},    {u"0;(0)", 0, u"0"},      {u"0.0;(0.0);zero", -0.01, u"zero"},
      {u"0;;zero", -3, u"-3"},  {u"0;\"0;\"0", -3, u"0;3"},
      {u"$0 'a0#.;'x", 7, u"$7 a0#.;x"},                  {u"0\"open", 7, u"7open"},
      {u"'-'", 5, u"-"},        {u"0.0.0", 1.25, u"1.25"},                          {u"", 0.1, u"0.1"},
      {u"", 1.0 / 3, u"0.333333333333333"},               {u";x", 2, u"2"},         {u"0.00", 1e18, u"1E18"},
      {u"0.00", -2.5e20, u"-2.5E20"},                     {u"0", kInf, u"INF"},     {u"0", -kInf, u"-INF"},
  };
  // clang-format on
  for (const TRow& row : kRows)
    EXPECT_EQ(HtFormatFloatMask(row.mask, row.value, u'.', u' '), row.text)
        << HtToUtf8(row.mask) << " of " << row.value;
  EXPECT_EQ(HtFormatFloatMask(u",0.0", 1234.5, u',', u'.'), u"1.234,5");
  EXPECT_EQ(HtFormatFloatMask(u",0.0", 1234.5, u',', 0), u"1234,5");
}

TEST(NumFormat, FloatToStr) {
  // clang-format off
  const std::pair<double, std::u16string_view> kRows[] = {
      {0, u"0"},                             {-0.0, u"0"},
      {0.1, u"0.1"},                         {-25, u"-25"},
      {1e15, u"1E15"},                       {123456789012345, u"123456789012345"},
      {0.0001, u"0.0001"},                   {0.00001, u"1E-5"},
      {1.5e-5, u"1.5E-5"},                   {0.1 + 0.2, u"0.30000000000000004"},
      {1e100, u"1E100"},                     {kInf, u"INF"},
      {std::nan(""), u"NAN"},
  };
  // clang-format on
  for (const auto& [value, text] : kRows) EXPECT_EQ(HtFloatToStr(value), text);
  EXPECT_EQ(HtFloatToGeneral(0.1 + 0.2, 15), u"0.3");
  EXPECT_EQ(HtFloatToGeneral(123456, 3), u"1.23E5");
  EXPECT_EQ(HtFloatToGeneral(0.99996, 4), u"1");

  std::mt19937_64 random(1);
  for (int i = 0; i < 20000; ++i) {
    const double value = std::bit_cast<double>(random());
    double back;
    if (!std::isfinite(value) || std::fpclassify(value) == FP_SUBNORMAL) continue;
    ASSERT_TRUE(HtTryStrToFloat(HtFloatToStr(value), back)) << value;
    ASSERT_EQ(back, value);
  }
}

TEST(NumFormat, Integers) {
  EXPECT_EQ(HtIntToStr(std::numeric_limits<int64_t>::min()), u"-9223372036854775808");
  EXPECT_EQ(HtIntToStr(std::numeric_limits<uint64_t>::max()), u"18446744073709551615");
  EXPECT_EQ(HtIntToStr(int8_t{-128}), u"-128");
  EXPECT_EQ(HtIntToStr(0), u"0");
  EXPECT_EQ(HtIntToHex(-1, 4), u"FFFFFFFF");
  EXPECT_EQ(HtIntToHex(int64_t{-1}, 4), u"FFFFFFFFFFFFFFFF");
  EXPECT_EQ(HtIntToHex(0xAB, 6), u"0000AB");
  EXPECT_EQ(HtIntToHex(0, 0), u"0");
}

TEST(NumFormat, StrictIntegers) {
  constexpr int64_t kMin = std::numeric_limits<int64_t>::min();
  // clang-format off
  const std::pair<std::u16string_view, int32_t> kNarrow[] = {
      {u"12", 12},                   {u"  -12", -12},               {u"+7", 7},
      {u"2147483647", 2147483647},   {u"-2147483648", -2147483648}, {u"$fF", 255},
      {u"0x1A", 26},                 {u"-$10", -16},                {u"0X0", 0},
      {u"$80000001", -2147483647},
  };
  // clang-format on
  for (const auto& [text, expected] : kNarrow) EXPECT_EQ(HtStrToInt(text), expected) << HtToUtf8(text);
  const std::pair<std::u16string_view, int64_t> kWide[] = {
      {u"2147483648", 2147483648}, {u"-2147483649", -2147483649},         {u"$100000000", 0x100000000},
      {u"$FFFFFFFFFFFFFFFF", -1},  {u"9223372036854775807", -(kMin + 1)}, {u"-9223372036854775808", kMin},
  };
  for (const auto& [text, expected] : kWide) {
    int32_t narrow;
    int64_t wide = 0;
    EXPECT_FALSE(HtTryStrToInt(text, narrow)) << HtToUtf8(text);
    EXPECT_TRUE(HtTryStrToInt(text, wide)) << HtToUtf8(text);
    EXPECT_EQ(wide, expected);
  }
  for (std::u16string_view text :
       {u"", u" ", u"-", u"$", u"0x", u"12 ", u"1.0", u"1a", u"$G", u"--1", u"- 1", u"١",
        u"9223372036854775808", u"18446744073709551616", u"$10000000000000000"}) {
    int64_t wide = 7;
    EXPECT_FALSE(HtTryStrToInt(text, wide)) << HtToUtf8(text);
    EXPECT_EQ(wide, 7);
  }
  try {
    HtStrToInt(u"five");
    ADD_FAILURE();
  } catch (const EConvertError& error) {
    EXPECT_EQ(error.Message, u"'five' is not a valid integer value");
  }
}

TEST(NumFormat, StrictFloats) {
  const std::pair<std::u16string_view, double> kGood[] = {
      {u"1.5", 1.5},  {u" -1.5 ", -1.5}, {u"+.5", 0.5},   {u"5.", 5},
      {u"1e3", 1000}, {u"1.5E+2", 150},  {u"2e-2", 0.02}, {u"0", 0},
  };
  for (const auto& [text, value] : kGood) EXPECT_EQ(HtStrToFloat(text), value) << HtToUtf8(text);
  for (std::u16string_view text : {u"", u" ", u".", u"-", u"1,5", u"1.5x", u"1e", u"1 2", u"--1", u"+-1",
                                   u"inf", u"nan", u"0x10", u"1e999", u"½"}) {
    double value = 7;
    EXPECT_FALSE(HtTryStrToFloat(text, value)) << HtToUtf8(text);
    EXPECT_EQ(value, 7);
    EXPECT_THROW(HtStrToFloat(text), EConvertError);
  }
}

}  // namespace
}  // namespace ht
