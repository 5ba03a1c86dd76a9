#include "htcanvas/font.h"

#include "htcanvas/canvasclasses.h"
#include "htcanvas/fontcollection.h"
#include "htmlpars/lower.h"
#include "htruntime/exception.h"

namespace ht {

namespace {

template <class TValue>
struct TSuffix {
  std::u16string_view Text;
  TValue Value;
};

constexpr TSuffix<THtFontStretch> kStretches[] = {
    {u" ultracondensed", fsUltraCondensed},
    {u" extracondensed", fsExtraCondensed},
    {u" condensed", fsCondensed},
    {u" narrow", fsCondensed},
    {u" semicondensed", fsSemiCondensed},
    {u" semiexpanded", fsSemiExpanded},
    {u" expanded", fsExpanded},
    {u" extraexpanded", fsExtraExpanded},
    {u" ultraexpanded", fsUltraExpanded},
};

constexpr TSuffix<int32_t> kWeights[] = {
    {u" thin", 100},      {u" extralight", 200}, {u" ultralight", 200}, {u" light", 300},
    {u" regular", 400},   {u" medium", 500},     {u" demibold", 600},   {u" semibold", 600},
    {u" extrabold", 800}, {u" ultrabold", 800},  {u" black", 900},      {u" heavy", 900},
};

constexpr int32_t kNormalWeight = 400;

// Cuts off the first suffix of the table that ends the name.
template <class TValue, size_t kCount>
TValue TakeSuffix(const TSuffix<TValue> (&table)[kCount], hstring& name, TValue otherwise) {
  for (const TSuffix<TValue>& suffix : table) {
    const std::u16string_view text = name;
    if (text.size() < suffix.Text.size() ||
        !HtSameAscii(text.substr(text.size() - suffix.Text.size()), suffix.Text))
      continue;
    name = text.substr(0, text.size() - suffix.Text.size());
    return suffix.Value;
  }
  return otherwise;
}

void AddWeight(THtFontStyles& style, int32_t weight) {
  if (weight <= 200)
    style.Include(hfsUltraLight);
  else if (weight == 300)
    style.Include(hfsLight);
  else if (weight >= 800)
    style.Include(hfsBlack);
  else if (weight == 700)
    style.Include(hfsBold);
  else if (weight >= 500)
    style.Include(hfsSemibold);
}

}  // namespace

THtFontOpentypeTag HtMakeOpenTypeTag(std::u16string_view text) {
  constexpr size_t kLength = 4;
  THtFontOpentypeTag tag;
  if (text.empty()) return tag;
  if (text.size() < kLength) throw EHtException(u"An OpenType tag has four characters"_hs);
  for (size_t i = 0; i < kLength; ++i) tag.nameTag |= static_cast<uint32_t>(text[i] & 0xFF) << 8 * i;
  return tag;
}

THtFontOpentypeFeature HtMakeOpenTypeFeature(std::u16string_view tag, int32_t parameter) {
  return {HtMakeOpenTypeTag(tag), parameter};
}

hstring HtOpenTypeFeatureToStr(const THtFontOpentypeFeature& feature) {
  hstring text;
  for (int i = 0; i < 4; ++i) text += static_cast<char16_t>(feature.Tag.nameTag >> 8 * i & 0xFF);
  return text;
}

std::unique_ptr<THtFont> THtFontClass::Create(THtFontCollection* owner, const hstring& name, float height,
                                              THtFontStyles style) const {
  std::unique_ptr<THtFont> font(static_cast<THtFont*>(NewInstance().release()));
  if (font) font->Create(owner, name, height, style);
  return font;
}

void THtFontClass::DecodeFontName(const hstring& name, hstring& family, THtFontStyles& style,
                                  THtFontStretch& stretch) {
  hstring rest = name;
  stretch = TakeSuffix(kStretches, rest, fsStretchNormal);
  AddWeight(style, TakeSuffix(kWeights, rest, kNormalWeight));
  family = rest;
}

const THtFontClass* THtFont::Class() {
  static constexpr TClassOf<THtFont> kClass(u"THtFont", []() -> const TClass* { return TObject::Class(); });
  return &kClass;
}

void THtFont::Create(THtFontCollection* owner, const hstring& name, float height, THtFontStyles style) {
  constexpr float kPointsPerPixel = 72.f / 96;
  FOwner = owner;
  FName = name;
  FHeight = height;
  FSize = height * kPointsPerPixel;
  FStyle = style;
  THtFontClass::DecodeFontName(name, FFamily, FStyle, Stretch);
  if (owner && owner->CanvasClass()) {
    owner->CanvasClass()->DecodeFontFamily(FFamily);
    owner->CanvasClass()->DecodeFontFamily(FName);
  }
  FScale = 1;
}

int32_t THtFont::Weight() const {
  constexpr struct {
    THtFontStyle Style;
    int32_t Weight;
  } kByStyle[] = {{hfsUltraLight, 200}, {hfsLight, 300}, {hfsSemibold, 600}, {hfsBold, 700}, {hfsBlack, 800}};
  for (const auto& row : kByStyle)
    if (FStyle.Contains(row.Style)) return row.Weight;
  return kNormalWeight;
}

}  // namespace ht
