#include "htmlpars/colors.h"

#include <gtest/gtest.h>

using namespace ht;

namespace {

uint32_t lastIndex;

uint32_t RecordIndex(uint32_t index) {
  lastIndex = index;
  return 0xFF100000 | index;
}

// Puts a theme in force for one test.
class TTheme {
 public:
  explicit TTheme(TThemeColorProc proc) { HtSetThemeColorProc(proc); }
  ~TTheme() { HtSetThemeColorProc(nullptr); }
};

}  // namespace

TEST(Colors, TextToColor) {
  constexpr struct {
    std::u16string_view Text;
    uint32_t Color, WithSys;  // htmlHextoColor, htmlHextoColorSys
  } kCases[] = {
      {u"", 0xFF000000, 0xFF000000},
      {u"transparent", 0x00FFFFFF, 0x00FFFFFF},
      {u"none", 0x1FFFFFFF, 0x1FFFFFFF},
      {u"Transparent", 1, 1},
      {u"red", 0xFFFF0000, 0xFFFF0000},
      {u"ReD", 0xFFFF0000, 0xFFFF0000},
      {u"DarkGrey", 1, 1},
      // The digits, by length.
      {u"#", 1, 1},
      {u"#12", 1, 1},
      {u"#f0A", 0xFFFF00AA, 0xFFFF00AA},
      {u"#1234", 0x44112233, 1},
      {u"#12345", 1, 1},
      {u"#1a2B3c", 0xFF1A2B3C, 0xFF1A2B3C},
      {u"#1122334", 0xFF112233, 0xFF112233},
      {u"#11223344", 0x44112233, 0x44112233},
      {u"#112233445566778899", 0x44112233, 0x44112233},
      {u"#11223g", 1, 1},
      {u"#1122334455667788g", 1, 1},
      {u"##123", 1, 1},
      {u"#\u0661\u0662\u0663", 1, 1},
      // Without number sign.
      {u"f00", 0xFFFF0000, 0xFFFF0000},
      {u"abc", 0xFFAABBCC, 0xFFAABBCC},
      {u"1234", 0x44112233, 0x44112233},
      // rgba()
      {u"rgba(1,2,3,0.5)", 0x80010203, 1},
      {u"rgba(1 2,3,4,1", 0xFF010304, 1},
      {u"rgba(1", 0x00010000, 1},
      {u"rgba(red, 0.5)", 0x80FF0000, 1},
      {u"rgba(#0f0,1)", 0xFF00FF00, 1},
      {u"rgba(#11223344,0)", 0x00112233, 1},
      {u"rgba(nothing,1)", 0xFF000001, 1},
      {u"rgba(", 0x00000000, 1},
      {u"rgba(rgba(rgba(red,1)", 0xFFFF0000, 1},
      {u"rgba(1,2,3,2)", 0xFE010203, 1},  // 510, of which one byte stays
      {u"rgba(1,2,3,0.0019607)", 0x00010203, 1},
      {u"rgba(1,2,3,0.0058824)", 0x02010203, 1},
      {u"RGBA(1,2,3,1)", 1, 1},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(HtToUtf8(c.Text));
    EXPECT_EQ(htmlHextoColor(c.Text), c.Color);
    bool isSystem = true;
    EXPECT_EQ(htmlHextoColorSys(c.Text, isSystem), c.WithSys);
    EXPECT_FALSE(isSystem);
  }
}

TEST(Colors, ColorToText) {
  constexpr struct {
    uint32_t Color;
    std::u16string_view Hex, Text;
  } kCases[] = {
      {0xFF112233, u"112233", u"#112233"},   {0x44112233, u"112233", u"#11223344"},
      {0x00FFFFFF, u"ffffff", u"#ffffff00"}, {0xFF000000, u"000000", u"#000000"},
      {0xFE00ABCD, u"00abcd", u"#00abcdfe"}, {1, u"000001", u"#00000100"},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(htmlColortoHex(c.Color), c.Hex);
    EXPECT_EQ(htmlColortoStr(c.Color), c.Text);
    EXPECT_EQ(htmlHextoColor(c.Text), c.Color);
  }
}

