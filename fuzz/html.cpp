// Any bytes give a tree that is linked well and of bounded depth, and whose output reads back.
#include <algorithm>
#include <cstdint>
#include <string>

#include "htmlpars/htmlnode.h"
#include "htmlpars/lower.h"
#include "htmlpars/parser.h"
#include "htruntime/numformat.h"
#include "htutils/faststring.h"
#include "support/require.h"

using namespace ht;

static int32_t DepthOf(const THtNode* node) {
  int32_t depth = 0;
  while ((node = node->GetParent())) ++depth;
  return depth;
}

// The depth of the tree.
static int32_t Check(const THtNode& root) {
  int32_t deepest = 0;
  for (const THtNode* node = &root; node; node = node->NextNodeBelow(&root)) {
    deepest = std::max(deepest, DepthOf(node));
    for (int32_t i = 0; i < node->GetCount(); ++i) {
      Require(node->GetNode(i)->GetParent() == node);
      Require(node->GetNode(i)->NextSibling() == (i + 1 < node->GetCount() ? node->GetNode(i + 1) : nullptr));
    }
  }
  Require(deepest <= 520);  // 257 elements, an implied row or cell between any two, and a text
  return deepest;
}

static hstring Formatted(THtmlNode& root) {
  TFastString builder(4096);
  bool newLine = false;
  root.FastFormattedHTML(builder, 0, 1, newLine);
  return builder.GetAsString();
}

static hstring FlatText(THtmlNode& root) {
  TFastString builder(4096);
  root.FastInnerText(builder);
  return builder.GetAsString();
}

// The letters of all texts, in some order: repairs move elements, but lose nothing.
static std::u16string LettersOf(const THtNode& root) {
  std::u16string letters;
  for (const THtNode* node = &root; node; node = node->NextNodeBelow(&root))
    if (node->GetTag().Empty() && node->TagType != htCData)
      for (char16_t c : node->GetContent())
        if (c > 32) letters += c;
  std::sort(letters.begin(), letters.end());
  return letters;
}

// Names of odd characters ("<p/ a>") may end elsewhere when they are read again, and so may a comment that begins
// like its end and a script or style that was put together from pieces and holds an end tag now.
static bool IsWritable(const THtNode& root) {
  const auto plain = [](const hstring& name) {
    return std::all_of(name.begin(), name.end(),
                       [](char16_t c) { return HtIsAsciiLetter(c) || HtIsDigit(c) || c >= 160; });
  };
  for (const THtNode* node = &root; node; node = node->NextNodeBelow(&root)) {
    const std::u16string_view content = node->GetContent();
    if (node->TagType == htComment && (content.starts_with(u'>') || content.starts_with(u"->"))) return false;
    if ((node->TagType == htStyle || node->TagType == htScript) && content.find(u"</") != content.npos)
      return false;
    if (node->TagType != htComment && node->TagType != htDirective && !plain(node->GetTag())) return false;
    for (int32_t i = 0; node->GetAttributes() && i < node->GetAttributes()->Count; ++i)
      if (!plain(node->GetAttributes()->GetName(i))) return false;
  }
  return true;
}

static hstring Reparsed(const hstring& html, std::u16string_view letters) {
  THtmlNode root;
  root.Parse(html, true);
  Check(root);
  Require(LettersOf(root) == letters);
  return root.GetOuterHTML();
}

static void CheckXml(const hstring& text) {
  THtmlParser parser(text, true);
  parser.SetCaseSensitive(true);
  try {
    while (parser.NextItem()) {}
  } catch (const EHtmlParserException&) {}
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const THtMarkupText document = HtDecodeMarkup({reinterpret_cast<const char*>(data), size});
  THtmlNode root;
  root.Parse(document.Text, document.EncodingKnown);
  Check(root);
  const hstring html = root.GetOuterHTML();
  Formatted(root);
  root.GetInnerText();
  FlatText(root);
  root.GetRawInnerText();
  root.TextContent();

  // Each reading may repair what the one before put together (a block that left a table now stands in a paragraph),
  // but it comes to an end.
  const auto tags = std::count(html.begin(), html.end(), u'<');
  if (tags < 150 && IsWritable(root)) {
    const std::u16string letters = LettersOf(root);
    hstring before, now = html;
    for (int64_t round = 0; round < tags + 2 && now != before; ++round) now = Reparsed(before = now, letters);
    Require(now == before);
  }

  CheckXml(document.Text);
  root.SetInnerHTML(document.Text);
  Check(root);
  root.AddHTML(document.Text);
  Check(root);
  if (root.GetCount() > 0) root.GetNode(0)->SetOuterHTML(document.Text);
  root.ParseAttributes(document.Text);
  root.ChangeEncoding(heUTF8, 0);
  root.ChangeEncoding(heANSI, 1251);
  Check(root);
  root.EnumerateElements();
  root.GetOuterHTML();
  return 0;
}
