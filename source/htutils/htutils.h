#pragma once

// Text builders and lists; text, number and date helpers; codecs and whole files.

#include "htutils/base64.h"
#include "htutils/crc32.h"
#include "htutils/dates.h"
#include "htutils/email.h"
#include "htutils/enumlookup.h"
#include "htutils/fastrawstring.h"
#include "htutils/faststring.h"
#include "htutils/faststringlist.h"
#include "htutils/files.h"
#include "htutils/fontstyle.h"
#include "htutils/geometry.h"
#include "htutils/idlist.h"
#include "htutils/listobjects.h"
#include "htutils/methoddesc.h"
#include "htutils/numbers.h"
#include "htutils/objectlist.h"
#include "htutils/strreplace.h"
#include "htutils/strsearch.h"
#include "htutils/thstring.h"
#include "htutils/urls.h"
