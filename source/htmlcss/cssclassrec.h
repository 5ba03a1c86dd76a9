#pragma once

#include "htdictionary/hash.h"
#include "htruntime/sharedarray.h"

namespace ht {

/// A class name with its hash: of a selector, and of an element. Two are the same when hash and text are.
struct TCSSClassRec {
  hstring s;          // in lower case
  uint32_t hash = 0;  // RSHash of s

  TCSSClassRec() = default;
  explicit TCSSClassRec(hstring name) : s(std::move(name)), hash(RSHash(s.Data(), s.Length())) {}

  friend bool operator==(const TCSSClassRec& a, const TCSSClassRec& b) {
    return a.hash == b.hash && a.s == b.s;
  }
};

/// The classes of an element, or of a compound selector, in the order in which they are written.
using TClassesArray = TSharedArray<TCSSClassRec>;

}  // namespace ht
