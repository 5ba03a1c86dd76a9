#include "htmlpars/htmlnode.h"

#include "htmlpars/constants.h"
#include "htmlpars/lower.h"
#include "htmlpars/parser.h"
#include "htruntime/numformat.h"
#include "htutils/strsearch.h"

namespace ht {

namespace {

constexpr hstring kId = u"id"_hs;
constexpr hstring kBody = u"body"_hs;

}  // namespace

THtmlNode::THtmlNode(const hstring& tag) {
  SetTag(tag);
  if (!tag.Empty()) TagType = htIdent;
}

void THtmlNode::AfterParse() {}
bool THtmlNode::QuirksMode() { return true; }
void THtmlNode::CSS(const hstring&) {}
void THtmlNode::AddClass(const hstring&) {}
void THtmlNode::RemoveClass(const hstring&) {}
bool THtmlNode::HasClass(const hstring&) { return false; }

// Parsing into the tree

void THtmlNode::Parse(const hstring& text, bool ignoreMetaEncoding) {
  DeleteAllChildren();
  THtmlParser parser(text, false);
  parser.IgnoreMetaEncoding = ignoreMetaEncoding;
  parser.GlobalRoot = Root();
  InternalParse(parser);
  if (FParent) return;
  const bool hasBody = NodebyName(kBody) || NodebyName(u"html"_hs);
  if (!hasBody)
    SetTag(kBody);
  else if (FTagId == tgBody)
    SetTag({});  // a root that was the "body" of another document before
}

void THtmlNode::ParseAttributes(THtmlParser& parser) {
  if (parser.Attributes && parser.Attributes->Count > 0) FAttributes = std::move(parser.Attributes);
}

void THtmlNode::ParseAttributes(const hstring& text) {
  THtmlParser parser(u"<x " + text + u" />", false);
  if (parser.NextItem()) ParseAttributes(parser);
}

THtmlNode* THtmlNode::AddTemporary() {
  const THtNodeClass* nodeClass = GetElementClass(u"div"_hs, nullptr);
  return static_cast<THtmlNode*>(InternalAddChild(nodeClass ? nodeClass : NodeClass()));
}

THtNode* THtmlNode::AddHTML(const hstring& text) {
  THtmlNode* temporary = AddTemporary();
  temporary->Parse(text);
  THtNode* first = temporary->FirstChild();
  temporary->MoveChildrentoParent(true);
  DeleteChild(temporary);
  return first;
}

void THtmlNode::SetInnerHTML(const hstring& text) {
  DeleteAllChildren();
  THtmlNode* temporary = AddTemporary();
  THtmlParser parser(FTagId == tgTable ? u"<tbody>" + text + u"</tbody>" : u"<div>" + text + u"</div>",
                     false);
  parser.Root = temporary;
  parser.GlobalRoot = Root();
  auto* root = dynamic_cast<THtmlNode*>(parser.GlobalRoot);
  parser.SetCaseSensitive(root && !root->QuirksMode());
  if (parser.NextItem()) temporary->InternalParse(parser);
  temporary->MoveChildrentoParent(true);
  DeleteChild(temporary);
}

void THtmlNode::SetOuterHTML(const hstring& text) {
  FNodes.reset();
  FAttributes.reset();
  THtmlParser parser(text, false);
  parser.Root = this;
  parser.GlobalRoot = Root();
  parser.FTopCloses = true;
  bool more = parser.NextItem();
  while (more && parser.TagType == htCustom) {
    more = parser.NextItem();
    if (more && parser.TagType == htString && BlankString(parser.Value)) more = parser.NextItem();
  }
  SetTag({});
  FContent.Clear();
  TagType = htUnknown;
  if (!more) return;
  if (parser.TagType != htIdent)
    TakeItem(parser);
  else if (kVoidTags.Contains(parser.TagRec().Id))
    parser.TagClosed = true;
  InternalParse(parser);
  if (TagType == htString) TagType = htUnknown;
}

void THtmlNode::SetInnerText(const hstring& text) {
  const int32_t kept = GetCount() > 0 && GetNode(0)->GetTag().Empty() ? 1 : 0;
  while (GetCount() > kept) FNodes->Delete(GetCount() - 1);
  if (!kept) {
    const THtNodeClass* nodeClass = GetElementClass({}, nullptr);
    if (!nodeClass) return;
    AddChild(nodeClass);
  }
  GetNode(0)->SetContent(text);
}

hstring THtmlNode::HTMLtoText(const hstring& text) {
  THtmlNode node;
  node.Parse(text);
  return node.GetInnerText();
}

void THtmlNode::ChangeEncoding(THtmlEncoding encoding, int32_t codepage) {
  for (THtNode* node = this; node; node = node->NextNodeBelow(this)) {
    auto* html = static_cast<THtmlNode*>(node);
    html->FContent = HtRecode(html->FContent, encoding, codepage);
    for (int32_t i = 0; html->FAttributes && i < html->FAttributes->Count; ++i)
      html->FAttributes->SetValue(i, HtRecode(html->FAttributes->GetValue(i), encoding, codepage));
  }
}

// Attributes with a meaning

hstring THtmlNode::GetId() const { return GetAttribute(kId); }
void THtmlNode::SetId(const hstring& id) { SetAttr(kId, id); }
hstring THtmlNode::GetSelfStyle() const { return GetAttribute(sStyle); }
void THtmlNode::SetSelfStyle(const hstring& text) { SetAttr(sStyle, text); }
hstring THtmlNode::GetStyleClassStr() const { return GetAttribute(HtClassStr); }

void THtmlNode::SetStyleClass(const hstring& text) {
  if (!text.Empty())
    SetAttr(HtClassStr, text);
  else if (FAttributes)
    FAttributes->ClearAttr(HtClassStr);
}

void THtmlNode::ToggleClass(const hstring& name) { HasClass(name) ? RemoveClass(name) : AddClass(name); }

void THtmlNode::SetThemeColorPrc(TThemeColorProc proc) { HtSetThemeColorProc(proc); }

// Numbering and moving

int32_t THtmlNode::AbsoluteTagIndex() {
  int32_t count = 0;
  for (const THtNode* node = Root(); node && node != this; node = node->NextNode())
    count += !node->GetTag().Empty();
  return count;
}

void THtmlNode::EnumerateElements() {
  int32_t number = 0;
  for (THtNode* node = this; node; node = node->NextNodeBelow(this)) {
    if (node->GetTag().Empty() || node->TagType == htComment || node->TagType == htDirective) continue;
    const hstring text = HtIntToStr(number++);
    node->SetAttr(u"_id"_hs, text);
    if (node->GetTagId() == tgDatapacket && !node->HasAttribute(kId)) node->SetAttr(kId, text);
  }
}

void THtmlNode::MoveChildrentoParent(bool before) {
  if (!FParent || !FNodes) return;
  for (THtNode* node : *FNodes) node->SetParent(FParent);
  FParent->GetNodes()->TakeAll(NodeIndex() + (before ? 0 : 1), *FNodes);
}

void THtmlNode::MoveChildrento(THtNode* target, int32_t index) {
  if (!FNodes) return;
  THtNodeList& nodes = *target->GetNodes();
  if (index > nodes.GetCount()) nodes.GetNode(index);  // raises before anything moves
  THtNodeList moved(true, false);
  moved.TakeAll(0, *FNodes);
  const bool kept = moved.IndexOf(target) >= 0;
  moved.RemoveItem(target);
  if (kept) FNodes->Add(target);
  for (THtNode* node : moved) node->SetParent(target);
  nodes.TakeAll(index < 0 ? nodes.GetCount() : index, moved);
}

void THtmlNode::MoveNode(THtNode* node, THtNode* target) {
  if (!FNodes) return;
  FNodes->Move(FNodes->IndexOf(node), FNodes->IndexOf(target));
  FNodes->SetSiblings();
}

}  // namespace ht
