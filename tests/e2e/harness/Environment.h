#pragma once

#include <map>
#include <string>

namespace zarvy::e2e {

// The environment of a child process, whole: nothing is inherited behind the back of a test.
using Environment = std::map<std::string, std::string>;

// PATH, a UTF-8 locale, and `home` as the place of everything that is kept for a user.
[[nodiscard]] Environment environmentWithHome(const std::string& home);

}  // namespace zarvy::e2e
