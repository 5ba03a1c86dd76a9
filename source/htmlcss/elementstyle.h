#pragma once

#include <memory>
#include <vector>

#include "htmlcss/csstransition.h"
#include "htmlcss/cssvalue.h"
#include "htmlcss/tokensequence.h"
#include "htutils/fontstyle.h"
#include "htutils/geometry.h"

namespace ht {

class TBoxReflect;
class TCSSWeightList;
class TElementBackground;
class TStyledHTMLNode;
struct TElementShadow;
struct TTransform;

/// Groups of properties that a layout can pass over as a whole.
HT_ENUM(TCSSGeneralProperty, uint8_t, cgBorder, cgMargin, cgPadding, cgBackground);
using TCSSGeneralProperties = TSet<TCSSGeneralProperty>;

/// The state of a property as it was shown last.
struct TCSSPropValueRec {
  PCSSValue Value = nullptr;
  /// The float of the pixels of a length or of a number, the word of a colour or keyword, or the hash of a complex value.
  uint32_t Number = 0;
  float Raw = 0;  // the number of a length as it was written
  const TCSSPropRec* Prop = nullptr;
};

/// The line between columns.
struct TCSSColumnRule {
  TMeasure Width;
  TLineStyle Style = lsNone;
  uint32_t Color = 0;
};

/// What the style sheets say of one element: the winning declarations, and the values worked out from them on demand.
///
/// Nothing but a few fields is copied from the parent to its children (see Inherit). A getter of an inherited property
/// walks up the tree; one of a property that is not set is a test of one bit. Getters never fail: what is not set, or
/// cannot be resolved, has its default. Those of lengths write into a TMeasure that refers to the boxes around the element,
/// and is resolved when it is used:
///
///   TMeasure width;
///   style.Width(width);
///   if (!width.GetAuto()) use(width.GetPixels());
///
/// A host derives its style from it, to resolve variables and fonts. The style belongs to its element. The declarations
/// belong to sheets, which have to live until the next Reset. Lengths are pixels, colours 0xAARRGGBB. One thread, but for
/// what TCSSTransition says.
class TBaseElementStyle : public TObject {
  HT_CLASS(TBaseElementStyle, TObject)

 public:
  /// Does what a declaration does at the moment it is applied. `sequence` stands at its first token.
  virtual void DoApplyValue(TCSSValue& value, TCSSTokenSequence& sequence);
  /// Whether both say the same: the same declarations and, with `withState`, the same pseudo-classes.
  virtual bool Same(const TBaseElementStyle& other, bool withState) const;
  /// Puts the value of the variable of a `var()` in place of the tokens, with the cursor on the first one, or moves the
  /// cursor to the end where there is none. Here it does nothing.
  virtual void GetCSSVariable(TCSSTokenSequence&) {}
  TBaseElementStyle();
  ~TBaseElementStyle() override;
  /// Takes over what children copy from their parents: zoom, white space, word break, text style and direction.
  virtual void Inherit(TBaseElementStyle& parent);
  /// Empties the style. The last state shown is kept without `clearLast`; transitions and the animation always are.
  virtual void Reset(bool clearLast);
  /// The first font family; that of the element's DefaultFontFamily for `inherit`, and without one.
  virtual hstring FontFamily();

  // Applying

  /// Takes the declarations, the weakest first, in place of those before; with `add` in front of them.
  void ApplyValue(const TCSSWeightList& list, bool add);
  void ApplyValueCaller(TCSSValue& value, TCSSTokenSequence& sequence) { DoApplyValue(value, sequence); }
  void DoApplyDisplay(TCSSValue& value, TCSSTokenSequence& sequence);
  void DoApplyBackground(TCSSValue& value, TCSSTokenSequence& sequence);
  void DoApplyFontWeight(TCSSValue& value, TCSSTokenSequence& sequence);
  void DoApplyWhiteSpace(TCSSValue& value, TCSSTokenSequence& sequence);
  /// Whether that changed the set. Then the element and its parent are to be styled anew.
  bool ApplyPseudoClass(TCSSPseudoClass pseudo, bool on);
  /// Makes GeneralProps and RelativeProps.
  void CalcGeneralProps();
  void DeleteProps(const TCSSproperties& props);

