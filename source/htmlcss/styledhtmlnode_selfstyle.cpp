// The declarations of a node itself: its `style` attribute, those made from other attributes, and changes by script.

#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlcss/stylesheet.h"
#include "htmlcss/subtreewalk.h"
#include "htutils/strsearch.h"

namespace ht {

namespace {

constexpr hstring kStyle = u"style"_hs;

void AddRule(TCSSStyleSheet& sheet, const hstring& declarations, int32_t weight) {
  if (!BlankString(declarations)) sheet.Parse(u"*{" + declarations + u"}", weight);
}

// One holder less; the last one frees it.
void LetGo(TCSSStyleSheet* sheet) {
  if (!sheet) return;
  if (sheet->RefCounter > 0)
    --sheet->RefCounter;
  else
    delete sheet;
}

bool HasValue(const TCSSStyleSheet& sheet, const hstring& name) {
  for (int32_t i = 0; i < sheet.fSections.GetCount(); ++i)
    if (sheet.GetSection(i)->ItembyName(name)) return true;
  return false;
}

// What the style was is kept for the comparison with what it becomes; the next pass starts afresh.
void KeepLastProps(TBaseElementStyle* style) {
  if (style && style->FLastProps.empty()) style->SaveLastProps();
}

void DropProps(TBaseElementStyle* style) {
  if (!style) return;
  style->PropertySet = {};
  style->FProps.clear();
}

}  // namespace

TStyledHTMLNode::~TStyledHTMLNode() { LetGo(SelfStyleSheet); }

std::unique_ptr<TCSSStyleSheet> TStyledHTMLNode::NewSelfStyleSheet() const {
  auto sheet = std::make_unique<TCSSStyleSheet>();
  AddRule(*sheet, GetAttribute(kStyle), kCSSSelfWeight);
  AddRule(*sheet, FVirtualSelfStyle, kCSSSelfWeight);
  return sheet;
}

// The style points into the sheet that goes.
void TStyledHTMLNode::ClearSelfStyleSheet() {
  if (SelfStyleSheet) {
    KeepLastProps(FStyle.get());
    DropProps(FStyle.get());
    LetGo(std::exchange(SelfStyleSheet, nullptr));
  }
  Flags.Exclude(efSelfStyleProcessed);
}

void TStyledHTMLNode::ShareSelfStyle(const TStyledHTMLNode& other) {
  TCSSStyleSheet* shared = other.SelfStyleSheet;
  if (shared == SelfStyleSheet) return;
  ClearSelfStyleSheet();
  if (!shared) return;
  ++shared->RefCounter;
  SelfStyleSheet = shared;
  Flags.Include(efSelfStyleProcessed);
}

void TStyledHTMLNode::UniqueSelfStyle() {
  if (!SelfStyleSheet || SelfStyleSheet->RefCounter == 0) return;
  std::unique_ptr<TCSSStyleSheet> own = NewSelfStyleSheet();
  KeepLastProps(FStyle.get());
  DropProps(FStyle.get());
  LetGo(std::exchange(SelfStyleSheet, own.release()));
}

// A sheet that nobody else holds, which the caller is about to change.
TCSSStyleSheet& TStyledHTMLNode::ChangeableSelfStyle() {
  KeepLastProps(FStyle.get());
  if (SelfStyleSheet) {
    UniqueSelfStyle();
  } else {
    SelfStyleSheet = NewSelfStyleSheet().release();
    Flags.Include(efSelfStyleProcessed);
  }
  return *SelfStyleSheet;
}

void TStyledHTMLNode::SelfStyleChanged(bool setAttribute) {
  // The sheet has what the attribute says, so the attribute is not read again.
  if (setAttribute) THtmlNode::SetAttribute(kStyle, SelfStyleSheet->AsInlineString());
  StyleChanged(true);
  DropProps(FStyle.get());
}

void TStyledHTMLNode::AddCSS(const hstring& text, bool setAttribute, int32_t weight) {
  AddRule(ChangeableSelfStyle(), text, weight == 0 ? kCSSSelfWeight : weight);
  SelfStyleChanged(setAttribute);
}

void TStyledHTMLNode::ClearCSS(const hstring& name, bool setAttribute) {
  if (!SelfStyleSheet || !HasValue(*SelfStyleSheet, name)) return;
  ChangeableSelfStyle().ClearProp(name);
  SelfStyleChanged(setAttribute);
}

void TStyledHTMLNode::AddCSSRecursive(const hstring& text, bool setAttribute) {
  HtVisitSubtree(*this, [&](TStyledHTMLNode& node) {
    if (node.IsText() || (node.FStyle && node.FStyle->FDisplay == dsInline)) return false;
    node.AddCSS(text, setAttribute);
    return true;
  });
}

void TStyledHTMLNode::ClearCSSRecursive(const hstring& name, bool setAttribute) {
  HtVisitSubtree(*this, [&](TStyledHTMLNode& node) {
    node.ClearCSS(name, setAttribute);
    return true;
  });
}

// Virtual declarations

void TStyledHTMLNode::AddVirtualCSS(const hstring& text) {
  if (BlankString(text)) return;
  if (!FVirtualSelfStyle.Empty()) {
    TCSSStyleSheet old, added;
    AddRule(old, FVirtualSelfStyle, kCSSSelfWeight);
    AddRule(added, text, kCSSSelfWeight);
    for (int32_t i = 0; i < added.fSections.GetCount(); ++i)
      for (const TCSSValue& value : added.GetSection(i)->Values) old.ClearProp(value.Name);
    FVirtualSelfStyle = old.AsInlineString();
  }
  AppendVirtualCSS(text.View().ends_with(u';') ? text : text + u";", 0);
}

void TStyledHTMLNode::AddVirtualCSS2(const hstring& name, const hstring& value) {
  if (BlankString(value)) return;
  if (FVirtualSelfStyle.View().find(name.View()) != std::u16string_view::npos) {
    TCSSStyleSheet old;
    AddRule(old, FVirtualSelfStyle, kCSSSelfWeight);
    old.ClearProp(name);
    FVirtualSelfStyle = old.AsInlineString();
  }
  AppendVirtualCSS(name + u":" + value + u";", kCSSSelfWeight);
}

void TStyledHTMLNode::AppendVirtualCSS(const hstring& declarations, int32_t weight) {
  FVirtualSelfStyle += declarations;
  if (SelfStyleSheet) {
    AddCSS(declarations, false, weight);
  } else {
    Flags.Exclude(efSelfStyleProcessed);
    StyleChanged(true);
  }
}

}  // namespace ht