TEST(Colors, Names) {
  // clang-format off
  constexpr struct {
    std::u16string_view Name;
    uint32_t Color;
  } kCases[] = {
      {u"AliceBlue", 0xFFF0F8FF}, {u"YELLOWGREEN", 0xFF9ACD32}, {u"indianred", 0xFFCD5C5C},
      {u"black", 0xFF000000}, {u"LightGoldenRodYellow", 0xFFFAFAD2}, {u"lightgreen", 0xFF90EE90},
      {u"dimgrey", 0}, {u"Grey", 0xFF808080}, {u"LightGrey", 0xFFD3D3D3}, {u"rebeccapurple", 0},
      {u"window", 0}, {u"", 0}, {u"lightgoldenrodyellowandmuchmoreofit", 0}, {u"r\u00C9d", 0},
      {u"\u212Ahaki", 0},
  };
  // clang-format on
  for (const auto& c : kCases) EXPECT_EQ(HtStringtoColor(c.Name), c.Color) << HtToUtf8(c.Name);
  const THtPointerDictionary& all = GlobalColorDictionary();
  EXPECT_EQ(all.GetCount(), 142);
}

TEST(SysColors, NamesGoThroughTheTheme) {
  // clang-format off
  constexpr struct {
    std::u16string_view Name;
    uint32_t Index;
  } kCases[] = {
      {u"ACTIVEBORDER", 10}, {u"ButtonFace", 15}, {u"c3dhilight", 20}, {u"desktop", 1}, {u"field", 5},
      {u"HighLight2", 130}, {u"highlight", 13}, {u"infotext", 23}, {u"SCROLLBAR", 0}, {u"menubar", 30},
      {u"window", 5}, {u"windowframe", 6}, {u"windowText", 8}, {u"HIGHLIGHTTEXT", 14},
  };
  // clang-format on
  const TTheme theme(RecordIndex);
  for (const auto& c : kCases) {
    SCOPED_TRACE(HtToUtf8(c.Name));
    EXPECT_EQ(HtStringtoSysColor(c.Name), 0xFF100000 | c.Index);
    EXPECT_EQ(lastIndex, c.Index);
    EXPECT_EQ(htmlHextoColor(c.Name), 0xFF100000 | c.Index);
    bool isSystem = false;
    EXPECT_EQ(htmlHextoColorSys(c.Name, isSystem), 0xFF100000 | c.Index);
    EXPECT_TRUE(isSystem);
  }
  for (std::u16string_view name : {u"", u"windo", u"windowz", u"aaa", u"zzz", u"red"})
    EXPECT_EQ(HtStringtoSysColor(name), 0u) << HtToUtf8(name);
}

TEST(SysColors, WithoutThemeColors) {
  const TTheme theme([](uint32_t) { return uint32_t{0}; });
  bool isSystem = true;
  EXPECT_EQ(htmlHextoColorSys(u"window", isSystem), 0xFFFFFFFF);
  EXPECT_FALSE(isSystem);
  EXPECT_EQ(htmlHextoColor(u"windowtext"), 0xFF000000);
  EXPECT_EQ(htmlHextoColor(u"Window"), 1u);
  EXPECT_EQ(htmlHextoColor(u"menu"), 1u);
}

TEST(SysColors, StartValueExchangesRedAndBlue) {
  for (uint32_t index = 0; index <= 131; ++index) {
    const uint32_t bgr = HtPlatformSysColor(index);
    EXPECT_EQ(HtThemeColorProc()(index), 0xFF000000 | (bgr & 255) << 16 | (bgr >> 8 & 255) << 8 | bgr >> 16);
  }
  EXPECT_EQ(HtStringtoSysColor(u"activecaption"), 0xFF0A246A);
  EXPECT_EQ(HtStringtoSysColor(u"highlight2"), 0xFF000000);
}

// Deep nesting neither overflows the stack nor takes quadratic time.
TEST(Colors, DeeplyNestedRgba) {
  std::u16string text;
  for (int i = 0; i < 1000000; ++i) text += u"rgba(";
  EXPECT_EQ(htmlHextoColor(text + u" red,1)"), 0xFFFF0000);
}
