#include "htutils/email.h"

#include <algorithm>

namespace ht {

hstring SplitEmailAdress(const hstring& text, hstring& name, hstring& address) {
  const hstring kept = text;  // may be one of the outputs
  const std::u16string_view all = kept;
  std::u16string found;
  size_t pos = std::min(all.find_first_not_of(u' '), all.size());
  if (pos < all.size() && (all[pos] == u'"' || all[pos] == u'\'')) {
    const size_t end = std::min(all.find(all[pos], pos + 1), all.size());
    found = all.substr(pos + 1, end - pos - 1);
    pos = std::min(end + 1, all.size());
  }

  std::u16string_view foundAddress;
  size_t stretch = pos;  // the start of the word that is being read
  for (;; ++pos) {
    const char16_t c = pos < all.size() ? all[pos] : u',';
    if (c == u' ') {
      found += all.substr(stretch, pos + 1 - stretch);
      stretch = pos + 1;
    } else if (c == u',') {
      foundAddress = all.substr(stretch, pos - stretch);
      break;
    } else if (c == u'<') {
      found += all.substr(stretch, pos - stretch);
      const size_t end = std::min(all.find(u'>', pos), all.size());
      foundAddress = all.substr(pos + 1, end - pos - 1);
      pos = end;
      break;
    }
  }
  name = HtTrim(found);
  address = HtTrim(foundAddress);
  return all.substr(std::min(pos + 1, all.size()));
}

}  // namespace ht
