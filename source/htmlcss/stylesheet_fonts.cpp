#include "htmlcss/csssection.h"
#include "htmlcss/stylesheet.h"
#include "htmlpars/lower.h"
#include "htutils/strsearch.h"

namespace ht {

namespace {

bool IsUsableFormat(const hstring& name) {
  return name == u"truetype" || name == u"opentype" || name == u"woff";
}

// What an `@font-face` rule says.
struct TFontFace {
  hstring Family, URL, Style, Weight, LocalNames;

  void Take(const TCSSValue& value) {
    if (value.Tokens.Empty()) return;
    if (value.Name == u"font-family") {
      if (value.Tokens[0].Name != u"inherit") Family = value.Tokens[0].Name;
    } else if (value.Name == u"src") {
      TakeSource(value.Tokens);
    } else if (value.Name == u"font-style") {
      if (Style.Empty()) Style = LastWord(value.Tokens, false);
    } else if (value.Name == u"font-weight") {
      if (Weight.Empty()) Weight = LastWord(value.Tokens, true);
    }
  }

 private:
  static hstring LastWord(const TCSSTokens& tokens, bool orNumber) {
    for (int32_t i = tokens.Count(); i-- > 0;)
      if (tokens[i].CType == ctIdent || (orNumber && tokens[i].CType == ctNumber)) return tokens[i].Name;
    return {};
  }

  // An address counts when one of the known formats is named behind it; the last one that does is taken.
  void TakeSource(const TCSSTokens& tokens) {
    const hstring* address = nullptr;
    hstring names;
    int32_t nextString = 0;  // never before the token being looked at, so that all searches take one pass
    for (int32_t i = 0; i < tokens.Count(); ++i) {
      const TCSSToken& token = tokens[i];
      if (token.CType == ctURI) address = &token.Name;
      if (token.CType == ctFunction && HtSameAscii(token.Name, u"local")) {
        nextString = std::max(nextString, i + 1);
        while (nextString < tokens.Count() && tokens[nextString].CType != ctString) ++nextString;
        if (nextString < tokens.Count()) AddStr(names, tokens[nextString].Name, u";");
      }
      if (address && IsUsableFormat(token.Name)) URL = *address;
    }
    if (!names.Empty()) AddStr(LocalNames, names, u";");
  }
};

std::unique_ptr<THtObjectDictionary> NewFamilies(int32_t capacity) {
  return std::make_unique<THtObjectDictionary>(capacity, true, HtNameOffset(&TCSSCustomFontFamily::Name));
}

}  // namespace

void TCSSStyleSheet::AddFont(const TCSSSection& section) {
  TFontFace face;
  for (const TCSSValue& value : section.Values) face.Take(value);
  if (face.Family.Empty() || face.URL.Empty()) return;
  auto font = std::make_unique<TCSSCustomFont>(face.Family, face.URL, hstring(), face.Style, face.Weight);
  font->LocalNames = face.LocalNames;
  if (!CustomFonts) CustomFonts = NewFamilies(53);
  auto* family = CustomFonts->Get<TCSSCustomFontFamily>(font->Family);
  if (!family) {
    family = new TCSSCustomFontFamily(font->Family);
    CustomFonts->AddObject(family);
  }
  family->AddFont(std::move(font));
}

// Families that are here already stay as they are.
void TCSSStyleSheet::AddFonts(const THtObjectDictionary& families) {
  if (!CustomFonts) CustomFonts = NewFamilies(63);
  for (int32_t i = 0; const auto* family = families.GetNext<TCSSCustomFontFamily>(i);) {
    if (CustomFonts->ContainsKey(family->Name)) continue;
    auto copy = std::make_unique<TCSSCustomFontFamily>(family->Name);
    copy->Assign(*family);
    CustomFonts->AddObject(copy.release());
  }
}

}  // namespace ht
