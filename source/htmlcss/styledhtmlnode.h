#pragma once

#include "htmlcss/blockfloats.h"
#include "htmlcss/cssclassrec.h"
#include "htmlcss/cssenums.h"
#include "htmlpars/htmlnode.h"
#include "htutils/geometry.h"

namespace ht {

class TBaseElementStyle;
class TCSSSelectors;
class TCSSStyleSheet;
class TStringList;
struct TMeasure;

/// What is known of an element at the moment, for the host's document; few of them mean something here.
HT_ENUM(TElementFlag, uint8_t, efDrag, efDragMoved, efHasFloatElements, efHasAnimatedImages, efHSizeTracking,
        efVSizeTracking, efPBBeforeProcessed, efPBAfterProcessed, efPBInsideProcessed, efDrawn,
        efCompletelyDrawn, efSelfStyleProcessed, efDesignerSelected, efChecked, efMultiClass, efLineBreak,
        efNeedRecalc, efHasBlockElements, efHasBackground, efHasBorder, efVisible, efStyleCalculated,
        efHasCounters, efHasOutOfFlowElements, efText, efSpellChecked, efDestroying, efStackingContext,
        efTableCell, efVertical, efVMProcessed, efHasOverflow, efPseudoCalculated);
using TElementFlags = TSet<TElementFlag>;

/// Which sizes are known before the content of an element is laid out. Fixed: without any reference. Definite: by way of
/// the container. Fixed implies definite.
HT_ENUM(TCSSSizeFlag, uint8_t, sfFixedWidth, sfDefiniteWidth, sfFixedOuterDelta, sfDefiniteOuterDelta,
        sfFixedMinWidth, sfDefiniteMinWidth, sfFixedMaxWidth, sfDefiniteMaxWidth, sfFixedHeight,
        sfDefiniteHeight, sfFixedOuterVDelta, sfDefiniteOuterVDelta, sfFixedMinHeight, sfDefiniteMinHeight,
        sfFixedMaxHeight, sfDefiniteMaxHeight, sfGrowToContainer);
using TCSSSizeFlags = TSet<TCSSSizeFlag>;

struct TCSSCounter {
  hstring Name;
  int32_t Value = 0;
};

/// What stands for "no limit" in the answers of MaxWidth and MaxHeight.
constexpr float kUnlimitedSize = 1073741824;

/// A node with style: the style object, the classes, the declarations of its own (a `style` attribute, presentational
/// attributes, changes by script), the numbers of its box and the predicates that a layout asks.
///
/// It lays nothing out. A host derives its nodes from it, says by GetStyleClass which style class they have, and calls
/// CreateStyle. A pass over the document then is, for each node in document order:
///
///   node.ResetStyle(false);
///   node.FStyle->ApplyValue(list, false);     // what the sheets say, see TCSSStyleSheet
///   node.FindContainer();
///   node.CalcNonRelativeProps();
///   node.CalcSizeFlags(true);
///   …                                         // the host places the box and writes OuterRect
///   node.CalcRects();
///
/// Lengths are pixels. Box operations need a style; the others do without. The node owns its style, its float map and
/// its own sheet, unless that one is shared. One thread at a time works on a document.
class TStyledHTMLNode : public THtmlNode {
  HT_CLASS(TStyledHTMLNode, THtmlNode)

 public:
  TStyledHTMLNode();
  explicit TStyledHTMLNode(const hstring& tag);
  ~TStyledHTMLNode() override;

  // Answers of the host. Here they have the values told, and everything else that needs a view is 0, false or empty.

