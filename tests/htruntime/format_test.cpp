#include "htruntime/format.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "htruntime/exception.h"

namespace ht {
namespace {

using TArgs = std::initializer_list<THtFormatArg>;

TEST(Format, Directives) {
  struct TRow {
    std::u16string_view pattern;
    TArgs args;
    std::u16string_view text;
  };
  const TRow kRows[] = {
      {u"", {}, u""},
      {u"100%%", {}, u"100%"},
      {u"Line %d: %s", {12, u"x"}, u"Line 12: x"},
      {u"[%5s][%-5s][%.2s][%6.1s]", {u"ab", u"ab", u"abc", u"xyz"}, u"[   ab][ab   ][ab][     x]"},
      {u"[%5d][%-5d][%.3d][%7.3d]", {-42, -42, -42, 7}, u"[  -42][-42  ][-042][    007]"},
      {u"%d %d %d", {std::numeric_limits<int64_t>::min(), uint8_t{255}, true}, u"-9223372036854775808 255 1"},
      {u"%x %X %.8x %x", {255, 0xBEEF, 1, int64_t{-1}}, u"FF BEEF 00000001 FFFFFFFFFFFFFFFF"},
      {u"%f %.0f %.5f [%8.1f]", {3.14159, 2.5, -1.0, 9.96}, u"3.14 2 -1.00000 [    10.0]"},
      {u"%.1f", {7}, u"7.0"},
      {u"%f %f", {std::nan(""), -std::numeric_limits<double>::infinity()}, u"NAN -INF"},
  };
  for (const TRow& row : kRows)
    EXPECT_EQ(HtFormatArgs(row.pattern, row.args), row.text) << HtToUtf8(row.pattern);
  EXPECT_EQ(HtFormat(u"%.2f", 1e308).Length(), 309 + 3);
  EXPECT_EQ(HtFormat(u"%s%s", u"a"_hs, std::u16string(u"b")), u"ab");
}

TEST(Format, WrongPatternsAndArguments) {
  struct TRow {
    std::u16string_view pattern;
    TArgs args;
  };
  const TRow kRows[] = {
      {u"%d", {}}, {u"%d", {u"1"}}, {u"%s", {1}}, {u"%f", {u"1"}},  {u"%x", {1.0}},    {u"%d", {1.5}},
      {u"%", {}},  {u"%q", {1}},    {u"%5", {1}}, {u"%.s", {u"a"}}, {u"%99999d", {1}}, {u"%s %s", {u"a"}},
  };
  for (const auto& [pattern, args] : kRows) {
    try {
      HtFormatArgs(pattern, args);
      ADD_FAILURE() << HtToUtf8(pattern);
    } catch (const EConvertError& error) {
      EXPECT_EQ(error.Message, hstring(u"Format '") + pattern + u"' invalid or incompatible with argument");
    }
  }
}

}  // namespace
}  // namespace ht
