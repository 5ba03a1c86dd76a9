#pragma once

#include <concepts>
#include <cstring>

#include "htcanvas/metapath.h"
#include "htcanvas/metaresource.h"
#include "htcanvas/textstyle.h"
#include "htruntime/stream.h"

namespace ht {

class THtCanvasClass;
class THtFontCollection;

/// Reads records for a canvas class and a collection that owns the fonts. Raises EStreamError "Stream read error" where
/// the stream ends early, and EHtException "Meta stream is damaged" for a count or a code that is none. No more memory is
/// taken than the stream has bytes for.
class TMetaReader {
 public:
  TMetaReader(TStream& stream, const THtCanvasClass& canvasClass, THtFontCollection& fonts);
  TMetaReader(const TMetaReader&) = delete;
  TMetaReader& operator=(const TMetaReader&) = delete;
  /// Leaves the stream behind what was read.
  void Finish();

  float F32() { return Raw<float>(); }
  template <std::same_as<float>... T>
  void F32(T&... values) {
    ((values = F32()), ...);
  }
  int32_t I32() { return Raw<int32_t>(); }
  uint32_t U32() { return Raw<uint32_t>(); }
  uint16_t U16() { return Raw<uint16_t>(); }
  uint8_t U8() { return Raw<uint8_t>(); }
  bool Bool() { return U8() != 0; }
  template <class TEnum>
  TEnum Enum() {
    return static_cast<TEnum>(Ordinal(HtEnumCount(TEnum{})));
  }
  /// A count of what follows; it is not below 0.
  size_t Count();
  TRectF Rect();
  hstring Text();
  THtBytes Bytes();
  THtMatrixData Matrix();
  THtMetaBrush Brush();
  THtMetaPen Pen();
  void Ink(bool fill, THtMetaBrush& brush, THtMetaPen& pen) {
    if (fill)
      brush = Brush();
    else
      pen = Pen();
  }
  THtTextStyle Style();
  /// Null where the canvas class has no fonts; then `style` is what was stored.
  THtFont* Font(THtFontStyles& style);
  THtMetaPath Path();
  const THtCanvasClass& CanvasClass() const { return FCanvasClass; }

 private:
  // What was made lately, and of which bytes: most records repeat the pen, brush and font of another.
  template <class T>
  struct TMade {
    THtBytes Key;
    T Value{};
  };
  struct TFontKey {
    hstring Family;
    float Height = 0;
    THtFontStyles Style;
    bool operator==(const TFontKey&) const = default;
  };

  template <class T>
  T Raw() {
    T value;
    std::memcpy(&value, Take(sizeof value), sizeof value);
    return value;
  }
  /// The next bytes, which stay where they are until more is taken. Not for more than a chunk.
  const uint8_t* Take(size_t bytes) {
    Need(bytes);
    return std::exchange(FNext, FNext + bytes);
  }
  void Need(size_t bytes) {
    if (static_cast<size_t>(FEnd - FNext) < bytes) [[unlikely]]
      Refill(bytes);
  }
  void Refill(size_t bytes);
  int Ordinal(int count);
  template <class T>
  std::vector<T> Items(size_t count);
  THtMetaBrush NewBrush();
  THtMetaPen NewPen();
  template <class T, class TNew>
  T Again(detail::TMetaRecent<TMade<T>>& recent, size_t size, size_t colorAt, size_t countsAt,
          const TNew& make);

  TStream& FStream;
  const THtCanvasClass& FCanvasClass;
  THtFontCollection& FFonts;
  const uint8_t* FNext = nullptr;
  const uint8_t* FEnd = nullptr;
  bool FInMemory;
  THtBytes FChunk;  // read ahead, unless the stream lies in memory
  detail::TMetaRecent<TMade<THtMetaBrush>> FBrushes;
  detail::TMetaRecent<TMade<THtMetaPen>> FPens;
  TFontKey FFontKey;
  THtFont* FFont = nullptr;
};

}  // namespace ht
