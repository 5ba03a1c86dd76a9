#include "document/documentstyle.h"

#include "document/documentnode.h"
#include "document/variables.h"

namespace ht {

void TDocumentStyle::GetCSSVariable(TCSSTokenSequence& sequence) {
  TCSSTokens tokens;
  if (TVariables::Resolve(static_cast<const TDocumentNode&>(*FElement), *sequence.Tokens(), tokens))
    sequence.InitStore(tokens);
  else
    sequence.Next(sequence.Count);
}

void TDocumentStyle::Inherit(TBaseElementStyle& parent) {
  TBaseElementStyle::Inherit(parent);
  Visibility = parent.Visibility;
}

void TDocumentStyle::Reset(bool clearLast) {
  TBaseElementStyle::Reset(clearLast);
  Visibility = cvVisible;
  Variables.clear();
}

}  // namespace ht
