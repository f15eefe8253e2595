#include "support/TestHeaders.h"
