#pragma once

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
/// It is used once, from start to end. A function token is always followed by a ctOpenPar token. Signs belong to a
/// number only as "-".
class TCSSTokenizer {
 public:
  TStringParser Parser;
  bool ParseNumbers;
  /// The last token read.
  TCSSToken Token;
  /// Set once a token is requested at the end of the text.
  bool Eof = false;

  /// Leading blanks are skipped. Without `parseNumbers` numbers get no value.
  TCSSTokenizer(const hstring& text, bool parseNumbers);

  /// Reads a token. False at the end of the text, and for spaces that reach it.
  bool NextToken();
  /// As NextToken, called again while it gives a space or a comment; those get no texts.
  bool NextSolidToken();

  // The steps of NextToken, each from the first character of its kind. They set the type, the name and the values.

  /// Makes the character under the cursor, below 256, a token of its own.
  void Next(TCSSTokenType type);
  void ReadIdent();
  void ReadString();
  /// A quoted address inside `url(`; it has no escapes.
  void ReadURI();
  void ReadNumber();
  void ReadComment();
  void ReadAt();
  void ReadHash();
  /// The code point of an escape, from behind its backslash.
  uint32_t Escape();

 private:
  int32_t CursorPos() const { return static_cast<int32_t>(Parser.p - FStart) + 1; }
  void SetName(const char16_t* start) {
    Token.Name = FTexts.Of(start, static_cast<size_t>(Parser.p - start));
  }
  bool StartToken();
  bool ReadToken();
  bool SkipSpaceAndComments();
  void SkipComment();
  bool ReadSpace();
  template <class TInside>
  void ReadRun(TInside inside);
  bool ReadEscape(std::u16string& text);
  void ReadFunction();
  void ReadAddress();
  bool ReadPercent();
  void ReadUnit();

  const char16_t* FStart;  // of the text
  TCSSTokenTexts FTexts;
};

}  // namespace ht
