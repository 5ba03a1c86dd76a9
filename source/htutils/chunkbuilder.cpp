#include "htutils/chunkbuilder.h"

#include <algorithm>
#include <array>
#include <string>

namespace ht {

namespace {

// "00" to "99".
template <class TUnit>
constexpr auto kPairs = [] {
  std::array<TUnit, 200> pairs{};
  for (size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<TUnit>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<TUnit>('0' + i % 10);
  }
  return pairs;
}();

}  // namespace

template <class TUnit>
void THtChunkBuilder<TUnit>::FreeNodes(TNode* node) noexcept {
  while (node) {
    TNode* next = node->Next;
    delete[] node->Data;
    delete node;
    node = next;
  }
}

template <class TUnit>
void THtChunkBuilder<TUnit>::FreeChunks() noexcept {
  FreeNodes(std::exchange(FFirst.Next, nullptr));
  delete[] FFirst.Data;
}

template <class TUnit>
void THtChunkBuilder<TUnit>::Clear() {
  FreeChunks();
  FFirst = TNode();
  FCurrent = &FFirst;
  FBefore = 0;
}

template <class TUnit>
TUnit* THtChunkBuilder<TUnit>::AddSpace(size_t count) {
  const size_t size = std::max(count, FChunkSize);
  std::unique_ptr<TUnit[]> data(new TUnit[size]);
  if (FCurrent->Size != 0) {
    FCurrent->Next = new TNode;
    FBefore += FCurrent->Len;
    FCurrent = FCurrent->Next;
  }
  FCurrent->Data = data.release();
  FCurrent->Size = size;
  return FCurrent->Data;
}

template <class TUnit>
void THtChunkBuilder<TUnit>::AppendToNewChunk(const TUnit* units, size_t count) {
  std::copy_n(units, count, AddSpace(count));
  FCurrent->Len = count;
}

template <class TUnit>
void THtChunkBuilder<TUnit>::AppendRun(TUnit unit, int32_t count) {
  if (count <= 0) return;
  std::fill_n(Room(Count(count)), count, unit);
  Advance(Count(count));
}

template <class TUnit>
void THtChunkBuilder<TUnit>::AppendInt(int64_t value) {
  TUnit digits[21];
  TUnit* const end = std::end(digits);
  TUnit* p = end;
  uint64_t rest = value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
  do {
    const TUnit* pair = &kPairs<TUnit>[rest % 100 * 2];
    rest /= 100;
    *--p = pair[1];
    *--p = pair[0];
  } while (rest);
  if (*p == '0' && p + 1 < end) ++p;
  if (value < 0) *--p = '-';
  Append(p, static_cast<size_t>(end - p));
}

template <class TUnit>
bool THtChunkBuilder<TUnit>::HasAt(size_t start, TView text) const {
  const TNode* node = &FFirst;
  for (; node && start >= node->Len; node = node->Next) start -= node->Len;
  for (; node && !text.empty(); node = node->Next, start = 0) {
    const TView part = text.substr(0, node->Len - start);
    if (TView(node->Data + start, part.size()) != part) return false;
    text.remove_prefix(part.size());
  }
  return text.empty();
}

template <class TUnit>
int64_t THtChunkBuilder<TUnit>::PosOf(TView text) const {
  if (text.empty() || static_cast<int64_t>(text.size()) > GetTotalLen()) return 0;
  const size_t most = text.size() - 1;  // a match that crosses a border has at most this much on either side
  std::basic_string<TUnit> border;
  TView before;
  int64_t start = 1;
  for (const TNode* node = &FFirst; node; node = node->Next) {
    const TView chunk(node->Data, node->Len);
    if (chunk.empty()) continue;
    const TView tail = before.substr(before.size() - std::min(most, before.size()));
    border.assign(tail).append(chunk.substr(0, most));
    size_t at = border.find(text);
    if (at != TView::npos) return start - static_cast<int64_t>(tail.size() - at);
    at = chunk.find(text);
    if (at != TView::npos) return start + static_cast<int64_t>(at);
    start += static_cast<int64_t>(chunk.size());
    before = chunk;
  }
  return 0;
}

template <class TUnit>
void THtChunkBuilder<TUnit>::CopyTo(TUnit* to, size_t start) const {
  for (const TNode* node = &FFirst; node; node = node->Next) {
    const size_t skip = std::min(start, node->Len);
    start -= skip;
    to = std::copy_n(node->Data + skip, node->Len - skip, to);
  }
}

template class THtChunkBuilder<char16_t>;
template class THtChunkBuilder<char>;

}  // namespace ht
