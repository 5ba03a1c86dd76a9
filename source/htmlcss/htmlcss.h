#pragma once

#include "htmlcss/cssenums.h"
#include "htmlcss/cssparser.h"
#include "htmlcss/cssproptable.h"
#include "htmlcss/csssection.h"
#include "htmlcss/cssstyleset.h"
#include "htmlcss/csstokenizer.h"
#include "htmlcss/cssvalue.h"
#include "htmlcss/measure.h"
#include "htmlcss/mediaset.h"
#include "htmlcss/tokensequence.h"
