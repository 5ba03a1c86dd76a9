#include "htmlcss/cssproptable.h"

#include <array>
#include <bit>

#include "htmlcss/csstokentexts.h"
#include "htmlcss/elementstyle.h"
#include "htutils/enumlookup.h"

namespace ht {

namespace {

enum TFlag : uint8_t {
  kI = 1,  // inherited
  kL = 2,  // a change asks for a new layout
  kA = 4,  // does something the moment it is applied
};

struct TWords {
  const THtEnumInfo& (*Info)();
  std::u16string_view Prefix;
};
template <class TEnum>
consteval TWords Words(std::u16string_view prefix) {
  return {HtEnumOf<TEnum>, prefix};
}

struct TRow {
  constexpr TRow(hstring name, TCSSProperty prop, TCSSPropertyType type, int flags = 0,
                 TCSSPropertyParentType parentType = cpptWidth)
      : Name(std::move(name)), Prop(prop), Type(type), ParentType(parentType), Flags(flags) {}
  constexpr TRow(hstring name, TCSSProperty prop, TCSSPropertyType type, int flags, TWords words)
      : Name(std::move(name)), Prop(prop), Type(type), Flags(flags), Keywords(words) {}

  hstring Name;
  TCSSProperty Prop;
  TCSSPropertyType Type;
  TCSSPropertyParentType ParentType = cpptWidth;
  int Flags;
  TWords Keywords{};
};

// What a percentage refers to is the element's own width where nothing is said.
constexpr TRow kRows[] = {
    // clang-format off
    {u"unknown"_hs,                    cspUnknown,                 cptNumber},
    {u"display"_hs,                    cspDisplay,                 cptEnum,    kL | kA,      Words<TDisplayStyle>(u"ds")},
    {u"float"_hs,                      cspFloat,                   cptEnum,    0,            Words<TFloat>(u"f")},
    {u"page"_hs,                       cspPage,                    cptNumber},
    {u"pointer-events"_hs,             cspPointerEvents,           cptEnum,    kI,           Words<TCSSPointerEvents>(u"pe")},
    {u"size"_hs,                       cspSize,                    cptComplex},
    {u"position"_hs,                   cspPosition,                cptEnum,    kL | kA,      Words<TElementPosition>(u"ep")},
    {u"column-rule"_hs,                cspColumnRule,              cptComplex, kL},
    {u"column-gap"_hs,                 cspColumnGap,               cptLength,  kL},
    {u"column-width"_hs,               cspColumnWidth,             cptLength,  kL},
    {u"column-count"_hs,               cspColumnCount,             cptNumber,  kL},
    {u"transition"_hs,                 cspTransition,              cptComplex, kA},
    {u"transition-delay"_hs,           cspTransitionDelay,         cptNumber},
    {u"contenteditable"_hs,            cspContentEditable,         cptEnum,    kI},
    {u"appearance"_hs,                 cspAppearance,              cptEnum,    kL,           Words<TCSSAppearance>(u"ca")},
    {u"min-width"_hs,                  cspMinWidth,                cptLength,  kL,           cpptContainerWidth},
    {u"max-width"_hs,                  cspMaxWidth,                cptLength,  kL,           cpptContainerWidth},
    {u"min-height"_hs,                 cspMinHeight,               cptLength,  kL,           cpptContainerHeight},
    {u"max-height"_hs,                 cspMaxHeight,               cptLength,  kL,           cpptContainerHeight},
    {u"line-height"_hs,                cspLineHeight,              cptLength,  kI | kL,      cpptFontSize},
    {u"font-size"_hs,                  cspFontSize,                cptLength,  kI | kL,      cpptFontSize},
    {u"font-family"_hs,                cspFontFamily,              cptString,  kI | kL},
    {u"font-style"_hs,                 cspFontStyle,               cptEnum,    kI | kL | kA, Words<TCSSFontStyle>(u"cfs")},
    {u"font-weight"_hs,                cspFontWeight,              cptEnum,    kI | kL | kA, Words<TCSSFontWeight>(u"fw")},
    {u"font"_hs,                       cspFont,                    cptComplex, kL,           cpptFontSize},
    {u"text-indent"_hs,                cspTextIndent,              cptLength,  kI | kL},
    {u"letter-spacing"_hs,             cspLetterSpacing,           cptLength,  kL},
    {u"word-spacing"_hs,               cspWordSpacing,             cptLength,  kL,           cpptFontSize},
    {u"border-spacing"_hs,             cspBorderSpacing,           cptLength,  kL},
    {u"left"_hs,                       cspLeft,                    cptLength,  kL,           cpptContainerWidth},
    {u"top"_hs,                        cspTop,                     cptLength,  kL,           cpptContainerHeight},
    {u"right"_hs,                      cspRight,                   cptLength,  kL,           cpptContainerWidth},
    {u"bottom"_hs,                     cspBottom,                  cptLength,  kL,           cpptContainerHeight},
    {u"margin-left"_hs,                cspMarginLeft,              cptLength,  kL,           cpptContainerWidth},
    {u"margin-top"_hs,                 cspMarginTop,               cptLength,  kL,           cpptContainerWidth},
    {u"margin-right"_hs,               cspMarginRight,             cptLength,  kL,           cpptContainerWidth},
    {u"margin-bottom"_hs,              cspMarginBottom,            cptLength,  kL,           cpptContainerWidth},
    {u"margin"_hs,                     cspMargin,                  cptLength,  kL,           cpptContainerWidth},
    {u"padding-left"_hs,               cspPaddingLeft,             cptLength,  kL,           cpptContainerWidth},
    {u"padding-top"_hs,                cspPaddingTop,              cptLength,  kL,           cpptContainerWidth},
    {u"padding-right"_hs,              cspPaddingRight,            cptLength,  kL,           cpptContainerWidth},
    {u"padding-bottom"_hs,             cspPaddingBottom,           cptLength,  kL,           cpptContainerWidth},
    {u"padding"_hs,                    cspPadding,                 cptLength,  kL,           cpptContainerWidth},
    {u"width"_hs,                      cspWidth,                   cptLength,  kL,           cpptContainerWidth},
    {u"height"_hs,                     cspHeight,                  cptLength,  kL,           cpptContainerHeight},
    {u"table-layout"_hs,               cspTableLayout,             cptEnum,    kL,           Words<TCSSTableLayout>(u"tl")},
    {u"text-overflow"_hs,              cspTextOverflow,            cptEnum,    0,            Words<TCSSTextOverflow>(u"to")},
    {u"draggable"_hs,                  cspDraggable,               cptEnum,    0,            Words<TCSSDraggable>(u"dg")},
    {u"resize"_hs,                     cspResize,                  cptEnum,    0,            Words<TElementResize>(u"er")},
    {u"color"_hs,                      cspColor,                   cptColor,   kI},
    {u"page-break-before"_hs,          cspPageBreakBefore,         cptEnum,    0,            Words<TCSSPageBreak>(u"pb")},
    {u"page-break-after"_hs,           cspPageBreakAfter,          cptEnum,    0,            Words<TCSSPageBreak>(u"pb")},
    {u"page-break-inside"_hs,          cspPageBreakInside,         cptEnum,    kI,           Words<TCSSPageBreak>(u"pb")},
    {u"box-reflect"_hs,                cspBoxReflect,              cptComplex},
    {u"border-top-left-radius"_hs,     cspBorderTopLeftradius,     cptLength},
    {u"border-top-right-radius"_hs,    cspBorderTopRightRadius,    cptLength},
    {u"border-bottom-left-radius"_hs,  cspBorderBottomLeftRadius,  cptLength},
    {u"border-bottom-right-radius"_hs, cspBorderBottomRightRadius, cptLength},
    {u"border-radius"_hs,              cspBorderRadius,            cptLength},
    {u"border-top-color"_hs,           cspBorderTopColor,          cptColor},
    {u"border-right-color"_hs,         cspBorderRightColor,        cptColor},
    {u"border-bottom-color"_hs,        cspBorderBottomColor,       cptColor},
    {u"border-left-color"_hs,          cspBorderLeftColor,         cptColor},
    {u"border-color"_hs,               cspBorderColor,             cptColor},
    {u"border-top-width"_hs,           cspBorderTopWidth,          cptLength,  kL},
    {u"border-right-width"_hs,         cspBorderRightWidth,        cptLength,  kL},
    {u"border-bottom-width"_hs,        cspBorderBottomWidth,       cptLength,  kL},
    {u"border-left-width"_hs,          cspBorderLeftWidth,         cptLength,  kL},
    {u"border-width"_hs,               cspBorderWidth,             cptLength,  kL},
    {u"border-top-style"_hs,           cspBorderTopStyle,          cptEnum,    kL,           Words<TLineStyle>(u"ls")},
    {u"border-right-style"_hs,         cspBorderRightStyle,        cptEnum,    kL,           Words<TLineStyle>(u"ls")},
    {u"border-bottom-style"_hs,        cspBorderBottomStyle,       cptEnum,    kL,           Words<TLineStyle>(u"ls")},
    {u"border-left-style"_hs,          cspBorderLeftStyle,         cptEnum,    kL,           Words<TLineStyle>(u"ls")},
    {u"border-style"_hs,               cspBorderStyle,             cptEnum,    kL,           Words<TLineStyle>(u"ls")},
    {u"border-top"_hs,                 cspBorderTop,               cptComplex},
    {u"border-right"_hs,               cspBorderRight,             cptComplex},
    {u"border-bottom"_hs,              cspBorderBottom,            cptComplex},
    {u"border-left"_hs,                cspBorderLeft,              cptComplex, kL},
    {u"border"_hs,                     cspBorder,                  cptComplex, kL},
    {u"box-shadow"_hs,                 cspBoxShadow,               cptComplex},
    {u"text-shadow"_hs,                cspTextShadow,              cptComplex, kI},
    {u"flex-direction"_hs,             cspFlexDirection,           cptEnum,    kL,           Words<TCSSFlexDirection>(u"fd")},
    {u"justify-content"_hs,            cspJustifyContent,          cptEnum,    kL,           Words<TCSSJustifyContent>(u"jc")},
    {u"align-items"_hs,                cspAlignItems,              cptEnum,    kL,           Words<TCSSAlignItems>(u"ai")},
    {u"align-self"_hs,                 cspAlignSelf,               cptEnum,    kL,           Words<TCSSAlignItems>(u"ai")},
    {u"flex-basis"_hs,                 cspFlexBasis,               cptLength,  kL},
    {u"flex-grow"_hs,                  cspFlexGrow,                cptNumber,  kL},
    {u"flex-shrink"_hs,                cspFlexShrink,              cptNumber,  kL},
    {u"flex-wrap"_hs,                  cspFlexWrap,                cptEnum,    kL,           Words<TCSSFlexWrap>(u"fw")},
    {u"flex"_hs,                       cspFlex,                    cptComplex, kL},
    {u"text-transform"_hs,             cspTextTransform,           cptEnum,    kI | kL,      Words<TCSSTextTransform>(u"ctt")},
    {u"cursor"_hs,                     cspCursor,                  cptEnum,    kI,           Words<TCSSCursor>(u"ec")},
    {u"border-collapse"_hs,            cspBorderCollapse,          cptEnum,    kI,           Words<TBorderCollapse>(u"bc")},
    {u"text-align"_hs,                 cspTextAlign,               cptEnum,    kI | kL,      Words<THAlign>(u"th")},
    {u"opacity"_hs,                    cspOpacity,                 cptNumber},
    {u"list-style-type"_hs,            cspListStyleType,           cptEnum,    kI | kL,      Words<TListStyleType>(u"lst")},
    {u"list-style"_hs,                 cspListStyle,               cptComplex, kI | kL},
    {u"list-style-position"_hs,        cspListStylePosition,       cptEnum,    kI | kL,      Words<TCSSListStylePosition>(u"lsp")},
    {u"box-sizing"_hs,                 cspBoxSizing,               cptEnum,    0,            Words<TBoxSizing>(u"bs")},
    {u"text-decoration-style"_hs,      cspTextDecorationStyle,     cptEnum,    0,            Words<TCSSTextDecorationStyle>(u"ts")},
    {u"text-decoration-color"_hs,      cspTextDecorationColor,     cptColor},
    {u"text-decoration-line"_hs,       cspTextDecorationLine,      cptEnum,    kA,           Words<TCSSTextDecorationLine>(u"tl")},
    {u"text-decoration"_hs,            cspTextDecoration,          cptComplex, kA},
    {u"vertical-align"_hs,             cspVerticalAlign,           cptEnum,    kL,           Words<TVAlign>(u"va")},
    {u"overflow-x"_hs,                 cspOverflowX,               cptEnum,    kL,           Words<TElementOverflow>(u"eo")},
    {u"overflow-y"_hs,                 cspOverflowY,               cptEnum,    kL,           Words<TElementOverflow>(u"eo")},
    {u"overflow"_hs,                   cspOverflow,                cptEnum,    kL},
    {u"background"_hs,                 cspBackground,              cptComplex, kA},
    {u"background-color"_hs,           cspBackgroundColor,         cptColor,   kA},
    {u"background-image"_hs,           cspBackgroundImage,         cptComplex, kA},
    {u"background-position-x"_hs,      cspBackgroundPositionX,     cptLength,  kA},
    {u"background-position-y"_hs,      cspbackgroundPositionY,     cptLength,  kA,           cpptHeight},
    {u"background-position"_hs,        cspBackgroundPosition,      cptLength,  kA},
    {u"background-repeat"_hs,          cspBackgroundRepeat,        cptEnum,    0,            Words<TBackgroundRepeat>(u"br")},
    {u"background-attachment"_hs,      cspBackgroundAttachment,    cptEnum,    kA,           Words<TBackgroundAttachment>(u"ba")},
    {u"background-origin"_hs,          cspBackgroundOrigin,        cptEnum,    0,            Words<TBackgroundOrigin>(u"bo")},
    {u"background-size"_hs,            cspBackgroundSize,          cptComplex, kA},
    {u"content"_hs,                    cspContent,                 cptString},
    {u"transform"_hs,                  cspTransform,               cptComplex},
    {u"transform-origin"_hs,           cspTransformOrigin,         cptLength},
    {u"visibility"_hs,                 cspVisibility,              cptEnum,    kA,           Words<TCSSVisibility>(u"cv")},
    {u"z-index"_hs,                    cspZIndex,                  cptNumber,  kA},
    {u"direction"_hs,                  cspDirection,               cptEnum,    kI | kL | kA, Words<TCSSDirection>(u"cd")},
    {u"word-wrap"_hs,                  cspWordWrap,                cptEnum,    kI | kL | kA, Words<TCSSWordWrap>(u"ww")},
    {u"word-break"_hs,                 cspWordBreak,               cptEnum,    kI | kL | kA, Words<TCSSWordBreak>(u"wb")},
    {u"white-space"_hs,                cspWhiteSpace,              cptEnum,    kI | kL | kA, Words<TWhiteSpace>(u"ws")},
    {u"zoom"_hs,                       cspZoom,                    cptNumber,  kL | kA},
    {u"filter"_hs,                     cspFilter,                  cptComplex},
    {u"hyphens"_hs,                    cspHyphens,                 cptEnum,    kI | kA,      Words<TCSSHyphens>(u"ch")},
    {u"tab-stops"_hs,                  cspTabStops,                cptComplex},
    {u"tab-interval"_hs,               cspTabInterval,             cptLength},
    {u"break-after"_hs,                cspBreakAfter,              cptEnum,    0,            Words<TCSSBreakAfter>(u"cba")},
    {u"writing-mode"_hs,               cspWritingMode,             cptEnum,    kI,           Words<TCSSWritingMode>(u"wm")},
    {u"animation"_hs,                  cspAnimation,               cptComplex, kA},
    {u"animation-name"_hs,             cspAnimationName,           cptString,  kA},
    {u"animation-duration"_hs,         cspAnimationDuration,       cptNumber,  kA},
    {u"animation-timing-function"_hs,  cspAnimationTimingFunction, cptEnum,    kA,           Words<TCSSTiming>(u"tm")},
    {u"clear"_hs,                      cspClear,                   cptString,  kA},
    {u"counter-reset"_hs,              cspCounterReset,            cptComplex, kA},
    {u"counter-increment"_hs,          cspCounterIncrement,        cptString,  kA},
    {u"transition-duration"_hs,        cspTransitionDuration,      cptNumber,  kA},
    {u"mask-image"_hs,                 cspMaskImage,               cptComplex},
    {u"outline-color"_hs,              cspOutlineColor,            cptColor},
    {u"outline-style"_hs,              cspOutlineStyle,            cptEnum,    0,            Words<TLineStyle>(u"ls")},
    {u"outline-width"_hs,              cspOutlineWidth,            cptLength},
    {u"outline-offset"_hs,             cspOutlineOffset,           cptLength},
    {u"outline"_hs,                    cspOutline,                 cptComplex},
    {u"font-feature-settings"_hs,      cspFontFeatureSettings,     cptComplex, kI},
    {u"font-kerning"_hs,               cspFontKerning,             cptEnum,    0,            Words<TFontKerningMode>(u"km")},
    {u"unicode-bidi"_hs,               cspUnicodeBidi,             cptEnum,    0,            Words<TCSSUnicodeBidi>(u"ub")},
    // clang-format on
};

struct TShorthand {
  std::u16string_view Name;
  std::u16string_view Longhands[4];
};

// The longhands in the order in which their values are given.
constexpr TShorthand kShorthands[] = {
    // clang-format off
    {u"font",                {u"font-style", u"font-weight", u"font-size", u"font-family"}},
    {u"margin",              {u"margin-top", u"margin-right", u"margin-bottom", u"margin-left"}},
    {u"padding",             {u"padding-top", u"padding-right", u"padding-bottom", u"padding-left"}},
    {u"border-radius",       {u"border-top-left-radius", u"border-top-right-radius",
                              u"border-bottom-right-radius", u"border-bottom-left-radius"}},
    {u"border-color",        {u"border-top-color", u"border-right-color", u"border-bottom-color", u"border-left-color"}},
    {u"border-width",        {u"border-top-width", u"border-right-width", u"border-bottom-width", u"border-left-width"}},
    {u"border-style",        {u"border-top-style", u"border-right-style", u"border-bottom-style", u"border-left-style"}},
    {u"border",              {u"border-color", u"border-style", u"border-width"}},
    {u"flex",                {u"flex-grow", u"flex-shrink", u"flex-basis"}},
    {u"list-style",          {u"list-style-type"}},
    {u"text-decoration",     {u"text-decoration-line", u"text-decoration-color", u"text-decoration-style"}},
    {u"overflow",            {u"overflow-x", u"overflow-y"}},
    {u"background-position", {u"background-position-x", u"background-position-y"}},
    {u"outline",             {u"outline-style", u"outline-color", u"outline-width"}},
    // clang-format on
};

TCSSValueProc ApplyProcOf(TCSSProperty prop) {
  switch (prop) {
    case cspBackground: return &TBaseElementStyle::DoApplyBackground;
    case cspDisplay: return &TBaseElementStyle::DoApplyDisplay;
    case cspFontWeight: return &TBaseElementStyle::DoApplyFontWeight;
    case cspWhiteSpace: return &TBaseElementStyle::DoApplyWhiteSpace;
    default: return &TBaseElementStyle::ApplyValueCaller;
  }
}

constexpr int32_t kBuckets = 511;

class TPropTable {
 public:
  TPropTable() : Dictionary(kBuckets, true, HtNameOffset(&TCSSPropRec::Name), HtWordHash) {
    for (const TRow& row : kRows) Add(row);
    for (const TShorthand& row : kShorthands)
      for (std::u16string_view longhand : row.Longhands)
        if (!longhand.empty()) Find(row.Name)->SubProps.push_back(Find(longhand));
    for (TCSSPropRec*& rec : ByProp)
      if (!rec) rec = ByProp[cspUnknown];
  }

