#include "htcanvas/metareader.h"

#include <algorithm>
#include <bit>

#include "htcanvas/canvasclasses.h"
#include "htcanvas/fontcollection.h"
#include "htruntime/exception.h"

namespace ht {

namespace {

constexpr size_t kChunk = size_t{64} << 10;

// The shortest forms, those without dashes and stops, and what stands where in them.
constexpr size_t kPlainBrush = 105, kBrushColor = 1, kBrushCounts = 97;
constexpr size_t kPlainPen = 20, kPenColor = 2, kPenCounts = 16;

struct TStreamFailure : TStream {
  using TStream::RaiseRead;
};

[[noreturn]] void RaiseDamaged() { throw EHtException(u"Meta stream is damaged"_hs); }

}  // namespace

TMetaReader::TMetaReader(TStream& stream, const THtCanvasClass& canvasClass, THtFontCollection& fonts)
    : FStream(stream), FCanvasClass(canvasClass), FFonts(fonts) {
  auto* memory = dynamic_cast<TCustomMemoryStream*>(&stream);
  FInMemory = memory != nullptr;
  if (!FInMemory) return;
  const int64_t size = memory->GetSize(), position = std::clamp<int64_t>(memory->GetPosition(), 0, size);
  FNext = memory->GetMemory() + position;
  FEnd = memory->GetMemory() + size;
}

void TMetaReader::Finish() {
  const int64_t unread = FEnd - FNext;
  if (FInMemory)
    FStream.Seek(-unread, soEnd);
  else if (unread > 0)
    FStream.Seek(-unread, soCurrent);
  FNext = FEnd;
}

void TMetaReader::Refill(size_t bytes) {
  const auto left = static_cast<size_t>(FEnd - FNext);
  int64_t got = 0;
  if (!FInMemory) {
    if (FChunk.empty()) FChunk.resize(kChunk);
    if (left > 0) std::memmove(FChunk.data(), FNext, left);
    got = std::max<int64_t>(FStream.Read(FChunk.data() + left, static_cast<int64_t>(kChunk - left)), 0);
    FNext = FChunk.data();
    FEnd = FNext + left + got;
  }
  if (left + static_cast<size_t>(got) < bytes) TStreamFailure::RaiseRead();
}

int TMetaReader::Ordinal(int count) {
  const int ordinal = U8();
  if (ordinal >= count) RaiseDamaged();
  return ordinal;
}

size_t TMetaReader::Count() {
  const int32_t count = I32();
  if (count < 0) RaiseDamaged();
  return static_cast<size_t>(count);
}

// Grows with what is really there.
template <class T>
std::vector<T> TMetaReader::Items(size_t count) {
  std::vector<T> items;
  while (items.size() < count) {
    Need(sizeof(T));
    const size_t have = std::min(count - items.size(), static_cast<size_t>(FEnd - FNext) / sizeof(T));
    items.resize(items.size() + have);
    std::memcpy(&items[items.size() - have], Take(have * sizeof(T)), have * sizeof(T));
  }
  return items;
}

hstring TMetaReader::Text() {
  const size_t count = Count();
  if (count == 0) return {};
  if (static_cast<size_t>(FEnd - FNext) / sizeof(char16_t) < count) {
    const std::vector<char16_t> units = Items<char16_t>(count);
    return {units.data(), units.size()};
  }
  hstring text = hstring::Uninitialized(count);
  std::memcpy(text.Unique(), Take(count * sizeof(char16_t)), count * sizeof(char16_t));
  return text;
}

THtBytes TMetaReader::Bytes() { return Items<uint8_t>(Count()); }

TRectF TMetaReader::Rect() {
  TRectF rect;
  F32(rect.Left, rect.Top, rect.Right, rect.Bottom);
  return rect;
}

THtMatrixData TMetaReader::Matrix() {
  constexpr size_t kPadding = 3;
  THtMatrixData matrix;
  for (float& value : matrix.Data) value = F32();
  matrix.Flags = Enum<THtMatrixFlag>();
  Take(kPadding);
  return matrix;
}

// The fields of a plain resource are the whole of it: equal bytes give the one made before.
template <class T, class TNew>
T TMetaReader::Again(detail::TMetaRecent<TMade<T>>& recent, size_t size, size_t colorAt, size_t countsAt,
                     const TNew& make) {
  Need(size);
  const uint8_t* const block = FNext;
  if (std::any_of(block + countsAt, block + size, [](uint8_t b) { return b != 0; })) return make();
  uint32_t color;
  std::memcpy(&color, block + colorAt, sizeof color);
  const auto same = [block, size](const TMade<T>& kept) {
    return kept.Key.size() == size && std::memcmp(kept.Key.data(), block, size) == 0;
  };
  TMade<T>& made = recent.Find(color, same);
  if (same(made)) {
    Take(size);
    return made.Value;
  }
  THtBytes key(block, block + size);
  made.Value = make();
  made.Key = std::move(key);
  return made.Value;
}

THtMetaBrush TMetaReader::Brush() {
  return Again(FBrushes, kPlainBrush, kBrushColor, kBrushCounts, [this] { return NewBrush(); });
}

THtMetaPen TMetaReader::Pen() {
  return Again(FPens, kPlainPen, kPenColor, kPenCounts, [this] { return NewPen(); });
}

// A code that is no kind of a brush counts as solid.
THtMetaBrush TMetaReader::NewBrush() {
  const uint8_t kind = U8();
  const uint32_t color = U32();
  float offsetX, offsetY, cx, cy, fx, fy, radius;
  F32(offsetX, offsetY, cx, cy, fx, fy, radius);
  const THtMatrixData matrix = Matrix();
  const float angle = F32();
  const TRectF line = Rect(), box = Rect();
  const std::vector<uint32_t> colors = Items<uint32_t>(Count());
  const std::vector<float> positions = Items<float>(Count());

  const THtBrushClass& brushClass = *FCanvasClass.BrushClass();
  if (kind != hbGradient && kind != hbRadial) return THtMetaBrush(brushClass.Create(color));
  auto brush = kind == hbGradient
                   ? brushClass.CreateGradient(line, 0, 0, angle, box)
                   : brushClass.CreateRadialGradient(offsetX, offsetY, cx, cy, fx, fy, radius, matrix);
  if (colors.size() != positions.size()) RaiseDamaged();
  if (brush && !colors.empty()) brush->SetGradientColors(positions, colors);
  return THtMetaBrush(std::move(brush));
}

THtMetaPen TMetaReader::NewPen() {
  const auto join = Enum<THtLineJoin>();
  const auto cap = Enum<THtLineCap>();
  const uint32_t color = U32();
  auto pen = FCanvasClass.PenClass()->Create(color, F32());
  const auto style = Enum<THtPenStyle>();
  const float dashOffset = F32();
  const auto mode = Enum<THtLineDrawMode>();
  std::vector<float> dashes = Items<float>(Count());
  if (!pen) return {};
  pen->SetPenStyle(style);
  pen->SetLineJoin(join);
  pen->SetLineCap(cap);
  pen->SetDashOffset(dashOffset);
  pen->FMode = mode;
  if (!dashes.empty()) pen->Dashes = std::move(dashes);
  return THtMetaPen(std::move(pen));
}

THtTextStyle TMetaReader::Style() {
  constexpr size_t kPadding = 3, kLastPadding = 2;
  THtTextStyle style;
  F32(style.WordSpacing, style.LetterSpacing, style.Opacity);
  style.Overflow = Enum<TCSSTextOverflow>();
  style.Shadow = Bool();
  style.RTL = Bool();
  style.EditorMode = Bool();
  style.Color = U32();
  style.ShadowColor = U32();
  style.DecorationColor = U32();
  style.DecorationStyle = Enum<TCSSTextDecorationStyle>();
  Take(kPadding);
  F32(style.ShadowX, style.ShadowY, style.ShadowBlur);
  style.WritingMode = Enum<TCSSWritingMode>();
  style.UnicodeBidi = Enum<TCSSUnicodeBidi>();
  Take(kLastPadding);
  return style;
}

THtFont* TMetaReader::Font(THtFontStyles& style) {
  TFontKey key{Text(), F32(), {}};
  key.Style = style = std::bit_cast<THtFontStyles>(U8());
  if (!FFont || key != FFontKey) FFont = FFonts.GetFont(key.Family, key.Height, key.Style, nullptr);
  FFontKey = std::move(key);
  if (FFont) style = (FFont->FStyle - kHtFontLines) + style * kHtFontLines;
  return FFont;
}

THtMetaPath TMetaReader::Path() {
  auto path = FCanvasClass.PathClass()->Create(false);
  hstring text = Text();
  const bool forClip = Bool(), winding = Bool();
  if (!path) return {};
  path->Parse(text);
  path->FForClip = forClip;
  path->SetFillModeWinding(winding);
  return {std::move(path), std::move(text)};
}

}  // namespace ht
