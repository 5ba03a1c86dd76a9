// THtBitmapData::Combine.

#include <algorithm>

#include "htcanvas/bitmapdata.h"
#include "htruntime/exception.h"

namespace ht {

namespace {

uint8_t Combined(uint8_t target, uint8_t source, THtPixelOperation operation) {
  switch (operation) {
    case poOr: return target | source;
    case poAnd: return target & source;
    case poXor: return target ^ source;
    case poNXor: return static_cast<uint8_t>(~(target ^ source));
    case poCopy: break;
  }
  return source;
}

// What two bitmaps have in common along one axis.
struct TOverlap {
  int32_t From, To;  // in the target
  int32_t Shift;     // a place in the target less the same place in the source
};

TOverlap OverlapOf(int32_t target, int32_t source, int32_t place) {
  const int64_t end = std::min<int64_t>(target, int64_t{place} + source);
  const int32_t from = std::max(place, 0);
  if (end <= from) return {0, 0, 0};
  return {from, static_cast<int32_t>(end), place};
}

// Eight bits of a row from any bit on, the highest first. What lies outside the row is 0.
uint8_t BitsFrom(const uint8_t* row, int32_t bytes, int64_t bit) {
  const int64_t index = bit >> 3;
  const auto byte = [&](int64_t i) { return i >= 0 && i < bytes ? uint32_t{row[i]} : 0u; };
  return static_cast<uint8_t>((byte(index) << 8 | byte(index + 1)) >> (8 - (bit & 7)));
}

void CombineBits(uint8_t* target, const uint8_t* source, int32_t sourceBytes, const TOverlap& columns,
                 THtPixelOperation operation) {
  for (int32_t first = columns.From & ~7; first < columns.To; first += 8) {
    uint32_t changed = 0xFF;
    if (first < columns.From) changed &= 0xFFu >> (columns.From - first);
    if (columns.To - first < 8) changed &= 0xFFu << (8 - (columns.To - first));
    uint8_t& byte = target[first >> 3];
    const uint8_t result =
        Combined(byte, BitsFrom(source, sourceBytes, int64_t{first} - columns.Shift), operation);
    byte = static_cast<uint8_t>((byte & ~changed) | (result & changed));
  }
}

}  // namespace

void THtBitmapData::Combine(const THtBitmapData& source, int32_t x, int32_t y, THtPixelOperation operation) {
  if (FBits != source.FBits) throw EAssertionFailed(u"Bitmaps that are combined have one depth");
  if (FBits != 1 && FBits != 24) return;
  const TOverlap rows = OverlapOf(FHeight, source.FHeight, y);
  const TOverlap columns = OverlapOf(FWidth, source.FWidth, x);
  for (int32_t row = rows.From; row < rows.To; ++row) {
    uint8_t* to = GetScanLine(row);
    const uint8_t* from = source.GetScanLine(static_cast<int32_t>(int64_t{row} - rows.Shift));
    if (FBits == 1) {
      CombineBits(to, from, source.FStride, columns, operation);
      continue;
    }
    const int64_t shift = int64_t{3} * columns.Shift;
    for (int64_t i = int64_t{3} * columns.From; i < int64_t{3} * columns.To; ++i)
      to[i] = Combined(to[i], from[i - shift], operation);
  }
}

}  // namespace ht
