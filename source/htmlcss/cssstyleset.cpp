#include "htmlcss/cssstyleset.h"

#include <algorithm>

#include "htmlcss/cssparser.h"
#include "htmlcss/measure.h"
#include "htutils/faststring.h"

namespace ht {

namespace {

constexpr int32_t kStyleChars = 256;

bool IsRelative(TMeasureUnit unit) {
  return unit == muPercent || unit == muEM || unit == muEX || unit == muVW || unit == muVH;
}

}  // namespace

bool TCSSStyleSet::Find(std::u16string_view name, int32_t& index) const {
  const auto it = std::lower_bound(
      FItems.begin(), FItems.end(), name,
      [](const TCSSStyleSetRec& rec, std::u16string_view text) { return rec.Name.View() < text; });
  index = static_cast<int32_t>(it - FItems.begin());
  return it != FItems.end() && it->Name == name;
}

void TCSSStyleSet::SetValue(const hstring& name, const hstring& value) {
  int32_t index;
  if (Find(name, index))
    FItems[static_cast<size_t>(index)].Value = value;
  else if (!value.Empty())
    FItems.insert(FItems.begin() + index, {name, value});
}

hstring TCSSStyleSet::GetValue(std::u16string_view name) const {
  int32_t index;
  return Find(name, index) ? (*this)[index].Value : hstring();
}

bool TCSSStyleSet::HasProperty(std::u16string_view name) const {
  int32_t index;
  return Find(name, index);
}

bool TCSSStyleSet::CheckValue(std::u16string_view name, std::u16string_view value) const {
  int32_t index;
  return Find(name, index) && (*this)[index].Value == value;
}

void TCSSStyleSet::Delete(int32_t index) {
  if (index >= 0 && index < Count()) FItems.erase(FItems.begin() + index);
}

void TCSSStyleSet::AddString(std::u16string_view text) {
  const size_t colon = text.find(u':');
  if (colon == text.npos) return;
  if (text.ends_with(u';')) text.remove_suffix(1);
  SetValue(text.substr(0, colon), text.substr(colon + 1));
}

void TCSSStyleSet::AddOverride(const TCSSStyleSet& other) {
  for (const TCSSStyleSetRec& rec : other.FItems) SetValue(rec.Name, rec.Value);
}

void TCSSStyleSet::AddInherited(const TCSSStyleSet& other) {
  for (const TCSSStyleSetRec& rec : other.FItems)
    if (!HasProperty(rec.Name)) SetValue(rec.Name, rec.Value);
}

void TCSSStyleSet::IntersectWith(const TCSSStyleSet& other) {
  std::erase_if(FItems,
                [&other](const TCSSStyleSetRec& rec) { return other.CheckValue(rec.Name, rec.Value); });
}

hstring TCSSStyleSet::GetAsString() const {
  TFastString text(kStyleChars);
  for (const TCSSStyleSetRec& rec : FItems)
    if (!HtTrim(rec.Value).empty()) text.Add(rec.Name).AddChar(u':').Add(rec.Value).AddChar(u';');
  return text.GetAsString();
}

hstring TCSSStyleSet::AsStyleAttr() const {
  const hstring text = GetAsString();
  return text.Empty() ? text : u" style=\""_hs + text + u"\""_hs;
}

void TCSSStyleSet::SetAsString(const hstring& text) {
  Clear();
  TCSSParser parser(u"*{"_hs + text + u"}"_hs);
  while (parser.NextSection()) {
    if (parser.Section->Values.empty()) continue;
    for (const TCSSValue& value : parser.Section->Values) AddString(CSSValuetoString(value));
    return;
  }
}

float TCSSStyleSet::GetPixels(std::u16string_view name) const {
  TMeasure measure;
  measure.Parse(GetValue(name));
  return IsRelative(measure.FMUnit) ? 0 : measure.GetFPixels();
}

}  // namespace ht