  // Finding

  /// The winning declaration of the element or, with `inherit`, of the nearest ancestor that has one; null without one.
  PCSSValue FindProp(TCSSProperty prop, bool inherit) const {
    if (PropertySet.Contains(prop)) return InternalFindProp(prop);
    return inherit ? FindInParents(prop) : nullptr;
  }
  /// Of this element, whatever PropertySet says.
  PCSSValue InternalFindProp(TCSSProperty prop) const;
  /// `parent` is what a percentage refers to. A property that is not set leaves the measure `auto`.
  void GetMeasureProp(TCSSProperty prop, TMeasure& measure, const float* parent, bool useTransition,
                      bool inherit) {
    measure.Init(this);
    measure.FMUnit = muPX;
    measure.Flags = {mfInitial};
    if (inherit || PropertySet.Contains(prop)) ReadMeasureProp(prop, measure, parent, useTransition, inherit);
  }
  /// The pixels of a property that is set.
  float GetMeasurePx(TCSSProperty prop);
  /// Whether there is a value. The color of text always has one.
  bool GetColorProp(TCSSProperty prop, uint32_t& color, bool useTransition, bool inherit);
  bool GetNumberProp(TCSSProperty prop, float& number, bool useTransition, bool inherit);
  /// What a relative length of the property refers to; null where there is nothing.
  const float* GetPropParent(const TCSSPropRec& prop) const;

  // Changes

  /// Remembers the present state.
  void SaveLastProps();
  /// Compares with what is remembered. Whether there is a difference, and what it asks for.
  bool StyleChanged(bool& needLayout, bool& needRepaint);
  /// Tells what a property was shown as. An unknown name does nothing.
  void SetLastPropValue(const hstring& name, double value);
  uint32_t GetLastColorProp(TCSSProperty prop, bool inherit) const;
  bool GetLastNumberProp(TCSSProperty prop, float& number, bool inherit) const;

  // Transitions and animation

  void AddTransition(TCSSTokenSequence& sequence);
  void AddAnimation(TCSSTokenSequence& sequence);
  /// The animation, which is made if there is none, and is active from then on.
  TCSSAnimation& CreateAnimation();
  /// Whether there is an active transition of the property.
  bool GetTransitionColor(TCSSProperty prop, uint32_t& color) const;
  bool GetTransitionNumber(TCSSProperty prop, float& number) const;
  bool GetTransitionMeasure(TCSSProperty prop, TMeasure& measure) const;

  // Keywords

  TFloat Float() const { return OwnWord<TFloat>(cspFloat); }
  TCSSAppearance Appearance() const { return OwnWord<TCSSAppearance>(cspAppearance); }
  TElementResize Resize() const { return OwnWord<TElementResize>(cspResize); }
  TCSSTableLayout TableLayout() const { return OwnWord<TCSSTableLayout>(cspTableLayout); }
  TCSSTextOverflow TextOverflow() const { return OwnWord<TCSSTextOverflow>(cspTextOverflow); }
  TCSSDraggable Draggable() const { return OwnWord<TCSSDraggable>(cspDraggable); }
  TCSSTextDecorationStyle TextDecorationStyle() const {
    return OwnWord<TCSSTextDecorationStyle>(cspTextDecorationStyle);
  }
  TCSSPageBreak PageBreakBefore() const { return OwnWord<TCSSPageBreak>(cspPageBreakBefore); }
  TCSSPageBreak PageBreakAfter() const { return OwnWord<TCSSPageBreak>(cspPageBreakAfter); }
  TCSSJustifyContent JustifyContent() const { return OwnWord<TCSSJustifyContent>(cspJustifyContent); }
  TCSSAlignItems AlignItems() const { return OwnWord<TCSSAlignItems>(cspAlignItems); }
  TCSSAlignItems AlignSelf() const { return OwnWord<TCSSAlignItems>(cspAlignSelf, aiInherit); }
  TCSSFlexDirection FlexDirection() const { return OwnWord<TCSSFlexDirection>(cspFlexDirection); }
  TCSSFlexWrap FlexWrap() const { return OwnWord<TCSSFlexWrap>(cspFlexWrap); }
  TBackgroundRepeat BackgroundRepeat() const { return OwnWord<TBackgroundRepeat>(cspBackgroundRepeat); }
  TBackgroundAttachment BackgroundAttachment() const {
    return OwnWord<TBackgroundAttachment>(cspBackgroundAttachment);
  }
  TBackgroundOrigin BackgroundOrigin() const { return OwnWord<TBackgroundOrigin>(cspBackgroundOrigin); }
  TCSSUnicodeBidi UnicodeBidi() const { return OwnWord<TCSSUnicodeBidi>(cspUnicodeBidi); }
  TCSSBreakAfter BreakAfter() const { return OwnWord<TCSSBreakAfter>(cspBreakAfter); }

