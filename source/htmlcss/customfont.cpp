#include "htmlcss/customfont.h"

#include <algorithm>
#include <array>

#include "htmlpars/lower.h"
#include "htruntime/exception.h"
#include "htruntime/numformat.h"

namespace ht {

namespace {

// Compared in this order.
constexpr std::array<std::u16string_view, 18> kStyleWords{
    u" narrow",     u" extrablack", u" ultrablack", u" black",     u" heavy",  u" demibold",
    u" semibold",   u" bold",       u" extrabold",  u" ultrabold", u" medium", u" light",
    u" extralight", u" ultralight", u" thin",       u" regular",   u" italic", u" fat"};

hstring Lowered(hstring text) {
  hLower(text);
  return text;
}

constexpr THtFontStyles kLight{hfsLight, hfsUltraLight};
constexpr THtFontStyles kHeavy{hfsBold, hfsBlack};

}  // namespace

bool ParseFontFamilyName(const hstring& name, hstring& family, hstring& styleWord) {
  const std::u16string_view text = name;
  for (std::u16string_view word : kStyleWords) {
    if (text.size() < word.size() || !HtSameAscii(text.substr(text.size() - word.size()), word)) continue;
    styleWord = word.substr(1);
    family = hstring(text.substr(0, text.size() - word.size()));
    return true;
  }
  family = name;
  styleWord.Clear();
  return false;
}

TCSSCustomFont::TCSSCustomFont(const hstring& family, const hstring& url, const hstring& format,
                               const hstring& styleName, const hstring& weightName)
    : Family(Lowered(family)), URL(url), Format(format), StyleName(styleName), WeightName(weightName) {
  NormaliseStyle();
  NormaliseWeight();
}

void TCSSCustomFont::NormaliseStyle() {
  StyleName = StyleName.Empty() ? u"normal"_hs : Lowered(StyleName);
  if (StyleName == u"italic") {
    FontStyle = cfsItalic;
    Styles.Include(hfsItalic);
  } else if (StyleName.View().starts_with(u"oblique")) {
    FontStyle = cfsOblique;
  }
}

void TCSSCustomFont::NormaliseWeight() {
  WeightName = WeightName.Empty() ? u"400"_hs : Lowered(WeightName);
  if (WeightName == u"normal") WeightName = u"400"_hs;
  if (WeightName == u"bold") WeightName = u"700"_hs;
  int32_t weight = 0;
  HtTryStrToInt(WeightName, weight);
  Weight = std::clamp(weight, 0, 1000);
  if (Weight == 0) Weight = 400;
  switch (Weight) {
    case 100: FontWeight = fw100; break;
    case 200:
      FontWeight = fw200;
      Styles.Include(hfsUltraLight);
      break;
    case 300:
      FontWeight = fw300;
      Styles.Include(hfsLight);
      break;
    case 500: FontWeight = fw500; break;
    case 600: FontWeight = fw600; break;
    case 700:
      FontWeight = fwBold;
      Styles.Include(hfsBold);
      break;
    case 900:
      FontWeight = fw900;
      Styles.Include(hfsBlack);
      break;
    default: break;
  }
}

TCSSCustomFontFamily::TCSSCustomFontFamily(const hstring& name) : Name(Lowered(name)) {}

void TCSSCustomFontFamily::Assign(const TCSSCustomFontFamily& other) {
  Name = other.Name;
  for (const auto& from : other.Fonts) {
    auto font = std::make_unique<TCSSCustomFont>(from->Family, from->URL, from->Format, from->StyleName,
                                                 from->WeightName);
    font->LocalNames = from->LocalNames;
    font->Styles = from->Styles;
    font->FontStyle = from->FontStyle;
    font->FontWeight = from->FontWeight;
    font->Weight = from->Weight;
    AddFont(std::move(font));
  }
}

TCSSCustomFont* TCSSCustomFontFamily::GetFont(THtFontStyles styles) const {
  const auto first = [this](const auto& fits) -> TCSSCustomFont* {
    for (const auto& font : Fonts)
      if (fits(font->Styles)) return font.get();
    return nullptr;
  };
  THtFontStyles wanted = styles - THtFontStyles{hfsUnderline, hfsStrikeOut};
  const auto isExact = [&](THtFontStyles have) { return have == wanted; };
  if (TCSSCustomFont* font = first(isExact)) return font;
  // A face of the neighbouring weight, else the search goes on without the weight.
  for (THtFontStyles weights : {kLight, kHeavy}) {
    if ((wanted * weights).Empty()) continue;
    wanted = wanted - weights;
    const auto isNear = [&](THtFontStyles have) {
      return !(have * weights).Empty() && have - weights == wanted;
    };
    if (TCSSCustomFont* font = first(isNear)) return font;
  }
  if (wanted.Contains(hfsItalic)) {
    const auto isItalic = [](THtFontStyles have) { return have.Contains(hfsItalic); };
    if (TCSSCustomFont* font = first(isItalic)) return font;
  }
  return Fonts.empty() ? nullptr : Fonts[0].get();
}

TCSSCustomFont* TCSSCustomFontFamily::GetFontByIndex(int32_t index) const {
  if (index < 0 || index >= Count()) throw ERangeError(u"Font index out of range"_hs);
  return Fonts[static_cast<size_t>(index)].get();
}

}  // namespace ht
