#pragma once

// Hash functions and dictionaries: all open-addressed tables on one slot scheme (slottable.h).
//
//   key       THtIdObjectDictionary, THtIdPointerDictionary    32-bit integers
//             THtObjectDictionary, THtPointerDictionary        a text in the item
//             THtVirtualStringDictionary                       a piece of a larger text
//             THtUTF8Dictionary                                bytes in the item
//             THtVirtualDictionary                             anything, by two callbacks
//   threads   THtThreadObjectDictionary
//   sets      THtStringList, THtSingleList, TShaIntegerBox

#include "htdictionary/fieldoffset.h"
#include "htdictionary/hash.h"
#include "htdictionary/htstringlist.h"
#include "htdictionary/iddictionary.h"
#include "htdictionary/integerbox.h"
#include "htdictionary/objectdictionary.h"
#include "htdictionary/pointerdictionary.h"
#include "htdictionary/singlelist.h"
#include "htdictionary/stringtrie.h"
#include "htdictionary/threaddictionary.h"
#include "htdictionary/utf8dictionary.h"
#include "htdictionary/virtualdictionary.h"
