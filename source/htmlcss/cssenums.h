#pragma once

#include "htruntime/enums.h"

namespace ht {

// The keyword enumerations of CSS. A keyword is found by joining the prefix of its enumeration to the keyword with the
// hyphens taken out: `inline-block` is dsInlineBlock. The ordinals are what a prepared declaration holds.

HT_ENUM(TDisplayStyle, uint8_t, dsInline, dsBlock, dsInlineBlock, dsNone, dsTable, dsTableRow,
        dsTableRowGroup, dsTableCell, dsListItem, dsFlex, dsInlineFlex, dsInlineTable);
HT_ENUM(TFloat, uint8_t, fNone, fLeft, fRight, fFootNote);
HT_ENUM(TCSSPointerEvents, uint8_t, peAuto, peNone);
HT_ENUM(TElementPosition, uint8_t, epStatic, epRelative, epAbsolute, epFixed, epRunning, epSticky);
HT_ENUM(TCSSAppearance, uint8_t, caNone, caButton, caCheckbox, caRadio);
HT_ENUM(TCSSFontStyle, uint8_t, cfsNormal, cfsItalic, cfsOblique);
HT_ENUM(TCSSFontWeight, uint8_t, fwNormal, fwBold, fwLighter, fwBolder, fw100, fw200, fw300, fw400, fw500,
        fw600, fw700, fw800, fw900);
HT_ENUM(TCSSTableLayout, uint8_t, tlAuto, tlFixed);
HT_ENUM(TCSSTextOverflow, uint8_t, toClip, toEllipsis);
HT_ENUM(TCSSDraggable, uint8_t, dgFalse, dgTrue, dgAuto);
HT_ENUM(TElementResize, uint8_t, erNone, erBoth, erHorizontal, erVertical);
HT_ENUM(TCSSPageBreak, uint8_t, pbAuto, pbAlways, pbAvoid, pbLeft, pbRight);
HT_ENUM(TLineStyle, uint8_t, lsNone, lsHidden, lsSolid, lsDotted, lsDashed, lsDouble, lsGroove, lsRidge,
        lsInset, lsOutset);
HT_ENUM(TCSSFlexDirection, uint8_t, fdRow, fdRowReverse, fdColumn, fdColumnReverse);
HT_ENUM(TCSSJustifyContent, uint8_t, jcFlexStart, jcFlexEnd, jcCenter, jcSpaceBetween, jcSpaceAround);
HT_ENUM(TCSSAlignItems, uint8_t, aiNormal, aiFlexStart, aiFlexEnd, aiCenter, aiStretch, aiBaseLine,
        aiInherit);
HT_ENUM(TCSSFlexWrap, uint8_t, fwNowrap, fwWrap, fwReverse);
HT_ENUM(TCSSTextTransform, uint8_t, cttNone, cttLowerCase, cttUpperCase, cttCapitalize);
HT_ENUM(TCSSCursor, uint8_t, ecAuto, ecCrossHair, ecDefault, ecPointer, ecText, ecHelp, ecWResize, ecEResize,
        ecNResize, ecSResize);
HT_ENUM(TBorderCollapse, uint8_t, bcSeparate, bcCollapse);
HT_ENUM(THAlign, uint8_t, thInherit, thStart, thEnd, thLeft, thRight, thCenter, thJustify, thXCenter);
HT_ENUM(TListStyleType, uint8_t, lstCircle, lstNone, lstDisc, lstSquare, lstDecimal, lstLowerAlpha,
        lstUpperAlpha, lstLowerLatin, lstUpperLatin, lstLowerRoman, lstUpperRoman);
HT_ENUM(TCSSListStylePosition, uint8_t, lspOutside, lspInside);
HT_ENUM(TBoxSizing, uint8_t, bsContentbox, bsBorderbox, bsPaddingbox);
HT_ENUM(TCSSTextDecorationStyle, uint8_t, tsSolid, tsDouble, tsDotted, tsDashed, tsWavy);
HT_ENUM(TCSSTextDecorationLine, uint8_t, tlNone, tlUnderline, tlOverLine, tlLineThrough);
HT_ENUM(TVAlign, uint8_t, vaBaseLine, vaTop, vaBottom, vaMiddle, vaSub, vaSuper, vaTextTop, vaTextBottom);
HT_ENUM(TElementOverflow, uint8_t, eoVisible, eoHidden, eoScroll, eoAuto);
HT_ENUM(TBackgroundRepeat, uint8_t, brRepeat, brRepeatX, brRepeatY, brNoRepeat);
HT_ENUM(TBackgroundAttachment, uint8_t, baScroll, baFixed);
HT_ENUM(TBackgroundOrigin, uint8_t, boPaddingBox, boBorderBox, boContentBox);
HT_ENUM(TCSSVisibility, uint8_t, cvVisible, cvHidden);
HT_ENUM(TCSSDirection, uint8_t, cdLTR, cdRTL);
HT_ENUM(TCSSWordWrap, uint8_t, wwNormal, wwBreakWord);
HT_ENUM(TCSSWordBreak, uint8_t, wbNormal, wbBreakWord, wbBreakAll, wbKeepAll, wbHyphens);
HT_ENUM(TWhiteSpace, uint8_t, wsNormal, wsNowrap, wsPre, wsPreLine, wsPreWrap);
HT_ENUM(TCSSHyphens, uint8_t, chNone, chManual, chAuto);
HT_ENUM(TCSSBreakAfter, uint8_t, cbaAuto, cbaAvoid, cbaAlways, cbaAll, cbaAvoidPage, cbaPage, cbaLeft,
        cbaRight, cbaRecto, cbaVerso, cbaAvoidColumn, cbaColumn, cbaAvoidRegion, cbaRegion);
HT_ENUM(TCSSWritingMode, uint8_t, wmHorizontalTB, wmVerticalRL, wmVerticalLR, wmSidewaysRL, wmSidewaysLR);
HT_ENUM(TCSSTiming, uint8_t, tmEase, tmEaseIn, tmEaseOut, tmEaseInOut, tmLinear);
HT_ENUM(TFontKerningMode, uint8_t, kmAuto, kmNormal, kmNone);
HT_ENUM(TCSSUnicodeBidi, uint8_t, ubNormal, ubEmbed, ubIsolate, ubBidiOverride, ubIsolateOverride,
        ubPlainText);

HT_ENUM(TElementClear, uint8_t, ecLeft, ecRight);

HT_ENUM(TCSSMedia, uint8_t, cmAll, cmAural, cmBraille, cmHandheld, cmPrint, cmProjection, cmScreen, cmTV,
        cmUnknown);
using TCSSMedias = TSet<TCSSMedia>;

HT_ENUM(TCSSPseudoClass, uint8_t, pcNone, pcLink, pcHover, pcActive, pcVisited, pcFocus, pcBefore, pcAfter,
        pcFirstLetter, pcFirstChild, pcLastChild, pcOnlyChild, pcNthChild, pcNthOfType, pcFirstOfType,
        pcLastOfType, pcChecked, pcEmpty, pcTarget, pcValid, pcInvalid, pcSelection, pcOnlyOfType, pcMarker,
        pcFocusWithin, pcUnknown);
using TCSSPseudo = TSet<TCSSPseudoClass>;

/// The pseudo-classes that stand for generated content; selectors with one of them are filed apart.
constexpr TCSSPseudo kPseudoElements{pcBefore, pcAfter, pcMarker};

}  // namespace ht
