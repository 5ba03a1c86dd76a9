#include "htruntime/unicode.h"

#include <gtest/gtest.h>

#include "htruntime/hstring.h"

namespace ht {
namespace {

TEST(Unicode, LettersAndNumbers) {
  struct TRow {
    char16_t unit;
    bool letter, number;
  };
  constexpr TRow kRows[] = {
      {u'A', true, false},  {u'z', true, false},       {u'0', false, true},       {u'_', false, false},
      {u'ª', true, false},  {u'²', false, true},       {u'½', false, true},       {u'×', false, false},
      {u'ß', true, false},  {u'Ж', true, false},       {u'ǅ', true, false},       {u'ʰ', true, false},
      {u'א', true, false},  {u'\x0300', false, false}, {u'٣', false, true},       {u'Ⅷ', false, true},
      {u'中', true, false}, {u'\xAC00', true, false},  {u'\xD800', false, false}, {u'\xFFFF', false, false},
  };
  for (const TRow& row : kRows) {
    EXPECT_EQ(HtIsLetter(row.unit), row.letter) << std::hex << uint32_t{row.unit};
    EXPECT_EQ(HtIsNumber(row.unit), row.number) << std::hex << uint32_t{row.unit};
  }
}

TEST(Unicode, SimpleLowerCase) {
  constexpr std::pair<char16_t, char16_t> kRows[] = {
      {u'A', u'a'}, {u'Z', u'z'}, {u'[', u'['},   {u'@', u'@'},           {u'À', u'à'},
      {u'×', u'×'}, {u'ß', u'ß'}, {u'İ', u'i'},   {u'Ÿ', u'ÿ'},           {u'ǅ', u'ǆ'},
      {u'Σ', u'σ'}, {u'ς', u'ς'}, {u'Я', u'я'},   {u'Ё', u'ё'},           {u'ẞ', u'ß'},
      {u'K', u'k'}, {u'Ⅷ', u'ⅷ'}, {u'Ａ', u'ａ'}, {u'\xD800', u'\xD800'}, {u'\xFFFF', u'\xFFFF'},
  };
  for (const auto& [upper, lower] : kRows) EXPECT_EQ(HtToLower(upper), lower) << std::hex << uint32_t{upper};
  for (char32_t c = 0; c < 0x10000; ++c) {
    const char16_t lower = HtToLower(static_cast<char16_t>(c));
    ASSERT_EQ(HtToLower(lower), lower) << std::hex << static_cast<uint32_t>(c);
  }
}

TEST(Unicode, SimpleUpperCase) { EXPECT_EQ(HtUpperCase(u"az{ÿßµıǆςёŉᾀⓐ𐐨\xD800"), u"AZ{ŸßΜIǄΣЁŉᾈⒶ𐐨\xD800"); }

TEST(Unicode, CompareTextIgnoresCaseAndThenTakesTheShorter) {
  struct TRow {
    std::u16string_view a, b;
    int sign;
  };
  constexpr TRow kRows[] = {
      {u"", u"", 0},    {u"Straße", u"STRAßE", 0}, {u"Привет", u"пРИВЕТ", 0}, {u"a", u"B", -1},
      {u"_", u"A", -1}, {u"ab", u"A", 1},          {u"", u"a", -1},           {u"é", u"Z", 1},
  };
  const auto sign = [](int value) { return (value > 0) - (value < 0); };
  for (const TRow& row : kRows) {
    EXPECT_EQ(sign(HtCompareText(row.a, row.b)), row.sign) << HtToUtf8(row.a);
    EXPECT_EQ(sign(HtCompareText(row.b, row.a)), -row.sign) << HtToUtf8(row.a);
  }
}

}  // namespace
}  // namespace ht
