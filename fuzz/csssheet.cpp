// Any text is a style sheet: it is read, written, minified and turned dark, and what was written reads back with the same
// rules.
#include <cstdint>

#include "htmlcss/cssparser.h"
#include "htmlcss/stylesheet.h"
#include "support/require.h"

using namespace ht;

namespace {

// Words and numbers only: then the text of a declaration says all about it.
bool IsPlain(const TCSSValue& value) {
  for (const TCSSToken& token : value.Tokens) {
    if (token.CType != ctIdent && token.CType != ctNumber && token.CType != ctDimension) return false;
    for (const char16_t c : token.Name.View())
      if (!(c >= u'a' && c <= u'z') && !(c >= u'0' && c <= u'9')) return false;
  }
  return true;
}

void CheckValues(TCSSSection& section) {
  for (const TCSSValue& value : section.Values) {
    Require(value.Section == &section && value.Prop && !value.Tokens.Empty());
    const hstring text = CSSValuetoString(value);
    if (value.Vendor || value.Prop->Prop == cspUnknown || value.Important || !IsPlain(value)) continue;
    TCSSParser parser(u"a{" + text + u"}");
    Require(parser.NextSection() && parser.Section->Values.size() == 1);
    Require(CSSValuetoString(parser.Section->Values[0]) == text);
  }
  for (const TCSSValue& value : section.CompiledValues)
    Require(value.Prop->Prop != cspUnknown && !value.Tokens.Empty());
  section.AsString();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 20000) return 0;
  const hstring text = HtFromUtf8({reinterpret_cast<const char*>(data), size});
  for (TCSSParser parser(text); parser.NextSection();) CheckValues(*parser.Section);
  TCSSStyleSheet sheet;
  sheet.Parse(text);
  TCSSStyleSheet copy;
  copy.Parse(sheet.AsString());
  sheet.TestMediaSets(cmScreen, 800, 600);
  sheet.AsInlineString();
  sheet.Minify();
  sheet.ConvertLighttoDark();
  TCSSStyleSheet other;
  other.Assign(sheet);
  other.AsString();
  TCSSStyleSheet inlineSheet;
  inlineSheet.ParseValues(text, kCSSSelfWeight);
  inlineSheet.AsInlineString();
  return 0;
}
