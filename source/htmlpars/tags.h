#pragma once

#include "htruntime/enums.h"
#include "htruntime/hstring.h"

namespace ht {

// clang-format off
// Identifier and name of every tag that a rule of the tree builder or of a writer speaks of.
#define HT_TAG_LIST(X)                                                                                  \
  X(Comment, "!") X(Directive, "?") X(A, "a") X(Address, "address") X(Article, "article")               \
  X(Aside, "aside") X(B, "b") X(Base, "base") X(Basefont, "basefont") X(Bgsound, "bgsound")             \
  X(Big, "big") X(Blockquote, "blockquote") X(Body, "body") X(Br, "br") X(Caption, "caption")           \
  X(Center, "center") X(Code, "code") X(Col, "col") X(Colgroup, "colgroup") X(Datapacket, "datapacket") \
  X(Dd, "dd") X(Details, "details") X(Dir, "dir") X(Div, "div") X(Dl, "dl") X(Dt, "dt") X(Em, "em")     \
  X(Fieldset, "fieldset") X(Figcaption, "figcaption") X(Figure, "figure") X(Font, "font")               \
  X(Footer, "footer") X(Foreignobject, "foreignobject") X(Form, "form") X(Frame, "frame")               \
  X(Frameset, "frameset") X(H1, "h1") X(H2, "h2") X(H3, "h3") X(H4, "h4") X(H5, "h5") X(H6, "h6")       \
  X(Head, "head") X(Header, "header") X(Hgroup, "hgroup") X(Hr, "hr") X(Html, "html") X(I, "i")         \
  X(Img, "img") X(Input, "input") X(Li, "li") X(Link, "link") X(Menu, "menu") X(Meta, "meta")           \
  X(Nav, "nav") X(Nobr, "nobr") X(Noframes, "noframes") X(Noscript, "noscript") X(Ol, "ol") X(P, "p")   \
  X(Pre, "pre") X(S, "s") X(Script, "script") X(Section, "section") X(Small, "small") X(Span, "span")   \
  X(Strike, "strike") X(Strong, "strong") X(Style, "style") X(Summary, "summary") X(Table, "table")     \
  X(Tbody, "tbody") X(Td, "td") X(Text, "text") X(Tfoot, "tfoot") X(Th, "th") X(Thead, "thead")         \
  X(Title, "title") X(Tr, "tr") X(Tt, "tt") X(U, "u") X(Ul, "ul") X(Wbr, "wbr") X(Xbody, "xbody")       \
  X(Xhtml, "xhtml")
// clang-format on

/// The tags that rules speak of, so that "is one of these" is one bit test. tgNone: no tag; tgOther: any other.
enum THtTagId : uint8_t {
  tgNone,
  tgOther,
#define HT_TAG_ID(id, name) tg##id,
  HT_TAG_LIST(HT_TAG_ID)
#undef HT_TAG_ID
      tgCount
};
constexpr int HtEnumCount(THtTagId) { return tgCount; }

using THtTagSet = TSet<THtTagId>;

/// The identifier of a tag, compared exactly. `rsHash` is RSHash of the tag in ASCII lower case.
THtTagId HtFindTagId(std::u16string_view tag, uint32_t rsHash);
THtTagId HtFindTagId(const hstring& tag);
/// The name of a known tag, for any but tgNone and tgOther: one text for all documents, without a count.
hstring HtTagName(THtTagId id);

/// Elements without content.
constexpr THtTagSet kVoidTags{tgBr, tgImg, tgLink, tgCol, tgHr, tgFrame, tgInput, tgMeta, tgWbr};

}  // namespace ht
