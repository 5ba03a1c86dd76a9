#pragma once

// Text builders and lists.

#include "htutils/faststring.h"
#include "htutils/objectlist.h"
