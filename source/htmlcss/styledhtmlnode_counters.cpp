// Counters and the texts that show a node: markers of lists, inner text, the debugging print.

#include <limits>

#include "htmlcss/cssmatch.h"
#include "htmlcss/elementstyle.h"
#include "htmlcss/styledhtmlnode.h"
#include "htmlpars/htmlencode.h"
#include "htmlpars/lower.h"
#include "htruntime/format.h"
#include "htruntime/numformat.h"
#include "htruntime/stringlist.h"

namespace ht {

namespace {

constexpr std::u16string_view kLineEnd = u"\r\n";

TCSSCounter* FindCounter(const TStyledHTMLNode& node, const hstring& name) {
  if (!node.Flags.Contains(efHasCounters)) return nullptr;
  for (TCSSCounter& counter : node.Counters)
    if (counter.Name == name) return &counter;
  return nullptr;
}

// The nearest one of the siblings before the node. Generated content stands before, or behind, all of them.
TCSSCounter* FindCounterBefore(const TStyledHTMLNode& node, const TStyledHTMLNode& parent,
                               const hstring& name) {
  for (int32_t i = &node == parent.After ? parent.GetCount() : HtIndexInParent(node, parent); --i >= 0;)
    if (TCSSCounter* counter = FindCounter(*parent.GetNode(i), name)) return counter;
  return nullptr;
}

// Empty for a number that has none.
hstring RomanNumeral(int32_t n) {
  struct TDigit {
    int32_t Value;
    std::u16string_view Letters;
  };
  constexpr TDigit kDigits[] = {{1000, u"M"}, {900, u"CM"}, {500, u"D"}, {400, u"CD"}, {100, u"C"},
                                {90, u"XC"},  {50, u"L"},   {40, u"XL"}, {10, u"X"},   {9, u"IX"},
                                {5, u"V"},    {4, u"IV"},   {1, u"I"}};
  constexpr int32_t kLargest = 3999;
  hstring text;
  if (n > kLargest) return text;
  for (const TDigit& digit : kDigits)
    for (; n >= digit.Value; n -= digit.Value) text += digit.Letters;
  return text;
}

hstring Letter(char16_t first, int32_t n) {
  return hstring(1, static_cast<char16_t>(first + static_cast<uint32_t>(n) - 1));
}

int32_t RoundedForPrint(float value) { return detail::RoundToInt(value); }

}  // namespace

void TStyledHTMLNode::SetParent(THtNode* parent) {
  THtmlNode::SetParent(parent);
  if (parent && Flags.Contains(efHasCounters)) GetParent()->FChildrenHaveCounters = true;
}

void TStyledHTMLNode::ResetCSSCounter(const hstring& name, int32_t value) {
  if (TCSSCounter* counter = FindCounter(*this, name)) {
    counter->Value = value;
    return;
  }
  if (!Flags.Contains(efHasCounters)) Counters.Clear();  // those of an earlier style
  Counters.Append({name, value});
  Flags.Include(efHasCounters);
  if (FParent) GetParent()->FChildrenHaveCounters = true;
}

void TStyledHTMLNode::IncrementCSSCounter(const hstring& name) {
  TCSSCounter* found = nullptr;
  for (TStyledHTMLNode* node = this; node && !found; node = node->GetParent()) {
    found = FindCounter(*node, name);
    const TStyledHTMLNode* parent = node->GetParent();
    if (!found && parent && parent->FChildrenHaveCounters) found = FindCounterBefore(*node, *parent, name);
  }
  if (found && found->Value < std::numeric_limits<int32_t>::max()) ++found->Value;
}

hstring TStyledHTMLNode::ListCountertoString(TListStyleType type, int32_t n) {
  hstring text;
  switch (type) {
    case lstLowerAlpha:
    case lstLowerLatin: return Letter(u'a', n);
    case lstUpperAlpha:
    case lstUpperLatin: return Letter(u'A', n);
    case lstUpperRoman: text = RomanNumeral(n); break;
    case lstLowerRoman:
      text = RomanNumeral(n);
      hLower(text);
      break;
    default: break;
  }
  return text.Empty() ? HtIntToStr(n) : text;
}

hstring TStyledHTMLNode::GetInnerText() {
  constexpr TSet<THTMLTokenType> kWithoutText{htScript, htStyle, htComment, htDirective};
  if (kWithoutText.Contains(TagType) || (FStyle && FStyle->FDisplay == dsNone)) return {};
  hstring text = THtmlNode::GetInnerText();
  const TStyledHTMLNode* list = Container ? Container : GetParent();
  if (!FStyle || FStyle->FDisplay != dsListItem || !list || !list->FStyle) return text;
  const TListStyleType type = list->FStyle->ListStyleType();
  if (type == lstNone) return text;

  hstring marker = u"*"_hs;
  if (type != lstCircle && type != lstDisc && type != lstSquare) {
    int32_t start;
    if (!HtTryStrToInt(list->GetAttribute(u"start"_hs), start)) start = 1;
    marker = ListCountertoString(type, detail::Sum(start, TagIndex())) + u".";
  }
  std::u16string_view rest = text;
  if (rest.starts_with(kLineEnd)) rest.remove_prefix(kLineEnd.size());
  return kLineEnd + marker + u" " + rest;
}

void TStyledHTMLNode::DebugPrint(const hstring& indent, TStringList& lines) const {
  TTreeDepthGuard guard;
  hstring line;
  for (char16_t c : indent) c == u' ' ? line += u"&nbsp;" : line += c;
  line += u"<b>" + FTag;
  if (const hstring classes = GetStyleClassStr(); !classes.Empty()) line += u"." + HtmlEncode(classes);
  if (const hstring id = GetId(); !id.Empty()) line += u"#" + HtmlEncode(id);
  line += u"</b><span color=\"green\">" + HtmlEncode(FContent) + u"</span>";
  line +=
      HtFormat(u"[%d, %d] (%d, %d, %d, %d) <br>", RoundedForPrint(GetRealLeft()),
               RoundedForPrint(GetRealTop()), RoundedForPrint(OuterRect.Left), RoundedForPrint(OuterRect.Top),
               RoundedForPrint(OuterRect.Right), RoundedForPrint(OuterRect.Bottom));
  lines.Add(line);
  for (const THtNode* node = FirstChild(); node; node = node->NextSibling())
    static_cast<const TStyledHTMLNode*>(node)->DebugPrint(indent + u"  ", lines);
}

}  // namespace ht
