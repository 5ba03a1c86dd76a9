// Trees back to text: compact and formatted HTML.

#include <iterator>

#include "htmlpars/htmlencode.h"
#include "htmlpars/htmlnode.h"
#include "htmlpars/lower.h"
#include "htutils/fastrawstring.h"
#include "htutils/faststring.h"
#include "htutils/strsearch.h"

namespace ht {

namespace {

constexpr int32_t kChunk = 65500;
constexpr std::u16string_view kLineEnd = u"\r\n";

// A text this short stays on the line of its start tag.
constexpr int32_t kMaxInlineShort = 64;

constexpr THtTagSet kBlocks{tgHtml,     tgAddress,  tgBlockquote, tgHead,     tgBody,
                            tgXbody,    tgDd,       tgDiv,        tgDl,       tgDt,
                            tgFieldset, tgForm,     tgMeta,       tgLink,     tgTitle,
                            tgFrame,    tgFrameset, tgH1,         tgH2,       tgH3,
                            tgH4,       tgH5,       tgH6,         tgNoframes, tgOl,
                            tgP,        tgUl,       tgCenter,     tgDir,      tgHr,
                            tgMenu,     tgPre,      tgDatapacket, tgLi,       tgTable,
                            tgTr,       tgTd,       tgTh,         tgThead,    tgTbody,
                            tgTfoot,    tgCol,      tgColgroup,   tgCaption,  tgForeignobject,
                            tgXhtml};

void AddLineEnd(TFastString& builder) {
  if (!builder.EndsWith(kLineEnd)) builder.Add(kLineEnd);
}

// A nested "body" that was renamed is written under its own name.
std::u16string_view WrittenTag(const THtNode& node) {
  return node.GetTagId() == tgXbody ? std::u16string_view(u"body") : node.GetTag().View();
}

void AddOpener(TFastString& builder, std::u16string_view tag) {
  builder.AddChar(u'<');
  builder.Add(tag);
}

void AddEndTag(TFastString& builder, const THtNode& node) {
  builder.Add2Char(u'<', u'/');
  builder.Add(WrittenTag(node));
  builder.AddChar(u'>');
}

// Behind the attributes of an element without children.
void AddEmptyEnd(TFastString& builder, const THtNode& node) {
  if (kVoidTags.Contains(node.GetTagId())) {
    builder.Add2Char(u'/', u'>');
  } else {
    builder.AddChar(u'>');
    AddEndTag(builder, node);
  }
}

}  // namespace

void THtAttributes::FastAsString(TFastString& builder) const {
  for (int32_t i = 0; i < Count; ++i) {
    const THtAttribute& item = List[static_cast<size_t>(i)];
    builder.AddChar(u' ');
    builder.Add(item.Name);
    if (!CaseSensitive && item.Name == item.Value) continue;
    builder.Add2Char(u'=', u'"');
    CaseSensitive ? HtAppendEncodedAttrNumeric(builder, item.Value)
                  : HtAppendEncodedAttr(builder, item.Value);
    builder.AddChar(u'"');
  }
}

void THtAttributes::FastAsUTF8String(TFastRawString& builder) const {
  for (int32_t i = 0; i < Count; ++i) {
    const THtAttribute& item = List[static_cast<size_t>(i)];
    builder.AddChar(' ');
    builder.AddUTF8(item.Name);
    builder.Add2Char('=', '"');
    builder.AddUTF8(CaseSensitive ? HtmlEncodeAttrNumeric(item.Value) : HtmlEncodeAttr(item.Value));
    builder.AddChar('"');
  }
}

hstring THtAttributes::AsString() const {
  TFastString builder(128);
  for (int32_t i = 0; i < Count; ++i) {
    const THtAttribute& item = List[static_cast<size_t>(i)];
    if (i > 0) builder.AddChar(u' ');
    builder.Add(item.Name);
    builder.Add2Char(u'=', u'"');
    HtAppendEncodedAttr(builder, item.Value);
    builder.AddChar(u'"');
  }
  return builder.GetAsString();
}

hstring THtmlNode::GetOuterHTML() {
  TFastString builder(kChunk);
  FastInnerHTML(builder);
  return builder.GetAsString();
}

hstring THtmlNode::GetInnerHTML() {
  TFastString builder(kChunk);
  for (THtNode* node = FirstChild(); node; node = node->NextSibling())
    static_cast<THtmlNode*>(node)->FastInnerHTML(builder);
  return builder.GetAsString();
}

// Comments, directives and CDATA sections. False for any other node.
bool THtmlNode::WriteMarkedContent(TFastString& builder) const {
  struct TMarks {
    std::u16string_view Start, End;
  };
  static constexpr TMarks kMarks[] = {{u"<!--", u"-->"}, {u"<?", u"?>"}, {u"<![CDATA[", u"]]>"}};
  static_assert(htDirective == htComment + 1 && htCData == htComment + 2);
  const THTMLTokenType kind = FTagId == tgComment ? htComment : FTagId == tgDirective ? htDirective : TagType;
  if (kind < htComment || kind > htCData) return false;
  const TMarks& marks = kMarks[kind - htComment];
  builder.Add(marks.Start);
  builder.Add(FContent);
  builder.Add(marks.End);
  return true;
}

// The start tag of a script or style.
void THtmlNode::WriteRawOpener(TFastString& builder) const {
  AddOpener(builder, FTag);
  if (FAttributes && FAttributes->Count > 0) {
    builder.AddChar(u' ');
    builder.Add(FAttributes->AsString());
  }
  builder.AddChar(u'>');
}

bool THtmlNode::IsContentTypeMeta() const {
  return FTagId == tgMeta && HtSameAscii(GetAttribute(u"http-equiv"_hs), u"content-type");
}

void THtmlNode::WriteAttributes(TFastString& builder) const {
  if (!FAttributes) return;
  if (!IsContentTypeMeta()) return FAttributes->FastAsString(builder);
  if (builder.Charset.Empty()) {
    builder.Add(u" http-equiv=\"Content-Type\" content=\"text/html;\"");
  } else {
    builder.Add(u" http-equiv=\"Content-Type\" content=\"text/html; charset=");
    builder.Add(builder.Charset);
    builder.AddChar(u'"');
  }
}

void THtmlNode::FastInnerHTML(TFastString& builder) {
  if (FTag.Empty()) {
    if (!WriteMarkedContent(builder)) HtAppendEncoded(builder, FContent);
    if (FParent) return;
  } else if (FTagId == tgStyle || FTagId == tgScript) {
    WriteRawOpener(builder);
    builder.Add(FContent);
    return AddEndTag(builder, *this);
  } else if ((FTagId == tgComment || FTagId == tgDirective) && GetCount() == 0) {
    WriteMarkedContent(builder);
    return;
  } else {
    AddOpener(builder, WrittenTag(*this));
    WriteAttributes(builder);
    if (GetCount() == 0) return AddEmptyEnd(builder, *this);
    builder.AddChar(u'>');
  }
  TTreeDepthGuard guard;
  for (THtNode* node = FirstChild(); node; node = node->NextSibling())
    static_cast<THtmlNode*>(node)->FastInnerHTML(builder);
  if (!FTag.Empty()) AddEndTag(builder, *this);
}

// Formatted. A block boundary puts what follows on a line of its own, which is begun only when something is written.

void THtmlNode::FormatText(TFastString& builder, int32_t pad, bool& newLine) const {
  if (newLine && BlankString(FContent)) return;
  if (newLine) {
    AddLineEnd(builder);
    builder.AddSpaces(pad);
    HtAppendEncoded(builder, HtTrimLeft(FContent));
  } else {
    HtAppendEncoded(builder, FContent);
  }
  newLine = false;
}

// Comments, directives, CDATA sections. False for any other node.
bool THtmlNode::FormatMarkedContent(TFastString& builder, int32_t pad, bool& newLine) const {
  if (TagType == htComment) {
    if (newLine && !builder.EndsWith(kLineEnd)) {
      builder.Add(kLineEnd);
      builder.AddSpaces(pad);
    }
    WriteMarkedContent(builder);
    if (newLine) builder.Add(kLineEnd);
    return true;
  }
  if (TagType == htDirective) {
    builder.TrimTrailingSpaces();
    AddLineEnd(builder);
    WriteMarkedContent(builder);
    builder.Add(kLineEnd);
    return newLine = true;
  }
  return WriteMarkedContent(builder);
}

void THtmlNode::FormatRawElement(TFastString& builder, int32_t pad, bool& newLine) const {
  AddLineEnd(builder);
  builder.AddSpaces(pad);
  WriteRawOpener(builder);
  builder.Add(kLineEnd);
  const std::u16string_view content = HtTrimLeft(FContent);
  builder.Add(content);
  if (!content.ends_with(kLineEnd)) builder.Add(kLineEnd);
  builder.AddSpaces(pad);
  AddEndTag(builder, *this);
  newLine = true;
}

void THtmlNode::FormatChildren(TFastString& builder, int32_t level, int32_t indent, bool& newLine) {
  TTreeDepthGuard guard;
  for (THtNode* node = FirstChild(); node; node = node->NextSibling())
    static_cast<THtmlNode*>(node)->FastFormattedHTML(builder, level, indent, newLine);
}

void THtmlNode::FastFormattedHTML(TFastString& builder, int32_t level, int32_t indent, bool& newLine) {
  const int32_t pad = level * indent;
  const bool block = kBlocks.Contains(FTagId);
  if (FTag.Empty()) {
    if (!FormatMarkedContent(builder, pad, newLine)) FormatText(builder, pad, newLine);
    if (FParent) return;
  }
  if (FTagId == tgScript || FTagId == tgStyle) return FormatRawElement(builder, pad, newLine);
  if (!FAttributes && !FNodes && !FTag.Empty()) {
    if ((FTagId == tgComment || FTagId == tgDirective) && FormatMarkedContent(builder, pad, newLine)) return;
    if (newLine) {
      builder.Add(kLineEnd);
      builder.AddSpaces(pad);
    }
    AddOpener(builder, WrittenTag(*this));
    return AddEmptyEnd(builder, *this);
  }

  const int64_t start = builder.GetTotalLen();
  if (FParent) {
    if (newLine || block) {
      builder.Add(kLineEnd);
      builder.AddSpaces(pad);
    }
    AddOpener(builder, WrittenTag(*this));
    WriteAttributes(builder);
  }
  const int64_t written = builder.GetTotalLen() - start;
  newLine = block;
  if (GetCount() > 0) {
    if (FParent) builder.AddChar(u'>');
    const bool inlineShort = GetCount() == 1 && GetNode(0)->GetTag().Empty() &&
                             written + std::ssize(HtTrim(GetNode(0)->GetContent())) < kMaxInlineShort;
    if (inlineShort) newLine = false;
    FormatChildren(builder, level + 1, indent, newLine);
    if (FParent) {
      if (block) builder.TrimTrailingBlanks();
      if (block && !inlineShort) {
        builder.Add(kLineEnd);
        builder.AddSpaces(pad);
      }
      AddEndTag(builder, *this);
    }
  } else if (FParent) {
    AddEmptyEnd(builder, *this);
  }
  newLine = block;
}

}  // namespace ht
