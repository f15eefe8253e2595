#include "base/posix/TemporaryFile.h"

#include <cstdlib>
#include <fcntl.h>
#include <utility>

namespace zarvy {

TemporaryFile makeTemporaryFile(std::string_view start, std::string_view end) {
  std::string path(start);
  path.append(uniqueLength, 'X').append(end);
  FileDescriptor descriptor(::mkostemps(path.data(), static_cast<int>(end.size()), O_CLOEXEC));
  return {std::move(descriptor), std::move(path)};
}

}  // namespace zarvy
