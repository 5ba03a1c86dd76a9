#include "refcanvas/fontfaces.h"

#include <algorithm>
#include <array>
#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include <hb-ft.h>
#include <hb.h>

#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

namespace ht {

namespace {

constexpr double kFixedPoint = 64;  // FreeType and the shaper count in 26.6

// fontconfig's widths, in the order of THtFontStretch; an undefined one is normal.
constexpr std::array<int, 10> kWidths{FC_WIDTH_NORMAL,       FC_WIDTH_ULTRACONDENSED, FC_WIDTH_EXTRACONDENSED,
                                      FC_WIDTH_CONDENSED,    FC_WIDTH_SEMICONDENSED,  FC_WIDTH_NORMAL,
                                      FC_WIDTH_SEMIEXPANDED, FC_WIDTH_EXPANDED,       FC_WIDTH_EXTRAEXPANDED,
                                      FC_WIDTH_ULTRAEXPANDED};

using TPattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;

TPattern PatternOf(const TFaceRequest& request) {
  TPattern pattern(FcPatternCreate(), &FcPatternDestroy);
  FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(request.Family.c_str()));
  FcPatternAddInteger(pattern.get(), FC_WEIGHT, FcWeightFromOpenType(request.Weight));
  FcPatternAddInteger(pattern.get(), FC_SLANT, request.Italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  FcPatternAddInteger(pattern.get(), FC_WIDTH, kWidths[request.Stretch]);
  FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
  return pattern;
}

TPattern BestMatch(FcConfig* fonts, FcPattern* pattern) {
  FcConfigSubstitute(fonts, pattern, FcMatchPattern);
  FcDefaultSubstitute(pattern);
  FcResult result;
  return TPattern(FcFontMatch(fonts, pattern, &result), &FcPatternDestroy);
}

char32_t NextChar(std::u16string_view text, size_t& at) {
  const char16_t first = text[at++];
  if (first < 0xD800 || first > 0xDBFF || at >= text.size()) return first;
  const char16_t second = text[at];
  if (second < 0xDC00 || second > 0xDFFF) return first;
  ++at;
  return 0x10000 + ((char32_t{first} & 0x3FF) << 10) + (second & 0x3FF);
}

// Marks, joiners and controls are shaped with what stands before them.
bool Joins(char32_t c) {
  switch (hb_unicode_general_category(hb_unicode_funcs_get_default(), c)) {
    case HB_UNICODE_GENERAL_CATEGORY_CONTROL:
    case HB_UNICODE_GENERAL_CATEGORY_FORMAT:
    case HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK: return true;
    default: return false;
  }
}

bool HasScript(hb_script_t script) {
  return script != HB_SCRIPT_COMMON && script != HB_SCRIPT_INHERITED && script != HB_SCRIPT_UNKNOWN;
}

hb_feature_t Feature(hb_tag_t tag, uint32_t value) {
  return {tag, value, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END};
}

}  // namespace

TFontLibrary::TFontLibrary() {
  if (FT_Init_FreeType(&Library) != 0) Library = nullptr;
}

TFontLibrary::~TFontLibrary() { FT_Done_FreeType(Library); }

// --- one face ---

// At a size of one em a pixel is one unit of the font: nothing is rounded, and one size serves for all.
TFontFace::TFontFace(std::shared_ptr<TFontLibrary> library, FT_Face face, THtBytes data)
    : FLibrary(std::move(library)), FFace(face), FData(std::move(data)) {
  FT_Set_Pixel_Sizes(FFace, FFace->units_per_EM, FFace->units_per_EM);
  FShaper = hb_ft_font_create_referenced(FFace);
  hb_ft_font_set_load_flags(FShaper, FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP);
  ReadMetrics();
}

TFontFace::~TFontFace() {
  const std::lock_guard guard(FLibrary->Lock);
  hb_font_destroy(FShaper);
  FT_Done_Face(FFace);
}

bool TFontFace::HasChar(char32_t c) const { return FT_Get_Char_Index(FFace, c) != 0; }

double TFontFace::AdvancesPerEm() const { return FFace->units_per_EM * kFixedPoint; }

void TFontFace::ReadMetrics() {
  const auto em = static_cast<float>(FFace->units_per_EM);
  const auto width = [&](char32_t c) {
    const FT_UInt glyph = FT_Get_Char_Index(FFace, c);
    const auto advance = static_cast<float>(hb_font_get_glyph_h_advance(FShaper, glyph));
    return glyph ? advance / static_cast<float>(AdvancesPerEm()) : 0;
  };
  FMetrics.Ascent = static_cast<float>(FFace->ascender) / em;
  FMetrics.Descent = static_cast<float>(-FFace->descender) / em;
  FMetrics.LineHeight = std::max(static_cast<float>(FFace->height) / em, FMetrics.Ascent + FMetrics.Descent);
  FMetrics.UnderlinePosition = static_cast<float>(-FFace->underline_position) / em;
  FMetrics.UnderlineThickness = static_cast<float>(FFace->underline_thickness) / em;
  const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(FFace, FT_SFNT_OS2));
  constexpr float kUsualStrikeout = 0.3f;
  FMetrics.StrikeoutPosition =
      os2 && os2->yStrikeoutPosition > 0 ? static_cast<float>(os2->yStrikeoutPosition) / em : kUsualStrikeout;
  FMetrics.SpaceWidth = width(U' ');
  FMetrics.Fixed = FT_IS_FIXED_WIDTH(FFace) != 0;
  for (char32_t c = 0x21; c < 0x7F; ++c)
    if (const float w = width(c); w > 0 && (FMetrics.LeastWidth == 0 || w < FMetrics.LeastWidth))
      FMetrics.LeastWidth = w;
}