  /// What `vw` and `vh` refer to. Here the address of OuterRect.
  virtual const TRectF* GetDrawRect() const { return &OuterRect; }
  /// The size of the view, where the number stands for as long as the node lives: measures refer to it.
  virtual const float& GetViewPortWidth() const;
  virtual const float& GetViewPortHeight() const;
  /// A size forced by the user; 0 for none.
  virtual float GetUserWidth() const { return 0; }
  virtual float GetUserHeight() const { return 0; }
  virtual void SetUserWidth(float) {}
  virtual void SetUserHeight(float) {}
  /// Makes FStyle of the class that GetStyleClass gives; none if that is null.
  virtual void CreateStyle();
  /// A class that derives from TBaseElementStyle.
  virtual const TClass* GetStyleClass() const { return nullptr; }
  virtual float GetRealLeft() const { return 0; }
  virtual float GetRealTop() const { return 0; }
  virtual float GetSurfaceLeft() const { return 0; }
  virtual float GetSurfaceTop() const { return 0; }
  /// Makes the nearest ancestor that is not inline, or floats, or is the root, the Container. A root is its own.
  virtual void FindContainer();
  /// Called when Container has changed.
  virtual void SetContainer() {}
  virtual void ResetStyle(bool clearLast);
  /// What is shown for the text of `content`.
  virtual hstring GetCSSContent(const hstring& text) { return text; }
  /// Lets go of SelfStyleSheet, which is freed if nobody else holds it.
  virtual void ClearSelfStyleSheet();
  /// The nearest "html" around this node, or the top of the tree.
  virtual TStyledHTMLNode* RootNodeElement();
  virtual hstring DefaultFontFamily() const;
  virtual THAlign DefaultTextAlign() const { return thStart; }
  virtual uint32_t DefaultBorderColor() const { return 0xFF808080; }
  virtual uint32_t GetDefaultTextColor() const { return 0xFF000000; }
  /// Called when generated content may have changed.
  virtual void UpdatePseudo() {}
  virtual float ScaleFactor() const { return 1; }
  /// InnerWidth and InnerHeight from OuterRect.
  virtual void CalcRects();
  virtual float VScrollBarWidth() const { return 0; }
  virtual float HScrollBarHeight() const { return 0; }
  virtual float MinContentWidth() { return 0; }
  virtual float MaxContentWidth() { return 0; }
  /// Gives an attribute its meaning: a presentational one becomes a declaration of FVirtualSelfStyle. Called when an
  /// attribute was set, and for each one of parsed markup.
  virtual void ParseAttribute(const hstring& name, const hstring& value);
  /// The style is to be resolved anew. `propagate`: it may also be that of the nodes below and behind.
  virtual void StyleChanged(bool propagate);
  /// The rectangle that the node takes on a page; here the border box.
  virtual TRectF Rects(int32_t page) const;
  /// The content box.
  virtual TRectF InnerRect() const;
  /// The width depends on that of the container.
  virtual bool RelativeWidth() const;
  /// The first and the last line of the container that the element stands on.
  virtual int32_t StartLine() const { return 0; }
  virtual int32_t EndLine() const { return 0; }
  virtual bool Visible() const { return Flags.Contains(efVisible); }
  virtual bool IsText() const { return false; }
  /// As an image: what is inside is not CSS's to lay out.
  virtual bool IsReplacedElement() const { return false; }
  virtual float StyleHeight() const;
  /// A table of the document's own, which takes over no text properties from what is around it.
  virtual bool IsDocumentTable() const { return false; }
  /// The host's object that the node stands for.
  virtual TObject* InternalObject() const { return nullptr; }

  TIntf<IHtNodeList> GetJQueryList(const hstring& selector, bool stopAtFirst) override;
  bool SetAttribute(const hstring& name, const hstring& value) override;
  /// A "body" inside of another becomes "xbody", unless it is that of a "foreignobject"; an "html" inside of one "xhtml";
  /// and `<c:red>` a red "span".
  THtNode* InternalParse(THtmlParser& parser) override;
  void SetOuterHTML(const hstring& text) override;
  void SetStyleClass(const hstring& text) override;
  /// Nothing for `display: none`; items of a list have their markers.
  hstring GetInnerText() override;
  /// The same as AddVirtualCSS.
  void CSS(const hstring& text) override { AddVirtualCSS(text); }
  void AddClass(const hstring& name) override;
  void RemoveClass(const hstring& name) override;
  /// Compares with the classes in lower case.
  bool HasClass(const hstring& name) override;
  void SetParent(THtNode* parent) override;
  using THtmlNode::ParseAttributes;
  void ParseAttributes(THtmlParser& parser) override;

  TStyledHTMLNode* GetParent() const { return static_cast<TStyledHTMLNode*>(FParent); }
  TStyledHTMLNode* GetNode(int32_t index) const {
    return static_cast<TStyledHTMLNode*>(THtNode::GetNode(index));
  }
  /// Null until CreateStyle.
  TBaseElementStyle* Style() const { return FStyle.get(); }
  /// The position of the content box.
  float PageX() const { return GetRealLeft() + InnerRect().Left; }
  float PageY() const { return GetRealTop() + InnerRect().Top; }

  // The node's own declarations. They stand in its `style` attribute, in FVirtualSelfStyle and, once that is made, in
  // SelfStyleSheet as rules for `*`. Texts are declarations: "color: red; width: 10px".

