#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "htruntime/object.h"

namespace ht {

/// One chunk of a text builder. Lengths are in units: UTF-16 units for TFastString, bytes for TFastRawString.
template <class TUnit>
struct TFSNodeOf {
  TUnit* Data = nullptr;
  size_t Size = 0;  // room in Data
  size_t Len = 0;   // how much of it is used
  TFSNodeOf* Next = nullptr;
};
using TFSNode = TFSNodeOf<char16_t>;

/// What TFastString and TFastRawString share: text in a chain of chunks, of which the last one grows.
///
/// No text is ever moved while appending, and none is split over two chunks: what does not fit into the rest of
/// the chunk opens a new one, of the chunk size or of the text's own length if that is more. A position inside
/// the builder counts from 1.
template <class TUnit>
class THtChunkBuilder : public TObject {
 public:
  using TView = std::basic_string_view<TUnit>;

  ~THtChunkBuilder() override { FreeChunks(); }

  /// In units.
  int64_t GetTotalLen() const { return static_cast<int64_t>(FBefore + FCurrent->Len); }
  bool IsEmpty() const { return GetTotalLen() == 0; }
  /// Frees everything: the builder is as new.
  void Clear();

  /// False on an empty builder.
  bool StartsWith(TView text) const { return !IsEmpty() && HasAt(0, text); }
  /// The position of the first occurrence that lies in one chunk or crosses from one into the next; 0 if there
  /// is none, and for an empty text.
  int64_t PosOf(TView text) const;

  // For code that writes into the builder itself, like an encoder:
  //
  //   char16_t* p = builder.Room(6 * n);
  //   …                                  // writes k <= 6 * n units
  //   builder.Advance(k);

  /// A pointer to at least `count` unused units at the end of the text, valid until the next operation.
  TUnit* Room(size_t count) {
    if (count > FCurrent->Size - FCurrent->Len) [[unlikely]]
      AddSpace(count);
    return FCurrent->Data + FCurrent->Len;
  }
  /// As Room, but always at the start of a new chunk.
  TUnit* AddSpace(size_t count);
  /// Makes the first `count` units of the room part of the text.
  void Advance(size_t count) { FCurrent->Len += count; }

  /// The first chunk; the others follow by `Next`. Chunks may be empty.
  const TFSNodeOf<TUnit>& FirstChunk() const { return FFirst; }

 protected:
  using TNode = TFSNodeOf<TUnit>;

  /// A chunk size below 1 counts as 1.
  explicit THtChunkBuilder(int32_t chunkSize)
      : FChunkSize(chunkSize > 0 ? static_cast<size_t>(chunkSize) : 1) {}

  // The hottest path of the library: one comparison, then a store.
  void Append(const TUnit* units, size_t count) {
    TNode* node = FCurrent;
    const size_t len = node->Len;
    if (count > node->Size - len) [[unlikely]]
      return AppendToNewChunk(units, count);
    node->Len = len + count;
    CopyUnits(node->Data + len, units, count);
  }
  void AppendUnit(TUnit unit) {
    *Room(1) = unit;
    ++FCurrent->Len;
  }
  void AppendPair(TUnit first, TUnit second) {
    TUnit* to = Room(2);
    to[0] = first;
    to[1] = second;
    FCurrent->Len += 2;
  }
  void AppendRun(TUnit unit, int32_t count);
  void AppendInt(int64_t value);
  // The length is known to the compiler, so that a short literal becomes a compare and its stores. Arrays that are
  // longer than their text end in zeros.
  template <size_t N>
  static constexpr TView Literal(const TUnit (&chars)[N]) {
    size_t length = N - 1;
    while (length && chars[length - 1] == 0) --length;
    return {chars, length};
  }
  static size_t Count(int32_t count) { return count > 0 ? static_cast<size_t>(count) : 0; }

  /// The units from `start` (from 0) on stand equal to `text`.
  bool HasAt(size_t start, TView text) const;
  /// Copies the units from `start` (from 0) to the end.
  void CopyTo(TUnit* to, size_t start) const;
  static void FreeNodes(TNode* node) noexcept;

  TNode FFirst;
  TNode* FCurrent = &FFirst;
  size_t FBefore = 0;  // the lengths of all chunks before the current one

 private:
  // One to four units by words; the halves of two and more may overlap. GCC warns of the long branch when a
  // caller hands in a short literal, before it drops that branch.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wstringop-overread"
#endif
  static void CopyUnits(TUnit* to, const TUnit* from, size_t count) {
    if (count > 4) {
      std::memcpy(to, from, count * sizeof(TUnit));
    } else if (count >= 2) {
      std::memcpy(to, from, 2 * sizeof(TUnit));
      std::memcpy(to + count - 2, from + count - 2, 2 * sizeof(TUnit));
    } else if (count) {
      *to = *from;
    }
  }
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif
  void AppendToNewChunk(const TUnit* units, size_t count);
  // Leaves the fields of the first node as they are.
  void FreeChunks() noexcept;

  const size_t FChunkSize;
};

extern template class THtChunkBuilder<char16_t>;
extern template class THtChunkBuilder<char>;

}  // namespace ht