// --- all faces ---

TFontFaces& TFontFaces::Instance() {
  static TFontFaces faces;
  return faces;
}

TFontFaces::TFontFaces()
    : FLibrary(std::make_shared<TFontLibrary>()),
      FFonts(FcInitLoadConfigAndFonts()),
      FBuffer(hb_buffer_create()) {}

TFontFaces::~TFontFaces() {
  hb_buffer_destroy(FBuffer);
  if (FFonts) FcConfigDestroy(FFonts);
}

std::shared_ptr<TFontFace> TFontFaces::OpenFile(const FcPattern* match) {
  FcChar8* file = nullptr;
  int index = 0;
  if (!match || !FLibrary->Library || FcPatternGetString(match, FC_FILE, 0, &file) != FcResultMatch)
    return nullptr;
  FcPatternGetInteger(match, FC_INDEX, 0, &index);
  const char* name = reinterpret_cast<const char*>(file);
  std::weak_ptr<TFontFace>& open = FOpen[{name, index}];
  if (std::shared_ptr<TFontFace> face = open.lock()) return face;
  FT_Face opened;
  if (FT_New_Face(FLibrary->Library, name, index, &opened) != 0) return nullptr;
  if (!FT_IS_SCALABLE(opened)) {
    FT_Done_Face(opened);
    return nullptr;
  }
  auto face = std::make_shared<TFontFace>(FLibrary, opened, THtBytes());
  open = face;
  return face;
}

std::shared_ptr<TFontFace> TFontFaces::Find(const TFaceRequest& request) {
  const std::lock_guard guard(FLibrary->Lock);
  if (const auto known = FFound.find(request); known != FFound.end()) return known->second;
  const TPattern pattern = PatternOf(request);
  return FFound[request] = OpenFile(BestMatch(FFonts, pattern.get()).get());
}

std::shared_ptr<TFontFace> TFontFaces::Open(const THtBytes& data) {
  const std::lock_guard guard(FLibrary->Lock);
  THtBytes kept = data;
  FT_Face opened;
  if (!FLibrary->Library ||
      FT_New_Memory_Face(FLibrary->Library, kept.data(), static_cast<FT_Long>(kept.size()), 0, &opened) != 0)
    return nullptr;
  if (FT_IS_SCALABLE(opened) && opened->units_per_EM > 0)
    return std::make_shared<TFontFace>(FLibrary, opened, std::move(kept));  // the bytes stay where they are
  FT_Done_Face(opened);
  return nullptr;
}

std::vector<std::string> TFontFaces::Families() {
  const std::lock_guard guard(FLibrary->Lock);
  const TPattern all(FcPatternCreate(), &FcPatternDestroy);
  const std::unique_ptr<FcObjectSet, decltype(&FcObjectSetDestroy)> objects(
      FcObjectSetBuild(FC_FAMILY, nullptr), &FcObjectSetDestroy);
  const std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)> fonts(
      FcFontList(FFonts, all.get(), objects.get()), &FcFontSetDestroy);
  std::vector<std::string> families;
  for (int i = 0; fonts && i < fonts->nfont; ++i) {
    FcChar8* family;
    for (int n = 0; FcPatternGetString(fonts->fonts[i], FC_FAMILY, n, &family) == FcResultMatch; ++n)
      families.emplace_back(reinterpret_cast<const char*>(family));
  }
  std::ranges::sort(families);
  families.erase(std::unique(families.begin(), families.end()), families.end());
  return families;
}

