#pragma once

#include "htcanvas/textstyle.h"
#include "htdictionary/htstringlist.h"
#include "htruntime/bytes.h"
#include "htruntime/interface.h"
#include "htruntime/stringlist.h"

namespace ht {

class THtBitmapClass;
class THtBrushClass;
class THtCanvas;
class THtFont;
class THtFontClass;
class THtFontCollection;
class THtImageClass;
class THtPageClass;
class THtPath;
class THtPathClass;
class THtPenClass;
class THtTextRunClass;
class THtTextRuns;

/// What a canvas can do and how it wants to be used.
HT_ENUM(THtCanvasFlag, uint8_t, hcfNeedBuffer, hcfCacheTextWidth, hcfScaleCanvasDrawing,
        hcfSupportsTextLayouts, hcfSupportsSimpleLayouts, hcfFullRepaint, hcfSupportsImageRef, hcfHasVSync,
        hcfIntCoordinates);
using THtCanvasFlags = TSet<THtCanvasFlag>;

/// Fonts from elsewhere. The library only keeps the reference; a concrete canvas derives the interface that it asks.
class IHtFontService : public IHtInterface {};

/// The class reference of a canvas: what it answers before any canvas exists. A document obtains resources that fit its
/// canvas through it. A concrete canvas derives its own class from this one and names it:
///
///   class TScreenCanvasClass : public THtCanvasClass { … };
///   class TScreenCanvas : public THtCanvas {
///     HT_CLASS(TScreenCanvas, THtCanvas)
///    public:
///     using TClassRef = TScreenCanvasClass;
///     …
///   };
///   HtDefaultCanvasClass = TScreenCanvas::Class();
class THtCanvasClass : public TClass {
 public:
  using TClass::TClass;

  /// A new canvas of this class; null for a class that cannot be made without arguments.
  std::unique_ptr<THtCanvas> NewCanvas() const;

  /// The installed fonts, lower-cased. Filled by HasFont.
  virtual THtStringList& FontDictionary() const = 0;
  virtual const THtBrushClass* BrushClass() const;
  virtual const THtPenClass* PenClass() const;
  virtual const THtFontClass* FontClass() const;
  virtual const THtImageClass* ImageClass() const;
  virtual const THtPathClass* PathClass() const;
  virtual const THtPageClass* PageClass() const;
  /// Null where there is no other class to print with, as here.
  virtual const THtCanvasClass* PrintCanvasClass() const;
  virtual const THtBitmapClass* BitmapClass() const;
  /// The collection that all canvases of the class share; null here.
  virtual THtFontCollection* SharedFontCollection() const;
  /// A new collection whose fonts are of this class.
  virtual std::unique_ptr<THtFontCollection> CreateFontCollection() const;
  /// hcfNeedBuffer, hcfCacheTextWidth and hcfScaleCanvasDrawing here.
  virtual THtCanvasFlags GetFlags() const;
  /// Adds the names of the installed fonts. Does nothing here.
  virtual void GetFonts(TStringList& list) const;
  /// Whether a font is installed. Case does not count, and a weight or width at the end of the name may be missing from
  /// the font's: "Arial Light" finds "Arial". Any thread.
  virtual bool HasFont(const hstring& name) const;
  /// The image of that index as bytes; empty here.
  virtual THtBytes ImageListItemtoBytes(TObject* imageList, int32_t index) const;
  /// The width in pixels of `count` characters from position `start` (from 1) on. What `value` says is between the canvas
  /// and its host.
  virtual float MeasureString(const hstring& text, THtFont& font, const THtTextStyle& style, float value,
                              int32_t start, int32_t count) const = 0;
  /// Splits a text where lines may break; see HtSplitString. Appends runs of the class.
  virtual void SplitString(const hstring& text, THtTextRuns& runs, const THtTextRunClass* runClass) const;
  /// Puts the name of a usual font in the place of a generic family ("serif") or of one that is rarely installed.
  virtual void DecodeFontFamily(hstring& name) const;
  /// Whether a point lies in the path, or on its line. False here.
  virtual bool PointInPath(float x, float y, const THtPath& path) const;
  virtual bool PointOnPath(float x, float y, const THtPath& path, float tolerance) const;

  /// One for the whole process.
  static void RegisterFontService(TIntf<IHtFontService> service);
  static const TIntf<IHtFontService>& FontService();

 protected:
  ~THtCanvasClass() = default;
};

// The classes that stand in where a canvas has no fonts of its own. A host sets them once, before anything is drawn.

extern const THtCanvasClass* HtDefaultCanvasClass;
extern const THtCanvasClass* HtFMXDefaultCanvasClass;
extern const THtCanvasClass* HtUIDefaultCanvasClass;

}  // namespace ht
