#include "htmlcss/styledhtmlnode.h"

#include <gtest/gtest.h>

#include "htruntime/stringlist.h"
#include "styledtree.h"

namespace ht {
namespace {

std::string Text(const hstring& text) { return HtToUtf8(text); }

// Attributes and classes

TEST(StyledNode, PresentationalAttributes) {
  const struct {
    const char16_t* Element;
    const char* Declarations;
  } cases[] = {
      // clang-format off
      {u"<p align=Center>", "text-align:xcenter;"}, {u"<p align=CHAR>", "text-align:xcenter;"},
      {u"<p align=left>", "text-align:left;"}, {u"<p align=''>", ""}, {u"<table align=center>", ""},
      {u"<p background=a.png>", "background-image:url(\"a.png\");"}, {u"<p background=''>", ""},
      {u"<p bgcolor=red>", "background-color:red;"}, {u"<p bgcolor=''>", ""}, {u"<p BGCOLOR=' '>", ""},
      {u"<p color=#123>", "color:#123;"}, {u"<p color=''>", ""},
      {u"<p bgcolor=red color=blue>", "background-color:red;color:blue;"},
      {u"<body text=red>", "color:red;"}, {u"<p text=red>", ""},
      {u"<p contenteditable=true>", "contenteditable:true;"}, {u"<p dir=RTL>", "direction:rtl;"}, {u"<p dir=''>", ""},
      {u"<font face='Times New'>", "font-family:'Times New';"}, {u"<p family=Arial>", "font-family:'Arial';"},
      {u"<img width=10 height=50%>", "height:50%;width:10;"}, {u"<img width=''>", ""},
      {u"<body leftmargin=1 rightmargin=2 topmargin=3 bottommargin=4>",
       "margin-bottom:4px;margin-left:1px;margin-right:2px;margin-top:3px;"},
      {u"<body marginwidth=5 marginheight=6>", "margin-top:6px;margin-bottom:6px;margin-left:5px;margin-right:5px;"},
      {u"<p leftmargin=1 marginwidth=2>", ""}, {u"<td nowrap>", "white-space:nowrap;"},
      {u"<td valign=TOP>", "vertical-align:top;"}, {u"<td valign=Text-Top>", "vertical-align:text-top;"},
      {u"<td valign=nowhere>", ""}, {u"<pre wrap=soft>", "white-space:pre-wrap;"}, {u"<pre wrap=hard>", ""},
      {u"<font size=+2>", "font-size:24px;"}, {u"<font size=1>", "font-size:10px;"}, {u"<font size=2>", "font-size:13px;"},
      {u"<font size=7>", "font-size:48px;"}, {u"<font size=+0>", "font-size:16px;"}, {u"<font size=9>", "font-size:9px;"},
      {u"<font size=12pt>", "font-size:12px;"}, {u"<font size=9.5pt>", "font-size:9.5px;"},
      {u"<font size=1pt>", ""}, {u"<font size=xpt>", "font-size:10px;"}, {u"<font size=t>", "font-size:10px;"},
      {u"<font size=-1>", "font-size:10px;"}, {u"<font size=big>", "font-size:10px;"},
      {u"<font size=99999999999>", "font-size:10px;"}, {u"<p size=3>", ""}, {u"<p title=x lang=de>", ""},
      {u"<p style=color:red>", ""},
      // clang-format on
  };
  for (const auto& c : cases) {
    TTestNode root(c.Element);
    THtNode* node = &root;
    while (node && !node->GetAttributes()) node = node->NextNodeBelow(&root);
    ASSERT_TRUE(node) << HtToUtf8(c.Element);
    EXPECT_EQ(Text(static_cast<TStyledHTMLNode*>(node)->FVirtualSelfStyle), c.Declarations)
        << HtToUtf8(c.Element);
  }
}

// Tells by letters what was called: 's' and 'S' StyleChanged, without and with propagation; 'p' UpdatePseudo.
class TTellingNode final : public TStyledHTMLNode {
  HT_CLASS(TTellingNode, TStyledHTMLNode)

