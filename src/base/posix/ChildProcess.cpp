#include "base/posix/ChildProcess.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include "base/posix/Waiting.h"

namespace zarvy {
namespace {

void check(int error, const char* what) {
  if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

class SpawnAttributes {
 public:
  SpawnAttributes() {
    check(posix_spawnattr_init(&m_attributes), "posix_spawnattr_init");
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&m_attributes, &signals);
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&m_attributes, &signals);
    posix_spawnattr_setpgroup(&m_attributes, 0);
    posix_spawnattr_setflags(
        &m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
  }
  ~SpawnAttributes() { posix_spawnattr_destroy(&m_attributes); }
  SpawnAttributes(const SpawnAttributes&) = delete;
  SpawnAttributes& operator=(const SpawnAttributes&) = delete;

  [[nodiscard]] const posix_spawnattr_t* get() const { return &m_attributes; }

 private:
  posix_spawnattr_t m_attributes{};
};

// What happens to the descriptors between fork and exec.
class SpawnActions {
 public:
  explicit SpawnActions(const std::vector<int>& descriptors) : m_copies(copiesOf(descriptors)) {
    check(posix_spawn_file_actions_init(&m_actions), "posix_spawn_file_actions_init");
    for (std::size_t place = 0; place < m_copies.size(); ++place) {
      const int copy = m_copies[place].get();
      if (copy < 0) continue;
      posix_spawn_file_actions_adddup2(&m_actions, copy, static_cast<int>(place));
    }
    posix_spawn_file_actions_addclosefrom_np(&m_actions, static_cast<int>(m_copies.size()));
  }
  ~SpawnActions() { posix_spawn_file_actions_destroy(&m_actions); }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;

  [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &m_actions; }

 private:
  // Copies above all the places: where this program runs without standard streams, a descriptor may
  // itself have the number of a place that is filled before it is read.
  static std::vector<FileDescriptor> copiesOf(const std::vector<int>& descriptors) {
    std::vector<FileDescriptor> copies(descriptors.size());
    for (std::size_t place = 0; place < descriptors.size(); ++place) {
      if (descriptors[place] == ChildProcess::inherited) continue;
      const int firstFree = static_cast<int>(descriptors.size());
      copies[place] = FileDescriptor(fcntl(descriptors[place], F_DUPFD_CLOEXEC, firstFree));
      if (copies[place].get() < 0) check(errno, "fcntl");
    }
    return copies;
  }

  const std::vector<FileDescriptor> m_copies;
  posix_spawn_file_actions_t m_actions{};
};

// The C interface takes pointers to char and changes nothing.
std::vector<char*> pointersTo(const QByteArrayList& texts) {
  std::vector<char*> pointers;
  for (const QByteArray& text : texts) {
    pointers.push_back(const_cast<char*>(text.constData()));  // NOLINT(*-const-cast)
  }
  pointers.push_back(nullptr);
  return pointers;
}

pid_t spawn(const QByteArrayList& arguments, const std::vector<int>& descriptors,
            char* const* environment) {
  const SpawnAttributes attributes;
  const SpawnActions actions(descriptors);
  const std::vector<char*> pointers = pointersTo(arguments);
  pid_t id = -1;
  check(posix_spawn(&id, pointers.front(), actions.get(), attributes.get(), pointers.data(),
                    environment),
        "posix_spawn");
  return id;
}

// Not by the C library's function, which its header of 2.36 hides from C++.
int openProcess(pid_t process) {
  return static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
}

// A child without a handle could be neither waited for nor handed on.
FileDescriptor handleOf(pid_t child) {
  FileDescriptor handle(openProcess(child));
  if (handle.isOpen()) return handle;
  const int error = errno;
  ::kill(-child, SIGKILL);
  while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
  throw std::system_error(error, std::generic_category(), "pidfd_open");
}

}  // namespace

ChildProcess::ChildProcess(const QByteArrayList& arguments, const std::vector<int>& descriptors)
    : ChildProcess(spawn(arguments, descriptors, environ)) {}

ChildProcess::ChildProcess(const QByteArrayList& arguments, const std::vector<int>& descriptors,
                           const QByteArrayList& environment)
    : ChildProcess(spawn(arguments, descriptors, pointersTo(environment).data())) {}

ChildProcess::ChildProcess(pid_t id) : m_id(id), m_end(handleOf(m_id)) {}

bool ChildProcess::waitForEnd(const QDeadlineTimer& deadline) const {
  return waitUntilReadable(m_end.get(), deadline);
}

void ChildProcess::signalGroup(int signal) const {
  ::kill(-m_id, signal);
}

std::optional<int> ChildProcess::reap() const {
  siginfo_t end{};
  const auto idOfEnd = static_cast<id_t>(m_end.get());
  while (::waitid(P_PIDFD, idOfEnd, &end, WEXITED | WNOHANG) != 0) {
    if (errno != EINTR) return -1;  // how it ended is not known
  }
  if (end.si_pid == 0) return std::nullopt;
  return end.si_status;
}

}  // namespace zarvy
