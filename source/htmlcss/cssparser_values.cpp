#include <algorithm>
#include <span>
#include <unordered_set>

#include "htmlcss/cssparser.h"
#include "htmlcss/cssproptable.h"
#include "htmlcss/selectorreader.h"
#include "htmlcss/tokensequence.h"
#include "htmlpars/colors.h"
#include "htmlpars/lower.h"

namespace ht {

namespace {

// In the first token's Color instead of a value: the declaration is `inherit`, or a keyword that there is not.
constexpr uint32_t kInheritMarker = 888;
constexpr uint32_t kUnknownKeyword = 999;

constexpr float kMediumFontSize = 18;

// The bits of `text-decoration` by the name of the first token.
uint32_t DecorationMask(std::u16string_view name) {
  struct TMask {
    std::u16string_view Name;
    uint32_t Bits;
  };
  constexpr TMask kMasks[] = {{u"underline", 4},
                              {u"line-through", 8},
                              {u"underline line-through", 12},
                              {u"line-through underline ", 12}};
  for (const TMask& mask : kMasks)
    if (mask.Name == name) return mask.Bits;
  return 0;
}

void PrepareLength(TCSSValue& value, TCSSSection& section, const TCSSPropRec& prop) {
  const TCSSToken& first = value.Tokens[0];
  const bool isCalc = first.CType == ctFunction && HtSameAscii(first.Name, u"calc");
  TCSSTokenSequence sequence(isCalc ? section.KeepCalc(value.Tokens) : &value.Tokens);
  value.Value1.Decode(sequence);
  if (isCalc)
    while (!sequence.Eof && sequence.T->CType != ctClosePar) sequence.Next();
  value.Value2 = {};
  value.Value2.Flags = {mfInitial};
  if (sequence.Next() && sequence.T->Name == u"/") {
    sequence.Next();
    value.Value2.Decode(sequence);
  }
  if (prop.Prop == cspLineHeight && first.CType != ctPercentage && first.CType != ctDimension)
    value.Value1.FMUnit = muNone;
  if (prop.Prop == cspFontSize && HtSameAscii(first.Name, u"medium"))
    value.Value1.SetFPixels(kMediumFontSize);
}

bool PrepareColor(TCSSValue& value) {
  TCSSTokenSequence sequence(&value.Tokens);
  TCSSToken& first = value.Tokens[0];
  uint32_t color = first.Color();
  if (!sequence.ReadColor(color)) return false;
  if (first.CType == ctIdent) return first.Color() != kColorInvalid;
  first.SetColor(color);
  return true;
}

bool PrepareKeyword(TCSSValue& value, const TCSSPropRec& prop) {
  TCSSToken& first = value.Tokens[0];
  const int32_t ordinal = prop.EnumInfo ? prop.FindKeyword(first.Name) : 0;
  first.SetColor(ordinal >= 0 ? static_cast<uint32_t>(ordinal) : kUnknownKeyword);
  return ordinal >= 0 || prop.Prop == cspFontWeight;
}

// Sets aside values whose name comes again behind them. Short rules are compared pair by pair.
void DropEarlier(TCSSValues& values) {
  constexpr size_t kFewValues = 12;
  if (values.size() < 2) return;
  std::unordered_set<hstring> seen;
  const bool few = values.size() <= kFewValues;
  auto kept = values.end();  // from here on each name stands once
  for (auto it = values.end(); it-- != values.begin();) {
    const hstring& name = it->NameToken.Name;
    const auto same = [&name](const TCSSValue& other) { return other.NameToken.Name == name; };
    const bool isLast = few ? std::none_of(kept, values.end(), same) : seen.insert(name).second;
    if (isLast && --kept != it) *kept = std::move(*it);
  }
  values.erase(values.begin(), kept);
}

}  // namespace

void TCSSParser::AddSelector() {
  if (Section->Selectors.GetCount() == 0)
    Section->BlockStartPos = Section->Selectors.StartPos = Token().StartPos;
  if (!CollectSelector()) {
    SkipSection();
    return;
  }
  while (!Tokens.empty() && Tokens.back().CType == ctSpace) Tokens.pop_back();
  if (Tokens.empty()) return;
  const int32_t startPos = Tokens.front().StartPos, endPos = Tokens.back().EndPos;
  std::unique_ptr<TCSSSelector> selector = THtSelectorReader(Tokens).Read();
  selector->StartPos = startPos;
  selector->EndPos = endPos;
  selector->DetermineTestProc();
  Section->AddSelector(selector.release());
}

// Up to "{" or "," or the end. False at what can stand in no selector.
bool TCSSParser::CollectSelector() {
  ClearList();
  AddToken();
  while (NextToken()) {
    switch (Token().CType) {
      case ctUnknown:
      case ctComment:
      case ctSlash: break;
      case ctBlockStart:
      case ctComma: return true;
      case ctSemicolon:
      case ctBlockEnd:
      case ctURI:
      case ctCDO:
      case ctCDC: return false;
      default: AddToken();
    }
  }
  return true;
}

void TCSSParser::ReadSectionValues() {
  if (!Tokenizer) return;
  if (Section->Values.empty()) Section->Values.swap(FSpareValues);
  NextSolidToken();
  for (bool inBlock = true; inBlock && !Eof();) {
    switch (Token().CType) {
      case ctIdent: AddValue(); break;
      case ctBlockEnd:
      case ctCDC: inBlock = false; break;
      case ctCDO:
      case ctComment:
      case ctSemicolon:
      case ctSlash:
      case ctSpace: NextSolidToken(); break;
      case ctDelimiter: Token().Name == u"*" ? SkipValue() : static_cast<void>(NextSolidToken()); break;
      case ctUnknown: RaiseUnknown();
      default: SkipValue();
    }
  }
  StoreValues();
}

// Declarations are collected where there is room already; the section gets an array of just their number.
void TCSSParser::StoreValues() {
  TCSSValues& values = Section->Values;
  if (!Section->FontFace) DropEarlier(values);
  if (values.empty()) return;
  TCSSValues stored(std::make_move_iterator(values.begin()), std::make_move_iterator(values.end()));
  FSpareValues = std::move(values);
  FSpareValues.clear();
  values = std::move(stored);
}

void TCSSParser::SkipValue() {
  while (!Is(ctBlockEnd) && !Is(ctSemicolon) && NextSolidToken()) {}
}

void TCSSParser::AddValue() {
  TCSSToken nameToken = std::move(Tokenizer->Token);
  if (!NextSolidToken() || !Is(ctColon)) return;
  bool important = false;
  if (!CollectValue(important)) {
    SkipValue();
    return;
  }
  if (Tokens.empty()) return;
  TCSSValue& value = Section->Values.emplace_back();
  value.NameToken = std::move(nameToken);
  value.Tokens = TCSSTokens::Moved(Tokens);
  value.Important = important;
  value.Section = Section.get();
  if (!PrepareValue(value, *Section)) Section->Values.pop_back();
}

// Up to what ends the declaration. False at what can stand in none.
bool TCSSParser::CollectValue(bool& important) {
  ClearList();
  while (NextSolidToken()) {
    switch (Token().CType) {
      case ctUnknown: break;
      case ctBlockEnd:
      case ctCDO:
      case ctSemicolon: return true;
      case ctAtKeyword:
      case ctBlockStart:
      case ctCDC: return false;
      case ctDelimiter:
        if (Token().Name == u"!") {
          if (!NextToken()) return true;
          if (HtSameAscii(Token().Name, u"important")) {
            important = true;
            break;
          }
        }
        AddToken();
        break;
      default: AddToken();
    }
  }
  return true;
}

bool TCSSParser::PrepareValue(TCSSValue& value, TCSSSection& section) {
  hstring& written = value.NameToken.Name;
  value.Name = written;
  value.ApplyProc = nullptr;
  if (value.Name.Empty() || value.Tokens.Empty()) return true;
  hLower(value.Name);
  const TCSSPropRec& prop = CSSPropByName(value.Name);
  // The table's texts are literals, which cost no counting when the value is copied.
  if (prop.Prop != cspUnknown && value.Name.SameStorage(written)) value.Name = written = prop.Name;
  return PrepareValue(value, section, prop);
}

bool TCSSParser::PrepareValue(TCSSValue& value, TCSSSection& section, const TCSSPropRec& prop) {
  value.Prop = &prop;
  value.ApplyProc = prop.ApplyProc;
  for (TCSSToken& token : value.Tokens) {
    if (token.CType != ctHash || token.Color() != 0) continue;
    const uint32_t color = htmlDigitstoColor(token.Name);
    if (color != kColorInvalid) token.SetColor(color);
  }
  TCSSToken& first = value.Tokens[0];
  if (prop.Prop == cspTextDecoration || prop.Prop == cspTextDecorationLine)
    first.SetColor(DecorationMask(first.Name));
  value.Vendor = value.Name[0] == u'-';
  value.Inherit = first.Name == u"inherit";
  if (value.Inherit) {
    first.SetColor(kInheritMarker);
    return true;
  }
  switch (prop.PropType) {
    case cptLength: PrepareLength(value, section, prop); return true;
    case cptColor: return PrepareColor(value);
    case cptEnum: return PrepareKeyword(value, prop);
    default: return true;
  }
}

}  // namespace ht
