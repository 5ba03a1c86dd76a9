#pragma once

#include <memory>
#include <string>

#include "htmlcss/cssselector.h"
#include "htmlcss/csstokenizer.h"

namespace ht {

/// Builds the chain of compound selectors of one selector, from left to right, as its tokens are scanned.
class THtSelectorReader {
 public:
  explicit THtSelectorReader(TCSSTokenizer& tokenizer) : FTokenizer(tokenizer) {}

  /// Reads from the current token up to "{" or "," or the end of the text. The right-most compound, which owns the
  /// others; null after a token that can stand in no selector, which stays current.
  std::unique_ptr<TCSSSelector> Read();

 private:
  // `:not()` inside `:not()` is read to this depth; what stands deeper is stepped over. No page goes beyond two.
  static constexpr int kDeepestNegation = 16;

  bool AtEnd() const { return FAtEnd; }
  const TCSSTokenHead& Token() const { return FTokenizer.Head(); }
  bool Is(TCSSTokenType type) const { return !FAtEnd && Token().CType == type; }
  bool IsChar(char16_t c) const { return !FAtEnd && FTokenizer.IsChar(c); }

  void Next();
  void SkipSpaces();
  void SkipBehind(TCSSTokenType type);
  void ReadCombinator(TCSSSelector& compound);
  void ReadTag(TCSSSelector& compound);
  void ReadRest(TCSSSelector& compound);
  bool ReadPart(TCSSSelector& compound, std::u16string& condition, int depth);
  void ReadPseudo(TCSSSelector& compound, int depth);
  void ReadArgument(TCSSSelector& compound, const hstring& name, int depth);
  void ReadNegation(TCSSSelector& compound, int depth);
  void ReadCondition(std::u16string& condition, TCSSTokenType end);

  TCSSTokenizer& FTokenizer;
  int32_t FEndPos = 0;  // of the last token that is no space
  bool FAtEnd = false;
  bool FBroken = false;
};

}  // namespace ht
