#include "command.h"
#include "document.h"
#include "output.h"

using namespace ht;

namespace {

int RunXPath(const TArguments& arguments) {
  const bool value = arguments.Has("--value");
  const bool count = arguments.Has("--count");
  const bool first = arguments.Has("--first");
  if (value + count + first > 1) throw EUsage("only one of --value, --count and --first goes");
  const hstring path = HtFromUtf8(arguments.Operand(0));
  const auto root = ReadDocument(arguments, arguments.Operand(1));
  if (value) {
    const hstring found = root->XPathValue(path, nullptr);
    Print(found + u"\n");
    return found.Empty() ? kNothingFound : kFound;
  }
  const TIntf<IHtNodeList> nodes = root->XPath(path, first, nullptr);
  if (count) Print(std::to_string(nodes->GetCount()) + "\n");
  for (int32_t i = 0; !count && i < nodes->GetCount(); ++i)
    Print(static_cast<THtmlNode*>(nodes->GetNode(i))->GetOuterHTML() + u"\n");
  return nodes->GetCount() > 0 ? kFound : kNothingFound;
}

constexpr TOption kOptions[] = {{"--value", false}, {"--count", false}, {"--first", false}, kEncodingOption};

}  // namespace

extern const TCommand kXPathCommand = {
    "xpath",
    "print the nodes that a path finds",
    "Usage: htdoc xpath [--value | --count | --first] [--encoding NAME] PATH FILE\n"
    "Prints each node of FILE that PATH finds, from the root on, as HTML on a line.\n"
    "\n"
    "  a/b  a//b           children, descendants      *  ..  text()  @name\n"
    "  a[2]  a[last()]     by position, from 0        a[@id='x' and n>3 or not b]\n"
    "\n"
    "Options:\n"
    "  --value          only the first value: the text of a node or an attribute's value\n"
    "  --count          only the number of nodes\n"
    "  --first          only the first node\n" HTDOC_ENCODING_HELP
    "\n"
    "The exit status is 1 when nothing is found.\n",
    kOptions,
    "PATH FILE",
    RunXPath,
};
