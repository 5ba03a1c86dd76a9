#include "htmlpars/parser.h"

#include <algorithm>
#include <bit>

#include "htdictionary/fieldoffset.h"
#include "htmlpars/constants.h"
#include "htmlpars/htmlnode.h"
#include "htmlpars/lower.h"
#include "htmlpars/textscan.h"
#include "htruntime/codepage.h"
#include "htruntime/format.h"

namespace ht {

namespace {

// A UTF-8 byte-order mark whose bytes became characters: through code page 1251, and one to one.
constexpr std::u16string_view kUtf8Marks[] = {u"\u043F\u00BB\u0457", u"\u00EF\u00BB\u00BF"};

constexpr size_t kMaxSharedSlots = 1024;
constexpr size_t kMaxSharedText = 32;
constexpr size_t kMaxInternedName = 15;

}  // namespace

THtmlParser::THtmlParser(hstring text, bool xmlMode)
    : TagList(255, true, HtNameOffset(&THtStringRec::Value), nullptr),
      AttrList(511, true, HtNameOffset(&THtStringRec::Value), nullptr),
      IncorrectStack(false),
      FArena(4 * text.Size()),
      FTokenizer(std::move(text), xmlMode, xmlMode, &TagList),
      FXMLMode(xmlMode) {
  if (!xmlMode) FTokenizer.Intern(sAsterisk);
  TStringParser& scanner = FTokenizer.FParser;
  FShared.resize(std::bit_ceil(std::clamp<size_t>(scanner.Rest().size() / 64, 16, kMaxSharedSlots)));
  scanner.SkipBlanks();
  for (std::u16string_view mark : kUtf8Marks) {
    if (scanner.Rest().size() <= mark.size() || !scanner.Rest().starts_with(mark)) continue;
    scanner.Skip(3);
    ChangeEncoding(heUTF8, 0);
  }
  if (scanner.Rest().size() > 1 && scanner.GetCurrent() == u'\xFEFF') scanner.Skip(1);
}

void THtmlParser::SetCaseSensitive(bool flag) { FCaseSensitive = FTokenizer.FCaseSensitive = flag; }

bool THtmlParser::NextItem() {
  if (RepeatCurrent) {
    RepeatCurrent = false;
    return true;
  }
  if (Attributes) Attributes->Clear();
  Tag.Clear();
  FTagRec = nullptr;
  TagClosed = IsCloseTag = false;
  if (!ReadPlainTagName()) {
    Scan(true);
    if (!SeekItem()) return false;
  }
  StartPos = FTokenizer.Offset(FTokenizer.FStart);
  if (FTagRec) {
    if (!ReadAttributes()) return false;
    StartPos = FTokenizer.Offset(FTokenizer.FStart);
    if (!FXMLMode && !IsCloseTag) {
      if ((FTagRec->Id == tgScript || FTagRec->Id == tgStyle) && !TagClosed) CollectRawElement();
      if (FTagRec->Id == tgMeta && Attributes && !IgnoreMetaEncoding) CheckMetaCharset();
    }
  }
  return true;
}

// A tag whose name is plain ASCII, with a blank or ">" behind it, is taken straight from the text. False, with nothing
// read, for anything else.
bool THtmlParser::ReadPlainTagName() {
  TStringParser& scanner = FTokenizer.FParser;
  const char16_t* p = scanner.p;
  if (FTokenizer.FInTag || *p != u'<') return false;
  const bool close = p[1] == u'/';
  const char16_t* name = p + (close ? 2 : 1);
  if (!HtIsAsciiLetter(*name)) return false;
  const char16_t* end = THTMLTokenizer::SkipNameChars(name);
  if (*end != u'>' && *end != u' ' && *end != u'\n') return false;
  scanner.p = end;
  IsCloseTag = close;
  SetTag(FTokenizer.BeginTag({name, static_cast<size_t>(end - name)}, close));
  return true;
}

bool THtmlParser::SeekItem() {
  while (!AtEnd()) {
    switch (Type()) {
      case htString:
      case htScript:
      case htStyle:
      case htComment:
      case htDirective:
      case htCData:
      case htCustom:
        TagType = Type();
        Value = ShareText(FTokenizer.Name());
        return TagClosed = true;
      case htTagStart:
        if (ReadTagName()) return true;
        break;
      default: Scan(true);
    }
  }
  return false;
}

// Reads what follows "<". When it is no name, the token in hand is looked at again, as if nothing had been read.
bool THtmlParser::ReadTagName() {
  Scan(false);
  IsCloseTag = !AtEnd() && Type() == htTagClose;
  if (IsCloseTag) Scan(false);
  if (AtEnd() || Type() != htIdent) return IsCloseTag = false;

  SetTag(FTokenizer.FTagRec ? FTokenizer.FTagRec : FTokenizer.InternTag(FTokenizer.Name()));
  return true;
}

void THtmlParser::SetTag(const THtTagRec* rec) {
  FTagRec = !FCaseSensitive && !rec->IsLower ? FTokenizer.InternLower(rec->Value) : rec;
  Tag = FTagRec->Value;
  TagType = htIdent;
}

// False when the tag is cut off by the end of the input.
bool THtmlParser::ReadAttributes() {
  FParsed.clear();
  if (!IsCloseTag) ReadPlainAttributes();
  Scan(false);
  for (bool inTag = true; inTag;) {
    if (AtEnd()) return false;
    switch (Type()) {
      case htIdent: IsCloseTag ? static_cast<void>(Scan(false)) : ReadAttribute(); break;
      case htTagStart:  // the tag was not closed; "<" is read again
        --FTokenizer.FParser.p;
        inTag = false;
        break;
      case htTagEnd: inTag = false; break;
      case htScript:
      case htStyle:
        if (!TagClosed) {
          Value = ShareText(FTokenizer.Name());
          TagType = Type();
        }
        inTag = false;
        break;
      case htTagClose:
        TagClosed = true;
        Scan(false);
        break;
      default: Scan(false);
    }
  }
  if (FParsed.empty()) return true;
  if (!Attributes) Attributes = std::make_unique<THtAttributes>();
  Attributes->CaseSensitive = FCaseSensitive;
  Attributes->AddParsed(FParsed);
  return true;
}

// The usual run of name="value" is read straight from the text. At whatever is not that, a character reference too, the
// cursor stays, and the tokens go on from there.
void THtmlParser::ReadPlainAttributes() {
  TStringParser& scanner = FTokenizer.FParser;
  for (;;) {
    FTokenizer.SkipSpace();
    const char16_t* name = scanner.p;
    const char16_t* nameEnd = THTMLTokenizer::SkipNameChars(name);
    if (nameEnd == name || nameEnd[0] != u'=' || (nameEnd[1] != u'"' && nameEnd[1] != u'\'')) return;
    const char16_t* value = nameEnd + 2;
    const char16_t* valueEnd = HtFindEither(value, scanner.pend, nameEnd[1], u'&');
    if (*valueEnd != nameEnd[1]) return;
    scanner.p = valueEnd + 1;
    FParsed.push_back({{InternAttrName({name, static_cast<size_t>(nameEnd - name)}),
                        ShareText({value, static_cast<size_t>(valueEnd - value)})},
                       false});
  }
}

void THtmlParser::SkipBetween(bool valueExpected) {
  do {
    FTokenizer.SkipSpace();
    Scan(valueExpected);
  } while (!AtEnd() && (Type() == htSpace || Type() == htComment || Type() == htDirective));
}

// Leaves the token behind the attribute in hand.
void THtmlParser::ReadAttribute() {
  hstring name = InternAttrName(FTokenizer.Name());
  hstring value;
  SkipBetween(false);
  if (AtEnd()) return;
  const bool bare = Type() != htEq;
  if (bare) {
    value = name;
  } else {
    SkipBetween(true);
    if (AtEnd()) return;
    if (FXMLMode && Type() != htString)
      throw EHtmlParserException(HtFormat(u"Attribute %s value expected but %s found. Line %d position %d",
                                          name, FTokenizer.Name(), FTokenizer.FParser.Line(),
                                          FTokenizer.FParser.Pos()));
    if (!ReadAttributeValue(value)) return;
  }
  FParsed.push_back({{std::move(name), std::move(value)}, bare});
}

// False when there is none: the attribute is dropped.
bool THtmlParser::ReadAttributeValue(hstring& value) {
  const auto endsValue = [this] {
    return AtEnd() || Type() == htSpace || Type() == htTagEnd || Type() == htScript || Type() == htStyle;
  };
  const bool slash = Type() == htTagClose;
  if (slash) {
    FTokenizer.FTagName = FTagRec->Value;  // a "/" of a value closes nothing
    Scan(false);
  }
  if (Type() == htString) {
    value = slash ? u"/"_hs + FTokenizer.Name() : ShareText(FTokenizer.Name());
    FTokenizer.SkipSpace();
    Scan(false);
    return true;
  }
  if (Type() != htIdent) return false;
  // A name is a piece of the source, so it outlives the next token.
  const std::u16string_view first = FTokenizer.Name();
  Scan(false);
  if (endsValue() && !slash) {
    value = ShareText(first);
    return true;
  }
  FCollected.assign(slash ? u"/" : u"").append(first);
  for (; !endsValue(); Scan(false)) FCollected.append(FTokenizer.Name());
  value = ShareText(FCollected);
  return true;
}

// Lower-cased unless it is a template expression, whose case counts.
hstring THtmlParser::InternAttrName(std::u16string_view name) {
  if (const THtStringRec* recent = FAttrCache.Find(name)) return recent->Value;
  hstring lower;
  if (!FCaseSensitive && std::any_of(name.begin(), name.end(), HtIsAsciiUpper) &&
      name.find(u'{') == name.npos) {
    lower = name;
    vLower(lower);
    name = lower;
  }
  if (name.size() > kMaxInternedName) return lower.Empty() ? hstring(name) : lower;
  TObject* rec;
  if (!AttrList.Find(name.data(), static_cast<int32_t>(name.size()), rec)) {
    rec = new THtStringRec(hstring(name));
    AttrList.AddObject(rec);
  }
  FAttrCache.Store(static_cast<THtStringRec*>(rec));
  return static_cast<THtStringRec*>(rec)->Value;
}

// Short texts of a document repeat (line ends between tags, class names): equal ones share their storage.
hstring THtmlParser::ShareText(std::u16string_view text) {
  if (text.empty() || text.size() > kMaxSharedText) return FArena.NewText(text);
  const auto hash = static_cast<uint32_t>(text.front() * 31 + text.back() * 7 + text[text.size() / 2]) * 31 +
                    static_cast<uint32_t>(text.size());
  hstring& slot = FShared[(hash * 0x9E3779B1u >> 22) & (FShared.size() - 1)];
  if (slot.Size() != text.size() || !HtSameShortText(slot.Data(), text.data(), text.size()))
    slot = FArena.NewText(text);
  return slot;
}

// A script or style is one item with its content and its end tag. Where the tokenizer did not take the content
// as raw text, what it holds of text is put together.
void THtmlParser::CollectRawElement() {
  if (TagType == htIdent) {
    TagType = FTagRec->Id == tgScript ? htScript : htStyle;
    Value.Clear();
  }
  TagClosed = true;
  FCollected.clear();
  for (Scan(false); !AtEnd() && !HtSameAscii(FTokenizer.Name(), Tag); Scan(false))
    if (Type() == htString || Type() == htScript || Type() == htStyle || Type() == htCData)
      FCollected.append(FTokenizer.Name());
  if (!FCollected.empty()) Value += FCollected;
  while (!AtEnd() && Type() != htTagEnd) Scan(false);
}

// Runs once a document, on the first meta that names a charset.
void THtmlParser::CheckMetaCharset() {
  if (FEncodingProcessed) return;
  const bool contentType = HtSameAscii(Attributes->GetAttribute(u"http-equiv"_hs), u"content-type");
  hstring charset = Attributes->GetAttribute(contentType ? u"content"_hs : u"charset"_hs);
  hLower(charset);
  const std::u16string_view named = charset;
  if (named.empty() || (contentType && named.find(u"charset") == named.npos)) return;
  FEncodingProcessed = true;
  if (charset.View().find(u"utf-8") != std::u16string_view::npos) return ChangeEncoding(heUTF8, 0);
  const int32_t codepage = ht::CharsettoCodepage(charset);
  if (Encoding == heDefault && HtCodePageExists(codepage)) ReadTailAs(heANSI, codepage);
}

void THtmlParser::ChangeEncoding(THtmlEncoding encoding, int32_t codepage) {
  if (encoding == Encoding || encoding != heUTF8) return;
  static constexpr std::u16string_view kHeadEnd = u"</head>";
  const std::u16string_view rest = FTokenizer.FParser.Rest();
  const size_t headEnd = rest.find(kHeadEnd);
  if (IsUTF8(rest.substr(headEnd == rest.npos ? 0 : headEnd)))
    ReadTailAs(encoding, codepage);
  else
    Encoding = encoding;
}

// The unread text, and what was built of the text before it, is decoded anew from its bytes.
void THtmlParser::ReadTailAs(THtmlEncoding encoding, int32_t codepage) {
  TStringParser& scanner = FTokenizer.FParser;
  scanner.Init(HtRecode(scanner.Rest(), encoding, codepage));
  Encoding = encoding;
  Codepage = codepage;
  if (THtmlNode* parsed = Root ? Root : FTop) parsed->ChangeEncoding(encoding, codepage);
}

}  // namespace ht
