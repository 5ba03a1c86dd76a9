#include "command.h"
#include "document.h"
#include "output.h"

using namespace ht;

namespace {

void AddLine(TFastString& lines, int32_t level, std::initializer_list<std::u16string_view> parts) {
  lines.Add(u"| ").AddSpaces(2 * level);
  for (std::u16string_view part : parts) lines.Add(part);
  lines.AddChar(u'\n');
}

void AddElement(TFastString& lines, int32_t level, const THtNode& node) {
  AddLine(lines, level, {u"<", node.GetTag(), u">"});
  const THtAttributes* attributes = node.GetAttributes();
  for (int32_t i = 0; attributes && i < attributes->Count; ++i)
    AddLine(lines, level + 1, {attributes->GetName(i), u"=\"", attributes->GetValue(i), u"\""});
  const bool raw = node.TagType == htScript || node.TagType == htStyle;
  if (raw && !node.GetContent().Empty()) AddLine(lines, level + 1, {u"\"", node.GetContent(), u"\""});
}

void AddNode(TFastString& lines, int32_t level, const THtNode& node) {
  const hstring& content = node.GetContent();
  switch (node.TagType) {
    case htComment: return AddLine(lines, level, {u"<!-- ", content, u" -->"});
    case htDirective: return AddLine(lines, level, {u"<?", content, u"?>"});
    case htCData: return AddLine(lines, level, {u"<![CDATA[", content, u"]]>"});
    default:
      return node.GetTag().Empty() ? AddLine(lines, level, {u"\"", content, u"\""})
                                   : AddElement(lines, level, node);
  }
}

int RunTree(const TArguments& arguments) {
  const auto root = ReadDocument(arguments, arguments.Operand(0));
  TFastString lines(65500);
  const bool rootShown = !root->GetTag().Empty();
  if (rootShown) AddNode(lines, 0, *root);
  int32_t level = rootShown ? 1 : 0;
  const THtNode* node = root->FirstChild();
  while (node) {
    AddNode(lines, level, *node);
    if (node->FirstChild()) {
      node = node->FirstChild();
      ++level;
      continue;
    }
    while (node && node != root.get() && !node->NextSibling()) {
      node = node->GetParent();
      --level;
    }
    node = node && node != root.get() ? node->NextSibling() : nullptr;
  }
  Print(lines.GetAsString());
  return kFound;
}

constexpr TOption kOptions[] = {kEncodingOption};

}  // namespace

extern const TCommand kTreeCommand = {
    "tree",
    "show the repaired tree, one line a node",
    "Usage: htdoc tree [--encoding NAME] FILE\n"
    "Shows the tree that the HTML of FILE gives, one line a node, two blanks a level:\n"
    "\n"
    "  <tag>               an element; under it, one level deeper, its attributes as\n"
    "                      name=\"value\" and the content of a script or style as a text\n"
    "  \"text\"              a text as it is, line ends included\n"
    "  <!-- text -->       a comment, with one blank added on each side\n"
    "  <?text?>            a directive\n"
    "  <![CDATA[text]]>    a CDATA section\n"
    "\n"
    "The root comes first, at level 0, when it has a tag; else its children are at level 0.\n"
    "\n"
    "Options:\n" HTDOC_ENCODING_HELP,
    kOptions,
    "FILE",
    RunTree,
};
