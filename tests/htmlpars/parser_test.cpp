#include "htmlpars/parser.h"

#include <gtest/gtest.h>
#include <map>

#include "htdictionary/fieldoffset.h"
#include "htmlpars/lower.h"
#include "htutils/strreplace.h"

namespace ht {
namespace {

using std::u16string;
using std::u16string_view;

// The items of a text: 'text', <tag a=b>, <tag/>, </tag>, {tag a=b 'content'} for script and style, !'comment',
// ?'directive', #'cdata', $'declaration'.
void AppendItem(u16string& out, const THtmlParser& parser) {
  const auto quoted = [&](const hstring& mark) { out.append(mark + u"'" + parser.Value + u"'"); };
  switch (parser.TagType) {
    case htString: return quoted(u"");
    case htComment: return quoted(u"!");
    case htDirective: return quoted(u"?");
    case htCData: return quoted(u"#");
    case htCustom: return quoted(u"$");
    default: break;
  }
  const bool raw = parser.TagType != htIdent;
  out.append(raw ? u"{" : parser.IsCloseTag ? u"</" : u"<").append(parser.Tag.View());
  for (int32_t i = 0; parser.Attributes && i < parser.Attributes->Count; ++i)
    out.append(u" " + parser.Attributes->GetName(i) + u"=" + parser.Attributes->GetValue(i));
  if (raw) quoted(u" ");
  out.append(raw ? u"}" : parser.TagClosed ? u"/>" : u">");
}

enum TReading { kPlain, kTwice, kXml, kXmlCased };

u16string ItemsOf(u16string_view text, TReading reading = kPlain) {
  THtmlParser parser(text, reading >= kXml);
  if (reading == kXmlCased) parser.SetCaseSensitive(true);
  u16string items;
  while (parser.NextItem()) {
    if (reading == kTwice) {
      parser.RepeatCurrent = true;
      EXPECT_TRUE(parser.NextItem());
    }
    AppendItem(items, parser);
  }
  return items;
}

u16string WithUpperNames(u16string_view text) {
  u16string result;
  bool inTag = false;
  char16_t quote = 0;
  for (char16_t c : text) {
    if (!quote && (c == u'<' || c == u'>')) inTag = c == u'<';
    if (inTag && (c == u'"' || c == u'\'') && (!quote || quote == c)) quote = quote ? 0 : c;
    result += inTag && !quote && HtIsAsciiLetter(c) ? static_cast<char16_t>(c & ~0x20) : c;
  }
  return result;
}

struct TCase {
  u16string_view Text, Items;
};

const TCase kItems[] = {
    // clang-format off
    {u"", u""}, {u" \t\n", u""}, {u"\r\n x ", u"'x '"},
    // "<" that opens nothing
    {u"a < b", u"'a ''< b'"}, {u"1<2<<3", u"'1''<2''<''<3'"}, {u"<", u"'<'"},
    // Names
    {u"<DiV>X</dIv>", u"<div>'X'</div>"},
    {u"<-x><_y><.z><:w><\u00E9\u00C9>", u"<-x><_y><.z><:w><\u00E9\u00C9>"},
    {u"<a/b><p/ c>", u"<a/b><p/ c=c>"}, {u"</ p>x<//p>y</>z", u"'x''y''z'"}, {u"</p a=b c>x", u"</p>'x'"},
    {u"<br/><br / >", u"<br/><br/>"}, {u"<b<i>x", u"<b><i>'x'"}, {u"<b c<i>", u"<b c=c><i>"},
    {u"x<p", u"'x'"}, {u"x<p a=\"b", u"'x'"},
    // Attributes
    {u"<a b=c=d e=f/g h=i/>", u"<a b=c=d e=f/g h=i/>"}, {u"<a b=c />", u"<a b=c/>"},
    {u"<a b = c\td\n=\r\ne>", u"<a b=c d=e>"}, {u"<a b=/c/d e=/ f=>", u"<a b=/c/d>"},
    {u"<a b= >x", u"<a>'x'"}, {u"<input disabled>", u"<input disabled=disabled>"},
    {u"<a b=x B=y b='z'>", u"<a b=x>"}, {u"<a b=x b><a b b=x>", u"<a b=b><a b=b>"},
    {u"<a 'b=c \"d='e'>", u"<a b=c d=e>"}, {u"<a b='x\"y' c=\"x'\r\ny\">", u"<a b=x\"y c=x'\r\ny>"},
    {u"<a b=\"1\"c='2'd=3>", u"<a b=1 c=2 d=3>"},
    {u"<a b='&lt;&copy;&#65;' c=&lt;>", u"<a b=<\u00A9A c=&lt;>"},
    {u"<a HREF=X Data-{Y}=1 {Z}>", u"<a Data-{Y}=1 href=X {Z}={Z}>"},
    {u"<a b<!--x-->c<?y?>=<!--z-->'d'>", u"<a b=b c=d>"},
    {u"<a b=\u4E2D\u6587 \u00E9=1>", u"<a b=\u4E2D\u6587 \u00E9=1>"},
    // Comments, CDATA sections, directives, declarations
    {u"a<!-- b > c -->d", u"'a'!' b > c ''d'"}, {u"<!----><!--a--b---->", u"!''!'a--b--'"},
    {u"<!-->a<!--->b", u"!'''a'!'''b'"}, {u"<!--abc", u"!'a'"}, {u"<!--", u"!''"},
    {u"<![CDATA[a]]b>&lt;]]>c", u"#'a]]b>&lt;''c'"}, {u"<![CDATA[a]]", u"#'a]]'"},
    {u"<?a b?c?>d<?e>f<?g", u"?'a b?c''d'?'e''f'?'g'"},
    {u"<!DOCTYPE html [ <!ENTITY a \">\"> ]>x", u"$'DOCTYPE html [ <!ENTITY a \">\"> ]''x'"},
    {u"<!a \"b>c\">d", u"$'a \"b''c\">d'"}, {u"<!a '['>b]>c", u"$'a '['>b]''c'"},
    {u"<!a \"[\">b", u"$'a \"[\"''b'"}, {u"<!a [\"]>\"]>b", u"$'a [\"]>\"]''b'"}, {u"<!>a>b<!c", u"$'>a''b'$'c'"},
    // Raw text
    {u"<script>if (a<b) '</p>' &lt;</SCRIPT>x", u"{script 'if (a<b) '</p>' &lt;'}'x'"},
    {u"<Script A=b>\n<!-- c --> </script>", u"{script a=b ' c '}"},
    {u"<script>a</script >b</script>c", u"{script 'a</script >b'}'c'"},
    {u"<script/>x<style />y", u"<script/>'x'<style/>'y'"}, {u"<script>a", u"{script 'a'}"},
    {u"<style> <!-- p{} --> </style>x", u"{style '  p{}  '}'x'"},
    {u"<style>a<!--b<!--c-->d-->e--></style>", u"{style 'abcde-->'}"}, {u"<style>", u"{style ''}"},
    {u"<title>a<b></title>", u"<title>'a'<b></title>"},
    // clang-format on
};

TEST(Parser, Items) {
  for (const TCase& row : kItems) {
    EXPECT_EQ(HtToUtf8(ItemsOf(row.Text)), HtToUtf8(row.Items)) << HtToUtf8(row.Text);
    EXPECT_EQ(ItemsOf(row.Text, kTwice), row.Items) << HtToUtf8(row.Text);
  }
}

// Whatever is cut off, and whether it is read as XML: some items, or the parser's own exception.
TEST(Parser, EveryPieceIsRead) {
  for (const TCase& row : kItems)
    for (size_t i = 0; i < row.Text.size(); ++i) {
      ItemsOf(row.Text.substr(i));
      ItemsOf(row.Text.substr(0, i));
      try {
        ItemsOf(row.Text.substr(i), kXmlCased);
      } catch (const EHtmlParserException&) {}
    }
}

// Plainly written markup is read another way than what is spelled unusually, with the same result.
TEST(Parser, PlainAndUnusualSpellingsAreEqual) {
  const u16string_view kPlainly[] = {
      u"<a b=\"c\">x</a>",
      u"<p class=\"\" id='i'><br></p>",
      u"<div a=\"1\" a='2' b=\"'&gt;\" a>y</div>",
      u"<td colspan=\"2\" nowrap width='3' >z<tr\nb=\"c\"\n>",
      u"<q a=\"b\"c=\"d\"/><h1 x=\"y\" / z=\"w\">",
      u"<script a=\"b\">x&lt;</script><style c=\"d\">z</style>",
      u"<meta charset=\"utf-8\"><a b=\"<>\"><b c=\"\">",
      u"<a long-attribute-name-of-an-author=\"1\" long-attribute-name-of-an-author=\"2\">",
  };
  for (u16string_view text : kPlainly) {
    const u16string items = ItemsOf(text);
    EXPECT_EQ(ItemsOf(WithUpperNames(text)), items) << HtToUtf8(text);
    const std::pair<u16string_view, u16string_view> kSpellings[] = {
        {u"=\"", u" = \""}, {u"=\"", u"=\n\""}, {u"='", u" ='"}, {u"\" ", u"\"\t"}, {u" ", u" \r\n "}};
    for (auto [from, to] : kSpellings)
      EXPECT_EQ(ItemsOf(ReplaceStr(text, from, to)), items) << HtToUtf8(text);
  }
}

TEST(Parser, References) {
  using namespace std::string_view_literals;
  constexpr TCase kTexts[] = {
      // clang-format off
      {u"&lt;&gt;&quot;&amp;&nbsp;", u"<>\"&\u00A0"}, {u"&amp;lt;", u"&lt;"},
      {u"&ampx;y", u"&;y"},  // four and five characters are taken, whatever they are
      {u"&quotxy", u"\"y"}, {u"&nbspx", u"\u00A0x"}, {u"&nbsx;y", u"\u00A0y"},
      {u"&copy;&Eacute;&eacute;&euro;", u"\u00A9\u00C9\u00E9\u20AC"},
      {u"&copy 2020 &copy", u"&copy 2020 &copy"}, {u"&foo;&;&&amp;&", u"&foo;&;&&&"},
      {u"&bne;&zopf;", u"=\xD835\xDD6B"}, {u"&DiacriticalDoubleAcute;", u"\u02DD"},
      {u"&CounterClockwiseContourIntegral;", u"&CounterClockwiseContourIntegral;"},  // too long to be looked up
      {u"&#65;&#x41;&#x6a;&#X41;z", u"AAj\0z"sv}, {u"&#65 b&#65x", u"A bAx"},
      {u"&#65x&#66;y", u"Ay"},  // up to the \";\" that is found
      {u"&#128512;&#x10FFFF;", u"\xD83D\xDE00\xDBFF\xDFFF"},
      {u"&#x110000;|&#99999999999;|&#-5;", u"  |  |  "}, {u"&#xD800;&#0;", u"\xD800\0"sv},
      // clang-format on
  };
  for (const TCase& row : kTexts) {
    const u16string text = u"'" + u16string(row.Items) + u"'";
    EXPECT_EQ(ItemsOf(row.Text), text) << HtToUtf8(row.Text);
    const u16string attribute = u"<p a=" + u16string(row.Items) + u">";
    EXPECT_EQ(ItemsOf(u"<p a='" + u16string(row.Text) + u"'>"), attribute) << HtToUtf8(row.Text);
    EXPECT_EQ(ItemsOf(u"<p a = \"" + u16string(row.Text) + u"\">"), attribute) << HtToUtf8(row.Text);
  }
  EXPECT_EQ(ItemsOf(u"x&amp"), u"'x&'");
}

// Above some number they are sorted at once; the result is that of one by one.
TEST(Parser, ManyAttributes) {
  for (uint32_t count : {1u, 5u, 64u, 65u, 66u, 300u})
    for (uint32_t distinct : {3u, 40u, 1000u}) {
      u16string text = u"<p";
      std::map<u16string, u16string> expected;
      for (uint32_t i = 0; i < count; ++i) {
        const uint32_t random = (i * 2654435761u) >> 8;
        u16string name = u"n";
        for (char digit : std::to_string(random % distinct)) name += static_cast<char16_t>(digit);
        const bool bare = random % 7 == 0;
        u16string value = bare ? name : u16string(1, static_cast<char16_t>(u'a' + random % 26));
        text += u" " + name + (bare ? u"" : u"=\"" + value + u"\"");
        if (!expected.emplace(name, value).second && bare) expected[name] = value;
      }
      u16string items = u"<p";
      for (const auto& [name, value] : expected) items += u" " + name + u"=" + value;
      EXPECT_EQ(ItemsOf(text + u">"), items + u">") << count << " " << distinct;
    }
}

TEST(Parser, XmlMode) {
  constexpr TCase kDocuments[] = {
      // clang-format off
      {u"<Ab Cd='E'>&lt;</Ab>", u"<Ab Cd=E>'<'</Ab>"},
      {u"<script>a<b/></script>", u"<script>'a'<b/></script>"},
      {u"<a b><![CDATA[c]]><?d e?>", u"<a b=b>#'c'?'d e'"}, {u"<a B='1' b='2'/>", u"<a B=1 b=2/>"},
      // clang-format on
  };
  for (const TCase& row : kDocuments)
    EXPECT_EQ(ItemsOf(row.Text, kXmlCased), row.Items) << HtToUtf8(row.Text);
  EXPECT_EQ(ItemsOf(u"<Ab Cd='E'/>", kXml), u"<ab cd=E/>");

  constexpr std::pair<u16string_view, u16string_view> kErrors[] = {
      // clang-format off
      {u"<a b=c>", u"Attribute b value expected but c found. Line 0 position 7"},
      {u"\n\n<a>\n<a b=c d>", u"Attribute b value expected but c found. Line 3 position 13"},
      {u"<a b = />", u"Attribute b value expected but / found. Line 0 position 9"},
      {u"x<1>", u"Invalid tag name 1. Line 0 position 2"},
      {u"<a>\n< a>", u"Invalid tag name  . Line 1 position 5"},
      {u"<", u"Invalid tag name . Line 0 position 1"},
      // clang-format on
  };
  for (const auto& [text, message] : kErrors) try {
      ItemsOf(text, kXml);
      ADD_FAILURE() << HtToUtf8(text);
    } catch (const EHtmlParserException& error) {
      EXPECT_EQ(HtToUtf8(error.Message), HtToUtf8(message)) << HtToUtf8(text);
    }
}

TEST(Tokenizer, TokensAndTheirPlaces) {
  THtObjectDictionary names(16, true, HtNameOffset(&THtStringRec::Value), nullptr);
  THTMLTokenizer tokenizer(u"<P a='b'  />&lt;<!--c-->"_hs, false, false, &names);
  std::string tokens;
  while (tokenizer.NextToken(true)) {
    const THTMLToken& token = tokenizer.Token();
    tokens += HtToUtf8(HtEnumOf<THTMLTokenType>().NameOf(token.CType)) + "'" + HtToUtf8(token.Name) + "'" +
              std::to_string(token.StartPos) + "-" + std::to_string(token.EndPos) + " ";
  }
  // A single blank leaves the name that was there.
  EXPECT_EQ(
      tokens,
      "htTagStart'<'0-1 htIdent'p'1-2 htSpace'p'2-3 htIdent'a'3-4 htEq'='4-5 htString'b'5-8 htSpace'  '8-10 "
      "htTagClose'/'10-11 htTagEnd'>'11-12 htString'<'12-16 htComment'c'16-24 ");
}

}  // namespace
}  // namespace ht
