#pragma once

#include <vector>

#include "htmlcss/elementstyle.h"

namespace ht {

/// The style of an element of a document: what the library leaves to the host's style class.
class TDocumentStyle : public TBaseElementStyle {
  HT_CLASS(TDocumentStyle, TBaseElementStyle)

 public:
  /// The custom properties that rules define for the element, the strongest last. Those of its `style` attribute stand in
  /// its SelfStyleSheet.
  std::vector<PCSSValue> Variables;

  /// For declarations with var() that do not go through the style pass, as those added to a style later.
  void GetCSSVariable(TCSSTokenSequence& sequence) override;
  /// Visibility is inherited, too.
  void Inherit(TBaseElementStyle& parent) override;
  void Reset(bool clearLast) override;
};

}  // namespace ht
