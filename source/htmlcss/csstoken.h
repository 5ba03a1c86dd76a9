#pragma once

#include <bit>

#include "htmlcss/measureunit.h"
#include "htruntime/hstring.h"
#include "htruntime/sharedarray.h"

namespace ht {

HT_ENUM(TCSSTokenType, uint8_t, ctUnknown, ctIdent, ctAtKeyword, ctString, ctBlockStart, ctBlockEnd, ctHash,
        ctNumber, ctPercentage, ctDimension, ctURI, ctCDO, ctCDC, ctComment, ctFunction, ctColon, ctSemicolon,
        ctComma, ctOpenPar, ctClosePar, ctDelimiter, ctOpenBr, ctCloseBr, ctSlash, ctSpace);

/// A number of this magnitude and above counts as 0, wherever CSS text is read.
constexpr double kLargestNumber = 1e38;

/// What a token says beside its text.
struct TCSSTokenHead {
  /// Of the first and the last character, from 1.
  int32_t StartPos = 0;
  int32_t EndPos = 0;
  TCSSTokenType CType = ctUnknown;
  /// Of ctPercentage (muPercent) and ctDimension; muNone for a unit that is not known.
  TMeasureUnit MUnit = muNone;
  /// 1: Color came from a system colour name and is looked up afresh at each read.
  uint8_t Flags = 0;

  /// The value of a number, percentage or dimension. It shares its 32 bits with Color.
  float AsFloat() const { return std::bit_cast<float>(FBits); }
  void SetFloat(float value) { FBits = std::bit_cast<uint32_t>(value); }
  /// The resolved colour or, in a prepared declaration, the ordinal of the keyword, a bit mask, or a marker.
  uint32_t Color() const { return FBits; }
  void SetColor(uint32_t value) { FBits = value; }

 private:
  uint32_t FBits = 0;
};

/// One token of CSS text. A stored declaration is an array of them, and what is worked out about a token once (its
/// colour, the ordinal of its keyword) is kept in it, for all that share the array.
struct TCSSToken : TCSSTokenHead {
  static constexpr bool kRelocatable = true;

  /// The text after unescaping: with the "@" of an at-keyword, without the "#" of a hash, without quotes and `url(`,
  /// with the unit of a number, the lower-cased name of a function without its parenthesis.
  hstring Name;

  TCSSToken() = default;
  TCSSToken(const TCSSTokenHead& head, hstring name) : TCSSTokenHead(head), Name(std::move(name)) {}
};
static_assert(sizeof(TCSSToken) == 24, "tokens are what a sheet consists of");

using TCSSTokens = TSharedArray<TCSSToken>;
using PCSSTokens = TCSSTokens*;

}  // namespace ht
