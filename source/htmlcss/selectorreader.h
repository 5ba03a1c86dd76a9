#pragma once

#include <memory>
#include <span>
#include <string>

#include "htmlcss/cssselector.h"
#include "htmlcss/csstoken.h"

namespace ht {

/// Builds the chain of compound selectors from the tokens of one selector, from left to right.
class THtSelectorReader {
 public:
  /// The tokens stay alive; their names may be moved out.
  explicit THtSelectorReader(std::span<TCSSToken> tokens) : FTokens(tokens) {}

  /// The right-most compound, which owns the others. Never null for tokens that are there.
  std::unique_ptr<TCSSSelector> Read();

 private:
  // `:not()` inside `:not()` is read to this depth; what stands deeper is stepped over. No page goes beyond two.
  static constexpr int kDeepestNegation = 16;

  bool AtEnd() const { return FIndex >= FTokens.size(); }
  TCSSToken& Token(size_t ahead = 0) const { return FTokens[FIndex + ahead]; }
  bool Is(TCSSTokenType type, size_t ahead = 0) const {
    return FIndex + ahead < FTokens.size() && Token(ahead).CType == type;
  }
  bool IsText(std::u16string_view text, size_t ahead = 0) const {
    return FIndex + ahead < FTokens.size() && Token(ahead).Name == text;
  }

  void SkipSpaces();
  void SkipBehind(TCSSTokenType type);
  void ReadCombinator(TCSSSelector& compound);
  void ReadTag(TCSSSelector& compound);
  void ReadRest(TCSSSelector& compound, int depth);
  bool ReadPart(TCSSSelector& compound, std::u16string& condition, int depth);
  void ReadPseudo(TCSSSelector& compound, int depth);
  void ReadNegation(TCSSSelector& compound, int depth);
  void ReadCondition(std::u16string& condition, TCSSTokenType end);

  std::span<TCSSToken> FTokens;
  size_t FIndex = 0;
};

}  // namespace ht