  TCSSDirection Direction() const { return FoundWord<TCSSDirection>(cspDirection); }
  TCSSWordWrap WordWrap() const { return FoundWord<TCSSWordWrap>(cspWordWrap); }
  TCSSWordBreak WordBreak() const { return FoundWord<TCSSWordBreak>(cspWordBreak); }
  TCSSHyphens Hyphens() const { return FoundWord<TCSSHyphens>(cspHyphens); }
  TCSSCursor Cursor() const { return FoundWord<TCSSCursor>(cspCursor); }
  TCSSWritingMode WritingMode() const { return FoundWord<TCSSWritingMode>(cspWritingMode); }
  TBorderCollapse BorderCollapse() const { return FoundWord<TBorderCollapse>(cspBorderCollapse); }
  TCSSListStylePosition ListStylePosition() const {
    return FoundWord<TCSSListStylePosition>(cspListStylePosition);
  }
  TListStyleType ListStyleType() const { return FoundWord<TListStyleType>(cspListStyleType, lstDisc); }
  TCSSPointerEvents PointerEvents() const { return OwnWord<TCSSPointerEvents>(cspPointerEvents); }

  TBoxSizing BoxSizing() const { return Word<TBoxSizing>(FindOwnOrInherit(cspBoxSizing)); }
  TCSSTextDecorationLine TextDecorationLine() const {
    return Word<TCSSTextDecorationLine>(FindOwnOrInherit(cspTextDecorationLine));
  }
  TCSSTextTransform TextTransform() const { return FoundWord<TCSSTextTransform>(cspTextTransform); }
  TCSSPageBreak PageBreakInside() const;
  TElementOverflow OverflowX() const { return Overflow(cspOverflowX); }
  TElementOverflow OverflowY() const { return Overflow(cspOverflowY); }
  TVAlign VerticalAlign() const;
  THAlign TextAlign() const;

  // Lengths

  void Left(TMeasure& m) { GetMeasureProp(cspLeft, m, ContainerWidth(), true, false); }
  void Right(TMeasure& m) { GetMeasureProp(cspRight, m, ContainerWidth(), true, false); }
  void Top(TMeasure& m) { GetMeasureProp(cspTop, m, ContainerHeight(), true, false); }
  void Bottom(TMeasure& m) { GetMeasureProp(cspBottom, m, ContainerHeight(), true, false); }
  void Width(TMeasure& m);
  void Height(TMeasure& m);
  void MinWidth(TMeasure& m) { LimitWidth(cspMinWidth, m); }
  void MaxWidth(TMeasure& m) { LimitWidth(cspMaxWidth, m); }
  void MinHeight(TMeasure& m) { GetMeasureProp(cspMinHeight, m, ContainerHeight(), true, false); }
  void MaxHeight(TMeasure& m);
  void TextIndent(TMeasure& m) { OwnWidthProp(cspTextIndent, m, true); }
  void LetterSpacing(TMeasure& m) { GetMeasureProp(cspLetterSpacing, m, &IntFontSize, true, true); }
  void WordSpacing(TMeasure& m) { GetMeasureProp(cspWordSpacing, m, &IntFontSize, true, true); }
  void BorderSpacingX(TMeasure& m) { OwnHeightProp(cspBorderSpacing, m); }
  void BorderSpacingY(TMeasure& m);
  void ColumnWidth(TMeasure& m) { OwnWidthProp(cspColumnWidth, m, false); }
  void TabInterval(TMeasure& m) { OwnWidthProp(cspTabInterval, m, false); }
  void BackgroundPositionX(TMeasure& m) { OwnWidthProp(cspBackgroundPositionX, m, false); }
  void BackgroundPositionY(TMeasure& m) { OwnHeightProp(cspbackgroundPositionY, m); }
  void FlexBasis(TMeasure& m) { GetMeasureProp(cspFlexBasis, m, ContainerWidth(), true, false); }
  /// 1em where there is none.
  void ColumnGap(TMeasure& m);

