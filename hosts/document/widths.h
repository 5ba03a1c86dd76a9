#pragma once

#include "document/document.h"

namespace ht {

/// Gives the elements their InnerWidth as far as it follows from the view alone: blocks fill their container, lengths and
/// percentages are what they are. What depends on content (an `inline-block` or a table without a width) gets all the room
/// that there is. Heights are set where they are declared. For a host without a layout, after UpdateStyles.
void HtCalcWidths(TDocument& document);

}  // namespace ht
