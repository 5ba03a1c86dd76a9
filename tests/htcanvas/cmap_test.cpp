#include "htcanvas/cmap.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <span>

using namespace ht;

namespace {

// In the order of AddRec.
struct TRec {
  uint32_t Start, End;
  int32_t Base;
  const char16_t *Ligature = u"", *Name = u"";
};

void AddAll(THtCMap& map, std::span<const TRec> records) {
  for (const TRec& rec : records) map.AddRec(rec.Start, rec.End, rec.Base, rec.Ligature, rec.Name);
  map.Sort();
}

constexpr TRec kRecords[]{{400, 401, 0x1F600, u"", u""},
                          {20, 29, 65, u"", u"A"},
                          {50, 50, 0, u"fi", u"ffi"},
                          {0x8140, 0x8150, 0x4E00, u"ffi", u""}};

TEST(CMap, FindsCodes) {
  THtCMap map;
  map.Sort();
  EXPECT_EQ(map.Find(0), nullptr);
  AddAll(map, kRecords);
  for (const uint32_t code :
       {0u, 19u, 20u, 29u, 30u, 50u, 51u, 276u, 400u, 401u, 402u, 0x813Fu, 0x8150u, ~0u}) {
    SCOPED_TRACE(code);
    const auto record =
        std::ranges::find_if(kRecords, [code](const TRec& r) { return r.Start <= code && code <= r.End; });
    const bool known = record != std::end(kRecords);
    const uint32_t value = known ? static_cast<uint32_t>(record->Base) + code - record->Start : 0;
    const THtCMapRec* found = map.Find(code);
    ASSERT_EQ(found != nullptr, known);
    EXPECT_TRUE(!known || found->CStart == record->Start);
    map.IsIdentity = false;
    EXPECT_EQ(map.Decode(code), value);
    map.IsIdentity = true;
    EXPECT_EQ(map.Decode(code), known ? value : code);
  }
  EXPECT_EQ(map.FMapLow, 20u);
  EXPECT_EQ(map.FMapHi, 51u);
  EXPECT_EQ(map.CIDCount(), 10 + 1 + 2 + 17);
  EXPECT_EQ(map.BaseMin(), 0);
  EXPECT_TRUE(map.HasSupplementaryPlane());
  int32_t index;
  EXPECT_TRUE(map.FindName(u"ffi", index));
  EXPECT_EQ(index, 1);
  EXPECT_TRUE(map.FindLigature(u"ffi", index));
  EXPECT_EQ(index, 3);
  EXPECT_FALSE(map.FindName(u"A ", index));

  THtCMap part;
  part.Assign(map, 100);
  EXPECT_EQ(part.Count(), 2);
  EXPECT_TRUE(part.IsIdentity);
  EXPECT_EQ(part.Decode(21), 66u);
  map.Clear();
  EXPECT_EQ(map.Find(20), nullptr);
}

TEST(CMap, TheFastMapHolds256Codes) {
  THtCMap map;
  constexpr TRec kTwo[]{{10, 1000, 1}, {2000, 2000, 7}};
  AddAll(map, kTwo);
  EXPECT_EQ(map.FMapHi, 266u);
  for (const uint32_t code : {10u, 265u, 266u, 1000u}) EXPECT_EQ(map.Decode(code), code - 9);
  EXPECT_EQ(map.Find(1001), nullptr);
  EXPECT_EQ(map.Decode(2000), 7u);
  EXPECT_EQ(map.InsertRec(1500, 1600, 1, {}, {}).CStart, 1500u);
  EXPECT_EQ(map.FList[1].CStart, 1500u);
}

TEST(CMap, DecodesBytes) {
  THtCMap map;
  AddAll(map, kRecords);
  EXPECT_EQ(map.DecodeBytes({0, 20, 0, 50, 1, 0x91, 0x81, 0x42, 0, 21}), u"Afi\U0001F601ffiB"_hs);
  EXPECT_EQ(map.DecodeBytes({0, 21, 20}), u"BA"_hs);  // a lone byte at the end
  EXPECT_EQ(map.DecodeBytes({}), hstring());
  EXPECT_EQ(map.DecodeANSIBytes({20, 60, 50}), u"A<fi"_hs);
  map.CIDShift = 31;
  EXPECT_EQ(map.DecodeBytes({0, 34, 0, 20}), u"AA"_hs);
}

TEST(CMap, Ambiguity) {
  constexpr const char16_t *a = u"a", *b = u"b";
  const struct {
    std::vector<TRec> Records;
    uint32_t MaxCode;
    bool Codes, Names;
  } kRows[] = {
      {{}, 0, true, true},
      {{{1, 1, 32, u"", a}, {2, 2, 32, u"", a}, {3, 3, 8226}, {4, 4, 8226}}, 0, true, true},
      {{{1, 9, 60, u"", a}, {20, 20, 68, u"", a}}, 0, false, true},
      {{{1, 9, 60, u"", a}, {20, 20, 68, u"", b}}, 19, true, false},
      {{{1, 9, 60, u"", a}, {20, 20, 69, u"", b}}, 0, true, true},
      {{{1, 9, 60, u"x", a}, {20, 20, 68, u"", b}}, 0, true, true},
      {{{1, 100, 60, u"", a}, {200, 209, 70, u"", a}, {300, 300, 150, u"", b}}, 0, false, false},
      {{{1, 1, 0}, {2, 2, 0}}, 0, true, true},
      {{{1, 1, 0x100000, u"", a}, {2, 2, 0x100000, u"", b}}, 0, true, true},
      {{{0, 0xFFFFFFFF, -5, u"", a}, {0, 0xFFFFFFFF, 5, u"", a}}, 0xFFFFFFFF, false, true},
  };
  for (size_t i = 0; i < std::size(kRows); ++i) {
    THtCMap map;
    AddAll(map, kRows[i].Records);
    EXPECT_EQ(map.Unambiguous(kRows[i].MaxCode), kRows[i].Codes) << i;
    EXPECT_EQ(map.UnambiguousNames(), kRows[i].Names) << i;
  }
}

}  // namespace
