#include "htmlpars/node.h"
#include "htruntime/numformat.h"
#include "htutils/dates.h"
#include "htutils/numbers.h"

namespace ht {

THtAttributes* THtNode::CreateAttributes() {
  if (!FAttributes) FAttributes = std::make_unique<THtAttributes>();
  return FAttributes.get();
}

bool THtNode::SetAttribute(const hstring& name, const hstring& value) {
  if (!FAttributes && value.Empty()) return false;
  return CreateAttributes()->SetAttributeEx(name, value);
}

bool THtNode::HasAttribute(const hstring& name) const {
  return FAttributes && FAttributes->Indexof(name) >= 0;
}

bool THtNode::HasAttributeValue(const hstring& name, const hstring& value) const {
  return GetAttribute(name) == value;
}

hstring THtNode::GetAttribute(const hstring& name) const {
  return FAttributes ? FAttributes->GetAttribute(name) : hstring();
}

void THtNode::CopyAttributesFrom(const THtNode* node) {
  if (!node->FAttributes) return;
  THtAttributes* target = CreateAttributes();
  if (target->Count == 0) {
    *target = *node->FAttributes;
    return;
  }
  for (int32_t i = 0; i < node->FAttributes->Count; ++i)
    target->SetAttribute(node->FAttributes->GetName(i), node->FAttributes->GetValue(i));
}

int32_t THtNode::GetAttrI(const hstring& name) const {
  const hstring value = GetAttribute(name);
  return value.Empty() ? 0 : HtStrToInt(value);
}

void THtNode::SetAttrI(const hstring& name, int32_t value) { SetAttr(name, HtIntToStr(value)); }

bool THtNode::GetAttrB(const hstring& name) const {
  const hstring value = GetAttribute(name);
  return value == u"1" || value == u"true" || value == u"on";
}

void THtNode::SetAttrB(const hstring& name, bool value) { SetAttr(name, value ? u"1"_hs : u"0"_hs); }

double THtNode::GetAttrF(const hstring& name) const { return iStrtoFloat(GetAttribute(name)); }
void THtNode::SetAttrF(const hstring& name, double value) { SetAttr(name, HtFormatFloat(u"0.##", value)); }
double THtNode::GetFloat(const hstring& name) const { return GetAttrF(name); }
void THtNode::SetFloat(const hstring& name, double value) { SetAttr(name, HtFloatToStr(value)); }

TDateTime THtNode::GetDate(const hstring& name) const {
  return StrtoDateFmt(GetAttribute(name), u"yyyy-mm-dd");
}
void THtNode::SetDate(const hstring& name, TDateTime value) {
  SetAttr(name, HtFormatDateTime(u"yyyy-mm-dd", value));
}
TDateTime THtNode::GetTime(const hstring& name) const {
  return StrtoDateFmt(GetAttribute(name), u"hh:nn:ss");
}
void THtNode::SetTime(const hstring& name, TDateTime value) {
  SetAttr(name, HtFormatDateTime(u"hh:nn:ss", value));
}

TDateTime THtNode::GetDateTime(const hstring& name) const {
  return StrtoDateFmt(GetAttribute(name), u"yyyy-mm-dd hh:nn:ss");
}

void THtNode::SetDateTime(const hstring& name, TDateTime value) {
  SetAttr(name, HtFormatDateTime(u"yyy-mm-dd\"T\"hh:nn:ss", value));
}

}  // namespace ht
