#include "command.h"
#include "document.h"
#include "document/document.h"
#include "output.h"

using namespace ht;

namespace {

int RunSelect(const TArguments& arguments) {
  TDocument document;
  ReadDocument(arguments, arguments.Operand(0), document);
  document.QueriedPseudos = kFoundPseudos;
  document.UpdateStyles();
  const TIntf<IHtNodeList> nodes = document.JQuery(HtFromUtf8(arguments.Operand(1)), false);
  const bool count = arguments.Has("--count");
  if (count) Print(std::to_string(nodes->GetCount()) + "\n");
  for (int32_t i = 0; !count && i < nodes->GetCount(); ++i)
    Print(static_cast<THtmlNode*>(nodes->GetNode(i))->GetOuterHTML() + u"\n");
  return nodes->GetCount() > 0 ? kFound : kNothingFound;
}

constexpr TOption kOptions[] = {{"--count", false}, kEncodingOption};

}  // namespace

extern const TCommand kSelectCommand = {
    "select",
    "print the elements that a CSS selector finds",
    "Usage: htdoc select [--count] [--encoding NAME] FILE SELECTOR\n"
    "Prints each element of FILE below the root that SELECTOR finds, in document order, as\n"
    "HTML on a line.\n"
    "\n"
    "Options:\n"
    "  --count          only the number of elements\n" HTDOC_ENCODING_HELP
    "\n"
    "The exit status is 1 when nothing is found.\n",
    kOptions,
    "FILE SELECTOR",
    RunSelect,
};
