#include <gtest/gtest.h>
#include <random>

#include "htmlcss/csstokenizer.h"
#include "htmlcss/tokensequence.h"
#include "htruntime/numformat.h"
#include "htutils/faststring.h"

namespace ht {
namespace {

// "Ident<a> Dimension<5px>5PX": the types without prefix, the texts, values and units.
std::string Dump(const TCSSToken& token) {
  TFastString text(128);
  text.Add(HtEnumOf<TCSSTokenType>().NameOf(token.CType).substr(2));
  text.AddChar(u'<').Add(token.Name).AddChar(u'>');
  if (token.CType == ctNumber || token.CType == ctPercentage || token.CType == ctDimension)
    text.Add(HtFloatToGeneral(token.AsFloat(), 6));
  if (token.MUnit != muNone) text.Add(HtEnumOf<TMeasureUnit>().NameOf(token.MUnit).substr(2));
  return HtToUtf8(text.GetAsString());
}

std::string Tokens(const hstring& text) {
  TCSSTokenizer tokenizer(text, true);
  std::string dump;
  while (tokenizer.NextToken()) dump += (dump.empty() ? "" : " ") + Dump(tokenizer.Token);
  return dump;
}

struct TCase {
  const char16_t* Text;
  const char* Tokens;
};

const TCase kCases[] = {
    // clang-format off
    {u"", ""}, {u" \t\r\n\f ", ""}, {u"  a ", "Ident<a>"},
    {u"a:b;{}[](),", "Ident<a> Colon<:> Ident<b> Semicolon<;> BlockStart<{> BlockEnd<}> OpenBr<[> CloseBr<]> "
                     "OpenPar<(> ClosePar<)> Comma<,>"},
    {u"*+>~!=|^$%<\x7F\xE9", "Delimiter<*> Delimiter<+> Delimiter<>> Delimiter<~> Delimiter<!> Delimiter<=> Delimiter<|> "
                             "Delimiter<^> Delimiter<$> Delimiter<%> Delimiter<<> Delimiter<\x7F> Delimiter<é>"},
    {u"a \t\r\n b", "Ident<a> Space< \t\r\n > Ident<b>"},
    {u"a /* x */b/**/c/d/*e", "Ident<a> Space< > Comment< x > Ident<b> Comment<> Ident<c> Slash</> Ident<d> Comment<e>"},
    {u"a/*/b", "Ident<a> Comment</b>"},
    {u"<!-- -->", "Delimiter<<> Delimiter<!> Ident<--> Space< > Ident<--> Delimiter<>>"},
    {u"-a_9 --x -", "Ident<-a_9> Space< > Ident<--x> Space< > Ident<->"},
    {u"naïve Ωmega", "Ident<na> Delimiter<ï> Ident<ve> Space< > Ident<Ωmega>"},
    {u"#fff# #1a", "Hash<fff> Hash<> Space< > Hash<1a>"}, {u"@media@", "AtKeyword<@media> AtKeyword<@>"}, {u"@url()@X(", "AtKeyword<@url> ClosePar<)> AtKeyword<@x> OpenPar<(>"},
    // Numbers: "+" is never part of one, "-" is.
    {u"+5-5-.5.5.x", "Delimiter<+> Number<5>5 Number<-5>-5 Number<-.5>-0.5 Number<.5>0.5 Delimiter<.> Ident<x>"},
    {u"1.2.3", "Number<1.2>1.2 Number<.3>0.3"}, {u"-.x", "Ident<-.> Ident<x>"}, {u"1e3,1E-2", "Number<1e3>1000 Comma<,> Number<1E-2>0.01"},
    {u"100000000000000000000000000000000000000000", "Number<100000000000000000000000000000000000000000>0"},
    {u"5%,5 %,5x%,5  %", "Percentage<5%>5Percent Comma<,> Percentage<5 %>5Percent Comma<,> Percentage<5x%>5Percent Comma<,> "
                         "Number<5>5 Space<  > Delimiter<%>"},
    {u"1cm,1CM,1cmx,1deg,1DEG,1dex", "Dimension<1cm>1CM Comma<,> Dimension<1CM>1CM Comma<,> Ident<1c> Ident<mx> Comma<,> "
                              "Dimension<1deg>1Deg Comma<,> Ident<1DE> Ident<G> Comma<,> Ident<1de> Ident<x>"},
    {u"1em,1emx,1em9,1ex,1exes,1in,1inch", "Dimension<1em>1EM Comma<,> Ident<1e> Ident<mx> Comma<,> Ident<1e> Ident<m9> Comma<,> "
                           "Dimension<1ex>1EX Comma<,> Dimension<1exes>1EX Comma<,> Dimension<1in>1IN Comma<,> Ident<1> Ident<inch>"},
    {u"1mm,1ms,1pc,1pt,12pxfoo,1rem,1rex", "Dimension<1mm>1MM Comma<,> Dimension<1ms>1MS Comma<,> Dimension<1pc>1PC Comma<,> "
                                       "Dimension<1pt>1Pt Comma<,> Dimension<12pxfoo>12PX Comma<,> Dimension<1rem>1REM Comma<,> Ident<1> Ident<rex>"},
    {u"1s,1sec,1vw,1vh,1vmin,1v", "Dimension<1s>1S Comma<,> Dimension<1sec>1S Comma<,> Dimension<1vw>1VW Comma<,> "
                             "Dimension<1vh>1VH Comma<,> Dimension<1vmin>1VH Comma<,> Dimension<1v>1VH"},
    {u"3d 1f2e 5q", "Ident<3d> Space< > Ident<1f2e> Space< > Ident<5> Ident<q>"},
    // Functions and addresses.
    {u"rgb(FOO(", "Function<rgb> OpenPar<(> Function<foo> OpenPar<(>"},
    {u"url( 'a b.png' )x", "URI<a b.png> Ident<x>"}, {u"URL(x.png)", "URI<x.png>"}, {u"url( a b )c", "URI<a b> Ident<c>"},
    {u"url()", "URI<url> ClosePar<)>"}, {u"url(\"a'b)c\\\" junk)d", "URI<a'b)c\\> Ident<d>"}, {u"url(ab", "URI<ab>"},
    {u"url('ab", "URI<ab>"}, {u"urls(a", "Function<urls> OpenPar<(> Ident<a>"},
    // Texts: a line feed does not end one, a carriage return does.
    {u"'a\"b'\"c'd\"", "String<a\"b> String<c'd>"}, {u"\"abc\rdef\"", "String<abc> Ident<def> String<>"},
    {u"'a\nb'", "String<a\nb>"}, {u"'ab", "String<ab>"}, {u"''x", "String<> Ident<x>"},
    // Escapes.
    {u"a\\\r\nb a\\\rb", "Ident<ab> Space< > Ident<ab>"}, {u"\\", "Space<>"}, {u"\\ x", "Ident< x>"},
    {u"\\26 B \\000026B \\1F600", "Ident<&B> Space< > Ident<&B> Space< > Ident<😀>"}, {u"\\g\\\"\\\\z", "Ident<g\"\\z>"},
    {u"\\41\\42 C(", "Function<abc> OpenPar<(>"}, {u"'\\41\\\r\nx\\'y'", "String<Ax'y>"}, {u"'a\\", "String<a>"},
    {u"\\110000x", "Ident<\x7Fx>"}, {u"#a\\:b", "Hash<a:b>"}, {u"@\\6d edia", "AtKeyword<@media>"}, {u"\\75 rl(x)", "URI<x>"},
    // clang-format on
};

TEST(Tokenizer, Tokens) {
  for (const TCase& c : kCases) {
    // 0x110000 is cut to its low 16 bits, which are zero.
    std::string expected = c.Tokens;
    if (std::u16string_view(c.Text) == u"\\110000x") expected[6] = '\0';
    EXPECT_EQ(Tokens(c.Text), expected) << HtToUtf8(c.Text);
  }
}

TEST(Tokenizer, PositionsAndEnd) {
  TCSSTokenizer tokenizer(u" ab :\"c\"  ", true);
  const int32_t expected[][2] = {{2, 3}, {4, 4}, {5, 5}, {6, 8}};
  for (const auto& [start, end] : expected) {
    ASSERT_TRUE(tokenizer.NextToken());
    EXPECT_EQ(tokenizer.Token.StartPos, start);
    EXPECT_EQ(tokenizer.Token.EndPos, end);
  }
  // Spaces that reach the end are no token, and the end is seen only by the next request.
  EXPECT_FALSE(tokenizer.NextToken());
  EXPECT_EQ(tokenizer.Token.CType, ctSpace);
  EXPECT_FALSE(tokenizer.Eof);
  EXPECT_FALSE(tokenizer.NextToken());
  EXPECT_TRUE(tokenizer.Eof);
  EXPECT_EQ(Tokens(hstring(std::u16string_view(u"a\0b", 3))), "Ident<a>");
}

// A name that ends the text is read by characters, one with text behind it eight characters a step; repeated words come
// from the memory of texts.
TEST(Tokenizer, NamesOfAnyLengthAndPlace) {
  std::mt19937 random(1);
  const std::u16string_view letters = u"abyzABYZ0189-_\u0100\u0161\u017F\u6F22";
  for (int i = 0; i < 400; ++i) {
    std::u16string name = u"n";
    while (random() % 12) name += letters[random() % letters.size()];
    const std::u16string_view stop = std::u16string_view(u":@`[^{\xE9 /").substr(random() % 9, 1);
    const hstring tail = hstring(stop) + u"                                    x"_hs;
    std::u16string repeated;
    for (int n = 0; n < 20; ++n) repeated += name + u",";
    TCSSTokenizer alone(name, true), followed(hstring(name) + tail, true), often(repeated, true);
    ASSERT_TRUE(alone.NextToken() && followed.NextToken());
    EXPECT_EQ(HtToUtf8(alone.Token.Name), HtToUtf8(name));
    EXPECT_EQ(HtToUtf8(followed.Token.Name), HtToUtf8(name));
    while (often.NextToken() && often.NextToken()) EXPECT_EQ(often.Token.CType, ctComma);
    EXPECT_EQ(Tokens(repeated).substr(0, 6 + HtToUtf8(name).size()), "Ident<" + HtToUtf8(name));
  }
}

struct TColorCase {
  const char16_t* Text;
  bool IsColor;
  uint32_t Color;  // kUntouched: the output is left alone
};
constexpr uint32_t kUntouched = 0x12345678;

const TColorCase kColors[] = {
    // clang-format off
    {u"red", true, 0xFFFF0000}, {u"inherit", false, kUntouched}, {u"notacolor", true, kUntouched},
    {u"transparent", true, 0x00FFFFFF}, {u"3d3d3d", true, 0xFF3D3D3D}, {u"123456", false, 0xFF123456}, {u"12", false, kUntouched},
    {u"rgb(1,2,3)", true, 0xFF010203}, {u"rgba(255,0,0,0.5)", true, 0x80FF0000}, {u"rgb(100%,0%,0%)", true, 0xFFFF0000},
    {u"rgb(1 2 3 / 50%)", true, 0x80010203}, {u"RGB(257,-1,2.5)", true, 0xFF01FF02}, {u"rgba(red,.5)", true, 0x80FF0000},
    {u"rgba(red,1e30)", true, 0x00FF0000}, {u"rgb(", true, 0}, {u"var(--x)", true, kUntouched}, {u"hsl(1,2,3)", false, kUntouched},
    {u"'red'", false, kUntouched}, {u"", false, kUntouched},
    // clang-format on
};

TCSSTokens Read(const hstring& text) {
  TCSSTokenizer tokenizer(text, true);
  TCSSTokens tokens;
  while (tokenizer.NextToken())
    if (tokenizer.Token.CType != ctSpace) tokens.Append(tokenizer.Token);
  return tokens;
}

TEST(TokenSequence, ReadColor) {
  for (const TColorCase& c : kColors) {
    const TCSSTokens tokens = Read(c.Text);
    for (int reads = 0; reads < 2; ++reads) {  // the second time from what the token remembers
      TCSSTokenSequence sequence(&tokens);
      uint32_t color = kUntouched;
      EXPECT_EQ(sequence.ReadColor(color), c.IsColor) << HtToUtf8(c.Text);
      EXPECT_EQ(color, c.Color) << HtToUtf8(c.Text);
    }
  }
  TCSSTokens hash = Read(u"rgba(#336699, .5)");
  hash[2].SetColor(0xFF336699);
  TCSSTokenSequence sequence(&hash);
  uint32_t color = 0;
  EXPECT_TRUE(sequence.ReadColor(color));
  EXPECT_EQ(color, 0x80336699u);  // the alpha takes the place of the colour's own
  EXPECT_EQ(sequence.T->CType, ctClosePar);
}

TEST(TokenSequence, SystemColorsAreLookedUpEachTime) {
  TCSSTokens tokens = Read(u"btnface");
  uint32_t first = 0, second = 0;
  EXPECT_TRUE(TCSSTokenSequence(&tokens).ReadColor(first));
  EXPECT_EQ(tokens[0].Flags, 1);
  tokens[0].SetColor(0x11223344);
  EXPECT_TRUE(TCSSTokenSequence(&tokens).ReadColor(second));
  EXPECT_EQ(first, second);
  EXPECT_EQ(tokens[0].Color(), 0x11223344u);
}

TEST(TokenSequence, Walk) {
  const TCSSTokens tokens = Read(u"a b c"), none;
  TCSSTokenSequence sequence(&tokens);
  EXPECT_EQ(sequence.Count, 3);
  EXPECT_TRUE(sequence.Next(2));
  EXPECT_EQ(sequence.Position(), 2);
  EXPECT_FALSE(sequence.Next());
  EXPECT_FALSE(sequence.Next());
  EXPECT_EQ(sequence.Index, 4);  // goes on counting
  EXPECT_EQ(sequence.Position(), 2);
  EXPECT_EQ(sequence.T, nullptr);
  EXPECT_TRUE(TCSSTokenSequence(&none).Eof);
  TCSSTokenSequence stored;
  stored.InitStore(Read(u"x"));
  EXPECT_EQ(stored.T->Name, u"x");
}

}  // namespace
}  // namespace ht
