#include "htcanvas/refcanvasclass.h"

#include "htcanvas/fontcollection.h"
#include "htruntime/exception.h"

namespace ht {

const THtCanvasClass& THtRefCanvasClass::RefCanvas() const {
  const THtCanvasClass* ref = HtFMXDefaultCanvasClass ? HtFMXDefaultCanvasClass : HtDefaultCanvasClass;
  if (!ref) throw EHtException(u"No reference canvas class is set"_hs);
  return *ref;
}

THtStringList& THtRefCanvasClass::FontDictionary() const { return RefCanvas().FontDictionary(); }
const THtBrushClass* THtRefCanvasClass::BrushClass() const { return RefCanvas().BrushClass(); }
const THtPenClass* THtRefCanvasClass::PenClass() const { return RefCanvas().PenClass(); }
const THtFontClass* THtRefCanvasClass::FontClass() const { return RefCanvas().FontClass(); }
const THtImageClass* THtRefCanvasClass::ImageClass() const { return RefCanvas().ImageClass(); }
const THtPathClass* THtRefCanvasClass::PathClass() const { return RefCanvas().PathClass(); }
const THtBitmapClass* THtRefCanvasClass::BitmapClass() const { return RefCanvas().BitmapClass(); }
THtFontCollection* THtRefCanvasClass::SharedFontCollection() const {
  return RefCanvas().SharedFontCollection();
}
std::unique_ptr<THtFontCollection> THtRefCanvasClass::CreateFontCollection() const {
  return RefCanvas().CreateFontCollection();
}
void THtRefCanvasClass::GetFonts(TStringList& list) const { RefCanvas().GetFonts(list); }
bool THtRefCanvasClass::HasFont(const hstring& name) const { return RefCanvas().HasFont(name); }
THtBytes THtRefCanvasClass::ImageListItemtoBytes(TObject* imageList, int32_t index) const {
  return RefCanvas().ImageListItemtoBytes(imageList, index);
}
float THtRefCanvasClass::MeasureString(const hstring& text, THtFont& font, const THtTextStyle& style,
                                       float value, int32_t start, int32_t count) const {
  return RefCanvas().MeasureString(text, font, style, value, start, count);
}
bool THtRefCanvasClass::PointInPath(float x, float y, const THtPath& path) const {
  return RefCanvas().PointInPath(x, y, path);
}
bool THtRefCanvasClass::PointOnPath(float x, float y, const THtPath& path, float tolerance) const {
  return RefCanvas().PointOnPath(x, y, path, tolerance);
}

}  // namespace ht
