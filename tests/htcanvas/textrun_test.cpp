#include "htcanvas/textrun.h"

#include <gtest/gtest.h>
#include <random>

#include "fixedcanvas/fixedcanvas.h"
#include "htcanvas/fontcollection.h"
#include "htcanvas/splitstring.h"

using namespace ht;

namespace {

// One run: its text, its flags as letters (s space, b blank, < break before, > break after, n line break, t tab) and
// its direction.
struct TRun {
  std::u16string Text;
  std::string Flags;
  THtTextRunBidi Bidi;

  friend bool operator==(const TRun&, const TRun&) = default;
  friend std::ostream& operator<<(std::ostream& out, const TRun& run) {
    return out << "'" << HtToUtf8(run.Text) << "' " << run.Flags << " " << int{run.Bidi};
  }
};

std::vector<TRun> Split(const std::u16string& text) {
  THtTextRuns runs;
  HtSplitString(text, runs);
  std::vector<TRun> result;
  int32_t next = 1;
  for (int32_t i = 0; i < runs.GetCount(); ++i) {
    const THtTextRun& run = *runs.GetRun(i);
    EXPECT_EQ(run.Start, next) << "without gap or overlap";
    EXPECT_GT(run.Count, 0);
    next = run.Start + run.Count;
    std::string flags;
    constexpr std::pair<THtTextRunFlag, char> kLetters[] = {{trfSpace, 's'},       {trfBlank, 'b'},
                                                            {trfBreakBefore, '<'}, {trfBreakAfter, '>'},
                                                            {trfLineBreak, 'n'},   {trfTab, 't'}};
    THtTextRunFlags known;
    for (const auto& [flag, letter] : kLetters) {
      if (run.Flags.Contains(flag)) flags += letter;
      known.Include(flag);
    }
    EXPECT_TRUE(run.Flags <= known);
    result.push_back(
        {text.substr(static_cast<size_t>(run.Start - 1), static_cast<size_t>(run.Count)), flags, run.Bidi});
  }
  EXPECT_EQ(static_cast<size_t>(next), text.size() + 1);
  return result;
}

TEST(SplitString, Runs) {
  constexpr auto L = bdLTR, N = bdNeutral, W = bdWeakLRT, R = bdRTL;
  const struct {
    std::u16string Text;
    std::vector<TRun> Runs;
  } kRows[] = {
      {u"", {}},
      {u"ab  c", {{u"ab", "", L}, {u"  ", "sb<>", N}, {u"c", "", L}}},
      {u"\t\t \r\n\n\r\r\n\n",
       {{u"\t\t", "sb<>t", N},
        {u" ", "sb<>", N},
        {u"\r\n", "sb<>n", N},
        {u"\n\r", "sb<>n", N},
        {u"\r\n", "sb<>n", N},
        {u"\n", "sb<>n", N}}},
      {u"a\u00A0\u00A0b", {{u"a", "", L}, {u"\u00A0\u00A0", "s", N}, {u"b", "", L}}},
      {u"1,234.5 x", {{u"1,234.5", "", W}, {u" ", "sb<>", N}, {u"x", "", L}}},
      {u"1, 2", {{u"1", "", W}, {u",", ">", N}, {u" ", "sb<>", N}, {u"2", "", W}}},
      {u"12px/3", {{u"12px/3", "", W}}},
      {u"3\u00E9.", {{u"3\u00E9", "", W}, {u".", "", N}}},
      {u"1..2", {{u"1", "", W}, {u"..", "", N}, {u"2", "", W}}},
      {u"-5", {{u"-", "", W}, {u"5", "", W}}},
      {u"a-5", {{u"a", "", L}, {u"-", "<", W}, {u"5", "", W}}},
      {u"5-5", {{u"5", "", W}, {u"-", "", W}, {u"5", "", W}}},
      {u"a-b", {{u"a", "", L}, {u"-", ">", N}, {u"b", "", L}}},
      {u"a/b!", {{u"a", "", L}, {u"/", "<", N}, {u"b", "", L}, {u"!", ">", N}}},
      {u"don't_2`x", {{u"don't_2`x", "", L}}},
      {u"(\"a\")1", {{u"(\"", "", N}, {u"a", "", L}, {u"\")", "", N}, {u"1", "", W}}},
      {u"@[x", {{u"@[", "", N}, {u"x", "", L}}},
      {u"(,a", {{u"(,", "", N}, {u"a", "", L}}},
      {u"ab\u00ADcd", {{u"ab\u00AD", ">", L}, {u"cd", "", L}}},
      {u"\u00ADa", {{u"\u00AD", ">", N}, {u"a", "", L}}},
      {u"\u4E2D\u6587\u3002", {{u"\u4E2D", "<>", L}, {u"\u6587", "<", L}, {u"\u3002", ">", L}}},
      {u"\u4E2D(\u6587", {{u"\u4E2D", "<>", L}, {u"(", "", N}, {u"\u6587", "<>", L}}},
      {u"a\u4E2D,", {{u"a", "", L}, {u"\u4E2D", "<", L}, {u",", ">", N}}},
      {u"\u05D0\u05D1 a", {{u"\u05D0\u05D1", "", R}, {u" ", "sb<>", N}, {u"a", "", L}}},
      {u"a\U0001F600b", {{u"a\U0001F600b", "", L}}},
      {u"a\u05D0", {{u"a", "", L}, {u"\u05D0", "", R}}},
      {u"\u05D05", {{u"\u05D0", "", R}, {u"5", "", W}}},
      {std::u16string(u"a\0b", 3), {{u"a", "", L}, {std::u16string(1, u'\0'), "", N}, {u"b", "", L}}},
  };
  for (const auto& row : kRows) EXPECT_EQ(Split(row.Text), row.Runs) << HtToUtf8(row.Text);
  // A high half goes on in any run, and what follows is told by its own class.
  EXPECT_EQ(Split(u"a\xD83D"), (std::vector<TRun>{{u"a\xD83D", "", L}}));
}

TEST(SplitString, CoversAnyText) {
  std::mt19937 random(11);
  constexpr std::u16string_view kUnits =
      u"aZ09 \t\r\n,./-!?%('\"[\u00A0\u00AD\u05D0\u0627\u4E2D\u3002\u2014\xD83D\xDE00\u00E9\0";
  for (int i = 0; i < 3000; ++i) {
    std::u16string text;
    for (auto n = random() % 12; n > 0; --n) text += kUnits[random() % kUnits.size()];
    Split(text);
  }
}

class TLayoutRun : public THtTextRun {
  HT_CLASS(TLayoutRun, THtTextRun)

