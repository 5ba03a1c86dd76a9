#include "htmlcss/elementshadow.h"

#include "htmlpars/lower.h"

namespace ht {

void TElementShadow::Reset() {
  for (TMeasure* measure : {&X, &Y, &Blur}) static_cast<TMeasureValue&>(*measure) = {};
  Color = 0;
  Opacity = 0;
  Inset = false;
}

// False at the end of the tokens.
bool TElementShadow::ParseLengths(TCSSTokenSequence& sequence) {
  for (TMeasure* measure : {&X, &Y, &Blur}) {
    if (!sequence.T) return false;
    measure->Decode(sequence);
    sequence.Next();
  }
  return true;
}

void TElementShadow::Parse(TCSSTokenSequence& sequence) {
  if (!sequence.T) return;
  if (sequence.T->CType == ctIdent && HtSameAscii(sequence.T->Name, u"none")) return;
  if (sequence.T->Name == u"inset") {
    Inset = true;
    sequence.Next();
  }
  if (!ParseLengths(sequence)) return;
  if (sequence.T && sequence.T->CType == ctDimension) sequence.Next();
  sequence.ReadColor(Color);
  Opacity = 1;
}

void TElementShadow::ParseTextShadow(TCSSTokenSequence& sequence) {
  if (!sequence.T || (sequence.T->CType == ctIdent && HtSameAscii(sequence.T->Name, u"none"))) return;
  if (sequence.T->CType == ctIdent || sequence.T->CType == ctHash || sequence.T->CType == ctFunction) {
    sequence.ReadColor(Color);
    sequence.Next();
  }
  ParseLengths(sequence);
  if (sequence.T) sequence.ReadColor(Color);
  Opacity = 1;
}

}  // namespace ht
