#include "htutils/fill.h"

#include <algorithm>
#include <cwchar>

namespace ht {

// The C library's fill of wide characters is vector code for the processor at hand: twice the speed of the string store.
void detail::FillManyLongs(uint32_t value, uint32_t* words, int32_t count) {
  if constexpr (sizeof(wchar_t) == sizeof(uint32_t))
    std::wmemset(reinterpret_cast<wchar_t*>(words), static_cast<wchar_t>(value), static_cast<size_t>(count));
  else
    std::fill_n(words, count, value);
}

}  // namespace ht
