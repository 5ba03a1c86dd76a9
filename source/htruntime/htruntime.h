#pragma once

/// The runtime layer: text, class references, lists, streams, numbers and dates as text, code pages, the main
/// thread, and the errors that they raise.

#include "htruntime/arena.h"
#include "htruntime/bytes.h"
#include "htruntime/codepage.h"
#include "htruntime/datetime.h"
#include "htruntime/enums.h"
#include "htruntime/exception.h"
#include "htruntime/filestream.h"
#include "htruntime/format.h"
#include "htruntime/hstring.h"
#include "htruntime/interface.h"
#include "htruntime/latin1.h"
#include "htruntime/list.h"
#include "htruntime/mainthread.h"
#include "htruntime/numformat.h"
#include "htruntime/object.h"
#include "htruntime/poolvector.h"
#include "htruntime/rounding.h"
#include "htruntime/sharedarray.h"
#include "htruntime/stream.h"
#include "htruntime/stringlist.h"
#include "htruntime/unicode.h"
