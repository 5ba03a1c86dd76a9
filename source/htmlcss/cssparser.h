#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "htmlcss/csssection.h"
#include "htmlcss/csstokenizer.h"
#include "htruntime/exception.h"

namespace ht {

/// A kind of token that has no place in the parser's tables: "Unknown token type".
class ECSSParserError : public EHtException {
  using EHtException::EHtException;
};

/// An `@import`: the address, and the words of the media behind it.
struct TCSSImport {
  TCSSToken Address;
  TCSSTokens Media;
};
using TCSSImports = std::vector<TCSSImport>;

/// Reads a sheet rule by rule. It never rejects one: what makes no sense is skipped up to the next ";" or "}".
///
///   TCSSParser parser(text);
///   while (parser.NextSection()) sections.Add(parser.Section.release());
///
/// The rules inside `@media` and `@keyframes` come in the same row as the others; a section knows its MediaSet, and
/// KeyFrameName is set while the rules are steps. Each declaration is prepared as it is read. Parsers of one thread
/// are destroyed in the reverse order of their creation: what a large sheet needs lies in an arena of its parser.
class TCSSParser {
 private:
  std::optional<THtArena> FArena;  // outlives the members below

 public:
  std::unique_ptr<TCSSTokenizer> Tokenizer;  // null for an empty text
  THtPoolVector<TCSSToken> Tokens;           // of the value under construction
  TCSSMediaSet* MediaSet = nullptr;          // of the `@media` block being read, else null; not owned
  bool ParseNumbers;
  /// The section being built. Whoever wants it takes it; else the next one frees it.
  std::unique_ptr<TCSSSection> Section;
  TCSSImports Imports;   // in the order met
  hstring Charset;       // the last `@charset`
  hstring KeyFrameName;  // of the `@keyframes` block being read, else empty
  /// Owns every media set met, of which sections hold pointers: extract them for who keeps the sections. Made on need.
  std::unique_ptr<THtObjectList> MediaSets;

  explicit TCSSParser(const hstring& text, bool parseNumbers = true);

  /// Reads up to the end of the next rule; Section holds it, perhaps without selectors or without values. False at
  /// the end of the text.
  bool NextSection();
  /// Reads declarations into Section, up to a "}". The entry for the text of a style attribute, too: the section is
  /// made by the caller. Of equal names only the last value is kept, except in `@font-face`.
  void ReadSectionValues();
  /// Appends all remaining tokens, spaces and comments included: for a text that is a bare value.
  void ParseValue(TCSSTokens& tokens);

  /// Works out all that can be known of a declaration before it meets an element. False if it means nothing.
  static bool PrepareValue(TCSSValue& value, TCSSSection& section);
  /// The same for a name whose row is known.
  static bool PrepareValue(TCSSValue& value, TCSSSection& section, const TCSSPropRec& prop);

  // The steps of reading, each with its first token current.

  void AddSelector();
  void AddValue();
  void AddAtKeyword();
  void AddImport();
  /// Up to the next "}" and one token more.
  void SkipSection();
  /// Up to the next "}" or ";", which stays current.
  void SkipValue();
  /// Appends the current token to Tokens.
  void AddToken() { Tokens.emplace_back(Tokenizer->Head(), Tokenizer->NewName()); }
  void ClearList() { Tokens.clear(); }

 private:
  // The current token; it has no Name until it is taken.
  const TCSSToken& Token() const { return Tokenizer->Token; }
  bool Is(TCSSTokenType type) const { return Token().CType == type; }
  std::u16string_view Text() const { return Tokenizer->Text(); }
  bool IsChar(char16_t c) const { return Tokenizer->IsChar(c); }
  TCSSToken TakeToken() { return {Tokenizer->Head(), Tokenizer->NewName()}; }
  bool NextToken() { return Tokenizer->Scan(); }
  bool NextSolidToken() { return Tokenizer->ScanSolid(); }
  bool Eof() const { return Tokenizer->Eof; }

  void ReadSelectors();
  void CloseBlock();
  bool CollectValue(bool& important);
  void ReadName(hstring& name, TCSSTokenType end);
  void AddMedia();
  void StoreValues();
  [[noreturn]] static void RaiseUnknown();

  TCSSValues FSpareValues;  // an empty array with room, in which declarations are collected
};

}  // namespace ht
