#include <algorithm>
#include <cmath>

#include "htmlcss/csssection.h"
#include "htmlcss/stylesheet.h"
#include "htmlcss/tokensequence.h"
#include "htmlpars/colors.h"
#include "htmlpars/lowername.h"
#include "htruntime/rounding.h"

namespace ht {

namespace {

// Hue, saturation and lightness, each 0 to 1.
struct THSL {
  float H, S, L;
};

THSL ToHSL(uint32_t color) {
  const float r = static_cast<float>(color >> 16 & 255) / 255, g = static_cast<float>(color >> 8 & 255) / 255,
              b = static_cast<float>(color & 255) / 255;
  const float max = std::max({r, g, b}), min = std::min({r, g, b}), delta = max - min;
  THSL hsl{0, 0, (max + min) / 2};
  if (delta == 0) return hsl;
  hsl.S = hsl.L > 0.5f ? delta / (2 - max - min) : delta / (max + min);
  if (max == r)
    hsl.H = (g - b) / delta + (g < b ? 6.0f : 0.0f);
  else if (max == g)
    hsl.H = (b - r) / delta + 2;
  else
    hsl.H = (r - g) / delta + 4;
  hsl.H /= 6;
  return hsl;
}

float ChannelOf(float p, float q, float t) {
  t -= std::floor(t);
  if (t < 1.0f / 6) return p + (q - p) * 6 * t;
  if (t < 1.0f / 2) return q;
  if (t < 2.0f / 3) return p + (q - p) * (2.0f / 3 - t) * 6;
  return p;
}

// The colour with the alpha of another.
uint32_t FromHSL(const THSL& hsl, uint32_t alphaOf) {
  const float q = hsl.L < 0.5f ? hsl.L * (1 + hsl.S) : hsl.L + hsl.S - hsl.L * hsl.S;
  const float p = 2 * hsl.L - q;
  uint32_t color = alphaOf >> 24;
  for (float shift : {1.0f / 3, 0.0f, -1.0f / 3})
    color = color << 8 | static_cast<uint32_t>(HtRoundEven(255 * ChannelOf(p, q, hsl.H + shift)));
  return color;
}

void SetHash(TCSSToken& token, uint32_t color) {
  token.CType = ctHash;
  token.Flags = 0;
  token.Name = htmlColortoHex(color);
  token.SetColor(color);
}

void ConvertText(TCSSToken& token) {
  THSL hsl = ToHSL(token.Color());
  hsl.L = std::min(std::min(std::max(1 - hsl.L + 0.1f, 0.6f), 1.0f), 0.95f);
  hsl.S = std::min(0.7f, hsl.S);
  SetHash(token, FromHSL(hsl, token.Color()));
}

void ConvertBackground(TCSSToken& token) {
  THSL hsl = ToHSL(token.Color());
  if (hsl.L > 0.9f) {
    token.CType = ctIdent;
    token.Flags = 0;
    token.Name = u"transparent"_hs;
    token.SetColor(0);
    return;
  }
  hsl.L = std::max(1 - hsl.L, 0.15f);
  SetHash(token, FromHSL(hsl, token.Color()));
}

// Gives a colour word its colour; false for any other word.
bool ResolveWord(TCSSToken& token) {
  const THtColorName* known;
  if (token.CType != ctIdent || !GlobalColorDictionary().Find(THtLowerName(token.Name), known)) return false;
  token.SetColor(0xFF000000 | known->Value);
  return true;
}

// Makes the first token of a colour function stand for the whole of it.
void DropArguments(TCSSTokens& tokens) {
  TCSSTokens kept;
  kept.Append(tokens[0]);
  int32_t i = 1;
  while (i < tokens.Count() && tokens[i].CType != ctClosePar) ++i;
  while (++i < tokens.Count()) kept.Append(tokens[i]);
  tokens = std::move(kept);
}

// Only what is seen and known: neither `transparent` nor `var()`.
void ConvertColor(TCSSValue& value, void (*convert)(TCSSToken&)) {
  const TCSSToken& first = value.Tokens[0];
  if (first.Name == u"none" || first.Name == u"transparent") return;
  if (first.CType == ctFunction) {
    if (!first.Name.View().starts_with(u"rgb")) return;
    DropArguments(value.Tokens);
  }
  convert(value.Tokens[0]);
}

void ConvertGround(TCSSValue& value) {
  const bool single = value.Tokens.Count() == 1;
  for (TCSSToken& token : value.Tokens) {
    if (single && (token.Name == u"none" || token.Name == u"transparent")) continue;
    if (token.CType == ctHash || ResolveWord(token)) ConvertBackground(token);
  }
}

void Convert(TCSSValue& value) {
  if (!value.Prop || value.Inherit || value.Tokens.Empty()) return;
  switch (value.Prop->Prop) {
    case cspColor:
    case cspBorderColor:
    case cspBorderTopColor:
    case cspBorderRightColor:
    case cspBorderBottomColor:
    case cspBorderLeftColor: ConvertColor(value, ConvertText); break;
    case cspBackgroundColor: ConvertColor(value, ConvertBackground); break;
    case cspBackground: ConvertGround(value); break;
    default: break;
  }
}

}  // namespace

void TCSSStyleSheet::ConvertLighttoDark() {
  for (int32_t i = 0; i < fSections.GetCount(); ++i)
    for (TCSSValue& value : GetSection(i)->Values) Convert(value);
}

hstring TCSSStyleSheet::LighttoDark(const hstring& text) {
  TCSSStyleSheet sheet;
  sheet.Parse(text, -1);
  sheet.ConvertLighttoDark();
  return sheet.AsString();
}

}  // namespace ht
