#include <algorithm>
#include <vector>

#include "command.h"
#include "document.h"
#include "htmlcss/htmlcss.h"
#include "json.h"
#include "output.h"

using namespace ht;

namespace {

void WriteValues(TJson& json, std::u16string_view key, const TCSSValues& values) {
  json.Key(key).BeginArray();
  for (const TCSSValue& value : values)
    json.BeginObject()
        .Key(u"name")
        .Text(value.Name)
        .Key(u"text")
        .Text(CSSValuetoString(value))
        .Key(u"important")
        .Bool(value.Important)
        .EndObject();
  json.EndArray();
}

void PrintSection(const TCSSSection& section) {
  TJson json;
  json.BeginObject().Key(u"selectors").BeginArray();
  for (int32_t i = 0; i < section.Selectors.GetCount(); ++i) {
    const TCSSSelector* selector = section.Selectors.GetSelector(i);
    json.BeginObject()
        .Key(u"text")
        .Text(selector->AsString())
        .Key(u"weight")
        .Number(selector->Weight)
        .Key(u"order")
        .Number(selector->Order)
        .EndObject();
  }
  json.EndArray().Key(u"media");
  const TCSSMediaSet* media = section.MediaSet;
  media&& media != TCSSMediaSet::Default() ? json.Text(media->AsString()) : json.Null();
  WriteValues(json, u"values", section.Values);
  WriteValues(json, u"compiled", section.CompiledValues);
  PrintLine(json.EndObject().GetAsString());
}

void PrintKeyFrames(const TCSSKeyFrameMap& map) {
  for (const TCSSKeyFrameMap::TFiled& filed : map.Filed()) {
    TJson json;
    json.BeginObject().Key(u"keyframes").Text(filed.Name).Key(u"steps").BeginArray();
    const TCSSKeyFrameList& list = *map.GetKeyFrameList(filed.Name);
    for (int32_t i = 0; i < list.GetCount(); ++i)
      if (list.GetObject(i) == filed.Section) json.Number(list.Get(i));
    json.EndArray();
    WriteValues(json, u"values", filed.Section->Values);
    PrintLine(json.EndObject().GetAsString());
  }
}

void PrintNames(std::u16string_view key, const std::vector<hstring>& names) {
  if (names.empty()) return;
  TJson json;
  json.BeginObject().Key(key).BeginArray();
  for (const hstring& name : names) json.Text(name);
  PrintLine(json.EndArray().EndObject().GetAsString());
}

// The names that a kind of declaration defines, each once, in the order of the sheet.
template <class TName>
std::vector<hstring> DefinedNames(const TCSSStyleSheet& sheet, const TName& nameOf) {
  std::vector<hstring> names;
  for (int32_t i = 0; i < sheet.fSections.GetCount(); ++i) {
    const TCSSSection* section = sheet.GetSection(i);
    for (const TCSSValue& value : section->Values) {
      const hstring name = nameOf(*section, value);
      if (!name.Empty() && std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    }
  }
  return names;
}

hstring VariableName(const TCSSSection&, const TCSSValue& value) {
  const std::u16string_view name = value.NameToken.Name;
  return name.starts_with(u"--") ? hstring(name.substr(2)) : hstring();
}

hstring FontFamilyName(const TCSSSection& section, const TCSSValue& value) {
  if (!section.FontFace || value.Name != u"font-family" || value.Tokens.Empty()) return {};
  hstring name = value.Tokens[0].Name;
  hLower(name);
  return name;
}

void PrintFonts(const TCSSStyleSheet& sheet) {
  if (!sheet.CustomFonts || sheet.CustomFonts->GetCount() == 0) return;
  TJson json;
  json.BeginObject().Key(u"fonts").BeginArray();
  for (const hstring& name : DefinedNames(sheet, FontFamilyName)) {
    const auto* family = sheet.CustomFonts->Get<TCSSCustomFontFamily>(name);
    for (int32_t i = 0; family && i < family->Count(); ++i) {
      const TCSSCustomFont& font = *family->Fonts[static_cast<size_t>(i)];
      json.BeginObject()
          .Key(u"family")
          .Text(font.Family)
          .Key(u"url")
          .Text(font.URL)
          .Key(u"style")
          .Text(font.StyleName);
      json.Key(u"weight").Text(font.WeightName).Key(u"local").Text(font.LocalNames).EndObject();
    }
  }
  PrintLine(json.EndArray().EndObject().GetAsString());
}

void Explain(TCSSStyleSheet& sheet) {
  for (int32_t i = 0; i < sheet.fSections.GetCount(); ++i) PrintSection(*sheet.GetSection(i));
  if (sheet.KeyFrames) PrintKeyFrames(*sheet.KeyFrames);
  PrintNames(u"variables", DefinedNames(sheet, VariableName));
  std::vector<hstring> imports;
  for (int32_t i = 0; i < sheet.Imports().GetCount(); ++i) imports.push_back(sheet.Imports().Get(i));
  PrintNames(u"imports", imports);
  PrintFonts(sheet);
}

int RunCss(const TArguments& arguments) {
  const bool minify = arguments.Has("--minify"), dark = arguments.Has("--dark"),
             explain = arguments.Has("--explain");
  if (minify + dark + explain > 1) throw EUsage("only one of --minify, --dark and --explain goes");
  TCSSStyleSheet sheet;
  sheet.Parse(ReadText(arguments, arguments.Operand(0)));
  if (minify) sheet.Minify();
  if (dark) sheet.ConvertLighttoDark();
  explain ? Explain(sheet) : Print(sheet.AsString());
  return kFound;
}

constexpr TOption kOptions[] = {
    {"--minify", false}, {"--dark", false}, {"--explain", false}, kEncodingOption};

}  // namespace

extern const TCommand kCssCommand = {
    "css",
    "print a style sheet as it was understood",
    "Usage: htdoc css [--minify | --dark | --explain] [--encoding NAME] SHEET\n"
    "Prints the rules of SHEET. What makes no sense in CSS is left out.\n"
    "\n"
    "Options:\n"
    "  --minify         with four equal sides joined into shorthands\n"
    "  --dark           with its colours turned for a dark ground\n"
    "  --explain        as JSON, one object a line: each rule with its selectors and their\n"
    "                   weights, its declarations, and the same with all shorthands taken\n"
    "                   apart; then key frames, variables, imports and fonts\n" HTDOC_ENCODING_HELP,
    kOptions,
    "SHEET",
    RunCss,
};
