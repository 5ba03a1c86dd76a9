#include "document/generatedcontent.h"

#include <vector>

#include "document/documentstyle.h"
#include "htmlcss/cssproptable.h"
#include "htruntime/numformat.h"

namespace ht {

namespace {

const TCSSCounter* OwnCounter(const TDocumentNode& node, const hstring& name) {
  if (!node.Flags.Contains(efHasCounters)) return nullptr;
  for (const TCSSCounter& counter : node.Counters)
    if (counter.Name == name) return &counter;
  return nullptr;
}

// The counter of a node, else that of the nearest sibling before it.
const TCSSCounter* CounterAt(const TDocumentNode& node, const hstring& name) {
  if (const TCSSCounter* own = OwnCounter(node, name)) return own;
  const TCSSCounter* nearest = nullptr;
  const TDocumentNode* parent = node.GetParent();
  if (parent && parent->ChildrenHaveCounters())
    for (THtNode* sibling = parent->FirstChild(); sibling && sibling != &node;
         sibling = sibling->NextSibling())
      if (const TCSSCounter* found = OwnCounter(static_cast<TDocumentNode&>(*sibling), name)) nearest = found;
  return nearest;
}

// Of all levels, the innermost first. The node itself is none of its parent's children.
std::vector<int32_t> CounterValues(const TDocumentNode& node, const hstring& name) {
  std::vector<int32_t> values;
  if (const TCSSCounter* own = OwnCounter(node, name)) values.push_back(own->Value);
  for (const TDocumentNode* around = node.GetParent(); around; around = around->GetParent())
    if (const TCSSCounter* counter = CounterAt(*around, name)) values.push_back(counter->Value);
  return values;
}

hstring CounterText(int32_t value, const hstring& style) {
  const int32_t type = style.Empty() ? -1 : CSSPropOf(cspListStyleType).FindKeyword(style);
  return TStyledHTMLNode::ListCountertoString(type < 0 ? lstDecimal : static_cast<TListStyleType>(type),
                                              value);
}

// The arguments of a function, without its commas; the index becomes that of the closing parenthesis.
std::vector<hstring> Arguments(const TCSSTokens& tokens, int32_t& index) {
  std::vector<hstring> arguments;
  while (++index < tokens.Count() && tokens[index].CType != ctClosePar)
    if (tokens[index].CType != ctOpenPar && tokens[index].CType != ctComma)
      arguments.push_back(tokens[index].Name);
  arguments.resize(std::max<size_t>(arguments.size(), 3));
  return arguments;
}

hstring FunctionText(const TDocumentNode& node, const hstring& function,
                     const std::vector<hstring>& arguments) {
  if (function == u"attr") return node.GetParent()->GetAttribute(arguments[0]);
  const bool one = function == u"counter";
  if (!one && function != u"counters") return {};
  std::vector<int32_t> values = CounterValues(node, arguments[0]);
  if (values.empty()) values.push_back(0);
  if (one) return CounterText(values[0], arguments[1]);
  hstring text;
  for (size_t i = values.size(); i-- > 0;)
    text += CounterText(values[i], arguments[2]) + (i > 0 ? arguments[1] : hstring());
  return text;
}

hstring WordText(const hstring& word) {
  if (word == u"open-quote") return u"\u201C"_hs;
  if (word == u"close-quote") return u"\u201D"_hs;
  return word == u"no-open-quote" || word == u"no-close-quote" ? hstring() : word;
}

}  // namespace

bool HtGeneratedText(TDocumentNode& node, hstring& text) {
  const PCSSValue content = node.Style()->FindProp(cspContent, false);
  const bool isMarker = node.GetTag() == u"::marker";
  if (!content || content->Tokens.Empty()) {
    if (isMarker) text = HtListMarker(*node.GetParent());
    return isMarker;
  }
  const TCSSTokens& tokens = content->Tokens;
  if (tokens.Count() == 1 && tokens[0].CType == ctIdent &&
      (tokens[0].Name == u"none" || tokens[0].Name == u"normal"))
    return false;
  text.Clear();
  for (int32_t i = 0; i < tokens.Count(); ++i) {
    const TCSSToken& token = tokens[i];
    if (token.CType == ctString) text += token.Name;
    if (token.CType == ctIdent) text += WordText(token.Name);
    if (token.CType == ctFunction) text += FunctionText(node, token.Name, Arguments(tokens, i));
  }
  text = node.GetCSSContent(text);
  return true;
}

hstring HtListMarker(const TDocumentNode& item) {
  switch (const TListStyleType type = item.Style()->ListStyleType()) {
    case lstNone: return {};
    case lstDisc: return u"\u2022"_hs;
    case lstCircle: return u"\u25E6"_hs;
    case lstSquare: return u"\u25AA"_hs;
    default: {
      int32_t number = 1;
      if (const TDocumentNode* list = item.GetParent())
        if (!HtTryStrToInt(list->GetAttribute(u"start"_hs), number)) number = 1;
      return TStyledHTMLNode::ListCountertoString(type, number + item.TagIndex()) + u".";
    }
  }
}

}  // namespace ht
