#pragma once

#include <string>

#include "htdictionary/objectdictionary.h"
#include "htmlpars/namecache.h"
#include "htmlpars/stringparser.h"
#include "htmlpars/tags.h"
#include "htmlpars/tokentype.h"

namespace ht {

/// One interned name. The shared text is what nodes and attributes hold.
class THtStringRec : public TObject {
  HT_CLASS(THtStringRec, TObject)

 public:
  explicit THtStringRec(hstring value) : Value(std::move(value)) {}

  hstring Value;
};

/// One interned tag, with what a node derives from it.
class THtTagRec : public THtStringRec {
  HT_CLASS(THtTagRec, THtStringRec)

 public:
  explicit THtTagRec(hstring value);

  uint32_t Hash;  // RSHash of the lower-cased name
  THtTagId Id;
  bool IsLower;
};

/// One token of markup text. Positions count UTF-16 units from 0 in the current text; EndPos is behind the end.
struct THTMLToken {
  THTMLTokenType CType = htUnknown;
  hstring Name;
  int32_t StartPos = 0;
  int32_t EndPos = 0;
};

/// Splits markup into tokens: names, text, comments, CDATA, directives, declarations and the raw text of script
/// and style, with character references decoded. It never fails on HTML; in XML mode it raises
/// EHtmlParserException. Normally used through THtmlParser.
class THTMLTokenizer {
 public:
  /// `tagList` interns the tag names: THtTagRec by Value. It outlives the tokenizer.
  THTMLTokenizer(hstring text, bool caseSensitive, bool xmlMode, THtObjectDictionary* tagList);

  /// Reads the next token. False at the end of the input, and after a run of blanks that reaches it.
  /// `valueExpected` says that an attribute value may begin here; else quotes inside a tag are skipped.
  bool NextToken(bool valueExpected);
  /// Sets the type and steps one character.
  void Next2(THTMLTokenType tokenType) {
    FToken.CType = tokenType;
    FParser.Next();
  }
  /// The last token read.
  const THTMLToken& Token() const { return FToken; }

 private:
  friend class THtmlParser;

  // The parser reads through Scan and the view, so that a text is made only of what is kept. The view is valid
  // until the next Scan.
  bool Scan(bool valueExpected);
  std::u16string_view Name() const { return FName; }
  void SetName(const char16_t* start, const char16_t* end) {
    FName = {start, static_cast<size_t>(end - start)};
  }
  const THtTagRec* Intern(std::u16string_view name);
  const THtTagRec* InternLower(std::u16string_view name);
  int32_t Offset(const char16_t* at) const {
    return FParser.Pos() - 1 - static_cast<int32_t>(FParser.p - at);
  }
  /// Passes over a space token.
  void SkipSpace();
  const THtTagRec* InternTag(std::u16string_view name) {
    return FCaseSensitive ? Intern(name) : InternLower(name);
  }
  /// As if "<" (or "</") and the name had been scanned.
  const THtTagRec* BeginTag(std::u16string_view name, bool close);
  /// The end of a run of ASCII name characters inside a tag.
  static const char16_t* SkipNameChars(const char16_t* p);
  bool AtRest(std::u16string_view text) const { return FParser.Rest().starts_with(text); }

  void ReadOpener();
  void ReadTagEnd();
  void ReadTag();
  void ReadIdent();
  void ReadText(const char16_t* start);
  void ReadString();
  void ReadComment();
  void ReadCData();
  void ReadDirective();
  void ReadCustom();
  void ReadScript();
  void ReadStyle();
  void ReadUpTo(const char16_t* start, char16_t stopper);
  std::u16string_view ReadRawText(std::u16string_view endTag);
  void DropCommentMarks();
  uint32_t Escape(char16_t textEnd);
  uint32_t EscapeNumber(const char16_t* stopper);
  void AppendCodePoint(uint32_t code);

  TStringParser FParser;
  std::u16string_view FTagName;  // of the start tag being read; its text is interned
  bool FInTag = false;
  bool FCaseSensitive;
  THTMLToken FToken;
  bool FAtEnd = false;
  bool FXMLMode;
  THtObjectDictionary* FTagList;
  THtNameCache<THtTagRec> FTagCache;

  const char16_t* FStart = nullptr;  // of the token
  std::u16string_view FName;
  const THtTagRec* FTagRec = nullptr;  // of the token, when ReadTag made it
  std::u16string FScratch;             // text with character references is put together here
};

}  // namespace ht
