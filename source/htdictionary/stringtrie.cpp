#include "htdictionary/stringtrie.h"

#include <utility>
#include <vector>

namespace ht {

void THtStringTrieItem::SetValue(TObject* value, bool owns) {
  if (OwnsValue && Value != value) delete Value;
  Value = value;
  OwnsValue = owns;
}

THtStringTrieItem& THtStringTrie::ChildOf(TItem& item, size_t byte) {
  if (!item.Items) item.Items = std::make_unique<decltype(item.Items)::element_type>();
  std::unique_ptr<TItem>& child = (*item.Items)[byte];
  if (!child) child = std::make_unique<TItem>();
  return *child;
}

void THtStringTrie::Add(std::u16string_view text, TObject* object) {
  TItem* item = &FRoot;
  for (char16_t c : text) item = &ChildOf(ChildOf(*item, c >> 8), c & 255);
  item->SetValue(object, FOwnsObjects);
}

TObject* THtStringTrie::ValueOf(std::u16string_view text) const {
  const TItem* item = &FRoot;
  for (char16_t c : text)
    for (size_t byte : {c >> 8, c & 255}) {
      if (!item->Items) return nullptr;
      item = (*item->Items)[byte].get();
      if (!item) return nullptr;
    }
  return item->Value;
}

// Keys may be long, so that neither walk over the whole trie can use the stack.

void THtStringTrie::Clear() {
  std::vector<decltype(FRoot.Items)> pending;
  pending.push_back(std::move(FRoot.Items));
  FRoot.SetValue(nullptr, true);
  while (!pending.empty()) {
    const auto items = std::move(pending.back());
    pending.pop_back();
    if (!items) continue;
    for (auto& item : *items)
      if (item) pending.push_back(std::move(item->Items));
  }
}

void THtStringTrie::Assign(const THtStringTrie& other) {
  if (&other == this) return;
  Clear();
  std::vector<std::pair<const TItem*, TItem*>> pending{{&other.FRoot, &FRoot}};
  while (!pending.empty()) {
    const auto [from, to] = pending.back();
    pending.pop_back();
    to->SetValue(from->Value, !from->Value);
    if (!from->Items) continue;
    for (size_t byte = 0; byte < from->Items->size(); ++byte)
      if (const auto& item = (*from->Items)[byte]) pending.emplace_back(item.get(), &ChildOf(*to, byte));
  }
}

}  // namespace ht
