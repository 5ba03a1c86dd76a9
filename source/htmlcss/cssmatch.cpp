#include "htmlcss/cssmatch.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>
#include <utility>

#include "htmlcss/stylesheet.h"

namespace ht {

// The one found before in the same parent is near; what is remembered is only a guess, and is checked.
int32_t HtIndexInParent(const TStyledHTMLNode& node, const THtNode& parent) {
  struct TGuess {
    const THtNode* Parent;
    int32_t Index;
  };
  constexpr size_t kGuesses = 64;
  constexpr int32_t kReach = 8;
  thread_local TGuess guesses[kGuesses];
  TGuess& guess = guesses[reinterpret_cast<uintptr_t>(&parent) / alignof(std::max_align_t) / 8 % kGuesses];
  const int32_t count = parent.GetCount();
  if (guess.Parent == &parent)
    for (int32_t i = guess.Index; i < std::min(count, guess.Index + kReach); ++i)
      if (parent.GetNode(i) == &node) return guess.Index = i;
  const int32_t index = node.NodeIndex();
  guess = {&parent, std::max(0, index)};
  return index;
}

namespace {

TStyledHTMLNode* ParentOf(const TStyledHTMLNode& node) {
  return static_cast<TStyledHTMLNode*>(node.THtNode::GetParent());
}

// The nearest sibling with a tag before the index; null if there is none.
TStyledHTMLNode* ElementBefore(const THtNode& parent, int32_t& index) {
  while (--index >= 0)
    if (THtNode* sibling = parent.GetNode(index); !sibling->GetTag().Empty())
      return static_cast<TStyledHTMLNode*>(sibling);
  return nullptr;
}

TStyledHTMLNode* PreviousElement(const TStyledHTMLNode& node) {
  const THtNode* parent = ParentOf(node);
  if (!parent) return nullptr;
  int32_t index = HtIndexInParent(node, *parent);
  return ElementBefore(*parent, index);
}

bool AnyNotApplies(const TCSSSelector& compound, TStyledHTMLNode& node, TCSSPseudo pseudos) {
  for (const auto& negation : compound.Nots)
    if (negation->Matches(node, pseudos)) return true;
  return false;
}

bool StepsAside(const TCSSSelector& compound) {
  return compound.Parent && (compound.Position == spSibling || compound.Position == spAllSiblings);
}

// For a compound that looks at ancestors and is met: the next one, from the parent on, finds all that it would find
// from further up.
bool CoversAncestors(const TCSSSelector& compound) {
  return compound.Position == spDescendant && compound.Parent->Nots.empty() && !StepsAside(*compound.Parent);
}

// Where the search for a compound begins.
struct TStart {
  enum TKind : uint8_t {
    stNode,         // at one node
    stElements,     // at each child of Node with a tag, from Index down to the first
    stAllChildren,  // at each child of Node, from Index down to the first
  };

  TStyledHTMLNode* Node;
  int32_t Index;  // of stNode: in the parent, or -1 if it is not known
  TKind Kind;
  TSelectorPosition Position;  // how the nodes were reached
};

class TStarts {
 public:
  size_t Count() const { return FCount; }
  const TStart& operator[](size_t i) const { return i < kPlaces ? FPlaces[i] : FMore[i - kPlaces]; }
  void Push(const TStart& start) {
    if (FCount < kPlaces)
      FPlaces[FCount] = start;
    else
      FMore.push_back(start);
    ++FCount;
  }
  void Clear() {
    FCount = 0;
    FMore.clear();
  }

 private:
  static constexpr size_t kPlaces = 12;  // hardly any query needs more, and these cost no allocation

  size_t FCount = 0;
  TStart FPlaces[kPlaces];
  std::vector<TStart> FMore;
};

// Looks for nodes that meet the compounds of a chain, one after the other from right to left. A compound is asked of the
// node it starts at and then of the ancestors of that node:
//
//   it is met: a negation that applies ends this way; no compound left of it is success; one that looks at ancestors
//     starts at the node's parent, and the walk goes on all the same
//   it is not met, and only the parent would do: this way ends
//   the next compound looks at siblings, whether this one is met or not: it starts at the previous one, or at all from
//     the node itself on down, and this way ends
//
// Compound after compound, instead of way after way, each pair of compound and node is looked at once: chains over
// ancestors that are met everywhere take polynomial time, and no stack.
class TChainSearch {
 public:
  explicit TChainSearch(TCSSPseudo pseudos) : FPseudos(pseudos) {}

