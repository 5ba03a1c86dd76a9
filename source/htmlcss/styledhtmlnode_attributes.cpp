// Attributes and markup of a styled node: presentational attributes, classes, repairs of tags.

#include "htmlcss/styledhtmlnode.h"
#include "htmlpars/lower.h"
#include "htmlpars/parser.h"
#include "htruntime/numformat.h"
#include "htutils/enumlookup.h"

namespace ht {

namespace {

constexpr hstring kClass = u"class"_hs;
constexpr hstring kSoft = u"soft"_hs;

bool IsBlank(char16_t c) { return c < 33; }

bool HasBlank(std::u16string_view text) { return std::any_of(text.begin(), text.end(), IsBlank); }

// The next word, which is cut off from `rest`; empty behind the last one.
std::u16string_view NextWord(std::u16string_view& rest) {
  const auto* start = std::find_if_not(rest.begin(), rest.end(), IsBlank);
  const auto* end = std::find_if(start, rest.end(), IsBlank);
  rest = {end, rest.end()};
  return {start, end};
}

TCSSClassRec ClassOf(hstring name) {
  hLower(name);
  return TCSSClassRec(std::move(name));
}

TClassesArray SplitClasses(std::u16string_view text) {
  int32_t count = 0;
  for (std::u16string_view rest = text; !NextWord(rest).empty();) ++count;
  TClassesArray classes;
  classes.SetLength(count);
  for (TCSSClassRec& rec : classes) rec = ClassOf(HtPoolText(NextWord(text)));
  return classes;
}

// A single class shares the text of the attribute.
TClassesArray SingleClass(const hstring& text) {
  const std::u16string_view trimmed = HtTrim(text);
  TClassesArray classes;
  if (!trimmed.empty()) classes.Append(ClassOf(trimmed.size() == text.Size() ? text : HtPoolText(trimmed)));
  return classes;
}

// Presentational attributes

using TApply = void (*)(TStyledHTMLNode& node, const hstring& value);

template <THtStringLiteral Property>
void Declare(TStyledHTMLNode& node, const hstring& value) {
  node.AddVirtualCSS2(hstring::OfLiteral(Property), value);
}

template <THtStringLiteral... Properties>
void DeclareBodyPixels(TStyledHTMLNode& node, const hstring& value) {
  if (node.GetTagId() != tgBody) return;
  const hstring pixels = value + u"px";
  (node.AddVirtualCSS2(hstring::OfLiteral(Properties), pixels), ...);
}

hstring Lower(hstring text) {
  hLower(text);
  return text;
}

void DeclareAlign(TStyledHTMLNode& node, const hstring& value) {
  if (node.GetTagId() == tgTable || value.Empty()) return;
  node.AddVirtualCSS2(u"text-align"_hs, HtAsciiLower(value[0]) == u'c' ? u"xcenter"_hs : value);
}

void DeclareBackground(TStyledHTMLNode& node, const hstring& value) {
  if (!value.Empty()) node.AddVirtualCSS2(u"background-image"_hs, u"url(\"" + value + u"\")");
}

void DeclareDirection(TStyledHTMLNode& node, const hstring& value) {
  node.AddVirtualCSS2(u"direction"_hs, Lower(value));
}

void DeclareFamily(TStyledHTMLNode& node, const hstring& value) {
  node.AddVirtualCSS2(u"font-family"_hs, u"'" + value + u"'");
}

void DeclareNowrap(TStyledHTMLNode& node, const hstring&) {
  node.AddVirtualCSS2(u"white-space"_hs, u"nowrap"_hs);
}

void DeclareTextColor(TStyledHTMLNode& node, const hstring& value) {
  if (node.GetTagId() == tgBody) node.AddVirtualCSS2(u"color"_hs, value);
}

void DeclareVAlign(TStyledHTMLNode& node, const hstring& value) {
  TVAlign align;
  if (IsEnum2(u"va", value, align)) node.AddVirtualCSS2(u"vertical-align"_hs, Lower(value));
}

void DeclareWrap(TStyledHTMLNode& node, const hstring& value) {
  if (value == kSoft) node.AddVirtualCSS2(u"white-space"_hs, u"pre-wrap"_hs);
}

// The pixels of the attribute "size" of <font>: 1 to 7, or relative to 3 with a "+", larger numbers as they are; "12pt"
// is 12.
double FontPixels(std::u16string_view value) {
  constexpr double kSmallest = 10;
  constexpr double kSizes[] = {kSmallest, kSmallest, 13, 16, 18, 24, 32, 48};
  if (value.ends_with(u't')) {
    double points;
    return HtTryStrToFloat(value.substr(0, value.size() < 2 ? 0 : value.size() - 2), points) ? points
                                                                                             : kSmallest;
  }
  int64_t number;
  if (!HtTryStrToInt(value, number) || number > INT32_MAX) return kSmallest;
  if (value.starts_with(u'+')) number += 3;
  if (number < 0) return kSmallest;
  return number < static_cast<int64_t>(std::size(kSizes)) ? kSizes[number] : static_cast<double>(number);
}

void DeclareFontSize(TStyledHTMLNode& node, const hstring& value) {
  if (node.GetTagId() != tgFont) return;
  const double pixels = FontPixels(value);
  if (pixels >= 2) node.AddVirtualCSS2(u"font-size"_hs, HtFloatToStr(pixels) + u"px");
}

// Attributes with a meaning of their own

void TakeClass(TStyledHTMLNode& node, const hstring&) {
  node.GetClassesHashes();
  node.StyleChanged(true);
}

void TakeId(TStyledHTMLNode& node, const hstring& value) { node.SetId(value); }

void TakeStyle(TStyledHTMLNode& node, const hstring&) {
  node.StyleChanged(true);
  node.Flags.Exclude(efSelfStyleProcessed);
}

struct TAttributeMeaning {
  std::u16string_view Name;
  TApply Apply;
};

// Those first that most documents use. A name of another length is passed over without a look at it.
constexpr TAttributeMeaning kMeanings[] = {
    {u"class", TakeClass},
    {u"id", TakeId},
    {u"style", TakeStyle},
    {u"align", DeclareAlign},
    {u"background", DeclareBackground},
    {u"bgcolor", Declare<u"background-color">},
    {u"bottommargin", DeclareBodyPixels<u"margin-bottom">},
    {u"color", Declare<u"color">},
    {u"contenteditable", Declare<u"contenteditable">},
    {u"dir", DeclareDirection},
    {u"face", DeclareFamily},
    {u"family", DeclareFamily},
    {u"height", Declare<u"height">},
    {u"leftmargin", DeclareBodyPixels<u"margin-left">},
    {u"marginheight", DeclareBodyPixels<u"margin-top", u"margin-bottom">},
    {u"marginwidth", DeclareBodyPixels<u"margin-left", u"margin-right">},
    {u"nowrap", DeclareNowrap},
    {u"rightmargin", DeclareBodyPixels<u"margin-right">},
    {u"size", DeclareFontSize},
    {u"text", DeclareTextColor},
    {u"topmargin", DeclareBodyPixels<u"margin-top">},
    {u"valign", DeclareVAlign},
    {u"width", Declare<u"width">},
    {u"wrap", DeclareWrap},
};

}  // namespace

bool TStyledHTMLNode::SetAttribute(const hstring& name, const hstring& value) {
  if (!THtmlNode::SetAttribute(name, value)) return false;
  ParseAttribute(name, value);
  UpdatePseudo();
  StyleChanged(false);
  return true;
}

void TStyledHTMLNode::ParseAttribute(const hstring& name, const hstring& value) {
  const hstring lowerName = Lower(name);
  const std::u16string_view view = lowerName;
  for (const TAttributeMeaning& meaning : kMeanings)
    if (meaning.Name == view) return meaning.Apply(*this, value);
}

void TStyledHTMLNode::ParseAttributes(THtmlParser& parser) {
  const bool hasNew = parser.Attributes && parser.Attributes->Count > 0;
  THtmlNode::ParseAttributes(parser);
  if (!hasNew) return;
  for (int32_t i = 0; FAttributes && i < FAttributes->Count; ++i) {
    const THtAttribute attribute = *FAttributes->GetItem(i);  // an override may change the list
    ParseAttribute(attribute.Name, attribute.Value);
  }
}

THtNode* TStyledHTMLNode::InternalParse(THtmlParser& parser) {
  THtNode* result = THtmlNode::InternalParse(parser);
  if (FParent && FTagId == tgBody && FParent->GetTagId() != tgForeignobject) {
    if (Root()->GetTagId() == tgBody || HasParentTag(HtTagName(tgBody))) SetTag(HtTagName(tgXbody));
  } else if (FParent && FTagId == tgHtml) {
    if (HasParentTag(HtTagName(tgHtml)) || HasParentTag(HtTagName(tgBody))) SetTag(HtTagName(tgXhtml));
  } else if (FTagId == tgOther && FTag.View().starts_with(u"c:")) {
    ParseAttribute(u"color"_hs, FTag.View().substr(2));
    SetTag(HtTagName(tgSpan));
  }
  return result;
}

// Nothing of what the node was before is left in its style.
void TStyledHTMLNode::SetOuterHTML(const hstring& text) {
  FVirtualSelfStyle.Clear();
  ClearSelfStyleSheet();
  FClassHashes.Clear();
  Flags.Exclude(efMultiClass);
  THtmlNode::SetOuterHTML(text);
  UpdatePseudo();
  StyleChanged(true);
}

// Classes

void TStyledHTMLNode::GetClassesHashes() {
  const hstring text = GetAttribute(kClass);
  const bool multi = HasBlank(text);
  if (multi)
    Flags.Include(efMultiClass);
  else
    Flags.Exclude(efMultiClass);
  FClassHashes = multi ? SplitClasses(text) : SingleClass(text);
}

void TStyledHTMLNode::SetStyleClass(const hstring& text) {
  THtmlNode::SetStyleClass(text);
  GetClassesHashes();
  StyleChanged(true);
}

void TStyledHTMLNode::AddClass(const hstring& name) {
  const hstring text = GetStyleClassStr();
  const hstring all = u" " + text + u" ";
  if (all.View().find(hstring(u" " + name + u" ").View()) != std::u16string_view::npos) return;
  SetStyleClass(text.Empty() ? name : text + u" " + name);
}

void TStyledHTMLNode::RemoveClass(const hstring& name) {
  const hstring text = GetStyleClassStr();
  hstring kept;
  bool found = false;
  for (std::u16string_view rest = text, word = NextWord(rest); !word.empty(); word = NextWord(rest)) {
    if (word == name.View()) {
      found = true;
    } else {
      if (!kept.Empty()) kept += u' ';
      kept += word;
    }
  }
  if (!found) return;
  SetStyleClass(kept);
  UpdatePseudo();
}

bool TStyledHTMLNode::HasClass(const hstring& name) {
  return std::any_of(FClassHashes.begin(), FClassHashes.end(),
                     [&name](const TCSSClassRec& rec) { return rec.s == name; });
}

}  // namespace ht
