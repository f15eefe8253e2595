#pragma once

// The header of the XKB protocol names a field with a keyword of C++.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
