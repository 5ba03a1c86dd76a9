// Any path compiles, and the walks into a list, a value and a callback agree.
#include "htmlpars/xpath.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "htmlpars/htmlnode.h"
#include "support/require.h"

using namespace ht;

static const THtmlNode& Page() {
  static const auto page = [] {
    auto root = std::make_unique<THtmlNode>();
    root->Parse(u"<a id=1 b=c>x<b>3</b><b id=2>y<b c='d/e'>7</b></b></a><!--c--><c id=3><a>12</a></c>");
    return root;
  }();
  return *page;
}

// Each step may visit every node again for every one before it, so that the time grows with the power of their number.
static bool IsCheap(std::u16string_view path) {
  const auto steps =
      std::count_if(path.begin(), path.end(), [](char16_t c) { return c == u'/' || c == u'['; });
  return steps <= 8 && path.size() <= 200;
}

static bool KnowsCallback(const TXPathProcessor& path) {
  return std::all_of(path.Nodes.begin(), path.Nodes.end(),
                     [](const TXPathNode& step) { return step.Kind != xkAttr && step.Kind != xkCurrent; });
}

static void Check(THtNode& start, const hstring& path) {
  std::vector<THtNode*> listed, called;
  const TIntf<IHtNodeList> list = start.XPath(path);
  for (int32_t i = 0; i < list->GetCount(); ++i) listed.push_back(list->GetNode(i));

  const TIntf<IHtNodeList> first = start.XPath(path, true);
  Require(first->FirstNode() == list->FirstNode() && first->GetCount() <= list->GetCount());
  Require(start.GetParent() || !listed.empty() || start.XPathValue(path).Empty());

  int calls = 0;
  start.XPath(path, [&](THtNode* node, bool&) { called.push_back(node); });
  start.XPath(path, [&](THtNode*, bool& goOn) { ++calls, goOn = false; });
  Require(calls == (called.empty() ? 0 : 1));
  // Only the list starts at a node that is not the root in spite of a "/".
  const TXPathProcessor compiled(path);
  if (!KnowsCallback(compiled) || (compiled.Root && start.GetParent())) return;
  std::sort(listed.begin(), listed.end());
  std::sort(called.begin(), called.end());
  Require(listed == called);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const hstring path = HtFromUtf8({reinterpret_cast<const char*>(data), size});
  const TXPathProcessor compiled(path);
  for (size_t i = 0; i < compiled.Nodes.size(); ++i)
    Require(compiled.Nodes[i].Next == (i + 1 < compiled.Nodes.size() ? &compiled.Nodes[i + 1] : nullptr));
  if (!IsCheap(path)) return 0;
  auto& page = const_cast<THtmlNode&>(Page());
  Check(page, path);
  Check(*page.GetNode(0)->GetNode(1), path);
  return 0;
}
