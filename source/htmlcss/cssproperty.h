#pragma once

#include <vector>

#include "htmlcss/cssenums.h"
#include "htruntime/object.h"

namespace ht {

#define HT_CSS_PROPERTIES                                                                                    \
  cspUnknown, cspDisplay, cspFloat, cspPage, cspPointerEvents, cspSize, cspPosition, cspColumnRule,          \
      cspColumnGap, cspColumnWidth, cspColumnCount, cspTransition, cspTransitionDelay, cspContentEditable,   \
      cspAppearance, cspMinWidth, cspMaxWidth, cspMinHeight, cspMaxHeight, cspLineHeight, cspFont,           \
      cspFontFamily, cspTextIndent, cspLetterSpacing, cspBorderSpacing, cspLeft, cspTop, cspRight,           \
      cspBottom, cspMarginLeft, cspMarginTop, cspMarginRight, cspMarginBottom, cspMargin, cspPaddingLeft,    \
      cspPaddingTop, cspPaddingRight, cspPaddingBottom, cspPadding, cspWidth, cspHeight, cspTableLayout,     \
      cspTextOverflow, cspDraggable, cspColor, cspTextDecorationColor, cspTextDecorationStyle,               \
      cspTextDecorationLine, cspTextDecoration, cspPageBreakBefore, cspPageBreakAfter, cspPageBreakInside,   \
      cspResize, cspBoxReflect, cspBorder, cspBorderRadius, cspBorderTopLeftradius, cspBorderTopRightRadius, \
      cspBorderBottomLeftRadius, cspBorderBottomRightRadius, cspBorderColor, cspBorderTopColor,              \
      cspBorderRightColor, cspBorderBottomColor, cspBorderLeftColor, cspBorderWidth, cspBorderTopWidth,      \
      cspBorderRightWidth, cspBorderBottomWidth, cspBorderLeftWidth, cspBorderStyle, cspBorderTopStyle,      \
      cspBorderRightStyle, cspBorderBottomStyle, cspBorderLeftStyle, cspBorderTop, cspBorderRight,           \
      cspBorderBottom, cspBorderLeft, cspBoxShadow, cspTextShadow, cspFlexDirection, cspJustifyContent,      \
      cspAlignItems, cspAlignSelf, cspFlexBasis, cspFlexGrow, cspFlexShrink, cspFlexWrap, cspFlex,           \
      cspTextTransform, cspCursor, cspBorderCollapse, cspTextAlign, cspFontSize, cspFontStyle,               \
      cspFontWeight, cspOpacity, cspListStyleType, cspListStyle, cspBoxSizing, cspVerticalAlign,             \
      cspOverflowX, cspOverflowY, cspOverflow, cspBackground, cspBackgroundColor, cspBackgroundImage,        \
      cspBackgroundPositionX, cspbackgroundPositionY, cspBackgroundPosition, cspBackgroundRepeat,            \
      cspBackgroundAttachment, cspBackgroundOrigin, cspBackgroundSize, cspWritingMode, cspContent,           \
      cspTransform, cspTransformOrigin, cspVisibility, cspZIndex, cspDirection, cspWordWrap, cspWordBreak,   \
      cspClipPath, cspDominantBaseline, cspFill, cspFillOpacity, cspFillRule, cspStroke, cspStrokeWidth,     \
      cspStrokeOpacity, cspStopColor, cspBreakAfter, cspStopOpacity, cspStrokeDasharray,                     \
      cspStrokeDashoffset, cspStrokeLinejoin, cspStrokeLinecap, cspShapeRendering, cspTextAnchor,            \
      cspWhiteSpace, cspZoom, cspFilter, cspHyphens, cspTabStops, cspTabInterval, cspAnimation,              \
      cspAnimationName, cspAnimationDuration, cspAnimationTimingFunction, cspClear, cspCounterReset,         \
      cspCounterIncrement, cspTransitionDuration, cspWordSpacing, cspListStylePosition, cspMaskImage,        \
      cspOutline, cspOutlineColor, cspOutlineStyle, cspOutlineWidth, cspOutlineOffset,                       \
      cspFontFeatureSettings, cspFontKerning, cspUnicodeBidi

enum TCSSProperty : uint8_t { HT_CSS_PROPERTIES };
constexpr int HtEnumCount(TCSSProperty) { return cspUnicodeBidi + 1; }
using TCSSproperties = TSet<TCSSProperty>;

HT_ENUM(TCSSPropertyType, uint8_t, cptLength, cptNumber, cptColor, cptString, cptEnum, cptComplex);
/// What a relative length of a property refers to.
HT_ENUM(TCSSPropertyParentType, uint8_t, cpptWidth, cpptHeight, cpptFontSize, cpptContainerWidth,
        cpptContainerHeight);

class TBaseElementStyle;
class TCSSTokenSequence;
struct TCSSValue;

/// What a declaration does to a style at the moment it is applied.
using TCSSValueProc = void (TBaseElementStyle::*)(TCSSValue&, TCSSTokenSequence&);

/// What CSS knows of one property name: a row of the property table.
class TCSSPropRec : public TObject {
  HT_CLASS(TCSSPropRec, TObject)

 public:
  hstring Name;
  TCSSProperty Prop = cspUnknown;
  TCSSPropertyType PropType = cptNumber;
  TCSSPropertyParentType ParentType = cpptWidth;
  /// The value is taken from the nearest ancestor that has one.
  bool Inherited = false;
  /// A change asks for a new layout, not only a repaint.
  bool Layout = false;
  /// The initial value: the bits of 1.0f for `opacity` and `zoom`, else 0.
  uint32_t Default = 0;
  /// The longhands of a shorthand, in the order in which their values are given.
  std::vector<TCSSPropRec*> SubProps;
  /// The keywords of a cptEnum property, and the prefix of their names; null and empty where there are none.
  const THtEnumInfo* EnumInfo = nullptr;
  std::u16string_view EnumPrefix;
  /// Of the properties that do something the moment they are applied; null for those only looked up later.
  TCSSValueProc ApplyProc = nullptr;

  /// The ordinal of a keyword of the enumeration; -1 if it is none. Neither case nor hyphens count.
  int32_t FindKeyword(std::u16string_view word) const;
};

}  // namespace ht
