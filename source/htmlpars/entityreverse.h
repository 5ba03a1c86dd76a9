#pragma once

#include "htdictionary/iddictionary.h"
#include "htmlpars/entities.h"

namespace ht {

/// Blocks of letters and punctuation that are written as they are although some have names.
constexpr bool HtNeverNamed(uint32_t c) {
  return c <= 591 || (c >= 880 && c <= 1279) || (c >= 1328 && c <= 1871) || (c >= 8192 && c <= 8351);
}

/// Code point to row of the entity table: the first row with that value. Holds none that is HtNeverNamed.
class THtEntityReverseDictionary : public THtIdPointerDictionary {
  HT_CLASS(THtEntityReverseDictionary, THtIdPointerDictionary)

 public:
  THtEntityReverseDictionary();

  /// The row of a code point, or null.
  PHtmlEntity FindEntity(uint32_t character) const;
};

/// The one reverse dictionary: built at the first call, from any thread, and only read afterwards.
const THtEntityReverseDictionary& HtEntityReverseDictionary();

}  // namespace ht