  THtObjectDictionary Dictionary;
  std::array<TCSSPropRec*, HtEnumCount(TCSSProperty{})> ByProp{};

 private:
  TCSSPropRec* Find(std::u16string_view name) { return Dictionary.Get<TCSSPropRec>(name); }

  void Add(const TRow& row) {
    auto* rec = new TCSSPropRec;
    rec->Name = row.Name;
    rec->Prop = row.Prop;
    rec->PropType = row.Type;
    rec->ParentType = row.ParentType;
    rec->Inherited = (row.Flags & kI) != 0;
    rec->Layout = (row.Flags & kL) != 0;
    if (row.Flags & kA) rec->ApplyProc = ApplyProcOf(row.Prop);
    if (row.Prop == cspOpacity || row.Prop == cspZoom) rec->Default = std::bit_cast<uint32_t>(1.0f);
    if (row.Keywords.Info) rec->EnumInfo = &row.Keywords.Info();
    rec->EnumPrefix = row.Keywords.Prefix;
    ByProp[row.Prop] = rec;
    Dictionary.AddObject(rec);
  }
};

const TPropTable& Table() {
  static const TPropTable kTable;
  return kTable;
}

}  // namespace

const THtObjectDictionary& CSSPropDictionary() { return Table().Dictionary; }

const TCSSPropRec* FindCSSProp(std::u16string_view name) {
  // Custom properties and those of vendors need no look.
  return name.starts_with(u'-') ? nullptr : Table().Dictionary.Get<TCSSPropRec>(name);
}

const TCSSPropRec& CSSPropByName(std::u16string_view name) {
  const TCSSPropRec* prop = FindCSSProp(name);
  return prop ? *prop : CSSPropOf(cspUnknown);
}

const TCSSPropRec& CSSPropOf(TCSSProperty prop) { return *Table().ByProp[prop]; }

int32_t TCSSPropRec::FindKeyword(std::u16string_view word) const {
  int32_t ordinal;
  return EnumInfo && IsEnum2(EnumPrefix, word, *EnumInfo, ordinal) ? ordinal : -1;
}

}  // namespace ht
