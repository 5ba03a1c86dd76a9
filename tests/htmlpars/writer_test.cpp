#include <gtest/gtest.h>

#include "htmlpars/parser.h"
#include "htutils/fastrawstring.h"
#include "treenotation.h"

namespace ht {
namespace {

struct TCase {
  std::u16string_view Html, Output;
};

hstring Formatted(THtmlNode& node, int32_t level, int32_t indent, const hstring& charset = {}) {
  TFastString builder(64);
  builder.Charset = charset;
  bool newLine = false;
  node.FastFormattedHTML(builder, level, indent, newLine);
  return builder.GetAsString();
}

TEST(Writer, Compact) {
  constexpr TCase kCases[] = {
      // clang-format off
      {u"", u""},
      {u"a&b<i>\u00E9\u2019\u03B1\u00A0&#1;&#128512;</i>", u"a&amp;b<i>\u00E9\u2019\u03B1&nbsp;&#1;&#x01F600;</i>"},
      {u"<p></p><p id=x></p><br><br class=x><hr/>", u"<p></p><p id=\"x\"></p><br/><br class=\"x\"/><hr/>"},
      {u"<img src=x>y</img>", u"<img src=\"x\"/>y"},
      {u"<input disabled value=DISABLED>", u"<input disabled value=\"DISABLED\"/>"},
      {u"<p a='\"&<>\t&nbsp;' b=\"'\" c=\u2122>", u"<p a=\"&quot;&amp;&lt;&gt;&#9;&nbsp;\" b=\"'\" c=\"\u2122\"></p>"},
      {u"<script a b=c>x<y&&z</script><style>p>q{}</style>", u"<script a=\"a\" b=\"c\">x<y&&z</script><style>p>q{}</style>"},
      {u"<!-- c --><?d e?><![CDATA[f<]]>", u"<!-- c --><?d e?><![CDATA[f<]]>"},
      {u"<div> <p> x </p>\r\n</div>", u"<div> <p> x </p>\r\n</div>"},
      {u"<meta HTTP-EQUIV=Content-TYPE content='text/html; charset=koi8-r' id=x>", u"<meta http-equiv=\"Content-Type\" content=\"text/html;\"/>"},
      {u"<meta name=a content=b><meta charset=utf-8>", u"<meta content=\"b\" name=\"a\"/><meta charset=\"utf-8\"/>"},
      // clang-format on
  };
  for (const TCase& row : kCases) {
    THtmlNode root, again;
    root.Parse(row.Html);
    EXPECT_EQ(HtToUtf8(root.GetInnerHTML()), HtToUtf8(row.Output)) << HtToUtf8(row.Html);
    EXPECT_EQ(root.GetOuterHTML(), u"<body>" + std::u16string(row.Output) + u"</body>");
    again.Parse(row.Output);
    EXPECT_EQ(again.GetInnerHTML(), row.Output);
  }
}

TEST(Writer, NodesThatHostsRename) {
  THtmlNode root;
  root.Parse(u"<body a=b>x<body></body></body>");
  EXPECT_EQ(root.GetOuterHTML(), u"<body a=\"b\">x<body></body></body>");
  for (THtNode* node = root.FindNode(u"body"); node; node = root.FindNode(u"body")) node->SetTag(u"xbody");
  EXPECT_EQ(root.GetOuterHTML(), u"<body a=\"b\">x<body></body></body>");
  EXPECT_EQ(Formatted(root, -1, 1), u"\r\n<body a=\"b\">\r\n x<body></body>\r\n</body>");
  static_cast<THtmlNode*>(root.FirstChild())->SetInnerText(u"");
  EXPECT_EQ(root.GetOuterHTML(), u"<body a=\"b\"></body>");
}

TEST(Writer, CharsetOfTheBuilder) {
  THtmlNode root;
  root.Parse(u"<meta http-equiv=content-type content=x>");
  TFastString builder(64);
  builder.Charset = u"windows-1251";
  root.FastInnerHTML(builder);
  const hstring meta = u"<meta http-equiv=\"Content-Type\" content=\"text/html; charset=windows-1251\"/>";
  EXPECT_EQ(builder.GetAsString(), u"<body>" + meta + u"</body>");
  EXPECT_EQ(Formatted(root, -1, 2, u"windows-1251"), u"\r\n" + meta);
}

TEST(Writer, AttributeLists) {
  THtAttributes list;
  list.Add(u"checked", u"checked");
  list.Add(u"t", u"\u00A0\u00E9<\"");
  for (bool caseSensitive : {false, true}) {
    list.CaseSensitive = caseSensitive;
    const hstring space = caseSensitive ? u"&#160;"_hs : u"&nbsp;"_hs;
    TFastString builder(16);
    list.FastAsString(builder);
    TFastRawString bytes(16);
    list.FastAsUTF8String(bytes);
    const hstring value = u" t=\"" + space + u"\u00E9&lt;&quot;\"";
    EXPECT_EQ(builder.GetAsString(), (caseSensitive ? u" checked=\"checked\""_hs : u" checked"_hs) + value);
    EXPECT_EQ(HtFromUtf8(bytes.GetAsString()), u" checked=\"checked\"" + value);
    EXPECT_EQ(list.AsString(), u"checked=\"checked\" t=\"&nbsp;\u00E9&lt;&quot;\"");
  }
}

TEST(Writer, FormattedPages) {
  // With two blanks a level, from level 0; "|" is CR LF.
  constexpr TCase kCases[] = {
      // clang-format off
      {u"", u"<body></body>"}, {u"x", u"x"}, {u" <p>a</p> <p>b", u"|<p>a</p>|<p>b</p>"},
      {u"a <b>c</b> d<p>e", u"|a <b>c</b> d|<p>e</p>"},
      {u"<div>a<p>b</p> c </div>", u"|<div>|  a|  <p>b</p>|  c|</div>"},
      {u"<div><b>x</b> <i>y</i></div>", u"|<div>|  <b>x</b> <i>y</i>|</div>"},
      {u"<ul><li>1<li>2<b>3</b></ul>", u"|<ul>|  <li>1</li>|  <li>|    2<b>3</b>|  </li>|</ul>"},
      // A text stays on the line of its start tag while they are below 64 characters, CR LF and blanks before the
      // tag included.
      {u"<p>01234567890123456789012345678901234567890123456789012345678", u"|<p>01234567890123456789012345678901234567890123456789012345678</p>"},
      {u"<p> 012345678901234567890123456789012345678901234567890123456789", u"|<p>|  012345678901234567890123456789012345678901234567890123456789|</p>"},
      {u"<p></p><div></div><br><hr><hr id=x>", u"|<p></p>|<div></div>|<br/>|<hr/>|<hr id=\"x\"/>"},
      {u"<p>x</p><br><i></i><br id=y>z", u"|<p>x</p>|<br/>|<i></i>|<br id=\"y\"/>z"},
      {u"<div><!--c--><p>x</p><!--d-->y</div>", u"|<div>|  <!--c-->||  <p>x</p>|  <!--d-->|  y|</div>"},
      {u"x<!--c-->y<![CDATA[d]]>", u"|x<!--c-->y<![CDATA[d]]>"}, {u"x  <?d?>y", u"|x|<?d?>|y"},
      {u"<head><script> a|b </script></head>", u"|<head>|  <script>|a|b|  </script>|</head>"},
      {u"<div><style a=b>p{}|</style>x", u"|<div>|  <style a=\"b\">|p{}|  </style>|  x|</div>"},
      {u"<table><tr><td>a<td><b>c</b></table>", u"|<table>|  <tr>|    <td>a</td>|    <td>|      <b>c</b>|    </td>|  </tr>|</table>"},
      // clang-format on
  };
  const auto lines = [](std::u16string_view text) {
    std::u16string result;
    for (char16_t c : text) c == u'|' ? result.append(u"\r\n") : result.append(1, c);
    return result;
  };
  for (const TCase& row : kCases) {
    THtmlNode root;
    root.Parse(lines(row.Html));
    EXPECT_EQ(HtToUtf8(Formatted(root, -1, 2)), HtToUtf8(lines(row.Output))) << HtToUtf8(row.Html);
  }
}

TEST(Writer, InnerText) {
  constexpr TCase kCases[] = {
      // clang-format off
      {u"", u""}, {u"<div>a</div><div>b</div>", u"a\r\nb"}, {u" \r\n<div> a </div> <p>b ", u"a  \r\nb"},
      {u"x<div>a</div><!--c--><div>b", u"x\r\na\r\nb"}, {u"<!--c--><div>a", u"\r\na"},
      {u"<div><p>a</p><p>b</p></div><h5>c</h5><h6>d</h6>", u"a\r\nb\r\ncd"},
      {u"<ul><li>a<li>b</ul>", u"\r\na\r\nb"}, {u"a<br>b<img alt=x>c<a href=y>d</a>", u"a\r\nbcd"},
      {u"<table><tr><td>a<td>b<tr><th>c</table>", u"\r\na\tb\r\nc"},
      {u"<table><tr><td>a</td>x</table>", u"\r\nax"}, {u"<table><tr><td>a</td><!--x-->y</table>", u"\r\na\ty"},
      {u"a<script>x</script><style>y</style><noscript>z</noscript><![CDATA[w]]><?v?>b", u"ab"},
      {u"<p> </p><p></p>x", u"x"}, {u"<span>  a \r\n b</span>", u"  a \r\n b"},
      // clang-format on
  };
  for (const TCase& row : kCases) {
    THtmlNode root;
    root.Parse(row.Html);
    EXPECT_EQ(HtToUtf8(root.GetInnerText()), HtToUtf8(row.Output)) << HtToUtf8(row.Html);
    EXPECT_EQ(root.GetRawInnerText(), u"");
  }
}

TEST(Writer, FlatText) {
  constexpr TCase kCases[] = {
      // clang-format off
      {u"", u""}, {u"<head><title>t</title></head>x", u"x"},
      {u"a<br>b<a title=t href=u>c</a><a>d</a>", u"a\r\nb u  t cd"},
      {u"<table><tr><td>a<th>b</table>", u"a\r\nb\r\n\r\n"},
      {u"<p>a<h6>b</h6><h5>c</h5><div></div>", u"a\r\nbc\r\n\r\n"}, {u"<text>a</text>b", u" a\r\nb"},
      {u"a<script>x</script><noscript>y</noscript><!--z--><![CDATA[w]]><img>", u"ay"},
      // clang-format on
  };
  for (const TCase& row : kCases) {
    THtmlNode root;
    root.Parse(row.Html);
    TFastString builder(16);
    root.FastInnerText(builder);
    EXPECT_EQ(HtToUtf8(builder.GetAsString()), HtToUtf8(row.Output)) << HtToUtf8(row.Html);
  }
}

TEST(Writer, TextContentAndRecoding) {
  THtmlNode root;
  root.Parse(u"a<b title='\u00D0\u00B1'>\u00D0\u00B1<!--\u00D0\u00B1--></b><script>\u00D0\u00B1</script>");
  EXPECT_EQ(root.TextContent(), u"a\u00D0\u00B1\u00D0\u00B1\u00D0\u00B1");
  root.ChangeEncoding(heUTF16, 0);
  root.ChangeEncoding(heANSI, 0);
  EXPECT_EQ(root.TextContent(), u"a\u00D0\u00B1\u00D0\u00B1\u00D0\u00B1");
  root.ChangeEncoding(heUTF8, 0);
  EXPECT_EQ(Notation(root), "body('a', b[title=б]('б', !'б'), script('б'))");
}

}  // namespace
}  // namespace ht