  void MarginTop(TMeasure& m) { Side(cspMarginTop, m); }
  void MarginRight(TMeasure& m) { Side(cspMarginRight, m); }
  void MarginBottom(TMeasure& m) { Side(cspMarginBottom, m); }
  void MarginLeft(TMeasure& m) { Side(cspMarginLeft, m); }
  float MarginTopPx() { return SidePx(cgMargin, cspMarginTop); }
  float MarginRightPx() { return SidePx(cgMargin, cspMarginRight); }
  float MarginBottomPx() { return SidePx(cgMargin, cspMarginBottom); }
  float MarginLeftPx() { return SidePx(cgMargin, cspMarginLeft); }
  void PaddingTop(TMeasure& m) { Side(cspPaddingTop, m); }
  void PaddingRight(TMeasure& m) { HorizontalPadding(cspPaddingRight, 1, m); }
  void PaddingBottom(TMeasure& m) { Side(cspPaddingBottom, m); }
  void PaddingLeft(TMeasure& m) { HorizontalPadding(cspPaddingLeft, 3, m); }
  float PaddingTopPx() { return SidePx(cgPadding, cspPaddingTop); }
  float PaddingRightPx() { return HorizontalPaddingPx(cspPaddingRight, 1); }
  float PaddingBottomPx() { return SidePx(cgPadding, cspPaddingBottom); }
  float PaddingLeftPx() { return HorizontalPaddingPx(cspPaddingLeft, 3); }

  // Text

  /// Refers to the parent's font size.
  void FontSize(TMeasure& m);
  /// A bare number multiplies the font size. For an inline element without a line height of its own, and none on the way to
  /// its block, the measure stays `auto`: the lines are the block's.
  void LineHeight(TMeasure& m);
  uint32_t TextColor();
  uint32_t TextDecorationColor();
  bool ContentEditable() const;

  // Background and effects

  /// Made when it is first asked for.
  TElementBackground& GetBackground();
  uint32_t BackgroundColor(bool useTransition = true);
  bool BackgroundPresent();
  float Opacity() const;
  /// There is nothing to draw.
  bool NoShadow();
  bool NoTextShadow();
  void BoxShadow(TElementShadow& shadow);
  void TextShadow(TElementShadow& shadow);
  void GetTransform(TTransform& transform, bool withAnimation);
  bool HasTransform() const;

  // Other

  int32_t ColumnCount() const;
  void ColumnRule(TCSSColumnRule& rule);
  /// 1 for the first page, -9991 the last one, -9994 the one before it, -9992 odd and -9993 even ones, n for page n and -n
  /// for each n-th; else 0.
  int32_t Page() const;
  hstring PageSize() const;
  /// The name in `position: running(name)`.
  hstring RunningBlock() const;
  int32_t TransitionDelay() const;  // ms
  float FlexGrow() const { return OwnNumber(cspFlexGrow, 0); }
  float FlexShrink() const { return OwnNumber(cspFlexShrink, 1); }
  /// The declarations, for the caller to read; null without one.
  PCSSValue TabStops() const { return FindProp(cspTabStops, false); }
  PCSSValue Filter() const { return FindProp(cspFilter, false); }
  PCSSValue BoxReflect() const { return FindProp(cspBoxReflect, false); }

