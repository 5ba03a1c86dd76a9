#include "command.h"
#include "document.h"
#include "output.h"

using namespace ht;

namespace {

int RunText(const TArguments& arguments) {
  const auto root = ReadDocument(arguments, arguments.Operand(0));
  if (!arguments.Has("--flat")) {
    PrintLine(root->GetInnerText());
    return kFound;
  }
  TFastString builder(65500);
  root->FastInnerText(builder);
  PrintLine(builder.GetAsString());
  return kFound;
}

constexpr TOption kOptions[] = {{"--flat", false}, kEncodingOption};

}  // namespace

extern const TCommand kTextCommand = {
    "text",
    "print the text of the document",
    "Usage: htdoc text [--flat] [--encoding NAME] FILE\n"
    "Prints the text of FILE as a reader sees it: blocks on lines of their own, the cells of\n"
    "a row joined by a tab. White space inside a text stays as it is.\n"
    "\n"
    "Options:\n"
    "  --flat           the flat form for search: without the head, with the addresses and\n"
    "                   titles of links\n" HTDOC_ENCODING_HELP,
    kOptions,
    "FILE",
    RunText,
};