  bool RunFrom(const TStyledHTMLNode& element, const TCSSSelector& selector) {
    TStyledHTMLNode* parent = ParentOf(element);
    if (!parent) return false;
    if (!StepsAside(selector)) {
      FNext->Push({parent, -1, TStart::stNode, selector.Position});
    } else {
      const int32_t index = HtIndexInParent(element, *parent);
      if (selector.Position == spSibling)
        PushPrevious(*parent, index);
      else
        FNext->Push({parent, index - 1, TStart::stAllChildren, spAllSiblings});
    }
    return Run(selector.Parent.get());
  }

 private:
  bool Run(const TCSSSelector* compound) {
    for (; compound && FNext->Count() > 0; compound = compound->Parent.get()) {
      std::swap(FNow, FNext);
      FNext->Clear();
      FVisited.clear();
      FMayRepeat = FNow->Count() > 1;
      for (size_t i = 0; i < FNow->Count(); ++i)
        if (Explore(*compound, (*FNow)[i])) return true;
    }
    return false;
  }

  enum TWay : uintptr_t { kAnyWay, kOnlyParent, kRow };

  // Whether the compound has not come this way yet. Few steps are cheaper repeated than remembered, and from one start
  // none repeats.
  bool IsNew(const TStyledHTMLNode* node, TWay way) {
    return !FMayRepeat || ++FSteps <= kFreeSteps ||
           FVisited.insert(reinterpret_cast<uintptr_t>(node) | way).second;
  }

  bool Explore(const TCSSSelector& compound, const TStart& start) {
    if (start.Kind == TStart::stNode) return Climb(compound, start.Node, start.Index, start.Position);
    bool parentDone = false;
    for (int32_t i = start.Index; i >= 0; --i) {
      auto* child = static_cast<TStyledHTMLNode*>(start.Node->THtNode::GetNode(i));
      if (start.Kind == TStart::stElements && child->GetTag().Empty()) continue;
      if (!IsNew(child, kRow)) break;
      const size_t before = FNext->Count();
      if (Climb(compound, child, i, start.Position, &parentDone)) return true;
      // What the children before this one lead to, too, is known now.
      if (FNext->Count() > before && compound.Position == spAllSiblings) break;
    }
    return false;
  }

  // With `parentDone` the node is one of a row, and only the first that gets to their parent goes on there.
  bool Climb(const TCSSSelector& compound, TStyledHTMLNode* node, int32_t index, TSelectorPosition position,
             bool* parentDone = nullptr) {
    for (; node; node = ParentOf(*node), index = -1) {
      if (!IsNew(node, position == spChild ? kOnlyParent : kAnyWay)) return false;
      const TCSSPseudo current = HtPseudosFor(compound, *node, FPseudos);
      if (compound.Matches(*node, current)) {
        if (AnyNotApplies(compound, *node, current)) return false;
        if (!compound.Parent) return true;
        if (!StepsAside(compound) && GoUp(compound, *node)) return false;
      } else if (position == spChild) {
        return false;
      }
      if (StepsAside(compound)) {
        GoAside(compound, *node, index);
        return false;
      }
      if (parentDone && std::exchange(*parentDone, true)) return false;
      parentDone = nullptr;
    }
    return false;
  }

  // Whether that covers what the ancestors of the node lead to, too.
  bool GoUp(const TCSSSelector& compound, const TStyledHTMLNode& node) {
    TStyledHTMLNode* parent = ParentOf(node);
    if (!parent) return false;
    FNext->Push({parent, -1, TStart::stNode, compound.Position});
    return compound.Position == spDescendant && compound.Parent->Nots.empty() &&
           !StepsAside(*compound.Parent);
  }