  // Borders

  TLineStyle BorderTopStyle() const { return BorderSideStyle(0); }
  TLineStyle BorderRightStyle() const { return BorderSideStyle(1); }
  TLineStyle BorderBottomStyle() const { return BorderSideStyle(2); }
  TLineStyle BorderLeftStyle() const { return BorderSideStyle(3); }
  uint32_t BorderTopColor() { return BorderSideColor(0); }
  uint32_t BorderRightColor() { return BorderSideColor(1); }
  uint32_t BorderBottomColor() { return BorderSideColor(2); }
  uint32_t BorderLeftColor() { return BorderSideColor(3); }
  void BorderTopWidth(TMeasure& m) { BorderWidth(0, m); }
  void BorderRightWidth(TMeasure& m) { BorderWidth(1, m); }
  void BorderBottomWidth(TMeasure& m) { BorderWidth(2, m); }
  void BorderLeftWidth(TMeasure& m) { BorderWidth(3, m); }
  float BorderTopWidthPx() { return GeneralProps.Contains(cgBorder) ? BorderWidthPx(0) : 0; }
  float BorderRightWidthPx() { return GeneralProps.Contains(cgBorder) ? BorderWidthPx(1) : 0; }
  float BorderBottomWidthPx() { return GeneralProps.Contains(cgBorder) ? BorderWidthPx(2) : 0; }
  float BorderLeftWidthPx() { return GeneralProps.Contains(cgBorder) ? BorderWidthPx(3) : 0; }
  bool BorderPresent() const;
  /// The four sides can be drawn as one border.
  bool BorderOneStyle();

  void BorderTopLeftRadius(TMeasure& x, TMeasure& y) { Radius(cspBorderTopLeftradius, x, y); }
  void BorderTopRightRadius(TMeasure& x, TMeasure& y) { Radius(cspBorderTopRightRadius, x, y); }
  void BorderBottomLeftRadius(TMeasure& x, TMeasure& y) { Radius(cspBorderBottomLeftRadius, x, y); }
  void BorderBottomRightRadius(TMeasure& x, TMeasure& y) { Radius(cspBorderBottomRightRadius, x, y); }
  /// The largest of the four corners.
  void MaxBorderRadiusXY(float& x, float& y);
  float MaxBorderRadius();
  /// All four corners have these radii, where none counts more than `limit`.
  bool BorderOneRadius(float x, float y, float limit);

  TLineStyle OutlineStyle() const;
  uint32_t OutlineColor();
  float OutlineWidthPx();
  /// In the pixels of the device.
  TRect ScaleRect(const TRectF& rect) const;

  // Fields

  TStyledHTMLNode* FElement = nullptr;
  /// The font size in pixels, which the host's layout writes.
  float IntFontSize = 0;
  std::unique_ptr<TElementBackground> FBackground;
  /// The strongest first.
  std::vector<PCSSValue> FProps;
  std::vector<TCSSPropValueRec> FLastProps;
  /// The groups of which the element has something; and those that change with the sizes around it.
  TCSSGeneralProperties GeneralProps, RelativeProps;
  TDisplayStyle FDisplay = dsInline;
  TElementPosition FPosition = epStatic;
  int32_t ZIndex = 0;
  TSet<TElementClear> Clear;
  THtFontStyles CalculatedTextStyle;
  float Zoom = 1;
  TWhiteSpace WhiteSpace = wsNormal;
  TCSSWordBreak CalculatedWordBreak = wbNormal;
  TCSSDirection CalculatedDirection = cdLTR;
  float CalculatedOpacity = 0;
  TCSSVisibility Visibility = cvVisible;
  /// The pseudo-classes that the element has now.
  TCSSPseudo CurrentPC;
  std::unique_ptr<TCSSTransitions> Transitions;
  std::unique_ptr<TCSSAnimation> Animation;
  /// The properties in FProps whose value counts.
  TCSSproperties PropertySet;

