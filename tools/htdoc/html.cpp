#include "command.h"
#include "document.h"
#include "output.h"

using namespace ht;

namespace {

int RunHtml(const TArguments& arguments) {
  const bool formatted = arguments.Has("--format");
  const int indent = formatted ? arguments.Number("--format", 0, 100) : 0;
  const auto root = ReadDocument(arguments, arguments.Operand(0));
  if (!formatted) {
    PrintLine(root->GetOuterHTML());
    return kFound;
  }
  TFastString builder(65500);
  bool newLine = false;
  root->FastFormattedHTML(builder, 0, indent, newLine);
  PrintLine(builder.GetAsString());
  return kFound;
}

constexpr TOption kOptions[] = {{"--format", true}, kEncodingOption};

}  // namespace

extern const TCommand kHtmlCommand = {
    "html",
    "print the repaired tree as HTML",
    "Usage: htdoc html [--format N] [--encoding NAME] FILE\n"
    "Prints the tree that the HTML of FILE gives as HTML again.\n"
    "\n"
    "Options:\n"
    "  --format N       on lines of their own, indented by N blanks a level (0 to 100); the\n"
    "                   root's own tag is left out then\n" HTDOC_ENCODING_HELP,
    kOptions,
    "FILE",
    RunHtml,
};
