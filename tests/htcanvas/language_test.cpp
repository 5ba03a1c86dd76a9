#include "htcanvas/language.h"

#include <gtest/gtest.h>

using namespace ht;

namespace {

using TPositions = std::vector<uint32_t>;

void Load(THtLanguage& language, std::string_view list) {
  TBytesStream stream(THtBytes(list.begin(), list.end()));
  language.LoadHyphenationfromStream(stream);
}

TEST(Language, ListsOfWords) {
  THtLanguage language;
  language.Name = u"en"_hs;
  EXPECT_EQ(language.GetHyphenationPositions(u"abcde"_hs), TPositions());
  Load(language,
       "abcde ab-cde\r\nABCDEF ab-cd-ef\nwhole whole\n\nnoblank\n of nothing\nabc a-bc\nlast -la-st-\nlast "
       "la-st");
  const std::pair<const char16_t*, TPositions> kRows[] = {
      {u"abcde", {3}},  {u"aBcDe", {3}}, {u"abcdef", {3, 5}}, {u"whole", {}}, {u"noblank", {}},
      {u"nothing", {}}, {u"abc", {}},    {u"last", {3}},      {u"abcd", {}},  {u"", {}},
  };
  for (const auto& [word, positions] : kRows) EXPECT_EQ(language.GetHyphenationPositions(word), positions);
  language.AddHyphenation(u"straße"_hs, {5});
  EXPECT_EQ(language.GetHyphenationPositions(u"STRAßE"_hs), TPositions{5});
}

TEST(Language, RussianRule) {
  THtLanguage& russian = THtLanguage::GetLanguage(u"ru"_hs);
  const std::pair<const char16_t*, TPositions> kRows[] = {
      {u"молоко", {3, 5}},                    // mo-lo-ko
      {u"МОЛОКО", {3, 5}},  {u"война", {4}},  // the short i stays with its vowel
      {u"абажур", {4}},                       // no vowel alone on a line
      {u"яблоко", {3, 5}},  {u"столб", {}},   // one vowel
      {u"театр", {3}},      {u"стекло", {4}}, {u"мама", {3}}, {u"объявление", {3, 5, 8}},
      {u"кофейня", {3, 6}}, {u"олень", {3}},  {u"аист", {}},  {u"июль", {}},
      {u"поезд", {3}},      {u"дом", {}},     {u"оооо", {}},  {u"ййййй", {}},
  };
  for (const auto& [word, positions] : kRows)
    EXPECT_EQ(russian.GetHyphenationPositions(word), positions) << HtToUtf8(hstring(word));
  Load(russian, "молоко моло-ко\n");
  EXPECT_EQ(russian.GetHyphenationPositions(u"Молоко"_hs), TPositions{5});
  EXPECT_EQ(&THtLanguage::GetLanguage(u"ru"_hs), &russian);
  EXPECT_EQ(THtLanguage::GetLanguage(u"RU"_hs).GetHyphenationPositions(u"молоко"_hs), TPositions());
}

}  // namespace
