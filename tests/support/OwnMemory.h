#pragma once

#include <algorithm>
#include <cstddef>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

#include "base/posix/FileDescriptor.h"

namespace zarvy {

// Letters in an order that nothing else has.
inline char16_t secretUnit(std::size_t index) {
  return static_cast<char16_t>(u'a' + (index * 7 + index * index * 3 + 5) % 26);
}

// Looks for a text in the memory that this process can write to: what a test needs to see that
// nothing is left of a secret. The text is computed unit by unit, so that the search itself keeps
// no copy of it.
class OwnMemory {
 public:
  OwnMemory() : m_memory(::open("/proc/self/mem", O_RDONLY | O_CLOEXEC)) {
    m_part = static_cast<char16_t*>(
        ::mmap(nullptr, partSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
  }
  ~OwnMemory() { ::munmap(m_part, partSize); }
  OwnMemory(const OwnMemory&) = delete;
  OwnMemory& operator=(const OwnMemory&) = delete;

  // Whether `length` UTF-16 units stand in a row somewhere; `unitAt` gives each of them.
  template <typename UnitAt>
  [[nodiscard]] bool holds(std::size_t length, const UnitAt& unitAt) const {
    const std::vector<Range> ranges = writableRanges();
    return std::any_of(ranges.begin(), ranges.end(),
                       [&](const Range& range) { return isIn(range, length, unitAt); });
  }

 private:
  static constexpr std::size_t partSize = std::size_t{4} << 20;
  // The sanitizers reserve more than any heap has.
  static constexpr std::size_t largestRange = std::size_t{1} << 30;

  struct Range {
    std::size_t begin = 0;
    std::size_t end = 0;
  };

  [[nodiscard]] std::vector<Range> writableRanges() const {
    std::ifstream maps("/proc/self/maps");
    std::vector<Range> ranges;
    for (std::string line; std::getline(maps, line);) {
      std::istringstream words(line);
      Range range;
      char dash = 0;
      std::string permissions;
      words >> std::hex >> range.begin >> dash >> range.end >> permissions;
      const auto part = reinterpret_cast<std::size_t>(m_part);
      const bool isPart = range.begin < part + partSize && part < range.end;
      if (permissions.starts_with("rw") && range.end - range.begin <= largestRange && !isPart) {
        ranges.push_back(range);
      }
    }
    return ranges;
  }

  // Parts overlap by the length of the text. Read by the kernel, which no sanitizer watches.
  template <typename UnitAt>
  [[nodiscard]] bool isIn(const Range& range, std::size_t length, const UnitAt& unitAt) const {
    const std::size_t overlap = length * sizeof(char16_t);
    for (std::size_t start = range.begin; start < range.end; start += partSize - overlap) {
      const ssize_t size = ::pread(m_memory.get(), m_part, std::min(partSize, range.end - start),
                                   static_cast<off_t>(start));
      if (size <= 0) return false;
      if (isInPart(static_cast<std::size_t>(size) / sizeof(char16_t), length, unitAt)) return true;
    }
    return false;
  }

  template <typename UnitAt>
  [[nodiscard]] bool isInPart(std::size_t units, std::size_t length, const UnitAt& unitAt) const {
    for (std::size_t place = 0; place + length <= units; ++place) {
      std::size_t same = 0;
      while (same < length && m_part[place + same] == unitAt(same)) ++same;
      if (same == length) return true;
    }
    return false;
  }

  const FileDescriptor m_memory;
  char16_t* m_part = nullptr;
};

}  // namespace zarvy
