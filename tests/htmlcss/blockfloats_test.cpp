#include "htmlcss/blockfloats.h"

#include <gtest/gtest.h>

#include "htruntime/numformat.h"
#include "styledtree.h"

namespace ht {
namespace {

// Nodes that bands are named after: 'a' is the first.
THtNode* NodeOf(char name) {
  static THtmlNode nodes[8];
  return name ? &nodes[name - 'a'] : nullptr;
}

std::string NameOf(const THtNode* node) {
  for (char name = 'a'; name < 'i'; ++name)
    if (node == NodeOf(name)) return {name};
  return node ? HtToUtf8(node->GetAttribute(u"id"_hs)) : "";
}

std::string Number(float value) { return HtToUtf8(HtFloatToStr(static_cast<double>(value))); }

// "top-bottom:offset" and the node, for each band.
std::string TextOf(const TBlockSide& side) {
  std::string text;
  for (const TBlockSideRec& rec : side.Blocks)
    text += (text.empty() ? "" : " ") + Number(rec.Top) + "-" + Number(rec.Bottom) + ":" +
            Number(rec.Offset) + NameOf(rec.Node);
  return text;
}

struct TBand {
  float Top, Bottom, Offset;
};

TBlockSide SideOf(std::initializer_list<TBand> bands) {
  TBlockSide side;
  char name = 'a';
  for (const TBand& band : bands) side.AddBlock(band.Top, band.Bottom, band.Offset, NodeOf(name++));
  return side;
}

TEST(BlockSide, AddBlock) {
  const struct {
    std::initializer_list<TBand> Added;
    const char* Bands;
    float MaxTop;
  } cases[] = {
      // clang-format off
      {{}, "", 0}, {{{10, 20, 0}, {30, 40, -1}}, "", 0}, {{{-5, 20, 30}}, "0-20:30a", 0},
      // Apart.
      {{{10, 20, 5}, {0, 10, 7}}, "0-10:7b 10-20:5a", 10}, {{{10, 20, 5}, {20, 30, 7}}, "10-20:5a 20-30:7b", 20},
      {{{0, 10, 5}, {30, 40, 6}, {10, 30, 7}}, "0-10:5a 10-30:7c 30-40:6b", 30},
      // The same edges.
      {{{10, 20, 5}, {10, 20, 3}}, "10-20:5a", 10}, {{{10, 20, 5}, {10, 20, 9}}, "10-20:9a", 10},
      {{{0, 50, 5}, {20, 30, 9}, {20, 30, 2}}, "0-20:5a 20-30:9a 30-50:5a", 20},
      // Within one.
      {{{0, 100, 50}, {40, 60, 10}}, "0-40:50a 40-60:10a 60-100:50a", 40},
      {{{0, 100, 50}, {40, 100, 10}}, "0-40:50a 40-100:10a", 40},
      {{{0, 100, 50}, {0, 60, 10}}, "0-60:10a 60-100:50a", 0},
      {{{20, 100, 50}, {0, 60, 10}}, "0-60:10a 60-100:50a", 20}, {{{20, 100, 50}, {0, 100, 10}}, "0-100:10a", 20},
      // Beyond one: the next is shortened, or left as it is where others were taken out before it.
      {{{0, 50, 5}, {20, 80, 9}}, "0-20:5a 20-80:9a", 20}, {{{10, 50, 5}, {0, 80, 9}}, "0-80:9a", 10},
      {{{0, 50, 5}, {50, 100, 7}, {20, 80, 9}}, "0-20:5a 20-80:9a 80-100:7b", 50},
      {{{0, 50, 5}, {90, 120, 7}, {20, 80, 9}}, "0-20:5a 20-80:9a 90-120:7b", 90},
      {{{0, 50, 5}, {50, 60, 6}, {60, 70, 7}, {20, 80, 9}}, "0-20:5a 20-80:9a", 60},
      {{{0, 50, 5}, {50, 60, 6}, {60, 100, 7}, {20, 80, 9}}, "0-20:5a 20-80:9a 60-100:7c", 60},
      {{{0, 50, 5}, {50, 60, 6}, {60, 100, 7}, {20, 80, 9}, {70, 75, 3}}, "0-20:5a 20-70:9a 70-75:3a 75-80:9a 60-100:7c", 70},
      // clang-format on
  };
  for (const auto& c : cases) {
    TBlockSide side = SideOf(c.Added);
    EXPECT_EQ(TextOf(side), c.Bands) << &c - cases;
    EXPECT_EQ(side.MaxTop, c.MaxTop) << &c - cases;
    EXPECT_EQ(side.ClearTop(), side.Empty() ? 0 : side.Blocks.back().Bottom);
    side.Clear();
    EXPECT_TRUE(side.Empty() && side.MaxTop == 0);
  }
}

TEST(BlockSide, MaxOffset) {
  const TBlockSide apart = SideOf({{10, 20, 5}, {30, 50, 8}});
  const TBlockSide over = SideOf({{0, 50, 5}, {50, 60, 6}, {60, 100, 7}, {20, 80, 9}});
  const TBlockSide mixed = SideOf({{0, 50, 5}, {50, 60, 6}, {60, 100, 7}, {20, 80, 9}, {70, 75, 3}});
  const struct {
    const TBlockSide& Side;
    float Top, Bottom, Offset;
  } cases[] = {
      // clang-format off
      // Less than a pixel at either end does not count.
      {apart, 0, 10, 0}, {apart, 0, 11, 0}, {apart, 0, 11.5f, 5}, {apart, 18.5f, 25, 5}, {apart, 19, 25, 0},
      {apart, 12, 13, 5}, {apart, 15, 15, 5}, {apart, 20, 30.5f, 0}, {apart, 20, 31.5f, 8}, {apart, 0, 100, 8},
      {apart, 49, 200, 0}, {over, 65, 66, 9}, {over, 85, 86, 7},
      {mixed, 69.5f, 75.5f, 7},  // the last band begins above those before it
      {mixed, 72, 73, 7}, {TBlockSide(), 0, 100, 0},
      // clang-format on
  };
  for (const auto& c : cases) EXPECT_EQ(c.Side.MaxOffset(c.Top, c.Bottom), c.Offset) << c.Top;

  TBlockSide::TOffsetBlock widest =
      SideOf({{0, 10, 5}, {20, 30, 9}, {40, 50, 9}, {60, 70, 1}}).MaxOffsetBlock();
  EXPECT_TRUE(widest.Offset == 9 && widest.Bottom == 50);
  widest = TBlockSide().MaxOffsetBlock();
  EXPECT_TRUE(widest.Offset == 0 && widest.Bottom == 0);
}

TEST(BlockSide, Y) {
  const TBlockSide steps = SideOf({{0, 50, 100}, {50, 80, 40}}), low = SideOf({{30, 50, 100}}),
                   growing = SideOf({{0, 10, 20}, {10, 50, 200}});
  const struct {
    const TBlockSide& Side;
    float Width, Y, Height;
    char Node;
    float Found, Offset;  // in 300 pixels
  } cases[] = {
      // clang-format off
      {TBlockSide(), 400, 7, 20, 0, 7, 0}, {steps, 100, 0, 20, 0, 0, 100}, {steps, 200, 0, 20, 0, 0, 100},
      {steps, 250, 0, 20, 0, 50, 40}, {steps, 280, 0, 20, 0, 80, 0}, {steps, 280, 100, 20, 0, 100, 0},
      {steps, 300, 0, 20, 0, 80, 0},  // exactly as wide as there is room
      {steps, 300, 60, 20, 0, 80, 0}, {steps, 100, 60, 20, 0, 60, 40}, {steps, 250, 0, 60, 0, 50, 40},
      {steps, 280, 0, 20, 'a', 0, 0}, {steps, 280, 60, 20, 'a', 60, 0},  // passed over, but its own
      {steps, 280, 60, 20, 'b', 60, 0},
      {growing, 250, 0, 30, 0, 0, 20},  // beyond the first band only that one is asked
      {growing, 250, 0, 9, 0, 0, 20}, {growing, 290, 0, 9, 0, 50, 0},
      {low, 100, 0, 20, 0, 0, 0},  // ends above the band, or where it begins
      {low, 100, 0, 30, 0, 0, 0}, {low, 100, 30, 0, 0, 30, 100}, {low, 250, 10, 30, 0, 50, 0},
      // clang-format on
  };
  for (const auto& c : cases) {
    float offset = -1;
    EXPECT_EQ(c.Side.Y(c.Width, c.Y, c.Height, 300, NodeOf(c.Node), offset), c.Found) << &c - cases;
    EXPECT_EQ(offset, c.Offset) << &c - cases;
  }
}

TEST(BlockFloats, Y) {
  TTestNode element(u"");
  element.InnerWidth = 300;
  TBlockFloats none(element), usual(element), low(element), endless(element);
  usual.AddRange(0, 50, 100, 0, NodeOf('a'));
  usual.AddRange(0, 80, 0, 60, NodeOf('b'));
  low.AddRange(60, 90, 10, 0, NodeOf('a'));
  low.AddRange(0, 70, -1, 10, NodeOf('b'));
  endless.AddRange(0, 10000, 200, 200, NodeOf('a'));
  const struct {
    TBlockFloats& Floats;
    float Width, Y, Height;
    bool ClearLeft, ClearRight;
    float Found, Left, Right;
  } cases[] = {
      // clang-format off
      {none, 400, 7, 20, true, true, 7, 0, 0}, {usual, 100, 0, 20, false, false, 0, 100, 60},
      {usual, 140, 0, 20, false, false, 0, 100, 60},  // an exact fit
      {usual, 141, 0, 20, false, false, 49, 0, 60}, {usual, 241, 0, 20, false, false, 79, 0, 0},
      {usual, 100, 0, 20, true, false, 50, 0, 60}, {usual, 100, 0, 20, false, true, 80, 0, 0},
      {usual, 100, 0, 20, true, true, 80, 0, 0},
      {usual, 301, 0, 20, false, false, 80, 0, 0},  // wider than the element
      {usual, 100, 60, 20, false, false, 60, 0, 60}, {usual, 100, 90, 20, true, true, 90, 0, 0},
      {low, 301, 0, 8, false, false, 90, 0, 0},  // cleared on the right it meets the left again
      {low, 100, 0, 8, false, true, 70, 10, 0}, {low, 100, 0, 8, true, true, 90, 0, 0},
      {endless, 50, 5, 10, false, false, 3006, 200, 200},
      // clang-format on
  };
  for (const auto& c : cases) {
    float left = -1, right = -1;
    EXPECT_EQ(c.Floats.Y(c.Width, c.Y, c.Height, nullptr, left, right, c.ClearLeft, c.ClearRight), c.Found)
        << &c - cases;
    EXPECT_TRUE(left == c.Left && right == c.Right) << &c - cases << ": " << left << " " << right;
  }
  EXPECT_EQ(low.MaxTop(), 60);
}

TEST(BlockFloats, MaxWidth) {
  TTestNode element(u"");
  element.InnerWidth = 300;
  TBlockFloats floats(element);
  floats.AddRange(0, 50, 100, 0, NodeOf('a'));
  floats.AddRange(0, 80, 0, 60, NodeOf('b'));
  const struct {
    float InnerWidth, Y, Width, Left, Right;
  } cases[] = {{300, 0, 140, 100, 60}, {300, 60, 240, 0, 60}, {300, 80, 300, 0, 0}, {100, 10, 0, 100, 60}};
  for (const auto& c : cases) {
    float left = -1, right = -1;
    element.InnerWidth = c.InnerWidth;
    EXPECT_EQ(floats.MaxWidth(c.Y, 20, left, right), c.Width) << &c - cases;
    EXPECT_TRUE(left == c.Left && right == c.Right && floats.Width == c.InnerWidth) << &c - cases;
  }
  element.InnerWidth = 250.6f;
  floats.Clear();
  EXPECT_TRUE(floats.Left.Empty() && floats.Right.Empty() && floats.Width == 251);
}

// A page of 500 pixels with a box at (20, 30), 380 wide; two blocks in it, the second in by 30 and 10 pixels.
struct TFloatPage {
  TTestNode Root;
  TStyledHTMLNode &Body, &Box, &First, &Second;

