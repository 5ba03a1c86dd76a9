#pragma once

#include <span>

#include "htdictionary/pointerdictionary.h"
#include "htruntime/hstring.h"

namespace ht {

/// One named character reference of HTML.
struct THtmlEntity {
  hstring Name;        // without "&" and ";"
  uint32_t Value = 0;  // the code point; of a name for two, the first
};
using PHtmlEntity = const THtmlEntity*;

/// The named character references of the HTML standard, each name once: 2125 rows, sorted by the lower-cased
/// name, the upper-case spelling first on a tie.
std::span<const THtmlEntity> HtEntityTable();

/// Name to row of the entity table. Names are case-sensitive.
class THtEntityDictionary : public THtPointerDictionary {
  HT_CLASS(THtEntityDictionary, THtPointerDictionary)

 public:
  THtEntityDictionary();

  /// The code point of a name; 0 if there is none.
  uint32_t FindEntity(const char16_t* chars, int32_t length) const;
};

/// The one entity dictionary: built at the first call, from any thread, and only read afterwards.
const THtEntityDictionary& GlobalEntityDictionary();

}  // namespace ht
