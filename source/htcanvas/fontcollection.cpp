#include "htcanvas/fontcollection.h"

#include <filesystem>

#include "htcanvas/canvasclasses.h"
#include "htmlpars/lower.h"
#include "htruntime/filestream.h"
#include "htruntime/format.h"
#include "htutils/numbers.h"

namespace ht {

namespace {

constexpr int32_t kFonts = 256, kCustomFonts = 16;

uint32_t StyleByte(THtFontStyles styles) {
  uint32_t byte = 0;
  for (int i = 0; i < HtEnumCount(THtFontStyle{}); ++i)
    byte |= static_cast<uint32_t>(styles.Contains(static_cast<THtFontStyle>(i))) << i;
  return byte;
}

hstring FontKey(const hstring& name, float size, THtFontStyles style, const TStringList* fallbacks) {
  hstring lower = name;
  hLower(lower);
  hstring key = HtFormat(u"%s|%s|%x|", lower, HtFormatDecimal(size, 2), StyleByte(style - kHtFontLines));
  for (int32_t i = 0; fallbacks && i < fallbacks->GetCount(); ++i) key += fallbacks->Get(i);
  return key;
}

}  // namespace

THtFontCollection::THtFontCollection(const THtCanvasClass* canvasClass, bool shared)
    : THtObjectDictionary(kFonts, true, HtNameOffset(&THtFont::FFontKey)),
      Shared(shared),
      FCustomFonts(kCustomFonts, true, HtNameOffset(&THtCustomFont::FontNameLower)),
      FCanvasClass(canvasClass) {}

THtFont* THtFontCollection::GetFont(const hstring& name, float size, THtFontStyles style,
                                    const TStringList* fallbacks) {
  const hstring key = FontKey(name, size, style, fallbacks);
  if (auto* known = Get<THtFont>(key)) return known;
  std::unique_ptr<THtFont> font = FCanvasClass->FontClass()->Create(this, name, size, style);
  if (!font) return nullptr;
  font->FFontKey = key;
  AddObject(font.get());
  return font.release();
}

void THtFontCollection::RegisterCustomFont(const hstring& name, const hstring& fileName,
                                           THtFontStyles style) {
  std::error_code none;
  if (!std::filesystem::is_regular_file(HtToUtf8(fileName), none)) return;
  TFileStream file(fileName, fmOpenRead);
  RegisterCustomFontData(name, file, style);
}

void THtFontCollection::RegisterCustomFontData(const hstring&, TStream&, THtFontStyles) {}
void THtFontCollection::AssignCustomFonts(const THtFontCollection&) {}
THtBytes THtFontCollection::GetFontData(const hstring&) const { return {}; }

void THtFontCollection::GetFonts(TStringList& list) const {
  for (int32_t at = 0; auto* font = GetNext<THtFont>(at);)
    if (list.IndexOf(font->FFamily) < 0) list.Add(font->FFamily);
}

int64_t THtBaseFont::TextWidth(std::u16string_view text) const {
  int64_t width = 0;
  for (const char16_t c : text) width += GetWidths(UnicodetoGID(c));
  return width;
}

}  // namespace ht
