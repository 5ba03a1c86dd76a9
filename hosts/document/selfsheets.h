#pragma once

#include <unordered_map>

#include "htmlcss/stylesheet.h"

namespace ht {

class TDocumentNode;

/// The sheets of elements' own declarations (the `style` attribute, presentational attributes). Elements that declare the
/// same share one: it is parsed once, and its RefCounter counts the elements.
class TSelfSheets {
 public:
  TSelfSheets() = default;
  ~TSelfSheets();
  TSelfSheets(const TSelfSheets&) = delete;
  TSelfSheets& operator=(const TSelfSheets&) = delete;

  /// Makes SelfStyleSheet what the element declares now; null if that is nothing.
  void Give(TDocumentNode& element);
  /// Frees those that no element holds.
  void DropUnused();

 private:
  std::unordered_map<hstring, TCSSStyleSheet*> FSheets;
};

}  // namespace ht
