#include "htmlpars/charclasses.h"

#include <gtest/gtest.h>

using namespace ht;

TEST(CharClasses, CjkRangesFromBothSides) {
  constexpr struct {
    char16_t C;
    bool Cjk, Chinese, InText;
  } kCases[] = {
      {0x2FFF, false, false, false}, {0x3000, true, true, false},   {0x30FF, true, true, false},
      {0x3100, false, false, false}, {0x4DFF, false, false, false}, {0x4E00, true, true, true},
      {0x9FFF, true, true, true},    {0xA000, false, false, false}, {0xF8FF, false, false, false},
      {0xF900, true, true, true},    {0xFA00, true, true, true},    {0xFA01, false, true, true},
      {0xFAFF, false, true, true},   {0xFB00, false, false, false},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(IsCJK(c.C), c.Cjk) << std::hex << +c.C;
    EXPECT_EQ(IsChinese(c.C), c.Chinese) << std::hex << +c.C;
    EXPECT_EQ(HasChinese(u"ab"_hs + std::u16string_view(&c.C, 1)), c.InText) << std::hex << +c.C;
  }
  EXPECT_FALSE(HasChinese(u""));
}

TEST(CharClasses, BidiRangesFromBothSides) {
  constexpr struct {
    char32_t First, Last;
    THtTextRunBidi Class;
  } kRanges[] = {
      {0, '/', bdNeutral},         {'0', '9', bdWeakLRT},       {':', '@', bdNeutral},
      {'A', 'Z', bdLTR},           {'[', '`', bdNeutral},       {'a', 'z', bdLTR},
      {'{', '~', bdNeutral},       {0x7F, 1423, bdLTR},         {1424, 0x6FF, bdRTL},
      {0x700, 0x74F, bdLTR},       {0x750, 0x77F, bdRTL},       {0x780, 0x89F, bdLTR},
      {0x8A0, 0x8FF, bdRTL},       {0x900, 8192, bdLTR},        {8193, 64284, bdNeutral},
      {64285, 0xFDFF, bdRTL},      {0xFE00, 0xFE6F, bdNeutral}, {0xFE70, 0xFEFF, bdRTL},
      {0xFF00, 0xFFFF, bdNeutral},
  };
  char32_t next = 0;
  for (const auto& range : kRanges) {
    ASSERT_EQ(range.First, next);
    for (char32_t c = range.First; c <= range.Last; ++c)
      ASSERT_EQ(CharBidi(static_cast<char16_t>(c)), range.Class) << std::hex << +c;
    next = range.Last + 1;
  }
  EXPECT_EQ(next, 0x10000u);
}

TEST(CharClasses, ModifiersSurrogatesLettersNumbers) {
  for (char32_t c = 0; c <= 0xFFFF; ++c) {
    const auto unit = static_cast<char16_t>(c);
    ASSERT_EQ(IsCharModifier(unit), c >= 0x64B && c <= 0x653) << std::hex << +c;
    ASSERT_EQ(IsHighSurrogate(unit), (c >> 8) >= 0xD8 && (c >> 8) <= 0xDB) << std::hex << +c;
  }
  for (char16_t c : u"aZ\u00E9\u0416\u4E2D\u05D0"_hs) EXPECT_TRUE(IsLetter(c) && !IsNumber(c)) << +c;
  for (char16_t c : u"07\u0661\u00BD\u2160"_hs) EXPECT_TRUE(IsNumber(c) && !IsLetter(c)) << +c;
  for (char16_t c : u" _-\xD83D\u2014"_hs) EXPECT_FALSE(IsNumber(c) || IsLetter(c)) << +c;
}