 protected:
  /// The style of the parent element; null at the top, and where it has none.
  TBaseElementStyle* ParentStyle() const;

 private:
  // The ordinal of a keyword; one that is none of the enumeration is its default.
  template <class TEnum>
  static TEnum Word(const TCSSValue* value, TEnum otherwise = TEnum{}) {
    if (!value || value->Tokens.Empty()) return otherwise;
    const uint32_t word = value->Tokens[0].Color() & 0xFF;
    return word < static_cast<uint32_t>(HtEnumCount(TEnum{})) ? static_cast<TEnum>(word) : otherwise;
  }
  template <class TEnum>
  TEnum OwnWord(TCSSProperty prop, TEnum otherwise = TEnum{}) const {
    return PropertySet.Contains(prop) ? Word<TEnum>(InternalFindProp(prop), otherwise) : otherwise;
  }
  template <class TEnum>
  TEnum FoundWord(TCSSProperty prop, TEnum otherwise = TEnum{}) const {
    return Word<TEnum>(FindInherited(prop), otherwise);
  }
  float OwnNumber(TCSSProperty prop, float otherwise) const;
  PCSSValue FindInParents(TCSSProperty prop) const;
  // The nearest declaration that is not `inherit`; null without one.
  PCSSValue FindInherited(TCSSProperty prop) const;
  // That of the element; through `inherit`, that of the first one around that says something else.
  PCSSValue FindOwnOrInherit(TCSSProperty prop) const;
  // Where the value of a property comes from: an active transition of an element, else a declaration of its.
  struct TSource {
    TBaseElementStyle* Style = nullptr;
    const TCSSTransition* Transition = nullptr;
    PCSSValue Value = nullptr;
  };
  bool FindSource(TCSSProperty prop, bool useTransition, bool inherit, TSource& source);
  // Stands at the first token of the value, the variable of a `var()` put in; false where there is nothing.
  bool OpenValue(const TCSSValue& value, TCSSTokenSequence& sequence);
  void ReadMeasureProp(TCSSProperty prop, TMeasure& measure, const float* parent, bool useTransition,
                       bool inherit);
  float SidePx(TCSSGeneralProperty group, TCSSProperty prop) {
    return GeneralProps.Contains(group) && PropertySet.Contains(prop) ? GetMeasurePx(prop) : 0;
  }
  const TCSSTransition* ActiveTransition(TCSSProperty prop) const {
    return Transitions ? Transitions->FindActive(prop) : nullptr;
  }

  const float* ContainerWidth() const;
  const float* ContainerHeight() const;
  void OwnWidthProp(TCSSProperty prop, TMeasure& m, bool inherit);
  void OwnHeightProp(TCSSProperty prop, TMeasure& m);
  void LimitWidth(TCSSProperty prop, TMeasure& m);
  TElementOverflow Overflow(TCSSProperty prop) const;
  void Side(TCSSProperty prop, TMeasure& m);
  void HorizontalPadding(TCSSProperty prop, int32_t side, TMeasure& m);
  bool PaddingOfShorthand(int32_t side, TMeasure& m);
  float HorizontalPaddingPx(TCSSProperty prop, int32_t side);
  PCSSValue FontSizeValue() const;
  bool OwnLineHeight(TMeasure& m);
  // The length of one token; false, and 0, where there is none.
  bool DecodeToken(const TCSSValue& value, int32_t index, TMeasure& m);

  // Sides count from the top, clockwise.
  TLineStyle BorderSideStyle(int32_t side) const;
  uint32_t BorderSideColor(int32_t side);
  void ReadBorderColor(const TCSSValue& value, uint32_t& color);
  void BorderSideWidth(int32_t side, TMeasure& m);
  void BorderWidth(int32_t side, TMeasure& m);
  float BorderWidthPx(int32_t side);
  void Radius(TCSSProperty corner, TMeasure& x, TMeasure& y);
  void ApplyOne(TCSSValue& value);
  bool Changed(PCSSValue value, const TCSSPropValueRec& last);
  TCSSPropValueRec RecordOf(PCSSValue value);
};

}  // namespace ht
