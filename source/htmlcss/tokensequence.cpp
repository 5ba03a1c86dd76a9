#include "htmlcss/tokensequence.h"

#include <algorithm>

#include "htmlpars/colors.h"
#include "htruntime/rounding.h"

namespace ht {

namespace {

constexpr int kAlphaComponent = 3;

// The low byte of the rounded value.
uint32_t RoundedByte(double value) {
  constexpr double kLimit = 1e15;
  return static_cast<uint32_t>(static_cast<int64_t>(HtRoundEven(std::clamp(value, -kLimit, kLimit)))) & 0xFF;
}

bool ReadWordColor(TCSSToken& token, uint32_t& color) {
  uint32_t value = token.Color();
  bool isSystemColor;
  if (value == 0) {
    if (token.Name == u"inherit") return false;
    value = htmlHextoColorSys(token.Name, isSystemColor);
    token.SetColor(value);
    token.Flags = isSystemColor ? 1 : 0;
  } else if (token.Flags == 1) {
    value = htmlHextoColorSys(token.Name, isSystemColor);
  }
  if (value != kColorInvalid) color = value;
  return true;
}

}  // namespace

void TCSSTokenSequence::Init(const TCSSTokens* tokens) {
  FPTokens = tokens;
  Index = 0;
  Count = tokens->Count();
  Eof = Count == 0;
  T = tokens->Data();
}

void TCSSTokenSequence::InitStore(const TCSSTokens& tokens) {
  FOwnTokens = tokens;
  Init(&FOwnTokens);
}

bool TCSSTokenSequence::Next(int32_t n) {
  Index += n;
  Eof = Index >= Count;
  T = Eof ? nullptr : &(*FPTokens)[Index];
  return !Eof;
}

int32_t TCSSTokenSequence::Position() const { return T ? Index : Count - 1; }

void TCSSTokenSequence::SkipFunction() {
  int32_t depth = 0;
  for (; !Eof; Next()) {
    if (T->CType == ctOpenPar) ++depth;
    if (T->CType == ctClosePar && --depth <= 0) return;
  }
}

bool TCSSTokenSequence::ReadColor(uint32_t& color) {
  if (!T) return false;
  switch (T->CType) {
    case ctIdent: return ReadWordColor(*T, color);
    case ctHash:
      if (T->Color() == 0) return false;
      color = T->Color();
      return true;
    case ctNumber: {
      const uint32_t value = htmlDigitstoColor(T->Name);
      if (value != kColorInvalid) color = value;
      return false;
    }
    case ctFunction:
      if (T->Name.View().starts_with(u"rgb")) {
        if (Count == 1)
          color = T->Color();
        else
          ReadFunctionColor(color);
        return true;
      }
      return T->Name.View().starts_with(u"var");
    default: return false;
  }
}

void TCSSTokenSequence::ReadFunctionColor(uint32_t& color) {
  int component = 0;
  bool wholeColor = false;
  color = 0;
  const auto add = [&](double value, double alphaValue) {
    if (component != kAlphaComponent && !wholeColor)
      color = color << 8 | RoundedByte(value);
    else
      color = (color & 0xFFFFFF) | RoundedByte(alphaValue) << 24;
    ++component;
  };
  while (Next() && T->CType != ctClosePar) {
    switch (T->CType) {
      case ctIdent:
        wholeColor = true;
        ReadWordColor(*T, color);
        break;
      case ctHash:
        wholeColor = true;
        color = T->Color();
        break;
      case ctNumber: add(T->AsFloat(), T->AsFloat() * 255.0); break;
      case ctPercentage: add(T->AsFloat() * 255.0 / 100, T->AsFloat() * 255.0 / 100); break;
      default: break;
    }
  }
  if (component == kAlphaComponent) color |= 0xFF000000;
}

}  // namespace ht
