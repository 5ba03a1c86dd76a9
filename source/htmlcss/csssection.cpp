#include "htmlcss/csssection.h"

#include <algorithm>

#include "htmlcss/cssparser.h"
#include "htmlcss/shorthands.h"
#include "htmlpars/lower.h"
#include "htutils/crc32.h"

namespace ht {

namespace {

TCSSTokens TokensByName(const TCSSValues& values, std::u16string_view name) {
  for (const TCSSValue& value : values)
    if (HtSameAscii(value.NameToken.Name, name)) return value.Tokens;
  return {};
}

}  // namespace

uint32_t TCSSValue::Hash() const {
  uint32_t hash = 0;
  for (const TCSSToken& token : Tokens) hash ^= CalcStrCRC32(token.Name);
  return hash;
}

void TCSSSection::AddSelector(TCSSSelector* selector) {
  selector->Section = this;
  Selectors.Add(selector);
}

void TCSSSection::AddValue(const TCSSValue& value) {
  Values.push_back(value);
  Values.back().Section = this;
}

void TCSSSection::DeleteValue(int32_t index) {
  Values.erase(Values.begin() + index);
  Compile();
}

void TCSSSection::Compile() { THtShorthandCompiler(*this).Run(); }

TCSSTokens TCSSSection::ValuebyName(std::u16string_view name) const { return TokensByName(Values, name); }

TCSSTokens TCSSSection::CompiledValuebyName(std::u16string_view name) const {
  return TokensByName(CompiledValues, name);
}

PCSSValue TCSSSection::ItembyName(std::u16string_view name) {
  const auto it = std::find_if(Values.begin(), Values.end(), [name](const TCSSValue& value) {
    return HtSameAscii(value.NameToken.Name, name);
  });
  return it == Values.end() ? nullptr : &*it;
}

const TCSSTokens* TCSSSection::KeepCalc(const TCSSTokens& tokens) {
  if (!FCalcValues) FCalcValues = std::make_unique<THtObjectList>(true);
  auto* kept = new TCSSCalcValueObject(tokens);
  FCalcValues->Add(kept);
  return &kept->Tokens;
}

void TCSSSection::Minify() {
  if (JoinSides(u"border"_hs) + JoinSides(u"padding"_hs) > 0) Compile();
}

// Whether the four sides were there and the same; then one declaration takes their place.
bool TCSSSection::JoinSides(const hstring& shorthand) {
  constexpr std::u16string_view kOtherSides[] = {u"-right", u"-bottom", u"-left"};
  PCSSValue top = ItembyName(shorthand + u"-top");
  if (!top || ItembyName(shorthand)) return false;
  const auto sameAsTop = [&](std::u16string_view side) {
    PCSSValue other = ItembyName(shorthand + side);
    const auto sameName = [](const TCSSToken& a, const TCSSToken& b) { return a.Name == b.Name; };
    return other && other->Important == top->Important &&
           std::equal(top->Tokens.begin(), top->Tokens.end(), other->Tokens.begin(), other->Tokens.end(),
                      sameName);
  };
  if (!std::all_of(std::begin(kOtherSides), std::end(kOtherSides), sameAsTop)) return false;
  top->NameToken.Name = shorthand;
  TCSSParser::PrepareValue(*top, *this);
  for (std::u16string_view side : kOtherSides)
    Values.erase(Values.begin() + (ItembyName(shorthand + side) - Values.data()));
  return true;
}

}  // namespace ht
