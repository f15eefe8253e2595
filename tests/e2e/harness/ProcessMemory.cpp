#include "e2e/harness/ProcessMemory.h"

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

#include <QScopeGuard>

#include "e2e/harness/FileDescriptor.h"

namespace zarvy::e2e {

namespace {

struct Range {
  std::size_t begin;
  std::size_t end;
};

std::vector<Range> writableRanges(pid_t process) {
  std::ifstream maps("/proc/" + std::to_string(process) + "/maps");
  std::vector<Range> ranges;
  for (std::string line; std::getline(maps, line);) {
    std::istringstream words(line);
    Range range{};
    char dash = 0;
    std::string permissions;
    words >> std::hex >> range.begin >> dash >> range.end >> permissions;
    if (permissions.starts_with("rw")) ranges.push_back(range);
  }
  if (ranges.empty()) throw std::runtime_error("the process has no memory");
  return ranges;
}

// What can be read of the range; some special ones refuse.
QByteArray contentOf(int memory, const Range& range) {
  QByteArray bytes(static_cast<qsizetype>(range.end - range.begin), Qt::Uninitialized);
  qsizetype size = 0;
  while (size < bytes.size()) {
    const ssize_t count =
        ::pread(memory, bytes.data() + size, static_cast<std::size_t>(bytes.size() - size),
                static_cast<off_t>(range.begin) + size);
    if (count <= 0) break;
    size += count;
  }
  bytes.truncate(size);
  return bytes;
}

}  // namespace

QList<QByteArray> formsInMemory(pid_t process, const QString& text) {
  const std::string path = "/proc/" + std::to_string(process) + "/mem";
  const FileDescriptor memory(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!memory.isOpen()) throw std::runtime_error("cannot read " + path);
  ::kill(process, SIGSTOP);
  const auto goOn = qScopeGuard([process] { ::kill(process, SIGCONT); });
  const QByteArray utf8 = text.toUtf8();
  const QByteArray utf16(reinterpret_cast<const char*>(text.utf16()),
                         text.size() * static_cast<qsizetype>(sizeof(char16_t)));
  QList<QByteArray> found;
  for (const Range& range : writableRanges(process)) {
    const QByteArray content = contentOf(memory.get(), range);
    if (!found.contains("UTF-8") && content.contains(utf8)) found.append("UTF-8");
    if (!found.contains("UTF-16") && content.contains(utf16)) found.append("UTF-16");
  }
  return found;
}

}  // namespace zarvy::e2e
