#include "htcanvas/textrun.h"

#include <gtest/gtest.h>
#include <random>

#include "fixedcanvas/fixedcanvas.h"
#include "htcanvas/fontcollection.h"
#include "htcanvas/splitstring.h"

using namespace ht;

namespace {

// The runs of a text. Behind each stand its flags (s space, b blank, < break before, > break after, n line
// break, t tab) and its direction (L and R, weak W, neutral N).
std::u16string Split(const std::u16string& text) {
  THtTextRuns runs;
  HtSplitString(text, runs);
  std::u16string result;
  int32_t next = 1;
  for (int32_t i = 0; i < runs.GetCount(); ++i) {
    const THtTextRun& run = *runs.GetRun(i);
    EXPECT_EQ(run.Start, next) << "without gap or overlap";
    EXPECT_GT(run.Count, 0);
    next = run.Start + run.Count;
    result += text.substr(static_cast<size_t>(run.Start - 1), static_cast<size_t>(run.Count)) + u'{';
    constexpr std::pair<THtTextRunFlag, char16_t> kLetters[] = {{trfSpace, u's'},       {trfBlank, u'b'},
                                                                {trfBreakBefore, u'<'}, {trfBreakAfter, u'>'},
                                                                {trfLineBreak, u'n'},   {trfTab, u't'}};
    THtTextRunFlags known;
    for (const auto& [flag, letter] : kLetters) {
      if (run.Flags.Contains(flag)) result += letter;
      known.Include(flag);
    }
    EXPECT_TRUE(run.Flags <= known);
    result += u"LNWR"[run.Bidi];
    result += u'}';
  }
  EXPECT_EQ(static_cast<size_t>(next), text.size() + 1);
  return result;
}

TEST(SplitString, Runs) {
  using namespace std::literals;
  const std::u16string kRows[] = {
      u""s,
      u"ab{L}  {sb<>N}c{L}"s,
      u"\t\t{sb<>tN} {sb<>N}\r\n{sb<>nN}\n\r{sb<>nN}\r\n{sb<>nN}\n{sb<>nN}"s,
      u"a{L}\u00A0\u00A0{sN}b{L}"s,
      u"1,234.5{W} {sb<>N}x{L}"s,
      u"1{W},{>N} {sb<>N}2{W}"s,
      u"12px/3{W}"s,
      u"3\u00E9{W}.{N}"s,
      u"1{W}..{N}2{W}"s,
      u"-{W}5{W}"s,
      u"a{L}-{<W}5{W}"s,
      u"5{W}-{W}5{W}"s,
      u"a{L}-{>N}b{L}"s,
      u"a{L}/{<N}b{L}!{>N}"s,
      u"don't_2`x{L}"s,
      u"(\"{N}a{L}\"){N}1{W}"s,
      u"@[{N}x{L}"s,
      u"(,{N}a{L}"s,
      u"ab\u00AD{>L}cd{L}"s,
      u"\u00AD{>N}a{L}"s,
      u"\u4E2D{<>L}\u6587{<L}\u3002{>L}"s,
      u"\u4E2D{<>L}({N}\u6587{<>L}"s,
      u"a{L}\u4E2D{<L},{>N}"s,
      u"\u05D0\u05D1{R} {sb<>N}a{L}"s,
      u"a\U0001F600b{L}"s,
      u"a{L}\u05D0{R}"s,
      u"\u05D0{R}5{W}"s,
      u"a{L}\0{N}b{L}"s,
      u"a\xD83D{L}"s,  // a high half goes on in any run
  };
  for (const std::u16string& row : kRows) {
    std::u16string text;
    for (size_t at = 0; at < row.size(); at = row.find(u'}', at) + 1) {
      const size_t end = row.find(u'{', at);
      text += row.substr(at, end - at);
      at = end;
    }
    EXPECT_EQ(HtToUtf8(Split(text)), HtToUtf8(row));
  }
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
