#include "htmlcss/shorthands.h"

#include "htmlcss/cssparser.h"
#include "htmlcss/cssproptable.h"
#include "htmlcss/tokensequence.h"
#include "htmlpars/colors.h"

namespace ht {

namespace {

constexpr uint32_t kInheritMarker = 888;
constexpr uint32_t kUnknownKeyword = 999;

bool IsKeyword(TCSSProperty prop, const TCSSToken& token) {
  return CSSPropOf(prop).FindKeyword(token.Name) >= 0;
}

bool IsUnknownKeyword(const TCSSValue& value) {
  return value.Prop->PropType == cptEnum && value.Prop->Prop != cspFontWeight && !value.Tokens.Empty() &&
         value.Tokens[0].Color() == kUnknownKeyword;
}

// Whether a token can be the value of a longhand, by its type.
bool Fits(const TCSSToken& token, const TCSSPropRec& prop) {
  switch (token.CType) {
    case ctIdent:
      if (prop.PropType == cptEnum) return prop.FindKeyword(token.Name) >= 0;
      return prop.PropType == cptColor && (HtStringtoColor(token.Name) || HtStringtoSysColor(token.Name));
    case ctHash: return prop.PropType == cptColor;
    case ctNumber: return prop.PropType == cptNumber;
    case ctPercentage:
    case ctDimension: return prop.PropType == cptLength;
    default: return false;
  }
}

// About how many records a value becomes, so that the array is made once.
size_t RecordsOf(const TCSSValue& value) {
  constexpr size_t kOfOneWord = 4;  // `border: solid`
  const size_t longhands = value.Prop->SubProps.size();
  if (longhands == 0) return 1;
  return value.Prop->PropType == cptComplex ? static_cast<size_t>(value.Tokens.Count()) + kOfOneWord - 1
                                            : longhands;
}

bool IsCompiled(const TCSSValue& value) {
  return !value.Vendor && value.Prop && value.Prop->Prop != cspUnknown;
}

}  // namespace

void THtShorthandCompiler::Run() {
  FResult.clear();
  size_t records = 0;
  for (const TCSSValue& value : FSection.Values)
    if (IsCompiled(value)) records += RecordsOf(value);
  FResult.reserve(records);
  for (const TCSSValue& value : FSection.Values) {
    if (!IsCompiled(value)) continue;
    FValue = &value;
    Compile();
  }
}

void THtShorthandCompiler::Compile() {
  switch (FValue->Prop->PropType) {
    case cptNumber: AddCopy(); break;
    case cptComplex: CompileComplex(); break;
    default:
      switch (FValue->Prop->SubProps.size()) {
        case 4: CompileSides(); break;
        case 2: CompilePair(); break;
        default: AddCopy();
      }
  }
}

void THtShorthandCompiler::CompileComplex() {
  switch (FValue->Prop->Prop) {
    case cspFont: CompileFont(); break;
    case cspBorder: CompileBorder(); break;
    case cspBackground: CompileBackground(); break;
    case cspTextDecoration: CompileTextDecoration(); break;
    default: FValue->Prop->SubProps.empty() ? AddCopy() : CompileInOrder();
  }
}

void THtShorthandCompiler::AddCopy() {
  if (!IsUnknownKeyword(*FValue)) FResult.push_back(*FValue);
}

void THtShorthandCompiler::AddOne(TCSSProperty prop, int32_t index) { AddOne(CSSPropOf(prop), index); }

int32_t THtShorthandCompiler::AddSpan(const TCSSPropRec& prop, int32_t first, int32_t last, bool prepared) {
  const auto count = static_cast<size_t>(last - first + 1);
  return AddRecord(prop, TCSSTokens::Copied({&Token(first), count}), prepared);
}

int32_t THtShorthandCompiler::AddRun(const TCSSPropRec& prop, int32_t& index) {
  const int32_t first = index, last = Token(index).CType == ctFunction ? EndOfFunction(index) : index;
  index = last + 1;
  const bool isWhole = first == 0 && index == Count();
  const auto count = static_cast<size_t>(index - first);
  return AddRecord(prop, isWhole ? FValue->Tokens : TCSSTokens::Copied({&Token(first), count}), true);
}

void THtShorthandCompiler::AddTwin(const TCSSPropRec& prop, int32_t record) {
  if (record < 0) return;
  TCSSValue& twin = FResult.emplace_back(TCSSValue(FResult[static_cast<size_t>(record)]));
  twin.NameToken.Name = twin.Name = prop.Name;
  twin.Prop = &prop;
}

void THtShorthandCompiler::AddWord(TCSSProperty prop, const hstring& word) {
  TCSSToken token;
  token.CType = ctIdent;
  token.Name = word;
  TCSSTokens tokens;
  tokens.Append(std::move(token));
  AddRecord(CSSPropOf(prop), std::move(tokens), true);
}

// The index of the record; -1 if it means nothing and is removed again.
int32_t THtShorthandCompiler::AddRecord(const TCSSPropRec& prop, TCSSTokens tokens, bool prepared) {
  TCSSValue& record =
      FResult.emplace_back(TCSSToken(FValue->NameToken, prop.Name), std::move(tokens), &FSection);
  record.Name = prop.Name;
  record.Important = FValue->Important;
  const bool meansSomething = TCSSParser::PrepareValue(record, FSection, prop);
  if (prepared ? meansSomething : !IsUnknownKeyword(record)) return static_cast<int32_t>(FResult.size()) - 1;
  FResult.pop_back();
  return -1;
}

// The index of the parenthesis that closes the function, or of the last token.
int32_t THtShorthandCompiler::EndOfFunction(int32_t index) const {
  TCSSTokenSequence sequence(&FValue->Tokens);
  sequence.Next(index);
  sequence.SkipFunction();
  return sequence.Position();
}

// Where the span of a function in a background ends: at the first "]", or else with the value.
int32_t THtShorthandCompiler::EndOfSpan(int32_t index) const {
  while (index < Count() - 1 && Token(index).CType != ctCloseBr) ++index;
  return index;
}

bool THtShorthandCompiler::IsSlash(int32_t index) const {
  return Token(index).CType == ctSlash || Token(index).CType == ctDelimiter;
}

// Top, right, bottom, left: what is not given repeats the side across, or the first.
void THtShorthandCompiler::CompileSides() {
  const std::vector<TCSSPropRec*>& sides = FValue->Prop->SubProps;
  if (Count() == 3 && IsSlash(1)) {
    AddCopy();
    return;
  }
  int32_t index = 0;
  const auto add = [&](size_t side, int32_t across) {
    if (index < Count()) return AddRun(*sides[side], index);
    AddTwin(*sides[side], across);
    return across;
  };
  const int32_t top = add(0, -1);
  const int32_t right = add(1, top);
  add(2, top);
  add(3, right);
}

void THtShorthandCompiler::CompilePair() {
  const std::vector<TCSSPropRec*>& axes = FValue->Prop->SubProps;
  AddOne(*axes[0], 0);
  AddOne(*axes[1], Count() > 1 ? 1 : 0);
}

// Tokens come in the order of the longhands; one that fits none of those left is lost with all behind it.
void THtShorthandCompiler::CompileInOrder() {
  int32_t index = 0;
  for (const TCSSPropRec* longhand : FValue->Prop->SubProps) {
    if (index >= Count()) return;
    if (Fits(Token(index), *longhand)) AddOne(*longhand, index++);
  }
}

void THtShorthandCompiler::CompileFont() {
  bool style = false, weight = false;
  for (int32_t i = 0; i < Count(); ++i) {
    switch (Token(i).CType) {
      case ctIdent:
        if (!style && IsKeyword(cspFontStyle, Token(i))) {
          style = true;
          AddOne(cspFontStyle, i);
        } else if (!weight && IsKeyword(cspFontWeight, Token(i))) {
          weight = true;
          AddOne(cspFontWeight, i);
        } else {
          AddOne(cspFontFamily, i);
        }
        break;
      case ctString: AddOne(cspFontFamily, i); break;
      case ctNumber:
      case ctPercentage:
      case ctDimension:
        AddOne(cspFontSize, i);
        if (i + 2 < Count() && Token(i + 1).Name == u"/") {
          i += 2;
          AddOne(cspLineHeight, i);
        }
        break;
      default: break;
    }
  }
  if (!style) AddWord(cspFontStyle, u"normal"_hs);
  if (!weight) AddWord(cspFontWeight, u"normal"_hs);
}

void THtShorthandCompiler::CompileBorder() {
  TCSSTokenSequence sequence(&FValue->Tokens);
  for (; !sequence.Eof; sequence.Next()) {
    TCSSToken& token = *sequence.T;
    const int32_t index = sequence.Index;
    switch (token.CType) {
      case ctIdent:
        if (IsKeyword(cspBorderStyle, token)) {
          AddBorderStyle(index);
        } else if (token.Name == u"thin" || token.Name == u"medium" || token.Name == u"thick") {
          AddOne(cspBorderWidth, index);
        } else {
          AddOne(cspBorderColor, index);
        }
        break;
      case ctHash: AddOne(cspBorderColor, index); break;
      case ctNumber:
      case ctDimension: AddOne(cspBorderWidth, index); break;
      case ctFunction: {
        uint32_t color = token.Color();
        sequence.ReadColor(color);  // moves to the closing parenthesis
        token.SetColor(color);
        AddOne(cspBorderColor, index);
        break;
      }
      default: break;
    }
  }
}

void THtShorthandCompiler::AddBorderStyle(int32_t index) {
  const std::vector<TCSSPropRec*>& sides = CSSPropOf(cspBorderStyle).SubProps;
  const int32_t top = AddSpan(*sides[0], index, index, true);
  for (size_t side = 1; side < sides.size(); ++side) AddTwin(*sides[side], top);
}

void THtShorthandCompiler::CompileBackground() {
  FImage = FX = FY = false;
  for (int32_t i = 0; i < Count(); ++i) {
    switch (Token(i).CType) {
      case ctIdent: CompileBackgroundWord(i); break;
      case ctHash: AddOne(cspBackgroundColor, i); break;
      case ctNumber:
      case ctDimension: AddPosition(i); break;
      case ctURI:
        FImage = true;
        AddOne(cspBackgroundImage, i);
        break;
      case ctFunction: i = CompileBackgroundFunction(i); break;
      default: break;
    }
  }
  if (!FImage) AddWord(cspBackgroundImage, u"none"_hs);
}

void THtShorthandCompiler::CompileBackgroundWord(int32_t index) {
  const TCSSToken& token = Token(index);
  const auto is = [&token](std::u16string_view word) { return token.Name == word; };
  if (is(u"none")) {
    FImage = true;
    AddOne(cspBackgroundColor, index);
    AddOne(cspBackgroundImage, index);
  } else if (token.Color() != 0) {
    AddOne(cspBackgroundColor, index);
  } else if (IsKeyword(cspBackgroundRepeat, token)) {
    AddOne(cspBackgroundRepeat, index);
  } else if (IsKeyword(cspBackgroundOrigin, token)) {
    AddOne(cspBackgroundOrigin, index);
  } else if (IsKeyword(cspBackgroundAttachment, token)) {
    AddOne(cspBackgroundAttachment, index);
  } else if (is(u"left") || is(u"right")) {
    FX = true;
    AddOne(cspBackgroundPositionX, index);
  } else if (is(u"top") || is(u"bottom")) {
    FY = true;
    AddOne(cspbackgroundPositionY, index);
  } else if (is(u"middle") || is(u"center")) {
    AddPosition(index);
  } else {
    AddOne(cspBackgroundColor, index);
  }
}

// The first position is that of x.
void THtShorthandCompiler::AddPosition(int32_t index) {
  AddOne(FX ? cspbackgroundPositionY : cspBackgroundPositionX, index);
  (FX ? FY : FX) = true;
}

// The index of the last token of what the function takes with it.
int32_t THtShorthandCompiler::CompileBackgroundFunction(int32_t index) {
  const hstring& name = Token(index).Name;
  const int32_t last = EndOfSpan(index);
  if (name == u"linear-gradient" || name == u"radial-gradient") {
    FImage = true;
    AddSpan(CSSPropOf(cspBackgroundImage), index, last, false);
  } else if (name.View().starts_with(u"rgb") || name == u"var") {
    AddSpan(CSSPropOf(cspBackgroundColor), index, last, false);
  }
  return last;
}

void THtShorthandCompiler::CompileTextDecoration() {
  for (int32_t i = 0; i < Count(); ++i) {
    TCSSToken& token = Token(i);
    if (token.CType == ctHash) {
      AddOne(cspTextDecorationColor, i);
    } else if (token.CType == ctIdent) {
      if (token.Name == u"inherit") token.SetColor(kInheritMarker);
      if (token.Name == u"inherit" || IsKeyword(cspTextDecorationLine, token))
        AddOne(cspTextDecorationLine, i);
      else if (IsKeyword(cspTextDecorationStyle, token))
        AddOne(cspTextDecorationStyle, i);
    }
  }
}

}  // namespace ht
