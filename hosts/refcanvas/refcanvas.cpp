#include "refcanvas/refcanvas.h"

#include <algorithm>

#include "htmlpars/lower.h"
#include "htruntime/stream.h"
#include "refcanvas/imagesize.h"
#include "refcanvas/pathhit.h"

namespace ht {

namespace {

constexpr THtFontStyles kLines{hfsUnderline, hfsStrikeOut};
constexpr int kStyles = HtEnumCount(THtFontStyle{});

// Fonts of one name lie side by side in the dictionary: the upright one of normal weight under the name alone.
hstring CustomKey(const hstring& name, THtFontStyles style) {
  hstring key = name;
  hLower(key);
  for (int i = 0; i < kStyles; ++i)
    if ((style - kLines).Contains(static_cast<THtFontStyle>(i)))
      key += u"|"_hs + HtEnumOf<THtFontStyle>().NameOf(i);
  return key;
}

int StyleDistance(THtFontStyles a, THtFontStyles b) { return ((a - b) + (b - a) - kLines).Count(); }

}  // namespace

// --- fonts ---

void TRefFont::Create(THtFontCollection* owner, const hstring& name, float height, THtFontStyles style) {
  THtFont::Create(owner, name, height, style);
  ChooseFace();
}

void TRefFont::SetStyle(THtFontStyles style) {
  const bool other = StyleDistance(style, FStyle) != 0;
  THtFont::SetStyle(style);
  if (other) ChooseFace();
}

void TRefFont::ChooseFace() {
  FRequest = {HtToUtf8(FFamily), Weight(), FStyle.Contains(hfsItalic), Stretch};
  const auto* fonts = dynamic_cast<const TRefFontCollection*>(FOwner);
  const THtCustomFont* custom = fonts ? fonts->FindCustomFont(FName, FStyle) : nullptr;
  FFace = custom ? TFontFaces::Instance().Open(custom->FontData) : nullptr;
  Custom = FFace != nullptr;
  if (!FFace) FFace = TFontFaces::Instance().Find(FRequest);
  const TFaceMetrics metrics = FFace ? FFace->Metrics() : TFaceMetrics();
  Fixed = metrics.Fixed;
  Ascent = metrics.Ascent * FHeight;
  Descent = metrics.Descent * FHeight;
  LineHeight = metrics.LineHeight * FHeight;
  UnderlinePosition = metrics.UnderlinePosition * FHeight;
  UnderlineThikness = metrics.UnderlineThickness * FHeight;
  StrikeoutPosition = metrics.StrikeoutPosition * FHeight;
  SpaceWidth = metrics.SpaceWidth * FHeight;
  MinCharWidth = metrics.LeastWidth * FHeight;
  FixedCharWidth = Fixed ? SpaceWidth : 0;
}

float TRefFont::Width(const TShapeRequest& text) {
  if (!FFace) return 0;
  return static_cast<float>(TFontFaces::Instance().Width(*FFace, FRequest, text) * FHeight);
}

// --- registered fonts ---

void TRefFontCollection::Keep(const hstring& name, const THtBytes& data, THtFontStyles style) {
  const hstring key = CustomKey(name, style);
  auto* font = FCustomFonts.Get<THtCustomFont>(key);
  if (!font) {
    font = new THtCustomFont;
    font->FontNameLower = key;
    FCustomFonts.AddObject(font);
  }
  font->FontName = name;
  font->FontData = data;
  font->FontStyle = style;
}

void TRefFontCollection::RegisterCustomFontData(const hstring& name, TStream& stream, THtFontStyles style) {
  Keep(name, stream.ReadToEnd(), style);
}

void TRefFontCollection::AssignCustomFonts(const THtFontCollection& source) {
  const auto* from = dynamic_cast<const TRefFontCollection*>(&source);
  if (!from || from == this) return;
  for (int32_t at = 0; const auto* font = from->FCustomFonts.GetNext<THtCustomFont>(at);)
    Keep(font->FontName, font->FontData, font->FontStyle);
}

const THtCustomFont* TRefFontCollection::FindCustomFont(const hstring& name, THtFontStyles style) const {
  if (const auto* exact = FCustomFonts.Get<THtCustomFont>(CustomKey(name, style))) return exact;
  const THtCustomFont* nearest = nullptr;
  for (int32_t at = 0; const auto* font = FCustomFonts.GetNext<THtCustomFont>(at);)
    if (HtSameText(font->FontName, name) &&
        (!nearest || StyleDistance(font->FontStyle, style) < StyleDistance(nearest->FontStyle, style)))
      nearest = font;
  return nearest;
}

THtBytes TRefFontCollection::GetFontData(const hstring& name) const {
  const THtCustomFont* font = FindCustomFont(name, {});
  return font ? font->FontData : THtBytes();
}

// --- images ---

std::unique_ptr<TStream> TRefImage::GetImageData() { return std::make_unique<TBytesStream>(FBytes); }

void TRefImage::OnLoaded(const THtBytes& bytes, bool flag) {
  THtImage::OnLoaded(bytes, flag);
  FBytes = bytes;
  Loaded = ReadImageSize(bytes, Width, Height);
  State = Loaded ? hisLoaded : hisFailed;
}

// --- the class ---

THtStringList& TRefCanvasClass::FontDictionary() const {
  static THtStringList fonts(256, false);
  return fonts;
}

const THtFontClass* TRefCanvasClass::FontClass() const { return TRefFont::Class(); }
const THtImageClass* TRefCanvasClass::ImageClass() const { return TRefImage::Class(); }

THtFontCollection* TRefCanvasClass::SharedFontCollection() const {
  static TRefFontCollection fonts(TRefCanvas::Class(), true);
  return &fonts;
}

std::unique_ptr<THtFontCollection> TRefCanvasClass::CreateFontCollection() const {
  return std::make_unique<TRefFontCollection>(this, false);
}

void TRefCanvasClass::GetFonts(TStringList& list) const {
  for (const std::string& family : TFontFaces::Instance().Families()) list.Add(HtFromUtf8(family));
}

float TRefCanvasClass::MeasureString(const hstring& text, THtFont& font, const THtTextStyle& style, float,
                                     int32_t start, int32_t count) const {
  TShapeRequest request;
  request.Text = text;
  request.Start = std::min(static_cast<size_t>(std::max(start, 1) - 1), text.Size());
  const size_t rest = text.Size() - request.Start;
  request.Count = count < 0 ? rest : std::min(static_cast<size_t>(count), rest);
  THtFontOpentypeFeatures features = font.FontFeatureSettings;
  features.insert(features.end(), style.FontFeatures.begin(), style.FontFeatures.end());
  request.Features = features;
  request.Ligatures = style.LetterSpacing == 0;
  request.RightToLeft = style.RTL;

  const std::u16string_view part = request.Text.substr(request.Start, request.Count);
  const auto halves = std::ranges::count_if(part, [](char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; });
  const auto blanks = std::ranges::count(part, u' ');
  return static_cast<TRefFont&>(font).Width(request) +
         static_cast<float>(static_cast<ptrdiff_t>(part.size()) - halves) * style.LetterSpacing +
         static_cast<float>(blanks) * style.WordSpacing;
}

bool TRefCanvasClass::PointInPath(float x, float y, const THtPath& path) const {
  return HitsPath({x, y}, path);
}

bool TRefCanvasClass::PointOnPath(float x, float y, const THtPath& path, float tolerance) const {
  return HitsLine({x, y}, path, tolerance);
}

void TRefCanvas::Register() { HtDefaultCanvasClass = Class(); }

}  // namespace ht
