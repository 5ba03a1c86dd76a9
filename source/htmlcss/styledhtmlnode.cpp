#include "htmlcss/styledhtmlnode.h"

#include "htmlcss/elementstyle.h"
#include "htmlcss/subtreewalk.h"

namespace ht {

namespace {

constexpr hstring kLang = u"lang"_hs;
constexpr hstring kEnglish = u"en"_hs;
constexpr hstring kArial = u"Arial"_hs;
constexpr float kNoSize = 0;

bool IsInline(const TStyledHTMLNode& node) { return !node.FStyle || node.FStyle->FDisplay == dsInline; }

}  // namespace

TStyledHTMLNode::TStyledHTMLNode() = default;
TStyledHTMLNode::TStyledHTMLNode(const hstring& tag) : THtmlNode(tag) {}

const float& TStyledHTMLNode::GetViewPortWidth() const { return kNoSize; }
const float& TStyledHTMLNode::GetViewPortHeight() const { return kNoSize; }
hstring TStyledHTMLNode::DefaultFontFamily() const { return kArial; }

void TStyledHTMLNode::CreateStyle() {
  const TClass* styleClass = GetStyleClass();
  if (!styleClass) return;
  FStyle.reset(static_cast<TBaseElementStyle*>(styleClass->NewInstance().release()));
  FStyle->FElement = this;
}

void TStyledHTMLNode::ResetStyle(bool clearLast) {
  if (FStyle) FStyle->Reset(clearLast);
}

void TStyledHTMLNode::StyleChanged(bool) { Flags.Exclude(efStyleCalculated); }

void TStyledHTMLNode::FindContainer() {
  TStyledHTMLNode* found = FParent ? GetParent() : this;
  while (found->FParent && IsInline(*found) && !(found->FStyle && found->FStyle->Float() != fNone))
    found = found->GetParent();
  if (found == Container) return;
  Container = found;
  SetContainer();
}

TStyledHTMLNode* TStyledHTMLNode::RootNodeElement() {
  THtNode* html = UpTo(HtTagName(tgHtml));
  return static_cast<TStyledHTMLNode*>(html ? html : Root());
}

void TStyledHTMLNode::SetFlag(TElementFlag flag, bool on, bool down, bool up, const TStyledHTMLNode* except) {
  const auto change = [flag, on](TStyledHTMLNode& node) {
    on ? node.Flags.Include(flag) : node.Flags.Exclude(flag);
  };
  if (flag == efCompletelyDrawn && on && down && !up && Flags.Contains(flag)) return;
  if (up)
    for (TStyledHTMLNode* node = this; node && node != except;) {
      node = node->GetParent();
      if (node) change(*node);
    }
  HtVisitSubtree(*this, [=, this](TStyledHTMLNode& node) {
    if (&node != this && flag == efCompletelyDrawn && on && node.Flags.Contains(flag)) return false;
    change(node);
    if (!down || &node == except) return false;
    for (TStyledHTMLNode* generated : {node.Before, node.After})
      if (generated) generated->SetFlag(flag, on, true, false, except);
    return true;
  });
}

uint32_t TStyledHTMLNode::BackgroundColor() const {
  for (const TStyledHTMLNode* node = this; node; node = node->GetParent()) {
    if (node->FStyle && node->FStyle->BackgroundPresent()) return node->FStyle->BackgroundColor();
    if (!IsInline(*node)) break;
  }
  return 0;
}

hstring TStyledHTMLNode::Lang() const {
  for (const TStyledHTMLNode* node = this; node; node = node->GetParent())
    if (hstring lang = node->GetAttribute(kLang); !lang.Empty()) return lang;
  return kEnglish;
}

}  // namespace ht
