#include <algorithm>
#include <bit>
#include <vector>

#include "htmlcss/cssparser.h"
#include "htmlcss/cssproptable.h"
#include "htmlcss/selectorreader.h"
#include "htmlcss/tokensequence.h"
#include "htmlpars/colors.h"
#include "htmlpars/lower.h"

namespace ht {

using namespace std::literals;

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
  const bool isCalc = first.CType == ctFunction && HtSameAscii(first.Name, u"calc"sv);
  TCSSTokenSequence sequence(isCalc ? section.KeepCalc(value.Tokens) : &value.Tokens);
  value.Value1.Decode(sequence);
  if (isCalc) sequence.SkipFunction();
  value.Value2 = {};
  value.Value2.Flags = {mfInitial};
  if (sequence.Next() && sequence.T->Name == u"/"sv) {
    sequence.Next();
    value.Value2.Decode(sequence);
  }
  if (prop.Prop == cspLineHeight && first.CType != ctPercentage && first.CType != ctDimension)
    value.Value1.FMUnit = muNone;
  if (prop.Prop == cspFontSize && HtSameAscii(first.Name, u"medium"sv))
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

// The names of a long rule, in a table of twice their number.
class TNameSet {
 public:
  explicit TNameSet(size_t names) : FSlots(std::bit_ceil(names * 2)) {}

  /// False if the name is there already.
  bool Insert(const hstring& name) {
    for (size_t slot = std::hash<std::u16string_view>{}(name);; ++slot) {
      const hstring*& found = FSlots[slot & (FSlots.size() - 1)];
      if (found && *found == name) return false;
      if (found) continue;
      found = &name;
      return true;
    }
  }

 private:
  std::vector<const hstring*> FSlots;
};

bool ComesAgain(const TCSSValues& values, size_t index) {
  const hstring& name = values[index].NameToken.Name;
  for (size_t i = index + 1; i < values.size(); ++i)
    if (values[i].NameToken.Name == name) return true;
  return false;
}

// Deletes the values whose name comes again behind them. Short rules are compared pair by pair.
void DropEarlier(TCSSValues& values) {
  constexpr size_t kFewValues = 12;
  size_t dropped = 0;
  const auto drop = [&](size_t index) {
    values[index].Prop = nullptr;
    ++dropped;
  };
  if (values.size() <= kFewValues) {
    for (size_t i = 0; i + 1 < values.size(); ++i)
      if (ComesAgain(values, i)) drop(i);
  } else {
    TNameSet names(values.size());
    for (size_t i = values.size(); i-- > 0;)
      if (!names.Insert(values[i].NameToken.Name)) drop(i);
  }
  if (dropped > 0) values.EraseIf([](const TCSSValue& value) { return !value.Prop; });
}

}  // namespace

void TCSSParser::AddSelector() {
  if (Section->Selectors.GetCount() == 0)
    Section->BlockStartPos = Section->Selectors.StartPos = Token().StartPos;
  if (std::unique_ptr<TCSSSelector> selector = THtSelectorReader(*Tokenizer).Read())
    Section->AddSelector(selector.release());
  else
    SkipSection();
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
      case ctDelimiter: IsChar(u'*') ? SkipValue() : static_cast<void>(NextSolidToken()); break;
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
  FSpareValues.swap(values);
  values = FSpareValues.TakeExact();
}

void TCSSParser::SkipValue() {
  while (!Is(ctBlockEnd) && !Is(ctSemicolon) && NextSolidToken()) {}
}

void TCSSParser::AddValue() {
  const TCSSPropRec* prop = FindCSSProp(Text());
  TCSSToken nameToken(Token(), prop ? prop->Name : Tokenizer->NewName());
  if (!Tokenizer->StepOver(u':')) {
    while (NextToken() && Is(ctSpace)) {}
    if (!Is(ctColon)) return;
  }
  bool important = false;
  if (!CollectValue(important)) {
    SkipValue();
    return;
  }
  if (Tokens.empty()) return;
  TCSSValue& value =
      Section->Values.emplace_back(std::move(nameToken), TCSSTokens::Taken(Tokens), Section.get());
  value.Important = important;
  if (prop) value.Name = prop->Name;
  if (!(prop ? PrepareValue(value, *Section, *prop) : PrepareValue(value, *Section)))
    Section->Values.pop_back();
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
        if (IsChar(u'!')) {
          if (!NextToken()) return true;
          if (HtSameAscii(Text(), u"important"sv)) {
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
  value.Name = value.NameToken.Name;
  if (value.Name.Empty() || value.Tokens.Empty()) return true;
  hLower(value.Name);
  return PrepareValue(value, section, CSSPropByName(value.Name));
}

bool TCSSParser::PrepareValue(TCSSValue& value, TCSSSection& section, const TCSSPropRec& prop) {
  value.Prop = &prop;
  for (TCSSToken& token : value.Tokens) {
    if (token.CType != ctHash || token.Color() != 0) continue;
    const uint32_t color = htmlDigitstoColor(token.Name);
    if (color != kColorInvalid) token.SetColor(color);
  }
  TCSSToken& first = value.Tokens[0];
  if (prop.Prop == cspTextDecoration || prop.Prop == cspTextDecorationLine)
    first.SetColor(DecorationMask(first.Name));
  value.Vendor = value.Name[0] == u'-';
  value.Inherit = first.Name == u"inherit"sv;
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
