#pragma once

#include "htmlcss/cssproperty.h"
#include "htmlcss/measure.h"
#include "htruntime/poolvector.h"

namespace ht {

class TCSSSection;

/// One declaration. `Name`, `Prop` and what stands below are worked out from the name token and the tokens once, by
/// TCSSParser::PrepareValue. Copies share the tokens.
struct TCSSValue : TMeasure2 {  // Value1 and Value2: the decoded lengths of a cptLength property
  static constexpr bool kRelocatable = true;

  hstring Name;  // in lower case
  /// The row of the property table; that of "unknown" for a name without one. Null until prepared.
  const TCSSPropRec* Prop = nullptr;
  TCSSToken NameToken;  // the name as written
  TCSSTokens Tokens;    // the value, without spaces and comments
  TCSSSection* Section = nullptr;
  bool Important = false;
  bool Vendor = false;   // the name starts with "-"
  bool Inherit = false;  // the first token is `inherit`

  TCSSValue() = default;
  TCSSValue(TCSSToken nameToken, TCSSTokens tokens, TCSSSection* section)
      : NameToken(std::move(nameToken)), Tokens(std::move(tokens)), Section(section) {}

  /// What the value does to a style when it is applied; null if it is only looked up later.
  TCSSValueProc ApplyProc() const { return Prop ? Prop->ApplyProc : nullptr; }
  /// The CRC-32 of the names of all tokens, combined by XOR.
  uint32_t Hash() const;
};

using PCSSValue = TCSSValue*;
/// Pointers into it are valid until the section is compiled again or changed.
using TCSSValues = THtPoolVector<TCSSValue>;

/// The declaration as text: name, ":", the tokens and ";".
hstring CSSValuetoString(const TCSSValue& value);

}  // namespace ht
