#pragma once

#include "htdictionary/objectdictionary.h"
#include "htmlcss/cssproperty.h"

namespace ht {

/// The property table: 150 names of CSS, matched exactly, each with its TCSSPropRec. Built at the first call, from any
/// thread, and only read afterwards.
///
///   TCSSPropRec* rec;
///   if (CSSPropDictionary().Find(u"margin", rec)) rec->SubProps.size();   // 4
const THtObjectDictionary& CSSPropDictionary();

/// The row of a lower-cased name; null if there is none.
const TCSSPropRec* FindCSSProp(std::u16string_view name);
/// The same, with the row of "unknown" for a name without one.
const TCSSPropRec& CSSPropByName(std::u16string_view name);
/// The row of a property, or that of "unknown" for the sixteen properties without one.
const TCSSPropRec& CSSPropOf(TCSSProperty prop);

}  // namespace ht