std::shared_ptr<TFontFace> TFontFaces::FindWith(const TFaceRequest& request, char32_t c) {
  const TPattern pattern = PatternOf(request);
  const std::unique_ptr<FcCharSet, decltype(&FcCharSetDestroy)> chars(FcCharSetCreate(), &FcCharSetDestroy);
  FcCharSetAddChar(chars.get(), c);
  FcPatternAddCharSet(pattern.get(), FC_CHARSET, chars.get());
  std::shared_ptr<TFontFace> face = OpenFile(BestMatch(FFonts, pattern.get()).get());
  return face && face->HasChar(c) ? face : nullptr;
}

TFontFace& TFontFaces::FaceFor(char32_t c, TFontFace& face, const TFaceRequest& request) {
  if (face.HasChar(c)) return face;
  const auto [known, isNew] = FFallbacks.try_emplace({request, c});
  if (isNew) known->second = FindWith(request, c);
  return known->second ? *known->second : face;
}

double TFontFaces::ShapedWidth(const TFontFace& face, const TShapeRequest& text, uint32_t script) {
  hb_buffer_clear_contents(FBuffer);
  hb_buffer_add_utf16(FBuffer, reinterpret_cast<const uint16_t*>(text.Text.data()),
                      static_cast<int>(text.Text.size()), static_cast<unsigned>(text.Start),
                      static_cast<int>(text.Count));
  const auto hbScript = static_cast<hb_script_t>(script);
  if (HasScript(hbScript)) {
    hb_buffer_set_script(FBuffer, hbScript);
    hb_buffer_set_direction(FBuffer, hb_script_get_horizontal_direction(hbScript));
  } else {
    hb_buffer_set_direction(FBuffer, text.RightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
  }
  hb_buffer_guess_segment_properties(FBuffer);

  std::vector<hb_feature_t> features;
  if (!text.Ligatures)
    features = {Feature(HB_TAG('l', 'i', 'g', 'a'), 0), Feature(HB_TAG('c', 'l', 'i', 'g'), 0)};
  for (const THtFontOpentypeFeature& feature : text.Features)
    features.push_back(
        Feature(__builtin_bswap32(feature.Tag.nameTag), static_cast<uint32_t>(feature.parameter)));
  hb_shape(face.Shaper(), FBuffer, features.data(), static_cast<unsigned>(features.size()));

  unsigned count = 0;
  const hb_glyph_position_t* glyphs = hb_buffer_get_glyph_positions(FBuffer, &count);
  int64_t advance = 0;
  for (unsigned i = 0; i < count; ++i) advance += glyphs[i].x_advance;
  return static_cast<double>(advance) / face.AdvancesPerEm();
}

// A shaper wants pieces of one script and one face.
double TFontFaces::Width(TFontFace& face, const TFaceRequest& request, const TShapeRequest& text) {
  const std::lock_guard guard(FLibrary->Lock);
  const std::u16string_view part = text.Text.substr(0, text.Start + text.Count);
  double width = 0;
  size_t start = text.Start;
  TFontFace* pieceFace = nullptr;
  hb_script_t pieceScript = HB_SCRIPT_COMMON;
  const auto add = [&](size_t end) {
    if (end == start) return;
    TShapeRequest piece = text;
    piece.Start = start;
    piece.Count = end - start;
    width += ShapedWidth(*pieceFace, piece, pieceScript);
    start = end;
  };
  for (size_t at = text.Start; at < part.size();) {
    const size_t charStart = at;
    const char32_t c = NextChar(part, at);
    if (pieceFace && Joins(c)) continue;
    TFontFace& charFace = Joins(c) ? face : FaceFor(c, face, request);
    const hb_script_t script = hb_unicode_script(hb_unicode_funcs_get_default(), c);
    const bool otherScript = HasScript(script) && HasScript(pieceScript) && script != pieceScript;
    if (&charFace != pieceFace || otherScript) {
      add(charStart);
      pieceFace = &charFace;
      pieceScript = script;
    } else if (HasScript(script)) {
      pieceScript = script;
    }
  }
  add(part.size());
  return width;
}

}  // namespace ht
