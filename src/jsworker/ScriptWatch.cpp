#include "jsworker/ScriptWatch.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/timerfd.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace zarvy {
namespace {

// Resident memory. The engine reserves far more address space than it uses, so that a limit of
// address space would keep it from starting.
constexpr unsigned long long mostMemory = 256ULL * 1024 * 1024;

constexpr long betweenLooks = 10'000'000;  // nanoseconds

int checked(int descriptor, const char* what) {
  if (descriptor < 0) throw std::system_error(errno, std::generic_category(), what);
  return descriptor;
}

void setTimer(int timer, long interval) {
  const itimerspec every{.it_interval = {0, interval}, .it_value = {0, interval}};
  timerfd_settime(timer, 0, &every, nullptr);
}

}  // namespace

ScriptWatch::ScriptWatch(int socket)
    : m_timer(checked(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK), "timerfd")),
      m_memory(checked(open("/proc/self/statm", O_RDONLY | O_CLOEXEC), "statm")) {
  std::thread([this, socket] { watch(socket); }).detach();
}

void ScriptWatch::scriptBegins() const {
  setTimer(m_timer, betweenLooks);
}

void ScriptWatch::scriptEnds() const {
  setTimer(m_timer, 0);
  endIfTooLarge();
}

void ScriptWatch::watch(int socket) const {
  std::array<pollfd, 2> watched{pollfd{m_timer, POLLIN, 0}, pollfd{socket, POLLRDHUP, 0}};
  while (true) {
    if (poll(watched.data(), watched.size(), -1) < 0) continue;
    if (watched[1].revents != 0) _exit(EXIT_SUCCESS);
    std::uint64_t expirations = 0;
    if (read(m_timer, &expirations, sizeof(expirations)) == sizeof(expirations)) endIfTooLarge();
  }
}

void ScriptWatch::endIfTooLarge() const {
  std::array<char, 128> account{};
  if (pread(m_memory, account.data(), account.size() - 1, 0) <= 0) _exit(EXIT_FAILURE);
  // In pages: the size of the address space, then what is resident.
  char* rest = nullptr;
  std::strtoull(account.data(), &rest, 10);
  const unsigned long long resident = std::strtoull(rest, nullptr, 10);
  if (resident * static_cast<unsigned long long>(sysconf(_SC_PAGESIZE)) > mostMemory) {
    _exit(EXIT_FAILURE);
  }
}

}  // namespace zarvy
