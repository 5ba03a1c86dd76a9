// Trees to plain text: for readers, and flat for search.

#include <optional>
#include <utility>

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

bool IsBlankText(const THtNode& node) {
  return node.GetTag().Empty() && node.TagType != htCData && BlankString(node.GetContent());
}

// What each child of a node asks about its siblings is worked out once for the walk over all of them.
class TSiblings {
 public:
  explicit TSiblings(const THtNode& parent) : FParent(parent), FOuter(std::exchange(FCurrent, this)) {}
  ~TSiblings() { FCurrent = FOuter; }
  TSiblings(const TSiblings&) = delete;
  TSiblings& operator=(const TSiblings&) = delete;

  // The first child that is more than blank text.
  static const THtNode* FirstVisible(const THtNode& parent) {
    const auto find = [&parent] {
      const THtNode* node = parent.FirstChild();
      while (node && IsBlankText(*node)) node = node->NextSibling();
      return node;
    };
    return IsCurrent(parent) ? Remember(FCurrent->FFirstVisible, find) : find();
  }
  static const THtNode* LastTagged(const THtNode& parent) {
    const auto find = [&parent] { return parent.LastChildTag(); };
    return IsCurrent(parent) ? Remember(FCurrent->FLastTagged, find) : find();
  }

 private:
  static bool IsCurrent(const THtNode& parent) { return FCurrent && &FCurrent->FParent == &parent; }
  template <class TFind>
  static const THtNode* Remember(std::optional<const THtNode*>& answer, const TFind& find) {
    if (!answer) answer = find();
    return *answer;
  }

  static constinit thread_local TSiblings* FCurrent;

  const THtNode& FParent;
  std::optional<const THtNode*> FFirstVisible, FLastTagged;
  TSiblings* FOuter;
};

constinit thread_local TSiblings* TSiblings::FCurrent = nullptr;

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
    TSiblings children(*this);
    TFastString builder(1024);
    builder.Add(text);
    for (THtNode* node = FirstChild(); node; node = node->NextSibling())
      builder.Add(static_cast<THtmlNode*>(node)->GetInnerText());
    text = builder.GetAsString();
  }
  if (!text.Empty() && kTextBlocks.Contains(FTagId)) {
    const bool inBlock = FParent && kBlockParents.Contains(FParent->GetTagId());
    text = inBlock && TSiblings::FirstVisible(*FParent) == this ? hstring(HtTrimLeft(text))
                                                                : hstring::Concat(kLineEnd, HtTrim(text));
  }
  if ((FTagId == tgTd || FTagId == tgTh) && FParent && TSiblings::LastTagged(*FParent) != this) text += u'\t';
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
