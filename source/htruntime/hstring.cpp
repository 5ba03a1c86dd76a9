#include "htruntime/hstring.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <stdexcept>

#include "htruntime/arena.h"

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace ht {

namespace {

// The text of a whole document is read once from end to end: huge pages, where the system has them, save most of
// what its fresh memory costs.
void* AllocateBytes(size_t bytes) {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
  constexpr size_t kHugePage = size_t{2} << 20;
  if (bytes >= kHugePage / 2) {
    const size_t whole = (bytes + kHugePage - 1) / kHugePage * kHugePage;
    void* block = std::aligned_alloc(kHugePage, whole);
    if (block) madvise(block, whole, MADV_HUGEPAGE);
    return block;
  }
#endif
  return std::malloc(bytes);
}

THtStringHeader* CheckedBlock(void* block, size_t count) {
  if (!block) throw std::bad_alloc();
  auto* header = static_cast<THtStringHeader*>(block);
  header->RefCount = 1;
  header->Length = static_cast<int32_t>(count);
  reinterpret_cast<char16_t*>(header + 1)[count] = 0;
  return header;
}

}  // namespace

char16_t* hstring::NewUnits(size_t count) {
  if (count > kMaxLength) throw std::length_error("hstring: text too long");
  return reinterpret_cast<char16_t*>(CheckedBlock(AllocateBytes(BytesFor(count)), count) + 1);
}

char16_t* hstring::NewCopy(const char16_t* units, size_t count) {
  char16_t* result = NewUnits(count);
  std::memcpy(result, units, count * sizeof(char16_t));
  return result;
}

void hstring::Free(char16_t* units) noexcept {
  THtStringHeader* header = reinterpret_cast<THtStringHeader*>(units) - 1;
  if (header->RefCount & kPooled)
    THtBlockChain::Free(header);
  else
    std::free(header);
}

hstring hstring::InPool(void* memory, std::u16string_view text) noexcept {
  auto* header = static_cast<THtStringHeader*>(memory);
  header->RefCount = kPooled + 1;
  header->Length = static_cast<int32_t>(text.size());
  hstring result;
  result.FUnits = reinterpret_cast<char16_t*>(header + 1);
  std::memcpy(result.FUnits, text.data(), text.size() * sizeof(char16_t));
  result.FUnits[text.size()] = 0;
  return result;
}

hstring::hstring(size_t count, char16_t unit) : hstring(Uninitialized(count)) {
  std::fill_n(FUnits, count, unit);
}

hstring hstring::Uninitialized(size_t count) {
  hstring result;
  if (count) result.FUnits = NewUnits(count);
  return result;
}

char16_t* hstring::Unique() {
  if (FUnits &&
      (std::atomic_ref<int32_t>(Header()->RefCount).load(std::memory_order_acquire) & ~kPooled) != 1)
    *this = hstring(View().data(), Size());
  return FUnits;
}

void hstring::SetLength(size_t count) {
  if (count == 0) return Clear();
  if (count > kMaxLength) throw std::length_error("hstring: text too long");
  const bool alone =
      FUnits && std::atomic_ref<int32_t>(Header()->RefCount).load(std::memory_order_acquire) == 1;
  if (!alone) {
    hstring copy = Uninitialized(count);
    std::memcpy(copy.FUnits, Data(), std::min(count, Size()) * sizeof(char16_t));
    Swap(copy);
  } else if (count != Size()) {
    void* block = std::realloc(static_cast<void*>(Header()), BytesFor(count));
    FUnits = reinterpret_cast<char16_t*>(CheckedBlock(block, count) + 1);
  }
}

hstring& hstring::Append(std::u16string_view text) {
  if (text.empty()) return *this;
  const size_t old = Size();
  const bool inside = text.data() >= Data() && text.data() <= Data() + old;
  if (inside) {
    *this = Concat(View(), text);
  } else {
    SetLength(old + text.size());
    std::memcpy(FUnits + old, text.data(), text.size() * sizeof(char16_t));
  }
  return *this;
}

hstring hstring::Concat(std::u16string_view a, std::u16string_view b) {
  hstring result = Uninitialized(a.size() + b.size());
  if (!a.empty()) std::memcpy(result.FUnits, a.data(), a.size() * sizeof(char16_t));
  if (!b.empty()) std::memcpy(result.FUnits + a.size(), b.data(), b.size() * sizeof(char16_t));
  return result;
}

int HtCompareStr(std::u16string_view a, std::u16string_view b) noexcept { return a.compare(b); }

namespace {

constexpr bool IsBlank(char16_t c) { return c <= 32; }

}  // namespace

std::u16string_view HtTrimLeft(std::u16string_view text) noexcept {
  size_t start = 0;
  while (start < text.size() && IsBlank(text[start])) ++start;
  return text.substr(start);
}

std::u16string_view HtTrimRight(std::u16string_view text) noexcept {
  size_t end = text.size();
  while (end > 0 && IsBlank(text[end - 1])) --end;
  return text.substr(0, end);
}

std::u16string_view HtTrim(std::u16string_view text) noexcept { return HtTrimLeft(HtTrimRight(text)); }

}  // namespace ht
