#include "htmlcss/cssextension.h"

#include <algorithm>

namespace ht {

namespace {

// Made at the first registration.
std::unique_ptr<THtObjectList>& Registry() {
  static std::unique_ptr<THtObjectList> registry;
  return registry;
}

}  // namespace

TCSSExtension::TCSSExtension(std::span<const hstring> keyClasses, const hstring& css)
    : KeyClasses(keyClasses.begin(), keyClasses.end()) {
  CSS.Parse(css);
}

void TCSSExtension::RegisterExtension(std::span<const hstring> keyClasses, const hstring& css) {
  if (!Registry()) Registry() = std::make_unique<THtObjectList>(true);
  Registry()->Add(new TCSSExtension(keyClasses, css));
}

void TCSSExtension::AddExtensions(const THtStringList& classes, TCSSStyleSheet& sheet) {
  if (!Registry()) return;
  for (int32_t i = 0; i < Registry()->GetCount(); ++i) {
    const auto* extension = Registry()->Get<TCSSExtension>(i);
    const auto isThere = [&classes](const hstring& name) { return classes.HasKey(name); };
    if (std::any_of(extension->KeyClasses.begin(), extension->KeyClasses.end(), isThere))
      sheet.Assign(extension->CSS);
  }
}

}  // namespace ht
