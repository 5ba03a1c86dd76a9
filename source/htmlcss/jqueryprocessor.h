#pragma once

#include <memory>

#include "htmlcss/csssection.h"

namespace ht {

/// Turns the text of a query, as of TStyledHTMLNode::JQuery, into selectors.
///
///   TJQueryProcessor query(u"ul.x > li, #top"_hs);
///   if (query.Section) query.Section->Selectors.GetCount();     // 2
class TJQueryProcessor {
 public:
  /// Null if the text gave none.
  std::unique_ptr<TCSSSection> Section;

  explicit TJQueryProcessor(const hstring& selector);
};

}  // namespace ht
