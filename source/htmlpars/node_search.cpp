#include <algorithm>

#include "htmlpars/node.h"

namespace ht {

THtNode* THtNode::NodebyName(const hstring& path) const {
  const std::u16string_view steps = path;
  const THtNode* node = this;
  THtNode* found = nullptr;
  for (size_t start = 0; start <= steps.size();) {
    const size_t slash = std::min(steps.find(u'/', start), steps.size());
    const std::u16string_view tag = steps.substr(start, slash - start);
    found = node->FirstChild();
    while (found && found->FTag != tag) found = found->FNextSibling;
    if (!found) return nullptr;
    node = found;
    start = slash + 1;
  }
  return found;
}

THtNode* THtNode::NodebyNameIndex(const hstring& tag, int32_t n) const {
  for (THtNode* node = FirstChild(); node; node = node->FNextSibling)
    if (node->FTag == tag && n-- == 0) return node;
  return nullptr;
}

THtNode* THtNode::FindNode(const hstring& tag) const {
  THtNode* node = FirstChild();
  while (node && node->FTag != tag) node = node->NextNodeBelow(this);
  return node;
}

bool THtNode::Matches(const hstring& tag, const hstring& name, const hstring& value) const {
  return (tag.Empty() || FTag == tag) && HasAttributeValue(name, value);
}

THtNode* THtNode::NodebyAttr(const hstring& name, const hstring& value) const {
  return NodebyNameAttr({}, name, value);
}

THtNode* THtNode::NodebyNameAttr(const hstring& tag, const hstring& name, const hstring& value) const {
  THtNode* node = FirstChild();
  while (node && !node->Matches(tag, name, value)) node = node->FNextSibling;
  return node;
}

THtNode* THtNode::FindNodebyAttr(const hstring& tag, const hstring& name, const hstring& value) const {
  THtNode* node = FirstChild();
  while (node && !node->Matches(tag, name, value)) node = node->NextNodeBelow(this);
  return node;
}

}  // namespace ht
