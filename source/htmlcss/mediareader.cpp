#include "htmlcss/mediareader.h"

#include <algorithm>

#include "htruntime/rounding.h"
#include "htutils/enumlookup.h"

namespace ht {

void THtMediaReader::Read() {
  std::u16string words;  // of the whole query
  std::u16string word;   // since the last colon, for a medium that the tokens have torn apart
  for (Step(); !AtEnd(); Step()) {
    if (Is(ctOpenPar)) ReadFeature();
    if (AtEnd()) break;
    const hstring& name = FTokenizer.Token.Name;
    if (Is(ctClosePar))
      StoreFeature();
    else if (name != u"only" && name != u"and")
      words.append(name).append(u" ");
    if (Is(ctIdent)) AddMedium(name);
    if (Is(ctColon)) {
      AddMedium(HtTrim(word));
      word.clear();
    } else {
      word.append(u" ").append(name);
    }
  }
  AddMedium(HtTrim(word));
  if (FSet.Medias.Empty() && !HtTrim(words).empty()) FSet.Medias = {cmUnknown};
  StoreFeature();
}

void THtMediaReader::StepOverSpaces() {
  do Step();
  while (!AtEnd() && Is(ctSpace));
}

// From the "(" on: the feature's name and, behind a colon, its value.
void THtMediaReader::ReadFeature() {
  StepOverSpaces();
  if (AtEnd()) return;
  FFeature = FTokenizer.Token.Name;
  FValue = 0;
  while (!AtEnd() && !Is(ctColon) && !Is(ctClosePar)) Step();
  if (AtEnd() || Is(ctClosePar)) return;
  StepOverSpaces();
  if (AtEnd() || !(Is(ctNumber) || Is(ctDimension))) return;
  constexpr double kWidest = 1e15;
  const double value = HtRoundEven(FTokenizer.Token.AsFloat());
  FValue = static_cast<int64_t>(std::clamp(value, -kWidest, kWidest));
  Step();
}

void THtMediaReader::StoreFeature() {
  if (FFeature == u"min-width")
    FSet.MinWidth = FValue;
  else if (FFeature == u"max-width")
    FSet.MaxWidth = FValue;
  else if (FFeature == u"min-device-width")
    FSet.MinDeviceWidth = FValue;
  else if (FFeature == u"max-device-width")
    FSet.MaxDeviceWidth = FValue;
}

void THtMediaReader::AddMedium(std::u16string_view word) {
  TCSSMedia medium;
  if (!word.empty() && IsEnum2(u"cm", word, medium)) FSet.Medias.Include(medium);
}

}  // namespace ht
