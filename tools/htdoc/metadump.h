#pragma once

#include "htcanvas/htcanvas.h"

/// A record as one line of JSON: its page from 1, its kind, and its fields under their names.
ht::hstring DumpRecord(const ht::THtMetaCanvasRec& record, int32_t page);
