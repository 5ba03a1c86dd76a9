#pragma once

#include "document/documentnode.h"

namespace ht {

/// The text that `content` gives to a node of `::before`, `::after` or `::marker`: strings, attr(), counter(), counters(),
/// quotes. False where no such node is to be made: for `none` and `normal`, and where nothing is said. A marker of which
/// nothing is said has the text of its list.
bool HtGeneratedText(TDocumentNode& node, hstring& text);

/// What stands before a list item: a bullet, its number, or nothing.
hstring HtListMarker(const TDocumentNode& item);

}  // namespace ht
