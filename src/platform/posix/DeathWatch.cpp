#include "platform/posix/DeathWatch.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

#include "base/posix/FileDescriptor.h"
#include "base/posix/OwnProcess.h"
#include "base/posix/WholeTransfers.h"

namespace zarvy {

namespace {

constexpr char watching = 'w';
constexpr char endInOrder = 'e';
constexpr int lineOfWatcher = STDERR_FILENO + 1;

// What reads the output of the program learns of its end, though this process is still there.
void keepOnly(int lifeLine) {
  const int nothing = ::open("/dev/null", O_RDWR);
  for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    ::dup2(nothing, standard);
  }
  ::dup2(lifeLine, lineOfWatcher);
  ::close_range(lineOfWatcher + 1, ~0U, 0);
}

// False where the other process has ended without saying it.
bool isTold(char word, int lifeLine) {
  char told = 0;
  return receiveAll(lifeLine, &told, 1) && told == word;
}

void tell(char word, int lifeLine) {
  static_cast<void>(sendAll(lifeLine, &word, 1));
}

// In a session of its own, so that what is meant for the program's job in a shell does not end it.
[[noreturn]] void watch(int lifeLine, pid_t watched, const std::function<void(pid_t)>& tidyUp) {
  for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) std::signal(signal, SIG_IGN);
  ::setsid();
  nameThisThread("zarvy-watch");
  keepOnly(lifeLine);
  tell(watching, lineOfWatcher);
  if (!isTold(endInOrder, lineOfWatcher)) tidyUp(watched);
  std::_Exit(EXIT_SUCCESS);
}

}  // namespace

DeathWatch::DeathWatch(const std::function<void(pid_t)>& tidyUp) {
  auto ends = makeSocketPair();
  if (!ends) return;
  m_lifeLine = std::move(ends->own);
  FileDescriptor& watchers = ends->other;
  const pid_t self = ::getpid();
  if (::fork() == 0) {
    m_lifeLine.reset();
    watch(watchers.get(), self, tidyUp);
  }
  watchers.reset();
  static_cast<void>(isTold(watching, m_lifeLine.get()));
}

DeathWatch::~DeathWatch() {
  if (m_lifeLine.isOpen()) tell(endInOrder, m_lifeLine.get());
}

}  // namespace zarvy