 public:
  std::string Calls;
  TTellingNode() { TTellingNode::CreateStyle(); }
  const TClass* GetStyleClass() const override { return TBaseElementStyle::Class(); }
  void StyleChanged(bool propagate) override {
    Calls += propagate ? 'S' : 's';
    TStyledHTMLNode::StyleChanged(propagate);
  }
  void UpdatePseudo() override { Calls += 'p'; }
};

TEST(StyledNode, ChangesAreTold) {
  TTellingNode node;
  node.Flags = {efStyleCalculated, efSelfStyleProcessed};
  const struct {
    const char16_t *Name, *Value;
    bool Changed;
    const char* Calls;
  } cases[] = {
      // clang-format off
      {u"title", u"t", true, "ps"}, {u"title", u"t", false, ""}, {u"class", u"A", true, "Sps"},
      {u"CLASS", u"A", false, ""}, {u"style", u"top:0", true, "Sps"}, {u"bgcolor", u"red", true, "Sps"},
      {u"bgcolor", u"", true, "ps"}, {u"id", u"x", true, "ps"},
      // clang-format on
  };
  for (const auto& c : cases) {
    node.Calls.clear();
    EXPECT_EQ(node.SetAttribute(c.Name, c.Value), c.Changed) << HtToUtf8(c.Name);
    EXPECT_EQ(node.Calls, c.Calls) << HtToUtf8(c.Name);
  }
  EXPECT_FALSE(node.Flags.Contains(efStyleCalculated) || node.Flags.Contains(efSelfStyleProcessed));
  node.Calls.clear();
  node.RemoveClass(u"b"_hs);
  node.AddClass(u"A"_hs);
  EXPECT_EQ(node.Calls, "");
}

TEST(StyledNode, Classes) {
  const struct {
    const char16_t *Text, *Add, *Remove;
    const char *Attribute, *Classes;
    bool Multi;
  } cases[] = {
      // clang-format off
      {u"", u"", u"", "", "", false}, {u"A", u"", u"", "A", "a", false}, {u"a  b", u"", u"", "a  b", "a b", true},
      {u"\tA b\n", u"", u"", "\tA b\n", "a b", true},
      {u"\u00C4", u"", u"", "\u00C4", "\u00C4", false},  // A to Z only
      {u"", u"a", u"", "a", "a", false}, {u"a", u"b", u"", "a b", "a b", true}, {u"a", u"a", u"", "a", "a", false},
      {u"ab", u"a", u"", "ab a", "ab a", true}, {u"b a c", u"", u"a", "b c", "b c", true},
      {u" a  b ", u"", u"x", " a  b ", "a b", true}, {u"a", u"", u"a", "", "", false},
      {u"A b", u"", u"a", "A b", "a b", true},
      // clang-format on
  };
  for (const auto& c : cases) {
    TTestNode node(u"");
    node.SetAttribute(u"class"_hs, c.Text);
    if (*c.Add) node.AddClass(c.Add);
    if (*c.Remove) node.RemoveClass(c.Remove);
    std::string classes;
    for (const TCSSClassRec& rec : node.FClassHashes) {
      classes += (classes.empty() ? "" : " ") + Text(rec.s);
      EXPECT_TRUE(rec == TCSSClassRec(rec.s) && node.HasClass(rec.s));
    }
    EXPECT_EQ(classes, c.Classes) << HtToUtf8(c.Text);
    EXPECT_EQ(Text(node.GetAttribute(u"class"_hs)), c.Attribute);
    EXPECT_EQ(node.Flags.Contains(efMultiClass), c.Multi) << HtToUtf8(c.Text);
    EXPECT_FALSE(node.HasClass(u"A"_hs));
  }
}

TEST(StyledNode, RepairsOfTags) {
  const struct {
    const char16_t* Html;
    const char* Tags;
  } cases[] = {
      // clang-format off
      {u"<html><body><p></p></body></html>", "html body p"}, {u"<c:red>x</c:red>", "body span"},
      {u"<body><p><foreignobject><body></body></foreignobject></p></body>", "body p foreignobject body"},
      {u"<body><p><body></p></body>", "body p xbody"}, {u"<body><p><svg><body></body></svg></p></body>", "body p svg xbody"},
      {u"<html><body><p><html></html></p></body></html>", "html body p xhtml"},
      // clang-format on
  };
  for (const auto& c : cases) {
    TTestNode root(c.Html);
    std::string tags;
    for (THtNode* node = &root; node; node = node->NextNodeBelow(&root))
      if (!node->GetTag().Empty()) tags += (tags.empty() ? "" : " ") + Text(node->GetTag());
    EXPECT_EQ(tags, c.Tags) << HtToUtf8(c.Html);
  }
  EXPECT_EQ(Text(TTestNode(u"<c:#F00>x</c:#F00>").GetNode(0)->FVirtualSelfStyle), "color:#f00;");
}

// The node's own declarations

// What the sheet of the node feeds it with.
std::string OwnOf(const TStyledHTMLNode& node) {
  if (!node.SelfStyleSheet) return "none";
  return Text(node.SelfStyleSheet->AsInlineString());
}

TEST(StyledNode, VirtualDeclarations) {
  TTestNode node(u"");
  const struct {
    const char16_t *Name, *Value;  // without a value the name is a text
    const char* Declarations;
  } cases[] = {
      // clang-format off
      {u"width", u"1px", "width:1px;"}, {u"width", u"2px", "width:2px;"}, {u"color", u" ", "width:2px;"},
      {u" ", u"", "width:2px;"}, {u"color:red;top:0", u"", "width:2px;color:red;top:0;"},
      {u"COLOR:blue;", u"", "width:2px;top:0;COLOR:blue;"}, {u"top", u"3px", "width:2px;COLOR:blue;top:3px;"},
      // clang-format on
  };
  for (const auto& c : cases) {
    if (*c.Value)
      node.AddVirtualCSS2(c.Name, c.Value);
    else
      node.CSS(c.Name);
    EXPECT_EQ(Text(node.FVirtualSelfStyle), c.Declarations) << HtToUtf8(c.Name);
  }
  EXPECT_FALSE(node.SelfStyleSheet);
  EXPECT_FALSE(node.Flags.Contains(efSelfStyleProcessed));
  node.SetAttribute(u"style"_hs, u"left:1px;top:9px"_hs);
  node.AddCSS(u"left:2px"_hs, false);
  EXPECT_TRUE(node.Flags.Contains(efSelfStyleProcessed));
  EXPECT_EQ(OwnOf(node), "left:2px;top:3px;width:2px;COLOR:blue;");
  node.AddVirtualCSS2(u"width"_hs, u"4px"_hs);  // goes into the sheet, too
  node.AddVirtualCSS(u"color:lime"_hs);
  EXPECT_EQ(OwnOf(node), "left:2px;top:3px;width:4px;COLOR:lime;");
  EXPECT_EQ(Text(node.FVirtualSelfStyle), "top:3px;width:4px;color:lime;");
  EXPECT_EQ(Text(node.GetAttribute(u"style"_hs)), "left:1px;top:9px");
}

TEST(StyledNode, OwnSheet) {
  TTestNode root(u"<p id=x style='color:red'><b id=b>t</b><i id=i style=display:block></i></p>");
  ResolveStyles(root);
  TStyledHTMLNode& node = ById(root, u"x");
  node.ClearCSS(u"top"_hs, true);  // not there
  EXPECT_EQ(Text(node.GetAttribute(u"style"_hs)), "color:red");
  EXPECT_TRUE(node.FStyle->PropertySet.Contains(cspColor));
  node.AddCSS(u"top:1px"_hs, true);
  EXPECT_EQ(Text(node.GetAttribute(u"style"_hs)), "color:red;top:1px;");
  EXPECT_TRUE(node.FStyle->PropertySet.Empty() && node.FStyle->FProps.empty() &&
              !node.FStyle->FLastProps.empty());
  node.ClearCSS(u"COLOR"_hs, true);
  EXPECT_EQ(Text(node.GetAttribute(u"style"_hs)), "top:1px;");

  node.AddCSSRecursive(u"left:1px"_hs, false);  // not on texts and inline elements
  EXPECT_EQ(OwnOf(node), "top:1px;left:1px;");
  EXPECT_EQ(OwnOf(ById(root, u"b")), "");
  EXPECT_EQ(OwnOf(ById(root, u"i")), "display:block;left:1px;");
  node.ClearCSSRecursive(u"left"_hs, false);
  EXPECT_EQ(OwnOf(node) + OwnOf(ById(root, u"i")), "top:1px;display:block;");

  // Rules of another weight stand apart, and yield or win.
  node.AddCSS(u"top:5px"_hs, false, 7);
  TCSSWeightList list;
  node.SelfStyleSheet->GetElementSelectors(node, list, &node.SelfStyleSheet->Main, {});
  EXPECT_EQ(list.GetCount(), 2);
  EXPECT_EQ(Text(list.GetValue(0)->Tokens[0].Name), "5px");
  node.AddCSS(u"right:5px"_hs, false, 7);
  node.ClearCSS(u"right"_hs, true);
  EXPECT_EQ(OwnOf(node), "top:1px;top:5px;");
  node.ClearSelfStyleSheet();
  EXPECT_TRUE(!node.SelfStyleSheet && !node.Flags.Contains(efSelfStyleProcessed));
}

TEST(StyledNode, SharedSheet) {
  TTestNode root(
      u"<p id=a style=top:1px></p><p id=b style=top:1px></p><p id=c style=top:1px></p><p id=d></p>");
  TStyledHTMLNode &a = ById(root, u"a"), &b = ById(root, u"b"), &c = ById(root, u"c"), &d = ById(root, u"d");
  a.SelfStyleSheet = a.NewSelfStyleSheet().release();
  TCSSStyleSheet* shared = a.SelfStyleSheet;
  b.ShareSelfStyle(a);
  c.ShareSelfStyle(a);
  EXPECT_TRUE(b.SelfStyleSheet == shared && c.SelfStyleSheet == shared && shared->RefCounter == 2);
  b.AddCSS(u"left:1px"_hs, false);  // gets its own
  EXPECT_NE(b.SelfStyleSheet, shared);
  EXPECT_EQ(shared->RefCounter, 1);
  EXPECT_EQ(OwnOf(b) + OwnOf(a), "top:1px;left:1px;top:1px;");
  c.ClearCSS(u"top"_hs, false);
  EXPECT_EQ(OwnOf(c) + OwnOf(a), "top:1px;");
  EXPECT_EQ(shared->RefCounter, 0);
  a.UniqueSelfStyle();
  EXPECT_EQ(a.SelfStyleSheet, shared);
  d.ShareSelfStyle(a);
  d.ShareSelfStyle(a);
  EXPECT_EQ(shared->RefCounter, 1);
  d.ShareSelfStyle(b);
  EXPECT_TRUE(shared->RefCounter == 0 && b.SelfStyleSheet->RefCounter == 1);
  b.ClearSelfStyleSheet();
  EXPECT_EQ(OwnOf(d), "top:1px;left:1px;");
  d.ShareSelfStyle(b);  // none
  EXPECT_EQ(OwnOf(d), "none");
}

// Boxes

std::string Numbers(std::initializer_list<float> numbers) {
  std::string text;
  for (float number : numbers) text += (text.empty() ? "" : " ") + std::to_string(std::lround(number));
  return text;
}

std::string TextOf(const TRectF& r) { return Numbers({r.Left, r.Top, r.Right, r.Bottom}); }

TEST(StyledNode, BoxNumbers) {
  const char16_t kAll[] =
      u"margin:1px 2px 3px 4px;padding:5px 6px 7px 8px;border:solid;border-width:10px 11px 12px 13px;";
  const struct {
    std::u16string Style;
    bool Vertical;
    // Top, right, bottom and left; the upper and lower margins are the layout's.
    const char *Margin, *Padding, *Border;
  } cases[] = {
      // clang-format off
      {kAll, false, "0 2 0 4", "5 6 7 8", "10 11 12 13"}, {kAll, true, "4 0 2 0", "8 7 6 5", "13 12 11 10"},
      {kAll + std::u16string(u"display:table-cell"), false, "0 0 0 0", "5 6 7 8", "10 11 12 13"},
      {u"padding:5px;border-style:none;border-width:3px", false, "0 0 0 0", "5 5 5 5", "0 0 0 0"},
      {u"margin:auto", false, "0 0 0 0", "0 0 0 0", "0 0 0 0"},
      {u"border:0.00001px solid", false, "0 0 0 0", "0 0 0 0", "0 0 0 0"},
      // What is relative is worked out with the sizes.
      {u"padding:10% 5px", false, "0 0 0 0", "20 5 20 5", "0 0 0 0"},
      {u"padding:10% 5px", true, "0 0 0 0", "5 20 5 20", "0 0 0 0"}, {u"", false, "0 0 0 0", "0 0 0 0", "0 0 0 0"},
      // clang-format on
  };
  for (const auto& c : cases) {
    TTestNode root(u"<body id=body><div id=x></div></body>");
    ResolveStyles(root);
    TStyledHTMLNode& x = ById(root, u"x");
    x.Container->InnerWidth = 200;
    x.AddCSS(c.Style, false);
    ApplySelfStyle(x);
    if (c.Vertical) x.Flags.Include(efVertical);
    x.CalcNonRelativeProps();
    x.CalcRelativeProps();
    EXPECT_EQ(Numbers({x.MarginTop, x.MarginRight, x.MarginBottom, x.MarginLeft}), c.Margin) << &c - cases;
    EXPECT_EQ(Numbers({x.PaddingTop, x.FPaddingRight, x.PaddingBottom, x.FPaddingLeft}), c.Padding)
        << &c - cases;
    EXPECT_EQ(Numbers({x.BorderTop, x.BorderRight, x.BorderBottom, x.BorderLeft}), c.Border) << &c - cases;
  }
}

class TBarNode final : public TStyledHTMLNode {
  HT_CLASS(TBarNode, TStyledHTMLNode)

