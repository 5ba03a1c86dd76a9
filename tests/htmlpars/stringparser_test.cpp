#include "htmlpars/stringparser.h"

#include <gtest/gtest.h>

#include "htruntime/exception.h"

using namespace ht;

namespace {

struct TNumber {
  const char16_t* Text;
  double Value;
  std::u16string_view Rest;
};

template <class TRead, size_t N>
void ExpectNumbers(const TNumber (&cases)[N], TRead read) {
  for (const TNumber& c : cases) {
    SCOPED_TRACE(HtToUtf8(c.Text));
    TStringParser parser(c.Text);
    EXPECT_EQ(static_cast<double>(read(parser)), c.Value);
    EXPECT_EQ(parser.Rest(), c.Rest);
  }
}

}  // namespace

TEST(StringParser, Cursor) {
  TStringParser parser(u"ab\ncd\n"_hs);
  EXPECT_TRUE(parser.First());
  EXPECT_EQ(parser.Pos(), 1);
  EXPECT_EQ(parser.CharPos(u'a'), 1);
  EXPECT_EQ(parser.CharPos(u'd'), 5);
  EXPECT_EQ(parser.CharPos(u'x'), 0);
  EXPECT_EQ(parser.Next(), u'b');
  parser.Skipto(u'\n');
  EXPECT_EQ(parser.Line(), 0);
  parser.Skip(1);
  EXPECT_EQ(parser.Line(), 1);
  EXPECT_EQ(parser.Tail(), u"cd\n");
  parser.Skipto(u'x');
  EXPECT_TRUE(parser.Empty());
  EXPECT_EQ(parser.Next(), 0);
  EXPECT_EQ(parser.Pos(), 7);
  EXPECT_EQ(parser.Line(), 2);
  parser.Skip(-100);
  EXPECT_TRUE(parser.First());
  parser.Skip(100);
  EXPECT_EQ(parser.Pos(), 7);
}

TEST(StringParser, EmptyText) {
  TStringParser parser{hstring()};
  EXPECT_EQ(parser.p, parser.pend);
  EXPECT_EQ(*parser.p, 0);
  parser.Skip(3);
  EXPECT_TRUE(parser.Empty() && parser.First());
  hstring text = u"old"_hs;
  EXPECT_FALSE(parser.ReadParam(text));
  parser.ReadtoWordBreak(text);
  EXPECT_EQ(text, u"");
  EXPECT_EQ(parser.ReadInt() + parser.ReadInt1() + parser.ReadHex() + parser.ReadBin(), 0);
  EXPECT_EQ(parser.ReadNum() + parser.ReadNumEx(), 0);
}

TEST(StringParser, SkipEndBlanks) {
  constexpr struct {
    const char16_t* Text;
    int Skip;
    std::u16string_view Rest;
    int Pos;
  } kCases[] = {
      {u"ab \r\n ", 1, u"b", 2},
      {u"ab\t ", 0, u"ab\t", 1},
      {u"ab  ", 4, u"", 3},
      {u"  ", 1, u"", 1},
  };
  for (const auto& c : kCases) {
    TStringParser parser(c.Text);
    parser.Skip(c.Skip);
    parser.SkipEndBlanks();
    EXPECT_EQ(parser.Rest(), c.Rest);
    EXPECT_EQ(parser.Pos(), c.Pos);
    EXPECT_EQ(*parser.pend, 0);
  }
}

TEST(StringParser, StartsWith) {
  TStringParser parser(u"<ScRipt>\u00C9"_hs);
  EXPECT_TRUE(parser.StartsWith(u"<script>"));
  EXPECT_FALSE(parser.StartsWith(u"<script>\u00E9"));
  EXPECT_FALSE(parser.StartsWith(u"<script>\u00C9 "));
}

