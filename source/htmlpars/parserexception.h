#pragma once

#include "htruntime/exception.h"

namespace ht {

/// Markup that cannot be read: raised in XML mode only.
class EHtmlParserException : public EHtException {
 public:
  using EHtException::EHtException;
};

}  // namespace ht
