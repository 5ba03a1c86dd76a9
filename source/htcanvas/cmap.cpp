#include "htcanvas/cmap.h"

#include <algorithm>

namespace ht {

namespace {

constexpr uint32_t kLastTwoByteCode = 65535;
constexpr int64_t kValues = 0x100000;  // that are looked at for repeats

// The value is reckoned as a 32-bit number that wraps round.
uint32_t ValueOf(const THtCMapRec& rec, uint32_t code) {
  return static_cast<uint32_t>(rec.CBase) + (code - rec.CStart);
}

struct TValueRange {
  int64_t First, Last;
  const hstring* Name;
};

// What the codes of a record map to, as far as it is looked at. Empty, with Last below First, for none.
TValueRange ValuesOf(const THtCMapRec& rec) {
  const int64_t last = int64_t{rec.CBase} + rec.CEnd - rec.CStart;
  return {std::max<int64_t>(rec.CBase, 0), std::min(last, kValues - 1), &rec.Name};
}

bool MayRepeat(int64_t value) { return value == 8226 || value == 126 || value == 32; }

template <class TTest>
bool FindFirst(const THtCMAPRecs& list, int32_t& index, const TTest& test) {
  const auto found = std::ranges::find_if(list, test);
  index = found == list.end() ? -1 : static_cast<int32_t>(found - list.begin());
  return found != list.end();
}

}  // namespace

void THtCMap::AddRec(uint32_t start, uint32_t end, int32_t base, const hstring& ligature,
                     const hstring& name) {
  FList.push_back({start, end, base, name, ligature});
}

THtCMapRec& THtCMap::InsertRec(uint32_t start, uint32_t end, int32_t base, const hstring& ligature,
                               const hstring& name) {
  const auto at = std::ranges::lower_bound(FList, start, {}, &THtCMapRec::CEnd);
  return *FList.insert(at, {start, end, base, name, ligature});
}

void THtCMap::Clear() {
  FList.clear();
  FMapHi = 0;
}

void THtCMap::Assign(const THtCMap& source, uint32_t maxCode) {
  if (maxCode == 0) maxCode = kLastTwoByteCode;
  THtCMAPRecs taken;
  std::ranges::copy_if(source.FList, std::back_inserter(taken),
                       [maxCode](const THtCMapRec& rec) { return rec.CStart <= maxCode; });
  FList = std::move(taken);
  IsIdentity = source.IsIdentity;
  FMapLow = FMapHi = 0;
}

int64_t THtCMap::CIDCount() const {
  int64_t count = 0;
  for (const THtCMapRec& rec : FList)
    if (rec.CEnd >= rec.CStart) count += int64_t{rec.CEnd} - rec.CStart + 1;
  return count;
}

int32_t THtCMap::BaseMin() const {
  int32_t least = static_cast<int32_t>(kLastTwoByteCode);
  for (const THtCMapRec& rec : FList) least = std::min(least, rec.CBase);
  return least;
}

void THtCMap::Sort() {
  std::ranges::stable_sort(FList, {}, &THtCMapRec::CStart);
  FMap.fill(-1);
  FMapLow = FMapHi = FList.empty() ? 0 : FList.front().CStart;
  for (size_t i = 0; i < FList.size(); ++i) {
    const uint32_t first = FList[i].CStart - FMapLow;
    if (first >= FMap.size()) break;
    if (FList[i].CEnd < FList[i].CStart) continue;
    const uint32_t last = std::min(FList[i].CEnd - FMapLow, static_cast<uint32_t>(FMap.size() - 1));
    std::fill(FMap.begin() + first, FMap.begin() + last + 1, static_cast<int32_t>(i));
    FMapHi = FMapLow + last + 1;
  }
}

const THtCMapRec* THtCMap::Find(uint32_t code) const {
  if (code < FMapLow) return nullptr;
  if (code < FMapHi) {
    const int32_t index = FMap[code - FMapLow];
    return index >= 0 && index < Count() ? &FList[static_cast<size_t>(index)] : nullptr;
  }
  const auto behind = std::ranges::upper_bound(FList, code, {}, &THtCMapRec::CStart);
  if (behind == FList.begin() || (behind - 1)->CEnd < code) return nullptr;
  return &*(behind - 1);
}

uint32_t THtCMap::Decode(uint32_t code) const {
  if (const THtCMapRec* rec = Find(code)) return ValueOf(*rec, code);
  return IsIdentity ? code : 0;
}

bool THtCMap::FindLigature(std::u16string_view text, int32_t& index) const {
  return FindFirst(FList, index, [text](const THtCMapRec& rec) { return rec.Ligature == text; });
}

bool THtCMap::FindName(std::u16string_view name, int32_t& index) const {
  return FindFirst(FList, index, [name](const THtCMapRec& rec) { return rec.Name == name; });
}

bool THtCMap::HasSupplementaryPlane() const {
  return std::ranges::any_of(FList, [](const THtCMapRec& rec) { return rec.CBase > 65535; });
}

void THtCMap::AppendCode(std::u16string& text, uint32_t code) const {
  const THtCMapRec* rec = Find(code);
  if (!rec) {
    text += static_cast<char16_t>(static_cast<uint32_t>(CIDShift) + code);
  } else if (!rec->Ligature.Empty()) {
    text += rec->Ligature.View();
  } else if (const uint32_t value = ValueOf(*rec, code); value > 0xFFFF && value <= 0x10FFFF) {
    text += static_cast<char16_t>(0xD800 + ((value - 0x10000) >> 10));
    text += static_cast<char16_t>(0xDC00 + (value & 0x3FF));
  } else {
    text += value > 0xFFFF ? u'\uFFFD' : static_cast<char16_t>(value);
  }
}

hstring THtCMap::DecodeBytes(const THtBytes& bytes) const {
  std::u16string text;
  text.reserve((bytes.size() + 1) / 2);
  size_t i = 0;
  for (; i + 1 < bytes.size(); i += 2) AppendCode(text, static_cast<uint32_t>(bytes[i]) << 8 | bytes[i + 1]);
  if (i < bytes.size()) AppendCode(text, bytes[i]);
  return text;
}

hstring THtCMap::DecodeANSIBytes(const THtBytes& bytes) const {
  std::u16string text;
  text.reserve(bytes.size());
  for (const uint8_t byte : bytes) AppendCode(text, byte);
  return text;
}

bool THtCMap::Unambiguous(uint32_t maxCode) const {
  if (maxCode == 0) maxCode = kLastTwoByteCode;
  std::vector<bool> reached(kValues);
  for (auto rec = FList.rbegin(); rec != FList.rend(); ++rec) {
    if (rec->CEnd > maxCode || rec->CEnd < rec->CStart || !rec->Ligature.Empty() || rec->CBase == 0) continue;
    const TValueRange values = ValuesOf(*rec);
    for (int64_t value = values.First; value <= values.Last; ++value) {
      const auto at = static_cast<size_t>(value);
      if (reached[at] && !MayRepeat(value)) return false;
      reached[at] = true;
    }
  }
  return true;
}

bool THtCMap::UnambiguousNames() const {
  std::vector<TValueRange> ranges;
  for (const THtCMapRec& rec : FList)
    if (const TValueRange values = ValuesOf(rec); rec.Ligature.Empty() && values.First <= values.Last)
      ranges.push_back(values);
  std::ranges::sort(ranges, {}, &TValueRange::First);
  // The range that reaches furthest so far: what ends before it has no other name, or it would have been met.
  const TValueRange* furthest = nullptr;
  for (const TValueRange& range : ranges) {
    if (furthest && range.First <= furthest->Last && *furthest->Name != *range.Name) return false;
    if (!furthest || range.Last > furthest->Last) furthest = &range;
  }
  return true;
}

}  // namespace ht