  void GoAside(const TCSSSelector& compound, const TStyledHTMLNode& node, int32_t index) {
    TStyledHTMLNode* parent = ParentOf(node);
    if (!parent) return;
    if (index < 0) index = HtIndexInParent(node, *parent);
    if (compound.Position == spSibling)
      PushPrevious(*parent, index);
    else
      FNext->Push({parent, index, TStart::stElements, spAllSiblings});
  }

  void PushPrevious(const THtNode& parent, int32_t index) {
    if (TStyledHTMLNode* sibling = ElementBefore(parent, index))
      FNext->Push({sibling, index, TStart::stNode, spSibling});
  }

  static constexpr size_t kFreeSteps = 128;

  const TCSSPseudo FPseudos;
  TStarts FFirst, FSecond;
  TStarts* FNow = &FFirst;
  TStarts* FNext = &FSecond;
  size_t FSteps = 0;
  bool FMayRepeat = false;
  std::unordered_set<uintptr_t> FVisited;  // by this compound; the low bits are the way
};

enum TAnswer : uint8_t { anNo, anYes, anUnknown };

// Nearly all chains are decided by the nearest nodes that meet their compounds, without any bookkeeping. `node` is where
// the compound left of `selector` starts.
TAnswer AskNearest(const TCSSSelector& selector, TStyledHTMLNode* node, TCSSPseudo pseudos) {
  TAnswer failure = anNo;
  TSelectorPosition position = selector.Position;
  for (const TCSSSelector* compound = selector.Parent.get();; compound = compound->Parent.get()) {
    const bool stepsAside = StepsAside(*compound);
    for (;; node = ParentOf(*node)) {
      if (!node) return failure;
      const TCSSPseudo current = HtPseudosFor(*compound, *node, pseudos);
      if (compound->Matches(*node, current)) {
        if (AnyNotApplies(*compound, *node, current)) return failure;
        if (!compound->Parent) return anYes;
        break;
      }
      if (position == spChild) return failure;
      if (stepsAside) break;
    }
    position = compound->Position;
    if (position == spAllSiblings) return anUnknown;
    if (!stepsAside && !CoversAncestors(*compound)) failure = anUnknown;
    node = stepsAside ? PreviousElement(*node) : ParentOf(*node);
  }
}

// Whether a compound to the left that asks for much, an id or a class, is met by no ancestor: then the chain is not, and no
// way needs to be tried. Only the nearest such compound is looked for, and not far.
bool LacksAncestor(const TCSSSelector& selector, const TStyledHTMLNode& element, TCSSPseudo pseudos) {
  constexpr int kFarthest = 8;
  const TCSSSelector* compound = &selector;
  if (StepsAside(selector)) return false;
  for (int i = 0; i < kFarthest; ++i) {
    if (!compound->Parent) return false;
    compound = compound->Parent.get();
    if (StepsAside(*compound)) return false;  // goes aside even where it is not met
    if (compound->ID.Empty() && compound->Classes.Empty()) continue;
    for (TStyledHTMLNode* node = ParentOf(element); node; node = ParentOf(*node))
      if (compound->Matches(*node, HtPseudosFor(*compound, *node, pseudos))) return false;
    return true;
  }
  return false;
}

}  // namespace

bool HtMeetsRest(TStyledHTMLNode& element, const TCSSSelector& selector, TCSSPseudo current,
                 TCSSPseudo pseudos) {
  if (AnyNotApplies(selector, element, current)) return false;
  if (!selector.Parent) return true;
  TAnswer answer = anUnknown;
  if (selector.Position != spAllSiblings)
    answer = AskNearest(
        selector, selector.Position == spSibling ? PreviousElement(element) : ParentOf(element), pseudos);
  if (answer != anUnknown) return answer == anYes;
  return !LacksAncestor(selector, element, pseudos) && TChainSearch(pseudos).RunFrom(element, selector);
}

bool TCSSStyleSheet::TestElement(TStyledHTMLNode& element, const TCSSSelector& selector, TCSSPseudo pseudos) {
  if (!(pseudos <= selector.Pseudos)) return false;
  const TCSSPseudo current = HtPseudosFor(selector, element, pseudos);
  return selector.Matches(element, current) && HtMeetsRest(element, selector, current, pseudos);
}

}  // namespace ht
