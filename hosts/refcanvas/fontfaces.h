#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <string>

#include "htcanvas/font.h"
#include "htruntime/bytes.h"

typedef struct FT_FaceRec_* FT_Face;
typedef struct FT_LibraryRec_* FT_Library;
typedef struct hb_font_t hb_font_t;
typedef struct hb_buffer_t hb_buffer_t;
typedef struct _FcPattern FcPattern;
typedef struct _FcConfig FcConfig;

namespace ht {

/// What a font is looked for by.
struct TFaceRequest {
  std::string Family;
  int32_t Weight = 400;  // 100 to 900
  bool Italic = false;
  THtFontStretch Stretch = fsStretchNormal;

  friend auto operator<=>(const TFaceRequest&, const TFaceRequest&) = default;
};

/// Measures of a font in parts of its height. All count away from the baseline: descent and underline downwards.
struct TFaceMetrics {
  float Ascent = 0, Descent = 0, LineHeight = 0;
  float UnderlinePosition = 0, UnderlineThickness = 0, StrikeoutPosition = 0;
  float SpaceWidth = 0, LeastWidth = 0;  // of the blank and of the narrowest visible ASCII character
  bool Fixed = false;                    // all characters have one width
};

/// The font library, which stays as long as a face is open. Neither it nor a face may be used twice at a time.
struct TFontLibrary {
  TFontLibrary();
  ~TFontLibrary();
  TFontLibrary(const TFontLibrary&) = delete;
  TFontLibrary& operator=(const TFontLibrary&) = delete;

  FT_Library Library = nullptr;  // null if it cannot start
  std::mutex Lock;
};

/// An outline font that is open. Sizes are parts of its height, so that one serves for all.
class TFontFace {
 public:
  /// Takes the face over. `data` is what it was opened from, if that is memory.
  TFontFace(std::shared_ptr<TFontLibrary> library, FT_Face face, THtBytes data);
  ~TFontFace();
  TFontFace(const TFontFace&) = delete;
  TFontFace& operator=(const TFontFace&) = delete;

  const TFaceMetrics& Metrics() const { return FMetrics; }
  bool HasChar(char32_t c) const;
  hb_font_t* Shaper() const { return FShaper; }
  /// What Shaper's advances are divided by.
  double AdvancesPerEm() const;

 private:
  void ReadMetrics();

  std::shared_ptr<TFontLibrary> FLibrary;
  FT_Face FFace;
  THtBytes FData;
  hb_font_t* FShaper;
  TFaceMetrics FMetrics;
};

/// A part of a text to be measured.
struct TShapeRequest {
  std::u16string_view Text;
  size_t Start = 0, Count = 0;                       // units from 0
  std::span<const THtFontOpentypeFeature> Features;  // beside those that are on anyway
  bool Ligatures = true;
  bool RightToLeft = false;  // for characters without a direction of their own
};

/// The fonts of the system and the faces that are open. One for the process; any thread.
class TFontFaces {
 public:
  static TFontFaces& Instance();

  /// The installed face that comes nearest, as fontconfig sees it. Null where no outline font is installed.
  std::shared_ptr<TFontFace> Find(const TFaceRequest& request);
  /// A face of font data; null for data that no font can be read from.
  std::shared_ptr<TFontFace> Open(const THtBytes& data);
  /// The families that are installed, each once.
  std::vector<std::string> Families();
  /// The width in parts of the height. Characters that the face lacks are taken from others that fit the request.
  double Width(TFontFace& face, const TFaceRequest& request, const TShapeRequest& text);

 private:
  TFontFaces();
  ~TFontFaces();
  std::shared_ptr<TFontFace> OpenFile(const FcPattern* match);
  std::shared_ptr<TFontFace> FindWith(const TFaceRequest& request, char32_t c);
  TFontFace& FaceFor(char32_t c, TFontFace& face, const TFaceRequest& request);
  double ShapedWidth(const TFontFace& face, const TShapeRequest& text, uint32_t script);

  std::shared_ptr<TFontLibrary> FLibrary;  // its lock is also that of all below
  FcConfig* FFonts;                        // the installed ones; of its own, so that its end frees all
  hb_buffer_t* FBuffer;
  std::map<TFaceRequest, std::shared_ptr<TFontFace>> FFound;
  std::map<std::pair<TFaceRequest, char32_t>, std::shared_ptr<TFontFace>> FFallbacks;
  std::map<std::pair<std::string, int>, std::weak_ptr<TFontFace>> FOpen;  // by file and index
};

}  // namespace ht
