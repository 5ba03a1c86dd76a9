#include "htutils/enumlookup.h"

#include <algorithm>
#include <iterator>

namespace ht {

bool IsEnum(std::u16string_view name, const THtEnumInfo& typeInfo, int32_t& value) {
  return IsEnum2({}, name, typeInfo, value);
}

bool IsEnum2(std::u16string_view prefix, std::u16string_view name, const THtEnumInfo& typeInfo,
             int32_t& value) {
  char16_t stripped[128];  // longer than any identifier, so a longer name is none
  if (name.find(u'-') != name.npos) {
    const auto letters = static_cast<size_t>(name.size() - std::count(name.begin(), name.end(), u'-'));
    if (letters > std::size(stripped)) return false;
    std::remove_copy(name.begin(), name.end(), stripped, u'-');
    name = {stripped, letters};
  }
  const int ordinal = typeInfo.Find(prefix, name);
  if (ordinal < 0) return false;
  value = ordinal;
  return true;
}

}  // namespace ht