 public:
  TBarNode() { TBarNode::CreateStyle(); }
  const TClass* GetStyleClass() const override { return TBaseElementStyle::Class(); }
  float VScrollBarWidth() const override { return 10; }
  float HScrollBarHeight() const override { return 20; }
  float GetRealLeft() const override { return 1000; }
  float GetRealTop() const override { return 2000; }
};

TEST(StyledNode, BoxArithmetic) {
  TBarNode x;
  x.OuterRect = {100, 200, 400, 600};
  x.MarginTop = 1, x.MarginRight = 2, x.MarginBottom = 3, x.MarginLeft = 4;
  x.PaddingTop = 5, x.FPaddingRight = 6, x.PaddingBottom = 7, x.FPaddingLeft = 8;
  x.BorderTop = 10, x.BorderRight = 11, x.BorderBottom = 12, x.BorderLeft = 13;
  x.ContentWidth = 50, x.ContentHeight = 60;
  EXPECT_EQ(TextOf(x.BorderRect()), "104 201 398 597");
  EXPECT_EQ(TextOf(x.Rects(3)), "104 201 398 597");
  EXPECT_EQ(TextOf(x.PaddingRect()), "117 211 387 585");
  EXPECT_EQ(TextOf(x.InnerRect()), "125 216 371 558");
  EXPECT_EQ(Numbers({x.LeftDelta(), x.TopDelta(), x.RightDelta(), x.BottomDelta(), x.PageX(), x.PageY()}),
            "25 16 29 42 1125 2216");
  float position = 5;
  x.RTLInc(position, 2);
  EXPECT_EQ(position, 7);
  x.FStyle->CalculatedDirection = cdRTL;
  x.RTLInc(position, 3);
  EXPECT_EQ(position, 4);
  EXPECT_EQ(TextOf(x.InnerRect()), "123 216 369 558");
  EXPECT_EQ(Numbers({x.PaddingLeft(), x.PaddingRight(), x.LeftDelta(), x.RightDelta()}), "6 8 23 31");
  x.OffsetRects(10, -10);
  EXPECT_EQ(TextOf(x.OuterRect), "110 190 410 590");

  const struct {
    TCSSGeneralProperties Groups;
    TDisplayStyle Display;
    TElementFlags Flags;
    const char* Numbers;  // inner width and height, their deltas, the outer deltas, CalcWidth and CalcHeight
  } cases[] = {
      // clang-format off
      {{}, dsBlock, {}, "290 380 10 20 0 0 60 80"}, {{cgMargin}, dsBlock, {}, "284 376 10 20 6 4 66 84"},
      {{cgPadding}, dsBlock, {}, "276 368 24 32 0 0 74 92"}, {{cgBorder}, dsBlock, {}, "266 358 10 20 24 22 84 102"},
      {{cgMargin, cgPadding, cgBorder}, dsTableCell, {}, "252 346 24 32 30 26 104 118"},
      {{cgMargin, cgPadding, cgBorder}, dsInline, {}, "246 342 24 32 30 0 104 92"},
      {{cgMargin, cgPadding, cgBorder}, dsBlock, {efText}, "246 342 0 0 0 0 50 60"},
      // clang-format on
  };
  for (const auto& c : cases) {
    x.FStyle->GeneralProps = c.Groups;
    x.FStyle->FDisplay = c.Display;
    x.Flags = c.Flags;
    x.CalcRects();
    EXPECT_EQ(Numbers({x.InnerWidth, x.InnerHeight, x.InnerDeltaX(), x.InnerDeltaY(), x.OuterDeltaX(),
                       x.OuterDeltaY(), x.CalcWidth(), x.CalcHeight()}),
              c.Numbers)
        << &c - cases;
  }
}

// Flags as words: f(ixed) or d(efinite), then w(idth), o(uter delta), n (min width), x (max width); in capitals vertically.
std::string TextOf(TCSSSizeFlags flags) {
  constexpr const char* kWords[] = {"fw", "dw", "fo", "do", "fn", "dn", "fx", "dx",  "fW",
                                    "dW", "fO", "dO", "fN", "dN", "fX", "dX", "grow"};
  std::string text;
  for (int i = 0; i <= sfGrowToContainer; ++i)
    if (flags.Contains(static_cast<TCSSSizeFlag>(i)))
      text += (text.empty() ? "" : " ") + std::string(kWords[i]);
  return text;
}

TEST(StyledNode, SizeFlags) {
  const char16_t kFixed[] = u"width:300px;height:200px", kDefinite[] = u"width:50%;height:50%",
                 kNone[] = u"float:left";
  const struct {
    const char16_t *Container, *Style;
    const char* Flags;
  } cases[] = {
      // clang-format off
      {kFixed, u"", "fw dw fo do fO dO"}, {kDefinite, u"", "dw fo do fO dO"}, {kNone, u"", "fo do fO dO"},
      {kFixed, u"width:10px", "fw dw fo do fO dO"}, {kNone, u"width:10px", "fw dw fo do fO dO"},
      {kFixed, u"width:50%", "dw fo do fO dO"}, {kDefinite, u"width:50%", "dw fo do fO dO"}, {kNone, u"width:50%", "fo do fO dO"},
      {kFixed, u"width:calc(10% + 1px)", "dw fo do fO dO"},
      {kFixed, u"float:left", "fo do fO dO"}, {kFixed, u"position:relative", "fw dw fo do fO dO"},
      {kFixed, u"display:inline-block", "fo do fO dO"}, {kFixed, u"display:flex", "fw dw fo do fO dO"},
      {u"width:300px;display:flex", u"", "fo do fO dO"},
      {kFixed, u"position:absolute", "fo do fO dO"}, {kFixed, u"position:absolute;left:0;right:0", "dw fo do fO dO"},
      {kFixed, u"position:fixed;left:0;right:auto", "fo do fO dO"}, {kNone, u"position:absolute;left:0;right:0", "fo do fO dO"},
      {kFixed, u"position:absolute;top:0;bottom:1px", "fo do dW fO dO"}, {kNone, u"position:absolute;top:0;bottom:1px", "fo do fO dO"},
      {kNone, u"position:running(x)", "fw dw fo do fO dO"},
      {kNone, u"min-width:5px;max-width:5px", "fw dw fo do fn dn fx dx fO dO"},
      {kFixed, u"min-width:5%;max-width:5%;float:left", "dw fo do dn dx fO dO"},
      {kNone, u"min-width:5%;max-width:5%", "fo do fO dO"}, {kNone, u"min-width:5px;max-width:6px", "fo do fn dn fx dx fO dO"},
      {kNone, u"min-width:5px;max-width:auto", "fo do fn dn fO dO"},
      {kFixed, u"margin-left:10%", "fw dw do fO dO"}, {kNone, u"margin-left:10%", "fO dO"},
      {kFixed, u"padding-right:10%", "fw dw do fO dO"}, {kFixed, u"margin:10%", "fw dw do dO"}, {kNone, u"margin:10%", ""},
      {kFixed, u"margin:1em", "fw dw fo do fO dO"}, {kFixed, u"margin:1em auto", "fw dw do fO dO"},
      {kFixed, u"margin-top:1em", "fw dw fo do dO"}, {kFixed, u"margin:1em;padding-top:1%", "fw dw fo do dO"},
      {kFixed, u"height:10px", "fw dw fo do fW dW fO dO"}, {kNone, u"height:10px", "fo do fW dW fO dO"},
      {kFixed, u"height:50%", "fw dw fo do dW fO dO"}, {kNone, u"height:50%", "fo do fO dO"},
      {kNone, u"min-height:5px;max-height:5px", "fo do fW dW fO dO fN dN fX dX"},
      {kFixed, u"min-height:5%;max-height:6px", "fw dw fo do fO dO dN fX dX"},
      {kFixed, u"display:inline", "fw dw fo do fW dW fO dO fN dN fX dX"},
      {kFixed, u"display:inline;margin-left:10%;padding-top:10%", "fw dw do fW dW dO fN dN fX dX"},
      {kNone, u"display:inline;padding-left:10%;margin-top:1%", "fw dw fW dW fN dN fX dX"},
      {kFixed, u"display:table-row;width:50%", "fw dw fo do fW dW fO dO"}, {kNone, u"display:table-row-group", "fo do fO dO"},
      {kFixed, u"display:table-cell;width:10px", "dw fo do fO dO"}, {kNone, u"display:table-cell;width:10px", "fo do fO dO"},
      {kFixed, u"display:none;width:10px", ""},
      // clang-format on
  };
  for (const auto& c : cases) {
    TTestNode root(u"<body><div id=c style='" + hstring(c.Container) + u"'><div id=x style='" + c.Style +
                   u"'></div></div>");
    ResolveStyles(root);
    EXPECT_EQ(TextOf(ById(root, u"x").SizeFlags), c.Flags)
        << HtToUtf8(c.Container) << " / " << HtToUtf8(c.Style);
  }
  TTestNode root(
      u"<body style=width:90px><div id=a style=float:left><div id=b style=float:left><i "
      u"id=x></i></div></div>");
  ResolveStyles(root);
  ById(root, u"b").GrowtoContainer();
  EXPECT_TRUE(ById(root, u"a").SizeFlags.Contains(sfGrowToContainer) &&
              root.GetNode(0)->SizeFlags.Contains(sfGrowToContainer));
  EXPECT_FALSE(root.SizeFlags.Contains(sfGrowToContainer) ||
               ById(root, u"x").SizeFlags.Contains(sfGrowToContainer));
}

TEST(StyledNode, Limits) {
  const struct {
    const char16_t* Style;
    const char* Numbers;  // least and largest width, least and largest height, StyleHeight
    bool RelativeWidth, RelativeHeight;
  } cases[] = {
      // clang-format off
      {u"", "0 1073741824 0 1073741824 0", false, true},
      {u"min-width:10px;max-width:20px;min-height:30px;max-height:40px;height:50px", "10 20 30 40 50", false, false},
      {u"min-width:10%;max-width:20%;min-height:30%;height:50%", "30 60 60 1073741824 100", false, false},
      {u"max-width:auto;max-height:auto;height:auto", "0 1073741824 0 1073741824 0", false, true},
      {u"display:table;width:50px;min-width:10px", "50 1073741824 0 1073741824 0", false, true},
      {u"display:table;min-width:10px", "10 1073741824 0 1073741824 0", false, true},
      {u"width:50%", "0 1073741824 0 1073741824 0", false, true},
      {u"float:left", "0 1073741824 0 1073741824 0", true, true},
      {u"display:inline-block", "0 1073741824 0 1073741824 0", true, true},
      {u"display:inline-block;width:10px", "0 1073741824 0 1073741824 0", false, true},
      // clang-format on
  };
  for (const auto& c : cases) {
    TTestNode root(u"<body><div id=c style=width:300px;height:200px><div id=x style='" + hstring(c.Style) +
                   u"'></div></div>");
    ResolveStyles(root);
    TStyledHTMLNode &box = ById(root, u"c"), &x = ById(root, u"x");
    box.InnerWidth = 300;
    box.InnerHeight = 200;
    EXPECT_EQ(Numbers({x.MinWidth(), x.MaxWidth(), x.MinHeight(), x.MaxHeight(), x.StyleHeight()}), c.Numbers)
        << HtToUtf8(c.Style);
    EXPECT_EQ(x.RelativeWidth(), c.RelativeWidth) << HtToUtf8(c.Style);
    EXPECT_EQ(x.RelativeHeight(), c.RelativeHeight) << HtToUtf8(c.Style);
  }
  const std::pair<const char16_t*, int32_t> columns[] = {
      {u"", 1},
      {u"column-count:3", 3},
      {u"column-count:1;column-width:60px;column-gap:20px", 4},
      {u"column-width:100px", 2},
      {u"column-width:900px", 1}};
  for (const auto& [style, count] : columns) {
    TTestNode root(u"<p id=x style='" + hstring(style) + u"'>");
    ResolveStyles(root);
    ById(root, u"x").InnerWidth = 310;
    EXPECT_EQ(ById(root, u"x").ColumnCount(), count) << HtToUtf8(style);
  }
}

// Flow

// Letters: o OutofFlow, r IsRunning, a IsAbsoluteOrRunning, t IsTransformed, b IsBlock, i IsBlockOrInlineBlock,
// c IsBlockContainer, p IsAbsoluteContainer; 0 and 2 MarginCollapsible; then the sides of MarginCollapsibleSibling.
std::string FlowOf(const TStyledHTMLNode& x) {
  std::string text;
  const std::pair<char, bool> answers[] = {{'o', x.OutofFlow()},
                                           {'r', x.IsRunning()},
                                           {'a', x.IsAbsoluteOrRunning()},
                                           {'t', x.IsTransformed()},
                                           {'b', x.IsBlock()},
                                           {'i', x.IsBlockOrInlineBlock()},
                                           {'c', x.IsBlockContainer()},
                                           {'p', x.IsAbsoluteContainer()},
                                           {'0', x.MarginCollapsible(0)},
                                           {'2', x.MarginCollapsible(2)}};
  for (const auto& [letter, answer] : answers)
    if (answer) text += letter;
  text += ' ';
  for (int32_t side = 0; side < 4; ++side)
    if (x.MarginCollapsibleSibling(side)) text += static_cast<char>('0' + side);
  EXPECT_EQ(x.InFlow(), !x.OutofFlow());
  return text;
}

TEST(StyledNode, Flow) {
  const struct {
    const char16_t* Style;
    const char* Flow;
  } cases[] = {
      // clang-format off
      {u"", "bi02 0123"}, {u"display:inline", " "}, {u"display:inline-block", "ic "}, {u"display:none", " "},
      {u"display:table", "bic "}, {u"display:table-row", "bic02 0123"}, {u"display:table-row-group", "bi02 0123"},
      {u"display:table-cell", "ic "}, {u"display:list-item", "bi02 0123"}, {u"display:flex", "bic 0123"},
      {u"display:inline-flex", "c "}, {u"display:inline-table", "ic "},
      {u"float:left", "obicp "}, {u"float:right;display:inline", "ocp "}, {u"position:absolute", "oabicp "},
      {u"position:fixed", "orabicp "}, {u"position:running(x)", "orabicp "}, {u"position:relative", "bip02 0123"},
      {u"position:sticky", "bi02 0123"}, {u"overflow:hidden", "bic02 0123"}, {u"overflow-y:scroll", "bic02 0123"},
      {u"transform:rotate(10deg)", "tbip02 0123"},
      {u"margin:auto 1px 2px", "bi2 123"}, {u"margin-bottom:auto;margin-left:auto", "bi0 01"},
      {u"border:solid 1px;border-bottom-style:none", "bi2 0123"}, {u"padding-bottom:1px", "bi0 0123"},
      // clang-format on
  };
  for (const auto& c : cases) {
    TTestNode root(u"<body id=b><div id=x style='" + hstring(c.Style) + u"'>text<i id=i></i></div></body>");
    ResolveStyles(root);
    EXPECT_EQ(FlowOf(ById(root, u"x")), c.Flow) << HtToUtf8(c.Style);
    EXPECT_TRUE(ById(root, u"b").IsBlockContainer() && root.IsBlockContainer() && root.IsAbsoluteContainer());
    EXPECT_TRUE(ById(root, u"x").GetNode(0)->InFlow());  // a text has no style
  }
}

TEST(StyledNode, Containers) {
  TTestNode root(u"<body id=b><div id=d><p id=p><i id=i><u id=u><s id=s></s></u></i></p></div></body>");
  const struct {
    const char16_t *Id, *Style;
    const char* Ids;  // Container, NearestBlockParent, AbsoluteParent and BlockContainer of s
  } cases[] = {
      // clang-format off
      {u"i", u"", "p p * b"}, {u"i", u"float:left", "i p i i"}, {u"i", u"float:none;position:relative", "p p i b"},
      {u"i", u"display:inline-block", "i i i i"}, {u"d", u"overflow:hidden", "i i i i"},
      {u"i", u"display:inline;position:static", "p p * d"}, {u"u", u"display:block", "u u * d"},
      // clang-format on
  };
  const auto idOf = [&root](const TStyledHTMLNode* node) {
    return node == &root ? "*" : node ? Text(node->GetAttribute(u"id"_hs)) : "null";
  };
  TStyledHTMLNode& s = ById(root, u"s");
  for (const auto& c : cases) {
    ById(root, c.Id).AddCSS(c.Style, false);
    ResolveStyles(root);
    EXPECT_EQ(idOf(s.Container) + " " + idOf(s.NearestBlockParent()) + " " + idOf(s.AbsoluteParent()) + " " +
                  idOf(s.BlockContainer()),
              c.Ids)
        << HtToUtf8(c.Style);
  }
  EXPECT_EQ(root.Container, &root);
  EXPECT_EQ(root.NearestBlockParent(), nullptr);
  EXPECT_EQ(s.RootNodeElement(), &root);
  EXPECT_EQ(s.PreviousMarginElement(), &ById(root, u"u"));
}

// Counters, texts and flags

TEST(StyledNode, Counters) {
  TTestNode root(
      u"<div id=d><p id=a><b id=a1></b></p>text<p id=b><b id=b1></b><i id=b2></i></p></div><p id=c></p>");
  const auto increment = [&root](const char16_t* id) { ById(root, id).IncrementCSSCounter(u"n"_hs); };
  const auto valuesOf = [&root]() {
    std::string text;
    for (THtNode* node = &root; node; node = node->NextNodeBelow(&root))
      for (const TCSSCounter& counter : static_cast<TStyledHTMLNode*>(node)->Counters)
        text += (text.empty() ? "" : " ") + Text(node->GetAttribute(u"id"_hs) + counter.Name) +
                std::to_string(counter.Value);
    return text;
  };
  increment(u"b1");
  EXPECT_EQ(valuesOf(), "");
  ById(root, u"d").ResetCSSCounter(u"n"_hs, 5);
  ById(root, u"d").ResetCSSCounter(u"m"_hs, 1);
  increment(u"b1");  // up to the nearest
  EXPECT_EQ(valuesOf(), "dn6 dm1");
  ById(root, u"a").ResetCSSCounter(u"n"_hs, 0);
  increment(u"b1");  // a sibling before the parent, but not what is in it
  ById(root, u"a1").ResetCSSCounter(u"n"_hs, 10);
  increment(u"b2");
  increment(u"a1");
  EXPECT_EQ(valuesOf(), "dn6 dm1 an2 a1n11");
  ById(root, u"b1").ResetCSSCounter(u"n"_hs, 20);
  increment(u"b2");
  increment(u"b");  // not what is below
  increment(u"c");
  EXPECT_EQ(valuesOf(), "dn7 dm1 an3 a1n11 b1n21");
  // Generated content stands before and behind the children.
  TStyledHTMLNode& d = ById(root, u"d");
  TTestNode before, after;
  d.Before = &before;
  d.After = &after;
  for (TTestNode* node : {&before, &after}) {
    node->SetParent(&d);
    node->IncrementCSSCounter(u"n"_hs);
    node->IncrementCSSCounter(u"m"_hs);
    node->SetParent(nullptr);
  }
  EXPECT_EQ(valuesOf(), "dn8 dm3 an4 a1n11 b1n21");
  d.Before = d.After = nullptr;
  ById(root, u"d").ResetCSSCounter(u"n"_hs, INT32_MAX);
  increment(u"d");
  EXPECT_EQ(ById(root, u"d").Counters[0].Value, INT32_MAX);
}

TEST(StyledNode, ListMarkers) {
  const struct {
    TListStyleType Type;
    int32_t Number;
    const char* Marker;
  } numbers[] = {
      // clang-format off
      {lstLowerAlpha, 3, "c"}, {lstUpperLatin, 26, "Z"}, {lstLowerLatin, 1, "a"}, {lstUpperAlpha, 2, "B"},
      {lstUpperRoman, 1994, "MCMXCIV"}, {lstLowerRoman, 3888, "mmmdccclxxxviii"}, {lstUpperRoman, 49, "XLIX"},
      {lstDecimal, -7, "-7"}, {lstDisc, 12, "12"}, {lstNone, 0, "0"},
      // clang-format on
  };
  for (const auto& c : numbers)
    EXPECT_EQ(Text(TStyledHTMLNode::ListCountertoString(c.Type, c.Number)), c.Marker);

  const struct {
    const char16_t *List, *Text;
  } lists[] = {
      // clang-format off
      {u"<ul><li>a</li><li>b</li></ul>", u"\r\n* a\r\n* b"}, {u"<ol><li>a</li><li>b</li></ol>", u"\r\n1. a\r\n2. b"},
      {u"<ol start=9 style='list-style-type:upper-roman'><li>a</li>x<li>b</li></ol>", u"\r\nIX. ax\r\nX. b"},
      {u"<ul style='list-style-type:none'><li>a</li></ul>", u"\r\na"},
      {u"<ul><li style='display:none'>a</li><li>b<script>c</script><!--d--></li></ul>", u"\r\n* b"},
      // clang-format on
  };
  for (const auto& c : lists) {
    TTestNode root(c.List);
    ResolveStyles(root);
    EXPECT_EQ(Text(root.GetInnerText()), HtToUtf8(c.Text)) << HtToUtf8(c.List);
  }
}

TEST(StyledNode, FlagsAndColors) {
  TTestNode root(
      u"<div id=d lang=de style='background-color:red'><p id=p><b id=b lang=''>t</b><i id=i></i></p></div>");
  ResolveStyles(root);
  TStyledHTMLNode &d = ById(root, u"d"), &p = ById(root, u"p"), &b = ById(root, u"b"), &i = ById(root, u"i");
  TTestNode before, after;
  b.Before = &before;
  b.After = &after;
  const auto have = [&](TElementFlag flag) {
    std::string text;
    const std::pair<const char*, TStyledHTMLNode*> nodes[] = {
        {"r", &root}, {"d", &d}, {"p", &p}, {"b", &b}, {"<", &before}, {">", &after}, {"i", &i}};
    for (const auto& [name, node] : nodes)
      if (node->Flags.Contains(flag)) text += name;
    return text;
  };
  p.SetFlag(efDrawn, true, true, false, nullptr);
  EXPECT_EQ(have(efDrawn), "pb<>i");
  b.SetFlag(efDrawn, true, false, true, nullptr);
  EXPECT_EQ(have(efDrawn), "rdpb<>i");
  d.SetFlag(efDrawn, false, true, false, &p);
  EXPECT_EQ(have(efDrawn), "rb<>i");
  b.SetFlag(efDrawn, false, false, true, &p);
  EXPECT_EQ(have(efDrawn), "r<>i");
  p.Flags.Include(efCompletelyDrawn);
  d.SetFlag(efCompletelyDrawn, true, true, false, nullptr);  // what is below such a one is taken as done
  EXPECT_EQ(have(efCompletelyDrawn), "dp");
  p.SetFlag(efCompletelyDrawn, true, true, true, nullptr);
  EXPECT_EQ(have(efCompletelyDrawn), "rdpb<>i");
  b.Before = b.After = nullptr;

  EXPECT_EQ(d.BackgroundColor(), 0xFFFF0000);
  EXPECT_EQ(b.BackgroundColor(), 0u);  // the paragraph is a block without one
  p.AddCSS(u"display:inline"_hs, false);
  ApplySelfStyle(p);
  EXPECT_EQ(b.BackgroundColor(), 0xFFFF0000);
  EXPECT_EQ(Text(b.Lang() + root.Lang()), "deen");
  EXPECT_EQ(p.FirstNonEmptyChild(), &b);
  EXPECT_EQ(p.LastNonEmptyChild(), &i);
  EXPECT_EQ(b.FirstNonEmptyChild(), b.GetNode(0));  // IsText is the host's to say
}

TEST(StyledNode, DebugPrint) {
  TTestNode root(u"<p class='a b' id=x></p>");
  TStyledHTMLNode& p = ById(root, u"x");
  p.SetContent(u"1<2"_hs);
  p.OuterRect = {1, 2, 3.5f, 4.5f};
  TStringList lines;
  root.DebugPrint(u" "_hs, lines);
  ASSERT_EQ(lines.GetCount(), 2);
  EXPECT_EQ(Text(lines.Get(0)), "&nbsp;<b>body</b><span color=\"green\"></span>[0, 0] (0, 0, 0, 0) <br>");
  EXPECT_EQ(Text(lines.Get(1)),
            "&nbsp;&nbsp;&nbsp;<b>p.a b#x</b><span color=\"green\">1&lt;2</span>[0, 0] (1, 2, 4, 4) <br>");
}

}  // namespace
}  // namespace ht