  explicit TFloatPage(const std::u16string& floats)
      : Root(u"<body id=body><div id=box><p id=p>" + floats + u"</p><p id=q></p></div></body>"),
        Body(ById(Root, u"body")),
        Box(ById(Root, u"box")),
        First(ById(Root, u"p")),
        Second(ById(Root, u"q")) {
    ResolveStyles(Root);
    Place(Body, {0, 0, 500, 900}, Root);
    Place(Box, {10, 20, 410, 420}, Body);
    Box.MarginLeft = Box.MarginTop = Box.MarginRight = 5;
    Box.BorderLeft = Box.BorderTop = Box.BorderRight = 1;
    Box.FPaddingLeft = Box.PaddingTop = Box.FPaddingRight = 4;
    Box.InnerWidth = 380;
    Place(First, {0, 50, 380, 150}, Box);
    Place(Second, {0, 80, 380, 300}, Box);
    Second.MarginLeft = 30;
    Second.MarginRight = 10;
  }

  static void Place(TStyledHTMLNode& node, const TRectF& rect, TStyledHTMLNode& container) {
    node.OuterRect = rect;
    node.InnerWidth = rect.Width();
    node.InnerHeight = rect.Height();
    node.Container = &container;
  }

  TStyledHTMLNode& Float(const hstring& id, const TRectF& rect) {
    TStyledHTMLNode& node = ById(Root, id);
    Place(node, rect, First);
    First.GetFloatMap().AddBlock(node, true);
    return node;
  }
};

std::string MapOf(const TStyledHTMLNode& node) {
  if (!node.FFloatMap) return "none";
  return TextOf(node.FFloatMap->Left) + "|" + TextOf(node.FFloatMap->Right);
}

TEST(BlockFloats, ClimbOut) {
  const struct {
    const char16_t *Float, *Box;  // styles
    TRectF Rect;
    const char *First, *Inside, *Body;
  } cases[] = {
      // clang-format off
      {u"float:left", u"", {0, 0, 100, 40}, "0-40:100f|", "50-90:100f|", "80-120:120f|"},
      {u"float:right", u"", {280, 10, 380, 60}, "|10-60:100f", "|60-110:100f", "|90-140:200f"},
      {u"float:left", u"overflow:hidden", {0, 0, 100, 40}, "0-40:100f|", "50-90:100f|", "none"},
      {u"float:left", u"display:flex", {0, 0, 100, 40}, "0-40:100f|", "50-90:100f|", "none"},
      {u"float:left;position:relative;left:10%;top:5px", u"", {0, 0, 100, 40}, "5-45:138f|", "55-95:138f|", "85-125:158f|"},
      {u"float:left", u"", {-30, 0, -10, 40}, "|", "none", "none"},
      {u"float:none", u"", {0, 0, 100, 40}, "|", "none", "none"},
      {u"float:foot-note", u"", {0, 0, 100, 40}, "|", "none", "none"},
      {u"float:left", u"", {0, 0, 0, 40}, "|", "none", "none"},
      {u"float:left", u"", {0, 10, 100, 10}, "|", "none", "none"},
      // clang-format on
  };
  for (const auto& c : cases) {
    TFloatPage page(u"<b id=f style='" + std::u16string(c.Float) + u"'></b>");
    page.Box.AddCSS(c.Box, false);
    ApplySelfStyle(page.Box);
    page.Float(u"f", c.Rect);
    EXPECT_EQ(MapOf(page.First), c.First) << &c - cases;
    EXPECT_EQ(MapOf(page.Box), c.Inside) << &c - cases;
    EXPECT_EQ(MapOf(page.Body), c.Body) << &c - cases;
    EXPECT_EQ(MapOf(page.Root), "none");  // a body is closed
  }
}

TEST(BlockFloats, TakeOver) {
  TFloatPage page(u"<b id=f style=float:left></b><b id=g style=float:right></b>");
  TStyledHTMLNode& left = page.Float(u"f", {0, 0, 100, 40});
  page.Float(u"g", {280, 10, 380, 60});
  EXPECT_EQ(MapOf(page.Box), "50-90:100f|60-110:100g");
  page.Second.GetFloatMap().AddContainerFloats();
  EXPECT_EQ(MapOf(page.Second), "0-10:70f|0-30:90g");
  EXPECT_EQ(page.Second.FFloatMap->MaxTop(), 0);
  EXPECT_EQ(page.Second.GetLeft(0, 5), 70);
  EXPECT_EQ(page.Second.GetRight(0, 5), 90);
  EXPECT_EQ(page.Second.GetLeftClearTop(&left), 10);
  EXPECT_EQ(page.Second.GetRightClearTop(&left), 30);

  page.Second.AddCSS(u"overflow:auto"_hs, false);
  ApplySelfStyle(page.Second);
  page.Second.FFloatMap->Clear();
  page.Second.FFloatMap->AddContainerFloats();
  EXPECT_EQ(MapOf(page.Second), "|");
  page.Box.FFloatMap->AddContainerFloats();  // the body has a map
  EXPECT_EQ(MapOf(page.Box), "50-90:100f|60-110:100g");
  TStyledHTMLNode& other = ById(page.Root, u"f");
  EXPECT_EQ(other.GetLeft(0, 9) + other.GetRight(0, 9) + other.GetLeftClearTop(&other), 0);
  EXPECT_FALSE(other.FFloatMap);
}

}  // namespace
}  // namespace ht
