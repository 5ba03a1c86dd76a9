#include "htmlcss/measure.h"

#include <gtest/gtest.h>

#include "htmlcss/csstokenizer.h"
#include "htmlcss/tokensequence.h"
#include "styledtree.h"

namespace ht {
namespace {

// A child of the root, with a font of 20 pixels; percentages refer to 200.
struct TContext {
  TTestNode Root{u"<b id=x>"};
  TStyledHTMLNode& Element = ById(Root, u"x"_hs);
  float Reference = 200;
  TContext() {
    Element.FStyle->IntFontSize = 20;
    Root.FStyle->IntFontSize = 15;
    Element.OuterRect = {0, 0, 500, 300};
  }
  TMeasure Decode(const hstring& text, TCSSTokens& tokens) {
    TCSSTokenizer tokenizer(text, true);
    while (tokenizer.NextToken())
      if (tokenizer.Token.CType != ctSpace) tokens.Append(tokenizer.Token);
    TMeasure m;
    m.Init(Element.Style());
    m.Decode(TCSSTokenSequence(&tokens));
    m.Parent = &Reference;
    return m;
  }
};

TEST(Measure, DecodesAndResolves) {
  const struct {
    const char16_t* Text;
    const char* AsString;
    float Pixels;
  } cases[] = {{u"0", "0", 0},
               {u"10px", "10px", 10},
               {u"7", "7px", 7},
               {u"10%", "10%", 20},
               {u"2em", "2em", 40},
               {u"2ex", "2ex", 22},
               {u"1in", "1in", 96},
               {u"2.54cm", "2.54cm", 96},
               {u"25.4mm", "25.4mm", 96},
               {u"72pt", "72pt", 96},
               {u"6pc", "6pc", 96},
               {u"2rem", "2rem", 30},
               {u"10vw", "10vw", 50},
               {u"10vh", "10vh", 30},
               {u"1.23456em", "1.235em", 24.6912f},
               {u"3s", "3s", 600},
               {u"auto", "auto", 0},
               {u"none", "auto", 0},
               {u"NONE", "0", 0},
               {u"left", "0", 0},
               {u"right", "100%", 200},
               {u"center", "50%", 100},
               {u"Bottom", "100%", 200},
               {u"thin", "1px", 1},
               {u"thick", "3px", 3},
               {u"xx-large", "26px", 26},
               {u"smaller", "80%", 160},
               {u"normal", "0", 0},
               {u"initial", "auto", 0},
               {u"unknown", "0", 0},
               {u"calc(100% - 10px)", "0", 190},
               {u"calc(2 * 3)", "0", 6},
               {u"calc(2 * (3 + 4))", "0", 14},
               {u"calc(-5px + 10px)", "0", 5},
               {u"calc(1px / 0)", "0", 1},
               {u"calc(1px +)", "0", 1},
               {u"calc()", "0", 0},
               {u"calc(10px - 3px - 2px)", "0", 5},
               {u"calc(2px + 3px * 4)", "0", 14},
               {u"calc(1em * -2)", "0", -40},
               {u"calc(10px - -3px)", "0", 13},
               {u"calc(1px + 2px))))", "0", 3},
               {u"calc(50% - (3px + 2px)) / 7px", "0", 95}};
  for (const auto& c : cases) {
    TContext context;
    TCSSTokens tokens;
    TMeasure m = context.Decode(c.Text, tokens);
    // Without a number a decoded measure prints as the 0 it holds.
    if (!m.GetAuto() && m.FValue == 0) m.Flags.Include(mfZero);
    EXPECT_EQ(HtToUtf8(m.AsString()), c.AsString) << HtToUtf8(c.Text);
    EXPECT_NEAR(m.GetFPixels(), c.Pixels, 1e-4) << HtToUtf8(c.Text);
    EXPECT_NEAR(m.GetFPixels(), c.Pixels, 1e-4) << "again";
  }
}

TEST(Measure, WholePixels) {
  TContext context;
  TCSSTokens tokens, percent, number;
  context.Element.FStyle->Zoom = 1.5f;
  EXPECT_EQ(context.Decode(u"3px"_hs, tokens).GetPixels(), 5);  // 4.5, away from zero
  TMeasure m = context.Decode(u"10%"_hs, percent);
  EXPECT_EQ(m.GetPixels(), 30);
  context.Reference = 100;
  EXPECT_EQ(m.GetPixels(), 15);
  m.Parent = nullptr;
  EXPECT_EQ(m.GetPixels(), 0);
  m = context.Decode(u"1.5"_hs, number);
  m.FMUnit = muNone;
  EXPECT_EQ(m.GetPixels(), 2);
  EXPECT_EQ(m.GetFPixels(), 150);
}

TEST(Measure, Parses) {
  const struct {
    const char16_t* Text;
    float Value;
    TMeasureUnit Unit;
    bool Auto;
  } cases[] = {{u"1e2", 100, muNone, false}, {u"-.5em", -.5f, muEM, false}, {u"12", 12, muNone, false},
               {u"12px", 12, muPX, false},   {u"12PX", 12, muNone, false},  {u"5%", 5, muPercent, false},
               {u"3rem", 3, muREM, false},   {u"4vh", 4, muVH, false},      {u"2e-1", .2f, muNone, false},
               {u"auto", 0, muNone, true},   {u"", 0, muNone, true},        {u"x", 0, muNone, true},
               {u"9mm", 9, muMM, false},     {u"9pc", 9, muPC, false},      {u"7s", 7, muS, false}};
  for (const auto& c : cases) {
    TMeasure m;
    m.Parse(c.Text);
    EXPECT_FLOAT_EQ(m.FValue, c.Value) << HtToUtf8(c.Text);
    EXPECT_EQ(m.FMUnit, c.Unit) << HtToUtf8(c.Text);
    EXPECT_EQ(m.GetAuto(), c.Auto) << HtToUtf8(c.Text);
  }
}

TEST(Measure, Setters) {
  TMeasure m;
  m.SetValue(0);
  EXPECT_TRUE(m.GetAuto());  // it was 0 already
  m.SetValue(3);
  EXPECT_TRUE(!m.GetAuto() && !m.Relative());
  m.SetValue(0);
  EXPECT_TRUE(m.Flags.Contains(mfZero));
  m.SetAuto(true);
  EXPECT_TRUE(m.Relative());
  TMeasure other;
  TBaseElementStyle style;
  other.Init(&style);
  const float reference = 1;
  m.Parent = &reference;
  other.Assign(m);
  EXPECT_TRUE(other.Style == &style && other.Parent == &reference);
}

}  // namespace
}  // namespace ht
