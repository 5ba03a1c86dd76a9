#pragma once

#include <string>

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

 private:
  friend class TCSSParser;
  friend class THtSelectorReader;

  // The parser scans: most tokens of a sheet are only looked at, and get no Name.

  /// As NextToken, with the text in Text() until the next step, and without Name.
  bool Scan();
  /// As Scan, called again while it gives a space or a comment.
  bool ScanSolid() {
    const char16_t c = *Parser.p;
    return ((c > u' ' && c != u'/') || SkipSpaceAndComments()) && Scan();
  }
  const TCSSTokenHead& Head() const { return Token; }
  std::u16string_view Text() const { return FText; }
  bool IsChar(char16_t c) const { return FText.size() == 1 && FText[0] == c; }
  /// Passes over the character when it stands under the cursor. The current token stays.
  bool StepOver(char16_t c) {
    if (*Parser.p != c) return false;
    ++Parser.p;
    return true;
  }
  hstring NewName() { return FTexts.Of(FText); }

  // The steps of Scan, each from the first character of its kind. They set the type, the text and the values.

  void Next(TCSSTokenType type);
  void ReadIdent();
  void ReadString();
  void ReadURI();
  void ReadNumber();
  void ReadComment();
  void ReadAt();
  void ReadHash();
  bool ReadSpace();
  void ReadFunction();
  void ReadAddress();
  bool ReadPercent();
  void ReadUnit();
  template <class TPlain>
  void ReadEscapedRun(const char16_t* start, TPlain plain);
  bool ReadEscape();
  /// The code point of an escape, from behind its backslash.
  uint32_t Escape();
  bool SkipSpaceAndComments();
  void SkipComment();
  void SetText(const char16_t* start) { FText = {start, static_cast<size_t>(Parser.p - start)}; }
  int32_t PosOf(const char16_t* p) const { return static_cast<int32_t>(p - FStart) + 1; }

  std::u16string_view FText;
  std::u16string FBuilt;  // a text that does not stand in the source as it is
  const char16_t* FStart;
  TCSSTokenTexts FTexts;
};

}  // namespace ht
