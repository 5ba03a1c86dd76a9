#pragma once

#include <memory>

#include "htmlcss/csstoken.h"
#include "htmlcss/csstokentexts.h"
#include "htmlpars/stringparser.h"

namespace ht {

/// Splits CSS text into tokens. It never fails: each malformed input becomes some token, and what is not closed ends
/// at the end of the text. A zero unit ends the text.
///
///   TCSSTokenizer tokenizer(u"a { width: 50% }", true);
///   while (tokenizer.NextToken()) use(tokenizer.Token);
///
/// It is used once, from start to end. A function token is always followed by a ctOpenPar token.
class TCSSTokenizer {
 public:
  TStringParser Parser;
  bool ParseNumbers;
  /// The last token read.
  TCSSToken Token;
  /// Set once a token is requested at the end of the text.
  bool Eof = false;

  /// Leading blanks are skipped. Without `parseNumbers` numbers get no value.
  TCSSTokenizer(hstring text, bool parseNumbers);

  /// Reads a token. False at the end of the text, and for spaces that reach it.
  bool NextToken();
  /// As NextToken, called again while it is a space or a comment; no texts are made for those.
  bool NextSolidToken();
  /// Makes the character under the cursor a token of its own.
  void Next(TCSSTokenType type);

  void ReadIdent();
  void ReadString();
  /// Reads the quoted address inside `url(`.
  void ReadURI();
  void ReadNumber();
  void ReadComment();
  void ReadAt();
  void ReadHash();
  /// The code point of an escape, the cursor behind its backslash.
  uint32_t Escape();

 private:
  hstring NewName(const char16_t* start, const char16_t* end);
  int32_t PosOf(const char16_t* at) const { return static_cast<int32_t>(at - FStart) + 1; }
  void ReadSpace();
  void ReadEscapedIdent(const char16_t* start);
  bool AddEscape(std::u16string& text);
  void ReadFunction();
  void ReadUnit(const char16_t* start);

  const char16_t* FStart;  // of the text
  TCSSTokenTexts FTexts;
};

}  // namespace ht
