#include "htutils/strreplace.h"

#include <algorithm>

#include "htutils/strsearch.h"

namespace ht {

void ReplaceChar(hstring& text, char16_t from, char16_t to) {
  const size_t first = detail::FindUnit(text.Data(), text.Size(), from);
  if (first == text.Size()) return;
  char16_t* units = text.Unique();
  std::replace(units + first, units + text.Size(), from, to);
}

namespace {

constexpr size_t kLargestStep = 65535;

// A text that is built up by block moves.
class TGrowingText {
 public:
  explicit TGrowingText(size_t capacity) : FText(hstring::Uninitialized(capacity)), FUnits(FText.Unique()) {}

  void Add(const char16_t* units, size_t count) {
    if (count == 0) return;
    if (FLength + count > FText.Size()) {
      const size_t step = std::min(FText.Size() / 2, kLargestStep);
      FText.SetLength(std::max(FText.Size() + step, FLength + count));
      FUnits = FText.Unique();
    }
    std::memcpy(FUnits + FLength, units, count * sizeof(char16_t));
    FLength += count;
  }

  hstring Take() {
    FText.SetLength(FLength);
    return std::move(FText);
  }

 private:
  hstring FText;
  char16_t* FUnits;
  size_t FLength = 0;
};

// The first occurrence at or behind `p`, or `end`. `pattern` is not empty.
const char16_t* FindPattern(const char16_t* p, const char16_t* end, std::u16string_view pattern) {
  while (static_cast<size_t>(end - p) >= pattern.size()) {
    const size_t places = static_cast<size_t>(end - p) - pattern.size() + 1;
    p += detail::FindUnit(p, places, pattern[0]);
    if (static_cast<size_t>(end - p) < pattern.size()) break;
    if (std::memcmp(p, pattern.data(), pattern.size() * sizeof(char16_t)) == 0) return p;
    ++p;
  }
  return end;
}

}  // namespace

hstring ReplaceStr(const hstring& text, std::u16string_view from, std::u16string_view to) {
  if (from.empty() || text.Size() < from.size()) return text;
  if (from.size() == 1 && to.size() == 1) {
    hstring result = text;
    ReplaceChar(result, from[0], to[0]);
    return result;
  }
  const char16_t* p = text.begin();
  const char16_t* end = text.end();
  const char16_t* hit = FindPattern(p, end, from);
  if (hit == end) return text;
  TGrowingText result(text.Size());
  while (hit != end) {
    result.Add(p, static_cast<size_t>(hit - p));
    result.Add(to.data(), to.size());
    p = hit + from.size();
    hit = FindPattern(p, end, from);
  }
  result.Add(p, static_cast<size_t>(end - p));
  return result.Take();
}

}  // namespace ht
