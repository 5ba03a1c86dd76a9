#pragma once

// Hash functions and dictionaries.

#include "htdictionary/fieldoffset.h"
#include "htdictionary/hash.h"
#include "htdictionary/iddictionary.h"
#include "htdictionary/objectdictionary.h"
#include "htdictionary/pointerdictionary.h"
