#pragma once

#include "htcanvas/font.h"
#include "htdictionary/objectdictionary.h"
#include "htruntime/bytes.h"
#include "htruntime/stringlist.h"

namespace ht {

class THtCanvasClass;
class TStream;

/// What a font is asked for without: each text has its own.
constexpr THtFontStyles kHtFontLines{hfsUnderline, hfsStrikeOut};

/// A font that the application has registered with its data.
class THtCustomFont : public TObject {
  HT_CLASS(THtCustomFont, TObject)

 public:
  hstring FontNameLower, FontName;
  THtBytes FontData;
  THtFontStyles FontStyle;
};

/// The fonts of a canvas class, each made once and kept under its name, size and style:
///
///   auto fonts = canvas.CanvasClass()->CreateFontCollection();
///   THtFont& font = fonts->GetFont(u"Arial"_hs, 16, {hfsBold});   // owned by the collection
class THtFontCollection : public THtObjectDictionary {
  HT_CLASS(THtFontCollection, THtObjectDictionary)

 public:
  THtFontCollection(const THtCanvasClass* canvasClass, bool shared);

  /// The font of that name, height in pixels and style. Underline and strike-out do not count: the caller sets them with
  /// SetStyle. Of the fallbacks only the names count here. Null where the canvas class has no fonts.
  virtual THtFont* GetFont(const hstring& name, float size, THtFontStyles style,
                           const TStringList* fallbacks = nullptr);
  /// Reads the file, if there is one.
  virtual void RegisterCustomFont(const hstring& name, const hstring& fileName, THtFontStyles style);
  /// Both do nothing here.
  virtual void RegisterCustomFontData(const hstring& name, TStream& stream, THtFontStyles style);
  virtual void AssignCustomFonts(const THtFontCollection& source);
  /// The data of a registered font; empty here.
  virtual THtBytes GetFontData(const hstring& name) const;

  /// Adds the family of each font, once.
  void GetFonts(TStringList& list) const;
  const THtCanvasClass* CanvasClass() const { return FCanvasClass; }

  bool Shared;

 protected:
  THtObjectDictionary FCustomFonts;  // of THtCustomFont, owned, by FontNameLower

 private:
  const THtCanvasClass* FCanvasClass;
};

/// A font as exporters see it. Widths are thousandths of the em square. What a concrete font does not answer is 0.
class THtBaseFont : public TObject {
  HT_CLASS(THtBaseFont, TObject)

 public:
  hstring FontName, FamilyName;
  int32_t Ascent = 0, Descent = 0, UnderlinePosition = 0, UnderlineThickness = 0, ItalicAngle = 0,
          MissingWidth = 0;
  THtFontStyles Style;
  int32_t FirstChar = 0, LastChar = 0;
  bool IsTrueType = false;

  virtual int32_t GetGlyphCount() const { return 0; }
  virtual int32_t GetWidths(int32_t) const { return 0; }
  virtual int32_t UnicodetoGID(int32_t) const { return 0; }
  virtual int32_t GIDtoUnicode(int32_t) const { return 0; }
  virtual int32_t GIDtoCID(int32_t) const { return 0; }
  /// The table from glyphs to text; null here.
  virtual TObject* ToUnicode() const { return nullptr; }

  int64_t TextWidth(std::u16string_view text) const;
};

}  // namespace ht
