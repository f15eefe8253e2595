#pragma once

#include <string>

namespace zarvy::benchmarks {

// Texts of 1,000 characters into real applications: how near their typing comes to the pauses that
// are meant to pace it, what CPU time it takes, and whether it changes the keyboard's mapping.
void measurePosting(const std::string& program);

}  // namespace zarvy::benchmarks
