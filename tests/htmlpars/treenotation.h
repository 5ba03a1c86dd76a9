#pragma once

#include <string>

#include "htmlpars/htmlnode.h"
#include "htutils/faststring.h"

namespace ht {

/// A tree in short: `div[id=x]('text', br)`. Comments are `!'text'`, directives `?'text'`, CDATA `#'text'`; scripts
/// and styles show their content as a text.
inline void AppendNotation(std::u16string& out, const THtNode& node) {
  const auto quoted = [&out](const hstring& text) { out.append(u"'").append(text.View()).append(u"'"); };
  if (node.TagType == htComment || node.TagType == htDirective) {
    out.append(node.GetTag().View());
    return quoted(node.GetContent());
  }
  if (node.GetTag().Empty() && node.GetParent()) {
    if (node.TagType == htCData) out.append(u"#");
    return quoted(node.GetContent());
  }
  out.append(node.GetTag().View());
  const THtAttributes* attributes = node.GetAttributes();
  for (int32_t i = 0; attributes && i < attributes->Count; ++i)
    out.append(u"[")
        .append(attributes->GetName(i).View())
        .append(u"=")
        .append(attributes->GetValue(i).View())
        .append(u"]");
  if (node.GetCount() == 0 && node.GetContent().Empty()) return;
  out.append(u"(");
  if (!node.GetContent().Empty()) quoted(node.GetContent());
  for (THtNode* child = node.FirstChild(); child; child = child->NextSibling()) {
    AppendNotation(out, *child);
    if (child->NextSibling()) out.append(u", ");
  }
  out.append(u")");
}

inline std::string Notation(const THtNode& node) {
  std::u16string out;
  AppendNotation(out, node);
  return HtToUtf8(out);
}

/// The children of the root that the text gives, and the root itself when it has a tag but "body".
inline std::string TreeOf(std::u16string_view html) {
  THtmlNode root;
  root.Parse(html);
  return Notation(root);
}

/// Every child knows its parent and the sibling that follows it in the list.
inline bool IsWellLinked(const THtNode& root) {
  for (const THtNode* node = &root; node; node = node->NextNodeBelow(&root))
    for (int32_t i = 0; i < node->GetCount(); ++i) {
      const THtNode* child = node->GetNode(i);
      if (child->GetParent() != node) return false;
      if (child->NextSibling() != (i + 1 < node->GetCount() ? node->GetNode(i + 1) : nullptr)) return false;
    }
  return true;
}

}  // namespace ht
