#include "htcanvas/canvasclasses.h"

#include <algorithm>
#include <mutex>

#include "htcanvas/bitmap.h"
#include "htcanvas/brush.h"
#include "htcanvas/canvas.h"
#include "htcanvas/custompath.h"
#include "htcanvas/fontcollection.h"
#include "htcanvas/page.h"
#include "htcanvas/pen.h"
#include "htcanvas/splitstring.h"
#include "htruntime/unicode.h"

namespace ht {

const THtCanvasClass* HtDefaultCanvasClass = nullptr;
const THtCanvasClass* HtFMXDefaultCanvasClass = nullptr;
const THtCanvasClass* HtUIDefaultCanvasClass = nullptr;
THtTextStyle HtDefaultTextStyle;

namespace {

struct TFontAlias {
  std::u16string_view Name;
  hstring Font;
};
constexpr TFontAlias kFontAliases[] = {
    {u"Helvetica", u"Arial"_hs},    {u"monospace", u"Courier New"_hs}, {u"serif", u"Times New Roman"_hs},
    {u"sans-serif", u"Arial"_hs},   {u"system-ui", u"Segoe UI"_hs},    {u"cursive", u"Lucida Calligraphy"_hs},
    {u"fantasy", u"Harrington"_hs}, {u"times", u"Times New Roman"_hs},
};

// What may stand at the end of a font's name without being part of its family; taken off in this order.
constexpr std::u16string_view kFaceSuffixes[] = {u" narrow", u" black", u" bold",       u" extrabold",
                                                 u" medium", u" light", u" extralight", u" regular"};

// The dictionaries of fonts are those of classes, which all threads share.
std::mutex& FontLock() {
  static std::mutex lock;
  return lock;
}

hstring LowerCase(hstring text) {
  char16_t* units = text.Unique();
  std::transform(text.begin(), text.end(), units, HtToLower);
  return text;
}

void FillFontDictionary(const THtCanvasClass& canvasClass, THtStringList& fonts) {
  TStringList names;
  canvasClass.GetFonts(names);
  for (int32_t i = 0; i < names.GetCount(); ++i) fonts.AddKey(LowerCase(names.Get(i)));
}

TIntf<IHtFontService>& TheFontService() {
  static TIntf<IHtFontService> service;
  return service;
}

}  // namespace

std::unique_ptr<THtCanvas> THtCanvasClass::NewCanvas() const {
  return std::unique_ptr<THtCanvas>(static_cast<THtCanvas*>(NewInstance().release()));
}

const THtBrushClass* THtCanvasClass::BrushClass() const { return THtBrush::Class(); }
const THtPenClass* THtCanvasClass::PenClass() const { return THtPen::Class(); }
const THtFontClass* THtCanvasClass::FontClass() const { return THtFont::Class(); }
const THtImageClass* THtCanvasClass::ImageClass() const { return THtImage::Class(); }
const THtPathClass* THtCanvasClass::PathClass() const { return THtCustomPath::Class(); }
const THtPageClass* THtCanvasClass::PageClass() const { return THtPage::Class(); }
const THtCanvasClass* THtCanvasClass::PrintCanvasClass() const { return nullptr; }
const THtBitmapClass* THtCanvasClass::BitmapClass() const { return THtBitmap::Class(); }
THtFontCollection* THtCanvasClass::SharedFontCollection() const { return nullptr; }

std::unique_ptr<THtFontCollection> THtCanvasClass::CreateFontCollection() const {
  return std::make_unique<THtFontCollection>(this, false);
}

THtCanvasFlags THtCanvasClass::GetFlags() const {
  return {hcfNeedBuffer, hcfCacheTextWidth, hcfScaleCanvasDrawing};
}

void THtCanvasClass::GetFonts(TStringList&) const {}

bool THtCanvasClass::HasFont(const hstring& name) const {
  const std::lock_guard guard(FontLock());
  THtStringList& fonts = FontDictionary();
  if (fonts.GetCount() == 0) FillFontDictionary(*this, fonts);
  const hstring lower = LowerCase(name);
  if (fonts.HasKey(lower)) return true;
  std::u16string_view family = lower;
  for (const std::u16string_view suffix : kFaceSuffixes)
    if (family.ends_with(suffix)) family.remove_suffix(suffix.size());
  return fonts.HasKey(family);
}

THtBytes THtCanvasClass::ImageListItemtoBytes(TObject*, int32_t) const { return {}; }

void THtCanvasClass::SplitString(const hstring& text, THtTextRuns& runs,
                                 const THtTextRunClass* runClass) const {
  HtSplitString(text, runs, runClass);
}

void THtCanvasClass::DecodeFontFamily(hstring& name) const {
  for (const TFontAlias& alias : kFontAliases)
    if (HtSameText(name, alias.Name)) {
      name = alias.Font;
      return;
    }
}

bool THtCanvasClass::PointInPath(float, float, const THtPath&) const { return false; }
bool THtCanvasClass::PointOnPath(float, float, const THtPath&, float) const { return false; }

void THtCanvasClass::RegisterFontService(TIntf<IHtFontService> service) {
  TheFontService() = std::move(service);
}
const TIntf<IHtFontService>& THtCanvasClass::FontService() { return TheFontService(); }

}  // namespace ht
