#pragma once

#include <xcb/xcb.h>

// The C header names a field with a keyword of C++.
#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit
