// Trees to plain text: for readers, and flat for search.

#include "htmlpars/htmlnode.h"
#include "htutils/faststring.h"
#include "htutils/strsearch.h"

namespace ht {

namespace {

constexpr std::u16string_view kLineEnd = u"\r\n";

constexpr THtTagSet kTextBlocks{tgP, tgPre, tgBlockquote, tgLi, tgTr, tgDiv, tgH1, tgH2, tgH3, tgH4, tgH5};
constexpr THtTagSet kBlockParents = kTextBlocks + THtTagSet{tgBody};
constexpr THtTagSet kFlatLines = kTextBlocks + THtTagSet{tgTd, tgTh, tgText};

constexpr bool HasNoText(THTMLTokenType type) { return type >= htScript && type <= htCData; }

// Only blank text stands before the node in its parent.
bool IsFirstVisible(const THtNode& node) {
  for (THtNode* sibling = node.GetParent()->FirstChild(); sibling && sibling != &node;
       sibling = sibling->NextSibling())
    if (!sibling->GetTag().Empty() || !BlankString(sibling->GetContent())) return false;
  return true;
}

}  // namespace

hstring THtmlNode::GetInnerText() {
  if (HasNoText(TagType)) return {};
  hstring text = FTagId == tgBr ? hstring(kLineEnd) : FTagId == tgA || FTagId == tgImg ? hstring() : FContent;
  if (FTagId == tgNoscript) return text;
  if (GetCount() == 1 && text.Empty()) {
    TTreeDepthGuard guard;
    text = static_cast<THtmlNode*>(FirstChild())->GetInnerText();
  } else if (GetCount() > 0) {
    TTreeDepthGuard guard;
    TFastString builder(1024);
    builder.Add(text);
    for (THtNode* node = FirstChild(); node; node = node->NextSibling())
      builder.Add(static_cast<THtmlNode*>(node)->GetInnerText());
    text = builder.GetAsString();
  }
  if (!text.Empty() && kTextBlocks.Contains(FTagId)) {
    const bool inBlock = FParent && kBlockParents.Contains(FParent->GetTagId());
    text = inBlock && IsFirstVisible(*this) ? hstring(HtTrimLeft(text))
                                            : hstring::Concat(kLineEnd, HtTrim(text));
  }
  if ((FTagId == tgTd || FTagId == tgTh) && FParent && FParent->LastChildTag() != this) text += u'\t';
  return text;
}

void THtmlNode::FastInnerText(TFastString& builder) {
  if (FTagId == tgBr) {
    builder.Add(kLineEnd);
  } else if (FTagId == tgA) {
    for (const hstring& name : {u"href"_hs, u"title"_hs}) {
      if (!HasAttribute(name)) continue;
      builder.AddChar(u' ');
      builder.Add(GetAttribute(name));
      builder.AddChar(u' ');
    }
  } else if (FTagId == tgText) {
    builder.AddChar(u' ');
  } else if (!HasNoText(TagType) && FTagId != tgImg) {
    builder.Add(FContent);
  }
  if (FTagId != tgHead && GetCount() > 0) {
    TTreeDepthGuard guard;
    for (THtNode* node = FirstChild(); node; node = node->NextSibling())
      static_cast<THtmlNode*>(node)->FastInnerText(builder);
  }
  if (kFlatLines.Contains(FTagId)) builder.Add(kLineEnd);
}

hstring THtmlNode::GetRawInnerText() {
  if (HasNoText(TagType) || FTagId == tgNoscript || GetCount() == 0) return {};
  TTreeDepthGuard guard;
  TFastString builder(1024);
  for (THtNode* node = FirstChild(); node; node = node->NextSibling())
    builder.Add(static_cast<THtmlNode*>(node)->GetRawInnerText());
  return builder.GetAsString();
}

}  // namespace ht
