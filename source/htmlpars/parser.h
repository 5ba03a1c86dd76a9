#pragma once

#include <memory>
#include <vector>

#include "htmlpars/attributes.h"
#include "htmlpars/encoding.h"
#include "htmlpars/parserexception.h"
#include "htmlpars/tokenizer.h"
#include "htruntime/arena.h"
#include "htutils/objectlist.h"

namespace ht {

class THtNode;
class THtmlNode;

/// Puts tokens together to items: one tag with its attributes, one text, one comment, and so on. It interns names,
/// and follows a change of the text's encoding that the document itself asks for.
///
///   THtmlParser parser(text, false);
///   while (parser.NextItem()) …        // look at TagType, Tag, Value, Attributes
///
/// A parser serves one parse on one thread. The public item stays valid until the next NextItem. HTML never
/// fails; in XML mode EHtmlParserException is raised with "Invalid tag name %s. Line %d position %d" and
/// "Attribute %s value expected but %s found. Line %d position %d" (lines count from 0, positions from 1).
class THtmlParser {
 public:
  THtmlParser(hstring text, bool xmlMode);

  /// Reads the next item, or, when RepeatCurrent is set, gives the same one again. False at the end of the input.
  bool NextItem();
  void SetCaseSensitive(bool flag);
  /// Decodes the rest of the text as UTF-8, if it looks like that, and Root with what was parsed already. Any
  /// other encoding, and the one in force, change nothing.
  void ChangeEncoding(THtmlEncoding encoding, int32_t codepage);

  static THtmlEncoding GetFileEncoding(const hstring& fileName, int32_t& codepage) {
    return ht::GetFileEncoding(fileName, codepage);
  }
  static int32_t CharsettoCodepage(const hstring& charset) { return ht::CharsettoCodepage(charset); }

  // For the tree builder

  /// Depth of its recursion.
  int32_t FStackLevel = 0;
  /// What is parsed into: the outermost node of the recursion.
  THtmlNode* FTop = nullptr;
  /// The close tag of FTop ends the parse. Otherwise it is a stray one, so that nothing behind it is lost.
  bool FTopCloses = false;

  // The item

  /// htIdent for a tag, htString for a text, else the kind of the item.
  THTMLTokenType TagType = htUnknown;
  /// Empty unless the item is a tag.
  hstring Tag;
  /// The text, and the content of a script or style.
  hstring Value;
  /// The item has no content of its own to follow.
  bool TagClosed = false;
  bool IsCloseTag = false;
  /// Set by who wants the same item once more.
  bool RepeatCurrent = false;
  /// Null until the first attribute. Who wants them takes the object.
  std::unique_ptr<THtAttributes> Attributes;

  /// The node above which the builder does not close elements; may be null.
  THtmlNode* Root = nullptr;
  /// The root of the tree that is built.
  THtNode* GlobalRoot = nullptr;
  THtmlEncoding Encoding = heDefault;
  int32_t Codepage = 0;
  /// Start of the token at which the item ended, from 0 in the current text.
  int32_t StartPos = 0;
  /// The interned tags and attribute names.
  THtObjectDictionary TagList;
  THtObjectDictionary AttrList;
  /// Inline elements that were closed with their container and are still to be reopened.
  THtObjectList IncorrectStack;
  /// A charset inside the document is not followed.
  bool IgnoreMetaEncoding = false;

  /// The interned form of Tag with what a node keeps of it.
  const THtTagRec& TagRec() const { return *FTagRec; }

 private:
  // What the builder makes meanwhile lies together. A node with its share of lists and attributes takes about four
  // times the text that it stands for.
  THtArena FArena;

  bool Scan(bool valueExpected) { return FTokenizer.Scan(valueExpected); }
  THTMLTokenType Type() const { return FTokenizer.FToken.CType; }
  bool AtEnd() const { return FTokenizer.FAtEnd; }

  bool ReadPlainTagName();
  bool SeekItem();
  bool ReadTagName();
  void SetTag(const THtTagRec* rec);
  bool ReadAttributes();
  void ReadPlainAttributes();
  void ReadAttribute();
  bool ReadAttributeValue(hstring& value);
  void SkipBetween(bool valueExpected);
  hstring InternAttrName(std::u16string_view name);
  hstring ShareText(std::u16string_view text);
  void CollectRawElement();
  void CheckMetaCharset();
  void ReadTailAs(THtmlEncoding encoding, int32_t codepage);

  THTMLTokenizer FTokenizer;
  bool FXMLMode;
  bool FEncodingProcessed = false;
  bool FCaseSensitive = false;
  const THtTagRec* FTagRec = nullptr;
  std::vector<THtAttributes::TParsed> FParsed;
  std::u16string FCollected;
  std::vector<hstring> FShared;
  THtNameCache<THtStringRec> FAttrCache;
};

}  // namespace ht
