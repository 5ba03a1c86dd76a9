#include <unordered_set>

#include "htmlcss/stylesheet.h"
#include "htutils/faststring.h"

namespace ht {

namespace {

constexpr int32_t kSheetChunk = 65535;

const TCSSMediaSet* WrittenMediaSet(const TCSSSection& section) {
  return section.MediaSet && !section.MediaSet->Tokens.Empty() ? section.MediaSet : nullptr;
}

}  // namespace

hstring TCSSStyleSheet::AsString() const {
  TFastString text(kSheetChunk);
  const TCSSMediaSet* open = nullptr;
  const auto change = [&](const TCSSMediaSet* set) {
    if (set == open) return;
    if (open) text.Add(u"}\r\n");
    if (set) text.Add(set->AsString()).Add(u"{\r\n");
    open = set;
  };
  for (int32_t i = 0; i < fSections.GetCount(); ++i) {
    change(WrittenMediaSet(*GetSection(i)));
    text.Add(GetSection(i)->AsString()).Add(u"\r\n");
  }
  change(nullptr);
  return text.GetAsString();
}

hstring TCSSStyleSheet::AsInlineString() const {
  TFastString text(128);
  std::unordered_set<const TCSSSection*> written;
  for (const TCSSStyleMap* map :
       {Main.Tags.get(), Main.IDs.get(), Main.Pseudos.get(), Main.Classes.get(), Main.Conditions.get()})
    for (int32_t i = 0; map && i < map->Count(); ++i)
      for (const TCSSSelector* selector : *map->GetSelectors(i))
        if (written.insert(selector->Section).second) text.Add(selector->Section->AsInlineString());
  return HtTrim(text.GetAsString());
}

void TCSSStyleSheet::Minify() {
  for (int32_t i = 0; i < fSections.GetCount(); ++i) GetSection(i)->Minify();
}

}  // namespace ht
