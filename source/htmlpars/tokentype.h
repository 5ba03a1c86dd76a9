#pragma once

#include "htruntime/enums.h"

namespace ht {

/// The kinds of token of markup text, and of the nodes made of them.
HT_ENUM(THTMLTokenType, uint8_t, htUnknown, htIdent, htSpace, htString, htTagStart, htTagEnd, htTagClose,
        htEq, htScript, htStyle, htComment, htDirective, htCData, htCustom);

}  // namespace ht
