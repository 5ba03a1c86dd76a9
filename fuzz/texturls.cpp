// Putting the URLs that were handed over back in their places gives the text again.
#include "htmlpars/texturls.h"

#include <cstdint>
#include <vector>

#include "support/require.h"

using namespace ht;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr char16_t kPlace = 0xE000;
  constexpr size_t kAdded = std::u16string_view(u"http://").size();
  const hstring text = HtFromUtf8({reinterpret_cast<const char*>(data), size});
  if (text.View().find(kPlace) != std::u16string_view::npos) return 0;

  std::vector<hstring> urls;
  const hstring result = ReplaceTextURLs(text, [&](const hstring& url) {
    urls.push_back(url);
    return hstring(1, kPlace);
  });

  std::u16string_view rest = text;
  size_t next = 0;
  for (char16_t c : result) {
    if (c == kPlace) {
      std::u16string_view url = urls.at(next++);
      Require(url.find(u"//") != url.npos || url.starts_with(u"http"));
      if (!rest.starts_with(url)) url.remove_prefix(kAdded);
      Require(!url.empty() && rest.starts_with(url));
      rest.remove_prefix(url.size());
    } else {
      Require(!rest.empty() && rest[0] == c);
      rest.remove_prefix(1);
    }
  }
  Require(rest.empty() && next == urls.size());
  return 0;
}
