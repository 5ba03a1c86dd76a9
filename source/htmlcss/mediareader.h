#pragma once

#include <string>

#include "htmlcss/csstokenizer.h"
#include "htmlcss/mediaset.h"

namespace ht {

/// Reads the query behind `@media` into a set. Media are collected from everywhere in it, and `not` has no effect; of
/// the features the four widths count, in whatever unit. A query of words that name no medium is `cmUnknown`.
class THtMediaReader {
 public:
  THtMediaReader(TCSSTokenizer& tokenizer, TCSSMediaSet& set) : FTokenizer(tokenizer), FSet(set) {}

  /// Leaves the "{" or ";" current.
  void Read();

 private:
  bool Next() { return FSet.AddNextToken(FTokenizer); }
  bool AtEnd() const { return FAtEnd || Is(ctBlockStart) || Is(ctSemicolon); }
  bool Is(TCSSTokenType type) const { return FTokenizer.Token.CType == type; }
  void Step() { FAtEnd = FAtEnd || !Next(); }
  void StepOverSpaces();
  void ReadFeature();
  void StoreFeature();
  void AddMedium(std::u16string_view word);

  TCSSTokenizer& FTokenizer;
  TCSSMediaSet& FSet;
  hstring FFeature;  // the last one read, and its value
  int64_t FValue = 0;
  bool FAtEnd = false;
};

}  // namespace ht
