#pragma once

#include <array>
#include <bit>
#include <concepts>
#include <cstring>
#include <span>

#include "htcanvas/metapath.h"
#include "htcanvas/metaresource.h"
#include "htcanvas/textstyle.h"
#include "htruntime/stream.h"

// How recorded drawing lies in a stream. Little-endian; no mark and no version at the start.
//
//   i32 count of records, then the records: u16 tag and what belongs to it
//   string: i32 count of UTF-16 units, the units       rect: left, top, right, bottom as f32
//   matrix: six f32, u8 flags, three bytes of 0        block: the fields of a font, brush, pen or text style

namespace ht {

static_assert(std::endian::native == std::endian::little);

// A record that the format has no form for is written as mtNone, and left out when it is read.
enum TMetaTag : uint16_t {
  mtNone,
  mtText,
  mtPath,
  mtLine,
  mtImage,
  mtMatrix,
  mtState,
  mtClip,
  mtEllipse,
  mtRect
};

/// Writes one record: collects its fields and hands them to the stream in few pieces. Raises what the stream raises.
class TMetaWriter {
 public:
  TMetaWriter(TStream& stream, TMetaTag tag) : FStream(stream) { Raw(tag); }

  template <std::same_as<float>... T>
  void F32(T... values) {
    (Raw(values), ...);
  }
  /// A count. Raises EHtException "Meta stream cannot hold %d items" for more than 2^31 - 1.
  void I32(size_t value);
  void U32(uint32_t value) { Raw(value); }
  void U8(uint8_t value) { Raw(value); }
  void Rect(const TRectF& rect) { F32(rect.Left, rect.Top, rect.Right, rect.Bottom); }
  void Text(std::u16string_view text);
  /// Count and items.
  void Floats(std::span<const float> values) { Counted(values); }
  void Bytes(std::span<const uint8_t> bytes) { Counted(bytes); }
  void Matrix(const THtMatrixData& matrix);
  void Font(const THtFont* font);
  void Brush(const THtBrush& brush);
  void Pen(const THtPen& pen);
  /// What a figure is filled or drawn with: the brush if `fill` is set, else the pen. A missing one is written as a new one.
  void Ink(bool fill, const THtMetaBrush& brush, const THtMetaPen& pen);
  void Style(const THtTextStyle& style);
  /// Its text and its two flags; none is an empty one.
  void Path(const THtMetaPath& path);
  /// To be called when the record is complete.
  void Flush();

 private:
  template <class T>
  void Raw(T value) {
    if (FBlock.size() - FCount < sizeof value) Flush();
    std::memcpy(FBlock.data() + FCount, &value, sizeof value);
    FCount += sizeof value;
  }
  template <class T>
  void Counted(std::span<const T> items) {
    I32(items.size());
    Put(items.data(), items.size_bytes());
  }
  void Put(const void* data, size_t bytes);

  TStream& FStream;
  size_t FCount = 0;
  std::array<uint8_t, 512> FBlock;
};

}  // namespace ht
