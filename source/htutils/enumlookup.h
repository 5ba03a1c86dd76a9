#pragma once

#include "htruntime/enums.h"

namespace ht {

/// Looks a name up among the identifiers of an enumeration, every "-" of the name left out, without regard to ASCII
/// case. `value` is set to the ordinal when there is one.
///
///   int32_t ordinal;
///   IsEnum2(u"ds", u"inline-block", HtEnumOf<TCSSDisplay>(), ordinal)   // finds dsInlineBlock
bool IsEnum(std::u16string_view name, const THtEnumInfo& typeInfo, int32_t& value);
/// The same with `prefix` in front of what is left of the name.
bool IsEnum2(std::u16string_view prefix, std::u16string_view name, const THtEnumInfo& typeInfo,
             int32_t& value);

/// For a value of the enumeration itself.
template <class TEnum>
bool IsEnum2(std::u16string_view prefix, std::u16string_view name, TEnum& value) {
  int32_t ordinal;
  if (!IsEnum2(prefix, name, HtEnumOf<TEnum>(), ordinal)) return false;
  value = static_cast<TEnum>(ordinal);
  return true;
}
template <class TEnum>
bool IsEnum(std::u16string_view name, TEnum& value) {
  return IsEnum2({}, name, value);
}

}  // namespace ht
