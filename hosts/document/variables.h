#pragma once

#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "htmlcss/stylesheet.h"

namespace ht {

class TDocumentNode;

/// Custom properties: `--name: value`, and `var(--name, fallback)` in the place of any part of a value.
///
/// The library compiles a declaration when its sheet is read: it takes shorthands apart and decodes lengths. With var()
/// that can only be done where the element is known. So HtPrepareVariables leaves such declarations as they are written,
/// and Substitute compiles them for an element: once for each different outcome, not for each element.
///
/// A name is looked for at the element and then further up; what its value refers to in turn, from where it was found.
/// Where that does not end in values, because there is no such name, or names define each other, the declaration makes
/// its property unset.
class TVariables {
 public:
  /// In a list of the declarations that apply to an element, puts what they come to in the place of those with var().
  /// Definitions go to the element's style. The properties that become unset are added to `unset`.
  void Substitute(TDocumentNode& element, TCSSWeightList& list, TCSSproperties& unset);
  /// The tokens with all references replaced; false if one of them ends in nothing.
  static bool Resolve(const TDocumentNode& element, const TCSSTokens& tokens, TCSSTokens& result);

  /// Sets apart what was compiled so far, before all elements get new styles; frees it after that.
  void Retire() { FRetired.push_back(std::exchange(FCompiled, {})); }
  void DropRetired() { FRetired.clear(); }

 private:
  struct TOutcome {
    hstring Name;
    TCSSTokens Tokens;
    bool Important;
    std::unique_ptr<TCSSSection> Section;
  };
  using TCompiled = std::unordered_map<const TCSSValue*, std::vector<TOutcome>>;

  TCSSValues& Compiled(const TCSSValue& value, const TCSSTokens& tokens);

  TCompiled FCompiled;
  std::vector<TCompiled> FRetired;
  TCSSWeightList FList;            // the list under construction
  std::vector<PCSSValue> FFailed;  // its values that make their property unset
};

/// Makes the rules of a sheet give out the custom properties that they define, and their declarations with var() as they
/// are written. For a sheet that was just read. Whether it has any.
bool HtPrepareVariables(TCSSStyleSheet& sheet);

}  // namespace ht