  /// Adds to SelfStyleSheet, which is made if there is none. With `setAttribute` the `style` attribute is written from
  /// it. A weight of 0 stands for kCSSSelfWeight.
  void AddCSS(const hstring& text, bool setAttribute, int32_t weight = 0);
  /// AddCSS on this node and those below; not on texts and inline elements, and what is in them.
  void AddCSSRecursive(const hstring& text, bool setAttribute);
  /// Takes the declarations of a name out of SelfStyleSheet.
  void ClearCSS(const hstring& name, bool setAttribute);
  /// ClearCSS on this node and all below.
  void ClearCSSRecursive(const hstring& name, bool setAttribute);
  /// Adds to FVirtualSelfStyle, where the new declarations replace those of their names. A blank text, and a blank
  /// value, adds nothing.
  void AddVirtualCSS(const hstring& text);
  void AddVirtualCSS2(const hstring& name, const hstring& value);
  /// Makes a shared SelfStyleSheet this node's alone, parsed anew.
  void UniqueSelfStyle();
  /// A sheet parsed from the `style` attribute and FVirtualSelfStyle.
  std::unique_ptr<TCSSStyleSheet> NewSelfStyleSheet() const;
  /// Lets this node hold the sheet of another beside its other holders, in place of its own.
  void ShareSelfStyle(const TStyledHTMLNode& other);

  /// Makes FClassHashes from the attribute "class".
  void GetClassesHashes();

  // Boxes

  /// The margins, paddings and borders that need no reference.
  void CalcNonRelativeProps();
  /// The paddings and borders that need one.
  void CalcRelativeProps();
  /// Makes SizeFlags; without `reset` it adds to them.
  void CalcSizeFlags(bool reset);
  /// OuterRect without the margins; and without the borders.
  TRectF BorderRect() const;
  TRectF PaddingRect() const;
  void OffsetRects(float dx, float dy) { ROffset(OuterRect, dx, dy); }
  /// The size of the margin box around the present content.
  float CalcWidth() const { return ContentWidth + InnerDeltaX() + OuterDeltaX(); }
  float CalcHeight() const { return ContentHeight + InnerDeltaY() + OuterDeltaY(); }
  /// Scroll bar and paddings of both sides. 0 for text.
  float InnerDeltaX() const;
  float InnerDeltaY() const;
  /// Margins and borders of both sides. 0 for text; OuterDeltaY 0 for inline elements.
  float OuterDeltaX() const;
  float OuterDeltaY() const;
  /// Margin, border, padding and, on the right and at the bottom, scroll bar of one side.
  float LeftDelta() const;
  float TopDelta() const;
  float RightDelta() const;
  float BottomDelta() const;
  /// Of the side that is left, or right, on the page.
  float PaddingLeft() const;
  float PaddingRight() const;
  /// 0, and kUnlimitedSize, where there is no limit.
  float MinWidth() const;
  float MaxWidth() const;
  float MinHeight() const;
  float MaxHeight() const;
  /// The height depends on that of the container or of the content.
  bool RelativeHeight() const;
  /// Marks the node and the containers around it, up to the first of fixed width, with sfGrowToContainer.
  void GrowtoContainer();
  /// Moves a position on in the direction of reading.
  void RTLInc(float& value, float delta) const;
  /// At least 1.
  int32_t ColumnCount() const;

  // Floats. Without a map all four answer 0.

  TBlockFloats& GetFloatMap();
  /// How far floats take in over a range.
  float GetLeft(float top, float bottom) const {
    return FFloatMap ? FFloatMap->Left.MaxOffset(top, bottom) : 0;
  }
  float GetRight(float top, float bottom) const {
    return FFloatMap ? FFloatMap->Right.MaxOffset(top, bottom) : 0;
  }
  /// The first y below the floats.
  float GetLeftClearTop(const THtNode*) const { return FFloatMap ? FFloatMap->Left.ClearTop() : 0; }
  float GetRightClearTop(const THtNode*) const { return FFloatMap ? FFloatMap->Right.ClearTop() : 0; }

  // Flow

  /// Positioned absolutely, fixed or running, or floating. False without a style.
  bool OutofFlow() const;
  bool InFlow() const { return !OutofFlow(); }
  /// The element, or a container around it, is fixed or running; or absolute.
  bool IsRunning() const;
  bool IsAbsoluteOrRunning() const;
  /// The element, or one around it, is transformed.
  bool IsTransformed() const;
  bool IsBlock() const;
  bool IsBlockOrInlineBlock() const;
  /// Floats and margins do not pass its edges.
  bool IsBlockContainer() const;
  /// Absolutely positioned elements refer to it.
  bool IsAbsoluteContainer() const;
  bool IsLineBreak() const { return Flags.Contains(efLineBreak); }
  /// The nearest ancestor that is not inline; null if there is none.
  TStyledHTMLNode* NearestBlockParent() const;
  /// The nearest ancestor that is positioned or floats, else the root.
  TStyledHTMLNode* AbsoluteParent();
  /// The nearest block container among the containers around it.
  TStyledHTMLNode* BlockContainer() const;
  /// The margin of that side (0 top, 2 bottom) may collapse with that of the first or last child.
  bool MarginCollapsible(int32_t side) const;
  /// The margin of that side (0 top, 1 right, 2 bottom, 3 left) may collapse with that of a sibling.
  bool MarginCollapsibleSibling(int32_t side) const;
  /// The sibling before, else the parent.
  TStyledHTMLNode* PreviousMarginElement() const;
  /// Both have one container, and one ends before the other starts.
  bool SameLine(const TStyledHTMLNode& node) const;
  /// Null if there is none.
  TStyledHTMLNode* FirstNonEmptyChild() const;
  TStyledHTMLNode* LastNonEmptyChild() const;

