#pragma once

#include "fuzz/FuzzText.h"

// Ends the process where something is wrong.
namespace zarvy::fuzz {

// A time zone, the present, the length of a period, and expansions of any time. The figures of the
// period add up: by the day, by the hour, by the snippet and in all.
void periodStatistics(Bytes bytes);

}  // namespace zarvy::fuzz
