#pragma once

#include "htdictionary/objectdictionary.h"
#include "htmlpars/node.h"

namespace ht {

/// One entry of TElementClasses.
class THtElementClassContainer : public TObject {
  HT_CLASS(THtElementClassContainer, TObject)

 public:
  THtElementClassContainer(hstring tag, const THtNodeClass* nodeClass)
      : Tag(std::move(tag)), NodeClass(nodeClass) {}

  hstring Tag;
  const THtNodeClass* NodeClass;
};

/// The node class for each tag, as a host registers them; its root's GetElementClass asks here.
///
///   TElementClasses classes;
///   classes.Register(u"a", TLinkNode::Class());
///   classes.TextClass = TTextNode::Class();
class TElementClasses : public THtObjectDictionary {
  HT_CLASS(TElementClasses, THtObjectDictionary)

 public:
  TElementClasses();

  /// For tags that are not registered; null: DefaultClass.
  const THtNodeClass* UnknownClass = nullptr;
  /// For texts. Null keeps texts out of the tree.
  const THtNodeClass* TextClass;
  const THtNodeClass* DefaultClass;

  /// Files a class under a tag, in lower case; a later one replaces an earlier.
  void Register(hstring tag, const THtNodeClass* nodeClass);
  const THtNodeClass* GetElementClass(const hstring& tag) const;
};

}  // namespace ht
