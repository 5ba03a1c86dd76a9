#include <map>
#include <vector>

#include "command.h"
#include "document.h"
#include "document/document.h"
#include "document/widths.h"
#include "htmlcss/cssproptable.h"
#include "htmlpars/lower.h"
#include "json.h"
#include "output.h"
#include "stylevalues.h"

using namespace ht;

namespace {

// A sheet that the document names, from the file system; empty where it is not there.
hstring LoadSheet(const TArguments& arguments, const hstring& address) {
  const std::u16string_view path = address.View().substr(0, address.View().find_first_of(u"?#"));
  try {
    return ReadText(arguments, HtToUtf8(path));
  } catch (const EHtException&) {
    return {};
  }
}

TDocumentView AskedView(const TArguments& arguments) {
  constexpr int kWidest = 1000000;
  TDocumentView view;
  if (arguments.Has("--width")) view.Width = static_cast<float>(arguments.Number("--width", 1, kWidest));
  if (!arguments.Has("--media")) return view;
  const std::string_view name = arguments.Value("--media");
  const int media = HtEnumOf<TCSSMedia>().Find(u"cm", HtFromUtf8(name));
  if (media < 0 || media == cmUnknown) throw EUsage("unknown medium " + std::string(name));
  view.Media = static_cast<TCSSMedia>(media);
  return view;
}

std::vector<hstring> AskedProperties(const TArguments& arguments) {
  std::vector<hstring> names;
  for (size_t i = 2; i < arguments.OperandCount(); ++i) {
    hstring name = HtFromUtf8(arguments.Operand(i));
    hLower(name);
    if (!FindCSSProp(name)) throw EUsage("unknown property " + arguments.Operand(i));
    names.push_back(name);
  }
  return names;
}

// The pointer on an element is on those around it, too.
void Hover(TDocument& document, const hstring& selector) {
  const TIntf<IHtNodeList> nodes = document.JQuery(selector);
  for (int32_t i = 0; i < nodes->GetCount(); ++i)
    for (auto* node = static_cast<TDocumentNode*>(nodes->GetNode(i)); node; node = node->GetParent())
      node->SetPseudoClass(pcHover, true);
}

using TValues = std::vector<hstring>;

// An element of which nothing is declared but a font size and a color, on which other properties depend.
class TPlainElement final : public TDocument {
 public:
  TPlainElement(float fontSize, uint32_t color) : FColor(color) {
    FontSize = fontSize;
    SetTag(u"x"_hs);
    UpdateStyles();
  }
  uint32_t GetDefaultTextColor() const override { return FColor; }
  TValues Values() const {
    TValues values;
    for (const TStyleProperty& property : StyleProperties()) values.push_back(property.Value(*Style()));
    return values;
  }

 private:
  const uint32_t FColor;
};

void WriteOtherThanInitial(TJson& json, TDocumentStyle& style) {
  static std::map<std::pair<float, uint32_t>, TValues> initial;
  const auto initialFor = [](float fontSize, uint32_t color) -> const TValues& {
    TValues& values = initial[{fontSize, color}];
    if (values.empty()) values = TPlainElement(fontSize, color).Values();
    return values;
  };
  static const TDocument kPlain;
  const TValues& ofAll = initialFor(kPlain.FontSize, kPlain.GetDefaultTextColor());
  const TValues& ofThis = initialFor(style.IntFontSize, style.TextColor());
  for (size_t i = 0; i < ofAll.size(); ++i) {
    const auto& [prop, valueOf] = StyleProperties()[i];
    const bool isBasis = prop == cspFontSize || prop == cspColor;
    if (const hstring value = valueOf(style); value != (isBasis ? ofAll : ofThis)[i])
      json.Key(CSSPropOf(prop).Name).Json(value);
  }
}

void PrintStyle(TDocumentNode& element, const std::vector<hstring>& names) {
  TJson json;
  json.BeginObject().Key(u"path").Text(element.Path()).Key(u"style").BeginObject();
  if (names.empty()) WriteOtherThanInitial(json, *element.Style());
  for (const hstring& name : names) json.Key(name).Json(StyleValue(*element.Style(), name));
  PrintLine(json.EndObject().EndObject().GetAsString());
}

int RunStyle(const TArguments& arguments) {
  const std::vector<hstring> names = AskedProperties(arguments);
  TDocument document;
  document.SetView(AskedView(arguments));
  document.BaseURL = HtFromUtf8(arguments.Operand(0));
  document.Sheets().Loader = [&](const hstring& address) { return LoadSheet(arguments, address); };
  for (std::string_view sheet : arguments.Values("--css"))
    document.Sheets().Add(ReadText(arguments, std::string(sheet)), HtFromUtf8(sheet));
  ReadDocument(arguments, arguments.Operand(0), document);

  document.QueriedPseudos = kFoundPseudos;
  document.UpdateStyles();
  if (arguments.Has("--hover")) {
    Hover(document, HtFromUtf8(arguments.Value("--hover")));
    document.UpdateStyles();
  }
  HtCalcWidths(document);
  const TIntf<IHtNodeList> nodes = document.JQuery(HtFromUtf8(arguments.Operand(1)));
  for (int32_t i = 0; i < nodes->GetCount(); ++i)
    PrintStyle(static_cast<TDocumentNode&>(*nodes->GetNode(i)), names);
  return nodes->GetCount() > 0 ? kFound : kNothingFound;
}

constexpr TOption kOptions[] = {
    {"--css", true}, {"--media", true}, {"--width", true}, {"--hover", true}, kEncodingOption};

}  // namespace

extern const TCommand kStyleCommand = {
    "style",
    "print the style of elements",
    "Usage: htdoc style [--css SHEET]... [--media NAME] [--width PX] [--hover SELECTOR]\n"
    "                   [--encoding NAME] FILE SELECTOR [PROPERTY...]\n"
    "Prints, for each element of FILE below the root that SELECTOR finds, its path and the\n"
    "values of the properties as JSON on a line; without a PROPERTY, of all that are not what\n"
    "they are where nothing is declared. Sheets that the document embeds, links or imports\n"
    "count as far as they are files here.\n"
    "\n"
    "Options:\n"
    "  --css SHEET      a sheet behind those of the document; may be given several times\n"
    "  --media NAME     the medium: screen (as without it), print, handheld, tv ...\n"
    "  --width PX       the width of the view, 1024 without it; percentages, as far as they\n"
    "                   need no layout, are of it\n"
    "  --hover SELECTOR as if the pointer were on these elements\n" HTDOC_ENCODING_HELP
    "\n"
    "The exit status is 1 when nothing is found.\n",
    kOptions,
    "FILE SELECTOR [PROPERTY...]",
    RunStyle,
};
