#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "htruntime/object.h"

namespace ht {

/// A pointer as an integer.
inline intptr_t HtClassFieldOffset(const void* p) { return reinterpret_cast<intptr_t>(p); }

/// Where a field lies in the items of a dictionary, as its constructor takes it: in a class counted from its
/// TObject, since that is what an object dictionary holds, and in a plain record from the start.
///
///   THtObjectDictionary tags(255, true, HtNameOffset(&THtStringRec::Name));
template <class T, class TField>
intptr_t HtNameOffset(TField T::*field) {
  alignas(T) std::byte place[sizeof(T)];  // never read: only the distance counts
  auto* record = reinterpret_cast<T*>(place);
  const intptr_t at = HtClassFieldOffset(&(record->*field));
  if constexpr (std::is_base_of_v<TObject, T>)
    return at - HtClassFieldOffset(static_cast<TObject*>(record));
  else
    return at - HtClassFieldOffset(record);
}

}  // namespace ht
