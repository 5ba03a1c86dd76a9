#include "htmlpars/tokenizer.h"

#include <algorithm>
#include <array>

#include "htdictionary/hash.h"
#include "htmlpars/entities.h"
#include "htmlpars/lower.h"
#include "htmlpars/parserexception.h"
#include "htmlpars/textscan.h"
#include "htruntime/format.h"

namespace ht {

namespace {

enum TCharClass : uint8_t { ccOther, ccName, ccSpace, ccQuote, ccOpener, ccEnd, ccSlash, ccEquals };

using TCharClassTable = std::array<TCharClass, 256>;

constexpr TCharClassTable MakeTagTable() {
  TCharClassTable table{};
  const auto set = [&table](std::u16string_view chars, TCharClass charClass) {
    for (char16_t c : chars) table[c] = charClass;
  };
  set(u"#%-.0123456789:@ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz", ccName);
  set(u"\t\n\r ", ccSpace);
  set(u"\"'", ccQuote);
  set(u"<", ccOpener);
  set(u">", ccEnd);
  set(u"/", ccSlash);
  set(u"=", ccEquals);
  return table;
}

constexpr TCharClassTable kTagClasses = MakeTagTable();

constexpr TCharClass ClassInTag(char16_t c) { return c < 256 ? kTagClasses[c] : ccOther; }

constexpr bool StartsName(char16_t c) {
  return c >= 128 || c == u'-' || c == u'.' || c == u'/' || c == u':' || c == u'_' || HtIsAsciiLetter(c);
}

// A "/" that does not close a tag belongs to a name or value.
constexpr bool IsInnerSlash(const char16_t* p) { return p[0] == u'/' && p[1] != u'>'; }

}  // namespace

THtTagRec::THtTagRec(hstring value) : THtStringRec(std::move(value)) {
  hstring lower = Value;
  hLower(lower);
  Hash = RSHash(lower.Data(), lower.Length());
  Id = HtFindTagId(Value, Hash);
  IsLower = lower == Value;
  if (Id > tgOther) Value = HtTagName(Id);
}

THTMLTokenizer::THTMLTokenizer(hstring text, bool caseSensitive, bool xmlMode, THtObjectDictionary* tagList)
    : FParser(std::move(text)), FCaseSensitive(caseSensitive), FXMLMode(xmlMode), FTagList(tagList) {}

const THtTagRec* THTMLTokenizer::Intern(std::u16string_view name) {
  if (const THtTagRec* recent = FTagCache.Find(name)) return recent;
  TObject* rec;
  if (!FTagList->Find(name.data(), static_cast<int32_t>(name.size()), rec)) {
    rec = new THtTagRec(hstring(name));
    FTagList->AddObject(rec);
  }
  FTagCache.Store(static_cast<THtTagRec*>(rec));
  return static_cast<THtTagRec*>(rec);
}

// The record of the name with its ASCII letters in lower case.
const THtTagRec* THTMLTokenizer::InternLower(std::u16string_view name) {
  const THtTagRec* recent = FTagCache.Find(name);
  if (recent && recent->IsLower) return recent;
  if (std::none_of(name.begin(), name.end(), HtIsAsciiUpper)) return Intern(name);
  FScratch.assign(name);
  std::transform(name.begin(), name.end(), FScratch.begin(), HtAsciiLower);
  return Intern(FScratch);
}

bool THTMLTokenizer::NextToken(bool valueExpected) {
  const bool more = Scan(valueExpected);
  FToken.StartPos = Offset(FStart);
  if (FAtEnd) return more;
  FToken.EndPos = Offset(FParser.p);
  FToken.Name = FTagRec ? FTagRec->Value : hstring(FName);
  return more;
}

bool THTMLTokenizer::Scan(bool valueExpected) {
  const char16_t*& p = FParser.p;
  FStart = p;
  FTagRec = nullptr;
  if (!FInTag) {
    if (*p == u'<')
      ReadOpener();
    else if (FParser.Empty())
      FAtEnd = true;
    else
      ReadText(p);
    return !FAtEnd;
  }
  if (!valueExpected)
    while (*p == u'"' || *p == u'\'') ++p;
  switch (ClassInTag(*p)) {
    case ccOther:
      FAtEnd = FParser.Empty();
      if (!FAtEnd) ReadIdent();
      return !FAtEnd;
    case ccName: FToken.CType == htTagStart ? ReadTag() : ReadIdent(); break;
    case ccSpace: {
      const char16_t* start = p;
      FParser.SkipBlanks();
      FToken.CType = htSpace;
      if (p - start > 1) SetName(start, p);
      return !FParser.Empty();
    }
    case ccQuote: ReadString(); break;
    case ccOpener: ReadOpener(); break;
    case ccEnd: ReadTagEnd(); break;
    case ccSlash:
      SetName(p, p + 1);
      Next2(htTagClose);
      FTagName = {};
      break;
    case ccEquals:
      SetName(p, p + 1);
      Next2(htEq);
      break;
  }
  return true;
}

void THTMLTokenizer::SkipSpace() {
  if (ClassInTag(*FParser.p) == ccSpace) FParser.SkipBlanks();
}

const THtTagRec* THTMLTokenizer::BeginTag(std::u16string_view name, bool close) {
  const THtTagRec* rec = InternTag(name);
  FInTag = true;
  FTagName = close ? std::u16string_view() : rec->Value.View();
  FToken.CType = htIdent;
  return rec;
}

const char16_t* THTMLTokenizer::SkipNameChars(const char16_t* p) {
  while (ClassInTag(*p) == ccName) ++p;
  return p;
}

void THTMLTokenizer::ReadOpener() {
  const char16_t* p = FParser.p;
  if (p[1] == u'!') {
    if (p[2] == u'-') return ReadComment();
    return AtRest(u"<![CDA") ? ReadCData() : ReadCustom();
  }
  if (p[1] == u'?') return ReadDirective();
  if (StartsName(p[1])) {
    SetName(p, p + 1);
    Next2(htTagStart);
    FInTag = true;
    FTagName = {};
    return;
  }
  if (FXMLMode)
    throw EHtmlParserException(HtFormat(u"Invalid tag name %s. Line %d position %d",
                                        std::u16string_view(p + 1, p + 1 < FParser.pend), FParser.Line(),
                                        FParser.Pos()));
  FParser.Next();
  ReadText(p);
}

void THTMLTokenizer::ReadTagEnd() {
  SetName(FParser.p, FParser.p + 1);
  Next2(htTagEnd);
  FInTag = false;
  const std::u16string_view tag = std::exchange(FTagName, {});
  if (FXMLMode || (tag.size() != 6 && tag.size() != 5)) return;
  if (HtSameAscii(tag, u"script")) ReadScript();
  if (HtSameAscii(tag, u"style")) ReadStyle();
}

void THTMLTokenizer::ReadTag() {
  const char16_t*& p = FParser.p;
  const char16_t* start = p;
  while (*p >= 65 || ClassInTag(*p) == ccName || IsInnerSlash(p)) ++p;
  FTagRec = InternTag({start, static_cast<size_t>(p - start)});
  FName = FTagName = FTagRec->Value;
  FToken.CType = htIdent;
}

void THTMLTokenizer::ReadIdent() {
  const char16_t*& p = FParser.p;
  const char16_t* start = p;
  do ++p;
  while (*p != 0 && (ClassInTag(*p) < ccSpace || IsInnerSlash(p)));
  SetName(start, p);
  FToken.CType = htIdent;
}

// Reads on from the cursor up to the stopper or the end; the text begins at `start`.
void THTMLTokenizer::ReadUpTo(const char16_t* start, char16_t stopper) {
  const char16_t*& p = FParser.p;
  p = HtFindEither(p, FParser.pend, stopper, u'&');
  if (*p != u'&') return SetName(start, p);
  FScratch.assign(start, p);
  while (*p == u'&') {
    ++p;
    AppendCodePoint(Escape(stopper));
    const char16_t* clean = p;
    p = HtFindEither(p, FParser.pend, stopper, u'&');
    FScratch.append(clean, p);
  }
  FName = FScratch;
}

void THTMLTokenizer::ReadText(const char16_t* start) {
  ReadUpTo(start, u'<');
  FToken.CType = htString;
}

void THTMLTokenizer::ReadString() {
  const char16_t quote = *FParser.p++;
  ReadUpTo(FParser.p, quote);
  FParser.Next();
  FToken.CType = htString;
}

void THTMLTokenizer::ReadComment() {
  FParser.Skip(4);
  const char16_t* start = FParser.p;
  const char16_t* end = start;
  for (;; ++end) {
    end = HtFindEither(end, FParser.pend, u'>', u'>');
    if (end == FParser.pend || (end[-1] == u'-' && end[-2] == u'-')) break;
  }
  FParser.p = std::min(end + 1, FParser.pend);
  SetName(start, std::max(start, end - 2));
  FToken.CType = htComment;
}

void THTMLTokenizer::ReadCData() {
  FParser.Skip(9);
  const char16_t* start = FParser.p;
  static constexpr std::u16string_view kEnd = u"]]>";
  const char16_t* end = std::search(start, FParser.pend, kEnd.begin(), kEnd.end());
  SetName(start, end);
  FParser.p = end;
  FParser.Skip(3);
  FToken.CType = htCData;
}

void THTMLTokenizer::ReadDirective() {
  const char16_t*& p = FParser.p;
  FParser.Skip(2);
  const char16_t* start = p;
  while (*p != 0 && *p != u'>' && !(*p == u'?' && p[1] == u'>')) ++p;
  SetName(start, p);
  FParser.Skip(*p == u'?' ? 2 : *p == u'>' ? 1 : 0);
  FToken.CType = htDirective;
}

void THTMLTokenizer::ReadCustom() {
  const char16_t*& p = FParser.p;
  FParser.Skip(2);
  const char16_t* start = p;
  FParser.Next();
  bool quoted = false;
  bool bracketed = false;
  for (; p < FParser.pend && (*p != u'>' || bracketed); ++p) {
    if (*p == u'"') quoted = !quoted;
    if (!quoted && *p == u'[') bracketed = true;
    if (!quoted && *p == u']') bracketed = false;
  }
  SetName(start, p);
  if (p > start) FToken.CType = htCustom;
  FParser.Next();
}

std::u16string_view THTMLTokenizer::ReadRawText(std::u16string_view endTag) {
  const char16_t*& p = FParser.p;
  const char16_t* start = p;
  for (;; ++p) {
    p = HtFindEither(p, FParser.pend, u'<', u'<');
    if (FParser.Empty() || FParser.StartsWith(endTag)) break;
  }
  return {start, static_cast<size_t>(p - start)};
}

void THTMLTokenizer::ReadScript() {
  FName = HtTrim(ReadRawText(u"</script>"));
  if (FName.starts_with(u"<!--")) {
    FName.remove_prefix(4);
    FName.remove_suffix(std::min<size_t>(FName.size(), 3));
  }
  FToken.CType = htScript;
}

void THTMLTokenizer::ReadStyle() {
  FName = ReadRawText(u"</style>");
  if (FName.find(u"<!--") != FName.npos) DropCommentMarks();
  FToken.CType = htStyle;
}

// Every "<!--" goes, and with each the first "-->" behind it. Where both could begin, the "-->" that an earlier mark
// waits for comes first.
void THTMLTokenizer::DropCommentMarks() {
  FScratch.clear();
  size_t open = 0;
  size_t behind = 0;  // where the last mark was
  for (size_t i = 0; i < FName.size(); ++i) {
    FScratch.push_back(FName[i]);
    const bool closesNext = open > 0 && i + 1 < FName.size() && FName[i + 1] == u'>';
    if (FScratch.ends_with(u"<!--") && !closesNext) {
      FScratch.erase(FScratch.size() - 4);
      behind = FScratch.size();
      ++open;
    } else if (open > 0 && FScratch.ends_with(u"-->") && FScratch.size() >= behind + 3) {
      FScratch.erase(FScratch.size() - 3);
      --open;
    }
  }
  FName = FScratch;
}

void THTMLTokenizer::AppendCodePoint(uint32_t code) {
  if (code > 0x10FFFF) {
    FScratch.append(2, u' ');
  } else if (code > 0xFFFF) {
    FScratch.push_back(static_cast<char16_t>(0xD7C0 + (code >> 10)));
    FScratch.push_back(static_cast<char16_t>(0xDC00 + (code & 0x3FF)));
  } else {
    FScratch.push_back(static_cast<char16_t>(code));
  }
}

// The cursor stands behind "&" and moves behind the reference, if it is one; but never over what ends the text around
// it, for a reference that lacks its ";" would take the quote of an attribute with it.
uint32_t THTMLTokenizer::Escape(char16_t textEnd) {
  const char16_t* p = FParser.p;
  const auto take = [&](ptrdiff_t count, uint32_t code) {
    FParser.p = std::find(p, p + std::min(count, FParser.pend - p), textEnd);
    return code;
  };
  if (AtRest(u"lt;")) return take(3, u'<');
  if (AtRest(u"gt;")) return take(3, u'>');
  if (AtRest(u"quo")) return take(5, u'"');
  if (AtRest(u"amp")) return take(4, u'&');
  if (AtRest(u"nbs")) return take(FParser.pend - p > 4 && p[4] == u';' ? 5 : 4, 0xA0);

  constexpr ptrdiff_t kMaxReference = 25;
  const char16_t* last = p + std::min(kMaxReference, FParser.pend - p);
  const char16_t* stopper =
      std::find_if(p, last, [](char16_t c) { return c == u';' || c == u' ' || c == 0; });
  if (*p == u'#') return EscapeNumber(stopper);
  if (*stopper != u';') return u'&';
  const uint32_t code = GlobalEntityDictionary().FindEntity(p, static_cast<int32_t>(stopper - p));
  return code ? take(stopper - p + 1, code) : u'&';
}

uint32_t THTMLTokenizer::EscapeNumber(const char16_t* stopper) {
  const bool hex = FParser.p[1] == u'x';
  FParser.Skip(hex ? 2 : 1);
  const int64_t code = hex ? FParser.ReadHex() : FParser.ReadInt();
  if (*stopper == u';') FParser.p = stopper + 1;
  return code < 0 || code > 0x10FFFF ? 0x110000u : static_cast<uint32_t>(code);
}

}  // namespace ht
