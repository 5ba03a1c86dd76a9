#include "htmlpars/htmlencode.h"

#include <gtest/gtest.h>

#include "htmlpars/entityreverse.h"
#include "htutils/faststring.h"

using namespace ht;

namespace {

template <class TAppend>
hstring Appended(TAppend append, std::u16string_view text) {
  TFastString builder(16);
  append(builder, text);
  return builder.GetAsString();
}

// The three forms of a text, each through the function and the builder, with and without a count.
void ExpectForms(const hstring& text, std::u16string_view inText, std::u16string_view inAttr,
                 std::u16string_view numeric) {
  SCOPED_TRACE(HtToUtf8(text));
  EXPECT_EQ(HtmlEncode(text), inText);
  EXPECT_EQ(HtmlEncodeAttr(text), inAttr);
  EXPECT_EQ(HtmlEncodeAttrNumeric(text), numeric);
  EXPECT_EQ(HtmlEncodeNodeOverhead(text), static_cast<int64_t>(inText.size()) - text.Length());
  EXPECT_EQ(HtmlEncodeAttrOverhead(text), static_cast<int64_t>(inAttr.size()) - text.Length());
  EXPECT_EQ(HtmlEncode(text, HtmlEncodeNodeOverhead(text)), inText);
  EXPECT_EQ(HtmlEncodeAttr(text, HtmlEncodeAttrOverhead(text)), inAttr);
  EXPECT_EQ(Appended(HtAppendEncoded, text), inText);
  EXPECT_EQ(Appended(HtAppendEncodedAttr, text), inAttr);
  EXPECT_EQ(Appended(HtAppendEncodedAttrNumeric, text), numeric);
}

}  // namespace

TEST(HtmlEncode, Forms) {
  const struct {
    hstring Text;
    std::u16string_view InText, InAttr;
  } kCases[] = {
      {u""_hs, u"", u""},
      {u"plain, with more than eight units"_hs, u"plain, with more than eight units",
       u"plain, with more than eight units"},
      {u"a&b"_hs, u"a&amp;b", u"a&amp;b"},
      {u"<p class=\"x\" id='y'>"_hs, u"&lt;p class=\"x\" id='y'&gt;",
       u"&lt;p class=&quot;x&quot; id='y'&gt;"},
      {hstring(u"\0\1\x8|\t\n\r|"_hs), u"&#0;&#1;&#8;|\t\n\r|", u"&#0;&#1;&#8;|&#9;\n\r|"},
      {u"&amp;&&&"_hs, u"&amp;amp;&amp;&amp;&amp;", u"&amp;amp;&amp;&amp;&amp;"},
      {u"\u00E9\u2019\u03B1\u0416"_hs, u"\u00E9\u2019\u03B1\u0416", u"\u00E9\u2019\u03B1\u0416"},
      {u"\u223C \u2190 \u02C6 \uFB01"_hs, u"&nvsim; &larr; &circ; &filig;", u"\u223C \u2190 \u02C6 \uFB01"},
      {u"\u20A0 \u4E2D\u6587 \uFFFF"_hs, u"\u20A0 \u4E2D\u6587 \uFFFF", u"\u20A0 \u4E2D\u6587 \uFFFF"},
      {u"x\U0001F600\U00010000\U0010FFFFy"_hs, u"x&#x01F600;&#x010000;&#x10FFFF;y",
       u"x\U0001F600\U00010000\U0010FFFFy"},
      {u"\xD83D"_hs, u"\xD83D", u"\xD83D"},
      {u"a\xD83D<"_hs, u"a\xD83D&lt;", u"a\xD83D&lt;"},
      {u"\xDE00\xD83D\xD83D\xDE00"_hs, u"\xDE00\xD83D&#x01F600;", u"\xDE00\xD83D\xD83D\xDE00"},
  };
  for (const auto& c : kCases) ExpectForms(c.Text, c.InText, c.InAttr, c.InAttr);
  ExpectForms(u"a\u00A0b"_hs, u"a&nbsp;b", u"a&nbsp;b", u"a&#160;b");
}

// Every unit at every place of a block, against the rule for one unit.
TEST(HtmlEncode, BlockwiseAndPlainPathAgree) {
  const std::u16string pad(16, u'x');
  for (uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
    const auto c = static_cast<char16_t>(unit);
    const PHtmlEntity row = unit > 255 ? HtEntityReverseDictionary().FindEntity(unit) : nullptr;
    const bool digits = unit <= 8;
    const std::u16string expected = digits ? u"&#" + std::u16string(1, static_cast<char16_t>(u'0' + c)) + u";"
                                    : c == u'&' ? u"&amp;"
                                    : c == u'<' ? u"&lt;"
                                    : c == u'>' ? u"&gt;"
                                    : c == 0xA0 ? u"&nbsp;"
                                    : row       ? u"&" + std::u16string(row->Name.View()) + u";"
                                                : std::u16string(1, c);
    const size_t place = unit % 8;
    std::u16string text = pad;
    text[place] = c;
    ASSERT_EQ(HtmlEncode(hstring(text)), pad.substr(0, place) + expected + pad.substr(place + 1))
        << std::hex << unit;
    ASSERT_EQ(HtmlEncode(hstring(1, c)), expected) << std::hex << unit;
    const hstring alone = HtmlEncodeAttr(hstring(1, c));
    ASSERT_EQ(HtmlEncodeAttr(hstring(text)), pad.substr(0, place) + alone + pad.substr(place + 1))
        << std::hex << unit;
  }
}

TEST(HtmlEncode, NothingToEscapeGivesTheTextItself) {
  const hstring text(u"nothing here \u00E9\u4E2D");
  EXPECT_TRUE(HtmlEncode(text).SameStorage(text));
  EXPECT_TRUE(HtmlEncodeAttr(text).SameStorage(text));
}

TEST(HtmlEncode, WrongOverheadStillEscapes) {
  for (int64_t overhead : {1, 2, 7, 8, 9, 100})
    EXPECT_EQ(HtmlEncode(u"<&a&>"_hs, overhead), u"&lt;&amp;a&amp;&gt;");
}
