#include "htruntime/enums.h"

#include "htruntime/hstring.h"

namespace ht {

THtEnumInfo::THtEnumInfo(std::u16string_view typeName, std::u16string_view names) : FTypeName(typeName) {
  while (!names.empty()) {
    const size_t comma = names.find(u',');
    FNames.push_back(HtTrim(names.substr(0, comma)));
    names = comma == names.npos ? std::u16string_view() : names.substr(comma + 1);
  }
}

std::u16string_view THtEnumInfo::NameOf(int ordinal) const {
  return ordinal >= 0 && ordinal < Count() ? FNames[static_cast<size_t>(ordinal)] : std::u16string_view();
}

namespace {

constexpr char16_t Lower(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; }

bool SameAscii(std::u16string_view a, std::u16string_view b) {
  for (size_t i = 0; i < a.size(); ++i)
    if (Lower(a[i]) != Lower(b[i])) return false;
  return true;
}

}  // namespace

int THtEnumInfo::Find(std::u16string_view prefix, std::u16string_view name) const {
  for (int i = 0; i < Count(); ++i) {
    const std::u16string_view id = FNames[static_cast<size_t>(i)];
    if (id.size() == prefix.size() + name.size() && SameAscii(prefix, id.substr(0, prefix.size())) &&
        SameAscii(name, id.substr(prefix.size())))
      return i;
  }
  return -1;
}

}  // namespace ht
