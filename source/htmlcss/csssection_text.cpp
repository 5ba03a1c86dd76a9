#include "htmlcss/csssection.h"
#include "htutils/faststring.h"

namespace ht {

namespace {

constexpr int32_t kRuleChars = 512;  // of a chunk in which a rule is built

bool IsQuoted(const TCSSTokens& tokens) {
  if (tokens.Empty() || tokens[0].CType == ctURI) return false;
  for (const TCSSToken& token : tokens)
    if (token.CType == ctSpace || token.Name.View().find(u' ') != std::u16string_view::npos) return true;
  return false;
}

void AddToken(TFastString& text, const TCSSToken& token, bool isFirst) {
  switch (token.CType) {
    case ctBlockStart:
    case ctBlockEnd:
    case ctColon:
    case ctSemicolon:
    case ctComma:
    case ctOpenPar:
    case ctClosePar:
    case ctOpenBr:
    case ctCloseBr: text.Add(token.Name); break;
    case ctHash: text.Add(u" #").Add(token.Name); break;
    case ctURI: text.Add(u"url('").Add(token.Name).Add(u"')"); break;
    case ctSpace: text.AddChar(u' '); break;
    default:
      if (!isFirst) text.AddChar(u' ');
      text.Add(token.Name);
  }
}

}  // namespace

hstring CSSValuetoString(const TCSSValue& value) {
  TFastString text(kRuleChars);
  text.Add(value.NameToken.Name).AddChar(u':');
  const bool quoted = IsQuoted(value.Tokens);
  if (quoted) text.AddChar(u'\'');
  for (const TCSSToken& token : value.Tokens) AddToken(text, token, &token == value.Tokens.begin());
  if (quoted) text.AddChar(u'\'');
  if (value.Important) return text.Add(u"!important;").GetAsString();
  return HtTrimRight(text.GetAsString()) + u";"_hs;
}

hstring TCSSSection::AsString() const {
  TFastString text(kRuleChars);
  for (int32_t i = 0; i < Selectors.GetCount(); ++i) {
    if (i > 0) text.Add(u", ");
    text.Add(Selectors.GetSelector(i)->AsString());
  }
  text.Add(u"\r\n{");
  for (const TCSSValue& value : Values) text.Add(u"  ").Add(CSSValuetoString(value)).Add(u"\r\n");
  return text.Add(u"}").GetAsString();
}

hstring TCSSSection::AsInlineString() const {
  TFastString text(kRuleChars);
  for (const TCSSValue& value : Values) text.Add(CSSValuetoString(value));
  return HtTrim(text.GetAsString());
}

}  // namespace ht
