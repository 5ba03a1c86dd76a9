#include "htmlpars/elementclasses.h"

#include "htdictionary/fieldoffset.h"
#include "htmlpars/htmlnode.h"
#include "htmlpars/lower.h"

namespace ht {

TElementClasses::TElementClasses()
    : THtObjectDictionary(127, true, HtNameOffset(&THtElementClassContainer::Tag), nullptr),
      TextClass(THtmlNode::Class()),
      DefaultClass(THtmlNode::Class()) {}

void TElementClasses::Register(hstring tag, const THtNodeClass* nodeClass) {
  hLower(tag);
  Put(tag, new THtElementClassContainer(tag, nodeClass));
}

const THtNodeClass* TElementClasses::GetElementClass(const hstring& tag) const {
  if (tag.Empty()) return TextClass;
  hstring lower = tag;
  hLower(lower);
  TObject* found;
  if (Find(lower, found)) return static_cast<THtElementClassContainer*>(found)->NodeClass;
  return UnknownClass ? UnknownClass : DefaultClass;
}

}  // namespace ht
