#include "htmlcss/jqueryprocessor.h"

#include "htmlcss/cssparser.h"

namespace ht {

TJQueryProcessor::TJQueryProcessor(const hstring& selector) {
  TCSSParser parser(selector + u"{}", true);  // read as a rule without declarations
  if (parser.NextSection()) Section = std::move(parser.Section);
}

}  // namespace ht
