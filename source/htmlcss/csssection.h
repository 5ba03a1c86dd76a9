#pragma once

#include <memory>

#include "htmlcss/cssselector.h"
#include "htmlcss/cssvalue.h"
#include "htmlcss/mediaset.h"

namespace ht {

/// Keeps the tokens of a `calc()` alive, to which measures point, for as long as the section lives.
class TCSSCalcValueObject : public TObject {
  HT_CLASS(TCSSCalcValueObject, TObject)

 public:
  HT_POOLED

  explicit TCSSCalcValueObject(TCSSTokens tokens) : Tokens(std::move(tokens)) {}

  const TCSSTokens Tokens;
};

/// One rule: its selectors, its declarations as written (Values), and the same with every shorthand taken apart
/// (CompiledValues), which is what the cascade reads.
///
///   section.AddValue(value);
///   section.Compile();                    // whenever Values changed
///   section.AsString();                   // "p, li\r\n{  color: red;\r\n}"
///
/// It owns its selectors when it was made so. Elements' styles point into CompiledValues, which Compile replaces.
class TCSSSection : public TObject {
  HT_CLASS(TCSSSection, TObject)

 public:
  HT_POOLED

  explicit TCSSSection(bool ownsSelectors = true) : Selectors(ownsSelectors) {}

  std::unique_ptr<THtObjectList> FCalcValues;  // of TCSSCalcValueObject; made on need
  TCSSSelectors Selectors;
  TCSSValues Values;
  TCSSValues CompiledValues;
  /// The span of the rule in the source, from 1.
  int32_t BlockStartPos = 0;
  int32_t BlockEndPos = 0;
  /// The rule comes from a sheet given as user style.
  bool Custom = false;
  bool FontFace = false;
  /// Not owned.
  TCSSMediaSet* MediaSet = nullptr;
  /// The sheet's address, for resolving `url()`.
  hstring URL;

  /// Takes the selector, and ownership when the section owns its selectors.
  void AddSelector(TCSSSelector* selector);
  /// Appends a copy of a prepared value. CompiledValues stay as they are.
  void AddValue(const TCSSValue& value);
  /// Removes one of Values and compiles.
  void DeleteValue(int32_t index);
  /// Makes CompiledValues from Values. A part of a shorthand that means nothing is dropped.
  void Compile();

  /// The tokens of the first value of that name, whatever its case; empty if there is none.
  TCSSTokens ValuebyName(std::u16string_view name) const;
  TCSSTokens CompiledValuebyName(std::u16string_view name) const;
  /// The first of Values of that name; null if there is none.
  PCSSValue ItembyName(std::u16string_view name);

  /// The rule as text; the first declaration stands on the line of the brace.
  hstring AsString() const;
  /// The declarations alone, as for a style attribute.
  hstring AsInlineString() const;
  /// Joins four equal sides of `border` and of `padding` into the shorthand.
  void Minify();

  /// Keeps a share of the tokens until the section dies, at the address that is given back.
  const TCSSTokens* KeepCalc(const TCSSTokens& tokens);

 private:
  bool JoinSides(const hstring& shorthand);
};

}  // namespace ht