TEST(StringParser, Pieces) {
  using TRead = void (*)(TStringParser&, hstring&);
  static constexpr TCharSet kSet(u";\"");
  constexpr TRead word = [](TStringParser& p, hstring& t) { p.ReadWord(t, false); };
  constexpr TRead wordTrim = [](TStringParser& p, hstring& t) { p.ReadWord(t, true); };
  constexpr TRead toComma = [](TStringParser& p, hstring& t) { p.ReadtoChar(u',', t, false); };
  constexpr TRead toCommaTrim = [](TStringParser& p, hstring& t) { p.ReadtoChar(u',', t, true); };
  constexpr TRead toSet = [](TStringParser& p, hstring& t) { p.ReadtoChars(kSet, t); };
  constexpr TRead line = [](TStringParser& p, hstring& t) { p.ReadLn(t); };
  constexpr TRead toBreak = [](TStringParser& p, hstring& t) { p.ReadtoWordBreak(t); };
  constexpr struct {
    TRead Read;
    const char16_t* Text;
    std::u16string_view Piece, Rest;
  } kCases[] = {
      {word, u"ab,c", u"ab", u",c"},
      {word, u"(b\tc", u"(b", u"\tc"},
      {word, u" b c", u" b", u" c"},
      {wordTrim, u" \nb c", u"b", u" c"},
      {toComma, u" a ,b", u" a ", u",b"},
      {toCommaTrim, u" a \t,b", u"a", u"b"},
      {toCommaTrim, u",,a,b", u",,a", u"b"},
      {toCommaTrim, u" a ", u"a", u""},
      {toSet, u" a\u013B \"b", u"a\u013B ", u"\"b"},
      {line, u"a \r\nb", u"a ", u"b"},
      {line, u"a\n\rb", u"a", u"\rb"},
      {line, u"ab", u"ab", u""},
      {toBreak, u"ab cd", u"ab", u" cd"},
      {toBreak, u"  cd e", u"  cd", u" e"},
      {toBreak, u"- a-b", u"- a", u"-b"},
      {toBreak, u"a//b", u"a", u"//b"},
      {toBreak, u"a\u4E2D\u6587", u"a", u"\u4E2D\u6587"},
      {toBreak, u"\u4E2D\u6587", u"\u4E2D", u"\u6587"},
      {toBreak, u"a\u4E2D! b", u"a\u4E2D!", u" b"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(HtToUtf8(c.Text));
    TStringParser parser(c.Text);
    hstring piece;
    c.Read(parser, piece);
    EXPECT_EQ(piece, c.Piece);
    EXPECT_EQ(parser.Rest(), c.Rest);
  }
}

TEST(StringParser, Params) {
  TStringParser parser(u" (a b ,c,,d) e"_hs);
  hstring text;
  for (std::u16string_view expected : {u"a b ", u"c", u"", u"d"}) {
    EXPECT_TRUE(parser.ReadParam(text));
    EXPECT_EQ(text, expected);
  }
  EXPECT_FALSE(parser.ReadParam(text));
  EXPECT_EQ(text, u"");
  EXPECT_EQ(parser.Rest(), u" e");
}

TEST(StringParser, Numbers) {
  // clang-format off
  constexpr TNumber kInts[] = {
      {u"12px", 12, u"px"}, {u" , -7", -7, u""}, {u",,1", 0, u",1"}, {u"+3", 3, u""}, {u"- 3", 0, u" 3"},
      {u"2147483639", 2147483639, u""}, {u"2147483647", 214748364, u"7"}, {u"-99999999999", -999999999, u"99"},
  };
  constexpr TNumber kDigits[] = {{u"10", 1, u"0"}, {u" ,-19", -1, u"9"}, {u"x", 0, u"x"}};
  constexpr TNumber kHex[] = {
      {u"1fFg", 511, u"g"}, {u"+-a", -10, u""}, {u"-+a", 0, u"+a"}, {u"ffffffffffffffff", -1, u""},
  };
  constexpr TNumber kBin[] = {{u"1012", 5, u"2"}, {u"-11", -3, u""}};
  constexpr TNumber kNums[] = {
      {u"1.5e3", 1.5, u"e3"}, {u".5", .5, u""}, {u"-.25.5", -.25, u".5"}, {u"1.", 1, u""}, {u"3,4", 3, u",4"},
      {u"0.12345678", 0.1234567, u""}, {u"0.00000009z", 0, u"z"},
      {u"2147483649.5", 2147483649.5, u""}, {u"2147483659.5", 214748365, u"9.5"},
  };
  constexpr TNumber kNumsEx[] = {
      {u"1.5e3", 1500, u""}, {u"25E-1x", 2.5, u"x"}, {u"2e", 2, u"e"}, {u"2ex", 2, u"ex"}, {u"2e+", 2, u""},
      {u"99999999999.5", 99999999999.5, u""}, {u"1e37", 1e37, u""}, {u"1e38", 1, u""}, {u"007", 7, u""},
  };
  // clang-format on
  ExpectNumbers(kInts, [](TStringParser& p) { return p.ReadInt(); });
  ExpectNumbers(kDigits, [](TStringParser& p) { return p.ReadInt1(); });
  ExpectNumbers(kHex, [](TStringParser& p) { return p.ReadHex(); });
  ExpectNumbers(kBin, [](TStringParser& p) { return p.ReadBin(); });
  ExpectNumbers(kNums, [](TStringParser& p) { return p.ReadNum(); });
  ExpectNumbers(kNumsEx, [](TStringParser& p) { return p.ReadNumEx(); });
}

TEST(StringParser, IntOrFloat) {
  constexpr struct {
    const char16_t* Text;
    bool Whole;
    long double Value;
    std::u16string_view Rest;
  } kCases[] = {
      {u"12", true, 12, u""},
      {u"-12..15", true, -12, u"..15"},
      {u"9223372036854775807", true, 9223372036854775807.0L, u""},
      {u"9223372036854775808", false, 9223372036854775808.0L, u""},
      {u"1.25", false, 1.25L, u""},
      {u"-2.", false, -2, u""},
      {u"2e3x", false, 2000, u"x"},
      {u"1e299", false, 1e299L, u""},
      {u"1e300", false, 1, u""},
      {u"1e", true, 1, u"e"},
      {u",1", true, 0, u",1"},
      {u"", true, 0, u""},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(HtToUtf8(c.Text));
    TStringParser parser(c.Text);
    int64_t i = 0;
    long double f = 0;
    const bool whole = parser.ReadIntOrFloat(i, f);
    EXPECT_EQ(whole, c.Whole);
    EXPECT_EQ(whole ? static_cast<long double>(i) : f, c.Value);
    EXPECT_EQ(parser.Rest(), c.Rest);
  }
}

TEST(StringParser, RaiseException) {
  using TRead = void (*)(TStringParser&);
  constexpr TRead readInt = [](TStringParser& p) { p.ReadInt(); };
  constexpr TRead readHex = [](TStringParser& p) { p.ReadHex(); };
  constexpr TRead readNum = [](TStringParser& p) { p.ReadNum(); };
  constexpr TRead readNumEx = [](TStringParser& p) { p.ReadNumEx(); };
  constexpr TRead readIntOrFloat = [](TStringParser& p) {
    int64_t i;
    long double f;
    p.ReadIntOrFloat(i, f);
  };
  constexpr struct {
    TRead Read;
    const char16_t *Fine, *Raises;  // texts, separated by "|"
  } kCases[] = {
      {readInt, u"|1x|-1x|+1", u"x|-x|+ 1"},
      {readHex, u"|zz|-", nullptr},
      {readNum, u"|0.5|1.|01", u".5|-.5"},
      {readNumEx, u"0|0.5|1e38|1ex", u"| |01|1.|1.x|.5|1e+x"},
      {readIntOrFloat, u"0|1..|1e300", u"| |-01|1.|1e+x"},
  };
  const auto raises = [](TRead read, const hstring& text) {
    TStringParser parser(text);
    parser.RaiseException = true;
    try {
      read(parser);
      return false;
    } catch (const EConvertError& error) {
      return error.Message == u"Incorrect number";
    }
  };
  for (const auto& c : kCases)
    for (const char16_t* texts : {c.Fine, c.Raises}) {
      if (!texts) continue;
      TStringParser list{hstring(texts) + u"|"};
      while (!list.Empty()) {
        const char16_t* start = list.PTail();
        list.Skipto(u'|');
        const hstring text(start, static_cast<size_t>(list.PTail() - start));
        list.Next();
        EXPECT_EQ(raises(c.Read, text), texts == c.Raises) << HtToUtf8(text);
      }
    }
  TStringParser parser(u"1e38"_hs);
  parser.RaiseException = true;
  EXPECT_EQ(parser.ReadNumEx(), 1e38);
}
