#pragma once

#include "htmlcss/csstoken.h"

namespace ht {

/// A cursor over the tokens of a declaration: the input of every value decoder. It lives on the stack, and keeps the
/// tokens alive only after InitStore.
class TCSSTokenSequence {
 public:
  int32_t Index = 0;
  int32_t Count = 0;
  /// The current token; null past the end.
  TCSSToken* T = nullptr;
  bool Eof = true;

  TCSSTokenSequence() = default;
  explicit TCSSTokenSequence(const TCSSTokens* tokens) { Init(tokens); }
  TCSSTokenSequence(const TCSSTokenSequence&) = delete;
  TCSSTokenSequence& operator=(const TCSSTokenSequence&) = delete;

  /// Walks tokens that somebody else owns.
  void Init(const TCSSTokens* tokens);
  /// Walks tokens of which it takes a share.
  void InitStore(const TCSSTokens& tokens);
  /// Moves on by n; the index goes on counting behind the end. Returns whether there is a token.
  bool Next(int32_t n = 1);
  /// The index of the current token; past the end that of the last one.
  int32_t Position() const;
  /// Whether the current token is a colour. Its value goes to `color`, except that of a word that names none, and of
  /// a `var` function, which is resolved later. A function is walked to its closing parenthesis.
  bool ReadColor(uint32_t& color);
  /// From a function to the parenthesis that closes it, or past the end.
  void SkipFunction();
  /// The array being walked.
  const TCSSTokens* Tokens() const { return FPTokens; }

 private:
  const TCSSTokens* FPTokens = nullptr;
  TCSSTokens FOwnTokens;

  void ReadFunctionColor(uint32_t& color);
};

}  // namespace ht