 public:
  int Extra = 5;
};

TEST(SplitString, AppendsRunsOfAClass) {
  THtTextRuns runs;
  HtSplitString(u"a b"_hs, runs);
  TFixedCanvas::Class()->SplitString(u"c"_hs, runs, TLayoutRun::Class());
  ASSERT_EQ(runs.GetCount(), 4);
  EXPECT_EQ(runs.GetRun(0)->ClassType(), THtTextRun::Class());
  EXPECT_EQ(static_cast<TLayoutRun*>(runs.GetRun(3))->Extra, 5);
  EXPECT_EQ(runs.GetRun(3)->Start, 1);
}

TEST(FontCollection, KeysAreLowerCaseSizeStyleAndFallbacks) {
  const auto fonts = TFixedCanvas::Class()->CreateFontCollection();
  TStringList fallbacks;
  fallbacks.Add(u"Arial"_hs);
  fallbacks.Add(u"serif"_hs);
  const struct {
    const char16_t* Name;
    float Size;
    THtFontStyles Style;
    const TStringList* Fallbacks;
    const char16_t* Key;
  } kRows[] = {
      {u"Verdana", 12, {}, nullptr, u"verdana|12|0|"},
      {u"VERDANA", 12, {hfsUnderline, hfsStrikeOut}, nullptr, u"verdana|12|0|"},
      {u"Verdana", 12.345f, {hfsBold, hfsItalic}, nullptr, u"verdana|12.35|3|"},
      {u"Verdana", 12, {hfsSemibold, hfsBlack}, &fallbacks, u"verdana|12|C0|Arialserif"},
  };
  for (const auto& row : kRows) {
    THtFont* font = fonts->GetFont(row.Name, row.Size, row.Style, row.Fallbacks);
    ASSERT_NE(font, nullptr);
    EXPECT_EQ(HtToUtf8(font->FFontKey), HtToUtf8(row.Key));
    EXPECT_EQ(fonts->GetFont(row.Name, row.Size, row.Style, row.Fallbacks), font);
    EXPECT_EQ(font->FOwner, fonts.get());
  }
  EXPECT_EQ(fonts->GetCount(), 3);
  fonts->GetFont(u"serif"_hs, 9, {});
  TStringList families;
  fonts->GetFonts(families);
  EXPECT_EQ(families.GetCount(), 2);
  EXPECT_GE(families.IndexOf(u"Times New Roman"), 0);
  EXPECT_TRUE(fonts->GetFontData(u"Verdana"_hs).empty());
  fonts->RegisterCustomFont(u"x"_hs, u"/there/is/no such file"_hs, {});
}

}  // namespace