  // Other

  /// Sets or clears a flag on this node; with `up` on those around it as well, with `down` on all below, Before and After
  /// included. It does not go beyond `except`, which may be null.
  void SetFlag(TElementFlag flag, bool on, bool down, bool up, const TStyledHTMLNode* except);
  /// What is behind the element: the colour of the nearest one with a background, up to the nearest that is not inline;
  /// 0 if there is none.
  uint32_t BackgroundColor() const;
  /// The nearest `lang`, else "en".
  hstring Lang() const;
  void ResetCSSCounter(const hstring& name, int32_t value);
  /// Adds 1 to the nearest counter of that name: of this node, of the siblings before it, then the same from the parent.
  void IncrementCSSCounter(const hstring& name);
  /// A number as a list writes it: "c", "C", "iii", "3". Numbers without a Roman numeral are decimal.
  static hstring ListCountertoString(TListStyleType type, int32_t n);
  /// Adds a line of HTML for this node and each below it.
  void DebugPrint(const hstring& indent, TStringList& lines) const;

  /// The nodes below this one that match the selector, in document order. With `stopAtFirst` the search ends behind the
  /// first child in which something was found.
  TIntf<IHtNodeList> JQuery(const hstring& selector, bool stopAtFirst = false);
  /// Calls `proc` for each of them.
  void JQuery(const hstring& selector, const THtNodeProcRef& proc);
  /// The same for any callable. A lambda without captures is also a pointer, and so a bool, but for this overload.
  template <std::invocable<THtNode*, bool&> TProc>
    requires(!std::same_as<std::remove_cvref_t<TProc>, THtNodeProcRef>)
  void JQuery(const hstring& selector, TProc&& proc) {
    const THtNodeProcRef walk = std::ref(proc);
    JQuery(selector, walk);
  }

  // Fields, those first that are read when rules are matched.

  TElementFlags Flags;
  /// In lower case, in the order of the attribute. With at most one class efMultiClass is not needed, and one without it
  /// has at most one.
  TClassesArray FClassHashes;
  std::unique_ptr<TBaseElementStyle> FStyle;
  /// The node's own rules, or null. It may be held by several nodes; its RefCounter counts the others.
  TCSSStyleSheet* SelfStyleSheet = nullptr;
  /// Declarations from attributes and from script, "name:value;".
  hstring FVirtualSelfStyle;
  /// The containing block; of a root, itself.
  TStyledHTMLNode* Container = nullptr;
  TCSSSizeFlags SizeFlags;
  int32_t StartPage = 0;
  /// The margin box, relative to Container.
  TRectF OuterRect;
  float MarginTop = 0, MarginRight = 0, MarginBottom = 0, MarginLeft = 0;
  float BorderTop = 0, BorderRight = 0, BorderBottom = 0, BorderLeft = 0;
  /// Left and right as the style has them, see PaddingLeft().
  float PaddingTop = 0, FPaddingRight = 0, PaddingBottom = 0, FPaddingLeft = 0;
  float ContentWidth = 0, ContentHeight = 0;
  /// The content box, which percentages refer to.
  float InnerWidth = 0, InnerHeight = 0;
  float VDelta = 0;
  bool FIgnorePageBreakInside = false;

 private:
  // Some child has counters, or had.
  bool FChildrenHaveCounters = false;

 public:
  std::unique_ptr<TBlockFloats> FFloatMap;
  /// The generated content, owned by the subclass.
  TStyledHTMLNode* Before = nullptr;
  TStyledHTMLNode* After = nullptr;
  TSharedArray<TCSSCounter> Counters;
  /// The order number, in ten-thousandths.
  int64_t Index = 0;

 private:
  TCSSStyleSheet& ChangeableSelfStyle();
  void SelfStyleChanged(bool setAttribute);
  void AppendVirtualCSS(const hstring& declarations, int32_t weight);
  /// Of the box around the container; null at the top.
  TStyledHTMLNode* OuterContainer() const { return Container == this ? nullptr : Container; }
  bool RightToLeft() const;
  bool HasPositionAround(TSet<TElementPosition> positions) const;
  void InternalJQuery(const TCSSSelectors& selectors, THtNodeList& list, bool stopAtFirst);
  bool InternalJQueryRef(const TCSSSelectors& selectors, const THtNodeProcRef& proc);
};

}  // namespace ht
