#include <unordered_map>
#include <vector>

#include "htmlpars/node.h"
#include "htutils/dates.h"
#include "htutils/numbers.h"

namespace ht {

namespace {

struct TSortKey {
  hstring Name;
  bool Ascending;
};

std::vector<TSortKey> ParseKeys(std::u16string_view attributes, bool ascending) {
  std::vector<TSortKey> keys;
  while (!attributes.empty()) {
    const size_t comma = std::min(attributes.find(u','), attributes.size());
    std::u16string_view name = attributes.substr(0, comma);
    attributes.remove_prefix(std::min(comma + 1, attributes.size()));
    const bool turned = name.starts_with(u'^');
    if (turned) name.remove_prefix(1);
    keys.push_back({name, ascending != turned});
  }
  return keys;
}

int Sign(double a, double b) { return (a > b) - (a < b); }

int CompareValues(const hstring& a, const hstring& b, THtSortCompareType type) {
  switch (type) {
    case scCaseSensitive: return HtCompareStr(a, b);
    case scCaseInsensitive: return HtCompareText(a, b);
    case scFloat: return Sign(iStrtoFloat(a), iStrtoFloat(b));
    case scDate: return Sign(StrtoDateFmt(a, {}), StrtoDateFmt(b, {}));
  }
  return 0;
}

int CompareNodes(const THtNode& a, const THtNode& b, const std::vector<TSortKey>& keys,
                 THtSortCompareType type) {
  for (const TSortKey& key : keys) {
    const int order = CompareValues(a.GetAttribute(key.Name), b.GetAttribute(key.Name), type);
    if (order != 0) return key.Ascending ? order : -order;
  }
  return 0;
}

}  // namespace

// Quicksort about the middle entry. The smaller part is sorted by recursion, so that the depth stays logarithmic; a
// comparison that contradicts itself gives some order, but never leaves the range.
template <class TCompare, class TSwap>
void THtNodeList::QuickSort(int32_t low, int32_t high, const TCompare& compare, const TSwap& swap) {
  while (low < high) {
    int32_t i = low;
    int32_t j = high;
    THtNode* pivot = GetNode(low + (high - low) / 2);
    while (i <= j) {
      while (i < high && compare(GetNode(i), pivot) < 0) ++i;
      while (j > low && compare(GetNode(j), pivot) > 0) --j;
      if (i > j) break;
      if (i != j) swap(i, j);
      ++i;
      --j;
    }
    if (j - low < high - i) {
      QuickSort(low, j, compare, swap);
      low = i;
    } else {
      QuickSort(i, high, compare, swap);
      high = j;
    }
  }
}

// The list does not own its nodes while they are compared, and is put in order again also when a comparison raises.
template <class TCompare, class TSwap>
void THtNodeList::SortNodes(const TCompare& compare, const TSwap& swap) {
  struct TProtection {
    THtNodeList& List;
    bool Owns;
    ~TProtection() {
      List.SetOwnsObjects(Owns);
      List.SetSiblings();
    }
  } protection{*this, GetOwnsObjects()};
  SetOwnsObjects(false);
  QuickSort(0, FCount - 1, compare, swap);
}

void THtNodeList::SortbyAttr(const hstring& attributes, THtSortCompareType compareType, bool ascending) {
  const std::vector<TSortKey> keys = ParseKeys(attributes, ascending);
  SortNodes([&](THtNode* a, THtNode* b) { return CompareNodes(*a, *b, keys, compareType); },
            [this](int32_t i, int32_t j) { std::swap(FItems[i], FItems[j]); });
}

void THtNodeList::SortElements(TObject* comparer, bool) {
  // Where the children of the parents met so far stand; Exchange keeps it true.
  std::unordered_map<THtNode*, int32_t> positions;
  const auto exchangeInParent = [&](THtNode* a, THtNode* b) {
    THtNode* parent = a->GetParent();
    if (!parent || parent != b->GetParent() || parent->GetNodes() == this) return;
    if (!positions.contains(a))
      for (int32_t i = 0; i < parent->GetCount(); ++i) positions[parent->GetNode(i)] = i;
    parent->GetNodes()->Exchange(positions[a], positions[b]);
    std::swap(positions[a], positions[b]);
  };
  SortNodes([comparer](THtNode* a, THtNode* b) { return a->ScriptCompare(comparer, b); },
            [&](int32_t i, int32_t j) {
              exchangeInParent(GetNode(i), GetNode(j));
              std::swap(FItems[i], FItems[j]);
            });
}

}  // namespace ht
