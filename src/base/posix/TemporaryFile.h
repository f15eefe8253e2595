#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/posix/FileDescriptor.h"

namespace zarvy {

struct TemporaryFile {
  FileDescriptor descriptor;  // open for reading and writing
  std::string path;
};

// How many characters tell the name of one from all others.
inline constexpr std::size_t uniqueLength = 6;

// Makes a file, readable and writable by this user alone whatever the umask, at a path where none
// was: `start`, the unique characters, `end`. Not open where that cannot be; errno says why. Any
// thread.
[[nodiscard]] TemporaryFile makeTemporaryFile(std::string_view start, std::string_view end);

}  // namespace zarvy
