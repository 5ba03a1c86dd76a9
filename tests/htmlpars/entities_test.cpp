#include "htmlpars/entities.h"

#include <gtest/gtest.h>
#include <map>

#include "htmlpars/entityreverse.h"
#include "htmlpars/lower.h"

using namespace ht;

namespace {

uint32_t Find(std::u16string_view name) {
  return GlobalEntityDictionary().FindEntity(name.data(), static_cast<int32_t>(name.size()));
}

hstring Lower(hstring text) {
  hLower(text);
  return text;
}

}  // namespace

TEST(Entities, TableIsTheStandardsListInOrder) {
  const auto table = HtEntityTable();
  ASSERT_EQ(table.size(), 2125u);
  EXPECT_EQ(
      std::count_if(table.begin(), table.end(), [](const THtmlEntity& row) { return row.Value > 65535; }),
      133);
  for (size_t i = 1; i < table.size(); ++i) {
    const hstring &a = table[i - 1].Name, &b = table[i].Name;
    const int order = HtCompareStr(Lower(a), Lower(b));
    ASSERT_TRUE(order < 0 || (order == 0 && a < b)) << HtToUtf8(a) << " " << HtToUtf8(b);
  }
}

TEST(Entities, EveryNameIsFound) {
  for (const THtmlEntity& row : HtEntityTable()) ASSERT_EQ(Find(row.Name), row.Value) << HtToUtf8(row.Name);
  // clang-format off
  constexpr struct {
    std::u16string_view Name;
    uint32_t Value;
  } kCases[] = {
      {u"amp", 38}, {u"AMP", 38}, {u"Amp", 0}, {u"bne", 61}, {u"zopf", 120171}, {u"eacute", 233},
      {u"Eacute", 201}, {u"EACUTE", 0}, {u"amp;", 0}, {u"am", 0}, {u"", 0}, {u"lt", 60}, {u"Lt", 8810},
      {u"CounterClockwiseContourIntegral", 8755},
  };
  // clang-format on
  for (const auto& c : kCases) EXPECT_EQ(Find(c.Name), c.Value) << HtToUtf8(c.Name);
}

TEST(Entities, ReverseGivesTheFirstRowOfAValue) {
  const auto& reverse = HtEntityReverseDictionary();
  std::map<uint32_t, PHtmlEntity> first;
  for (const THtmlEntity& row : HtEntityTable()) first.emplace(row.Value, &row);
  for (const auto& [value, row] : first) {
    const bool written = value <= 255 || (value >= 256 && value <= 591) || (value >= 880 && value <= 1279) ||
                         (value >= 1328 && value <= 1871) || (value >= 8192 && value <= 8351);
    ASSERT_EQ(reverse.FindEntity(value), written ? nullptr : row) << value;
  }
  ASSERT_NE(reverse.FindEntity(8764), nullptr);
  EXPECT_EQ(reverse.FindEntity(8764)->Name, u"nvsim");
  EXPECT_EQ(reverse.FindEntity(233), nullptr);
  EXPECT_EQ(reverse.FindEntity(0x4E00), nullptr);
}
