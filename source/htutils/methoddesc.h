#pragma once

#include "htruntime/hstring.h"

namespace ht {

/// A description in words, attached to a method of a class that scripts can use.
class MethodDesc {
 public:
  explicit MethodDesc(hstring description) : FDescription(std::move(description)) {}

  const hstring& Description() const { return FDescription; }

 private:
  hstring FDescription;
};

}  // namespace ht
