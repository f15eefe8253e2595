#pragma once

#include <csignal>
#include <sys/resource.h>

namespace zarvy {

// For as long as it lives, this process can make no file larger than that: a disk that is full.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : m_oldHandler(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &m_own);
    const rlimit tight{bytes, m_own.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &tight);
  }
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &m_own);
    std::signal(SIGXFSZ, m_oldHandler);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit m_own{};
  const sighandler_t m_oldHandler;
};

}  // namespace zarvy
