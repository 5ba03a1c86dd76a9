#pragma once

#include <vector>

#include "htruntime/object.h"
#include "htutils/fontstyle.h"

namespace ht {

class THtFont;
class THtFontCollection;

HT_ENUM(THtFontStretch, uint8_t, fsUndefined, fsUltraCondensed, fsExtraCondensed, fsCondensed,
        fsSemiCondensed, fsStretchNormal, fsSemiExpanded, fsExpanded, fsExtraExpanded, fsUltraExpanded);

/// The name of an OpenType feature: four characters, the first in the lowest byte.
struct THtFontOpentypeTag {
  uint32_t nameTag = 0;
};

struct THtFontOpentypeFeature {
  THtFontOpentypeTag Tag;
  int32_t parameter = 0;
};
using THtFontOpentypeFeatures = std::vector<THtFontOpentypeFeature>;

/// 0 for an empty text. Raises EHtException "An OpenType tag has four characters" for another length.
THtFontOpentypeTag HtMakeOpenTypeTag(std::u16string_view text);
THtFontOpentypeFeature HtMakeOpenTypeFeature(std::u16string_view tag, int32_t parameter);
/// The four characters of the tag.
hstring HtOpenTypeFeatureToStr(const THtFontOpentypeFeature& feature);

/// A text with its width, as caches keep it.
struct THtFontWidthRec {
  hstring s;
  float width = 0;
};

/// Class references of fonts.
class THtFontClass : public TClass {
 public:
  using TClass::TClass;

  /// Height in pixels. Null for a class that has no instances.
  std::unique_ptr<THtFont> Create(THtFontCollection* owner, const hstring& name, float height,
                                  THtFontStyles style) const;
  /// Takes width and weight off the end of a name: of "Arial Light Narrow" the family "Arial" is left. The
  /// weight is added to the style.
  static void DecodeFontName(const hstring& name, hstring& family, THtFontStyles& style,
                             THtFontStretch& stretch);

 protected:
  ~THtFontClass() = default;
};

/// A font as it was asked for, and the metrics that a concrete font fills in. Fonts come from a THtFontCollection, which
/// owns them.
class THtFont : public TObject {
 public:
  using TClassRef = THtFontClass;
  static const THtFontClass* Class();
  const TClass* ClassType() const override { return Class(); }

  virtual void SetScale(float scale) { FScale = scale; }
  virtual void SetStyle(THtFontStyles style) { FStyle = style; }
  /// Called for a new font.
  virtual void Create(THtFontCollection* owner, const hstring& name, float height, THtFontStyles style);

  /// 200 to 800, by the style.
  int32_t Weight() const;

  hstring FFontKey;  // of the collection; the first field, by which it finds the font
  float FSize = 0;   // points
  float FHeight = 0;
  hstring FName, FFamily;  // as asked for, and without width and weight; both decoded by the canvas
  float FScale = 1;
  THtFontStyles FStyle;
  THtFontCollection* FOwner = nullptr;
  THtFontStretch Stretch = fsUndefined;
  THtFontOpentypeFeatures FontFeatureSettings;
  float FixedCharWidth = 0, MinCharWidth = 0, SpaceWidth = 0;
  bool Custom = false;  // registered by the application
  bool Fixed = false;   // all characters have one width
  float Ascent = 0, Descent = 0, LineHeight = 0;
  float UnderlinePosition = 0, UnderlineThikness = 0, StrikeoutPosition = 0;
};

}  // namespace ht
