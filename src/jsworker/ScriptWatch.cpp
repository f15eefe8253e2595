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
constexpr unsigned long long mostLeft = 128ULL * 1024 * 1024;

constexpr itimerspec never{};
constexpr itimerspec everyTenMilliseconds{.it_interval = {0, 10'000'000},
                                          .it_value = {0, 10'000'000}};
constexpr itimerspec onceInFiveSeconds{.it_interval = {0, 0}, .it_value = {5, 0}};

int checked(int descriptor, const char* what) {
  if (descriptor < 0) throw std::system_error(errno, std::generic_category(), what);
  return descriptor;
}

}  // namespace

ScriptWatch::ScriptWatch(int socket)
    : m_timer(checked(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK), "timerfd")),
      m_laterTimer(checked(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK), "timerfd")),
      m_memory(checked(open("/proc/self/statm", O_RDONLY | O_CLOEXEC), "statm")) {
  std::thread([this, socket] { watch(socket); }).detach();
}

void ScriptWatch::scriptBegins() const {
  timerfd_settime(m_laterTimer, 0, &never, nullptr);
  timerfd_settime(m_timer, 0, &everyTenMilliseconds, nullptr);
}

void ScriptWatch::scriptEnds() const {
  timerfd_settime(m_timer, 0, &never, nullptr);
  endIfTooLarge();
}

bool ScriptWatch::isLeftLarge() const {
  return residentMemory() > mostLeft;
}

void ScriptWatch::endSoonIfLeftLarge() const {
  timerfd_settime(m_laterTimer, 0, &onceInFiveSeconds, nullptr);
}

void ScriptWatch::watch(int socket) const {
  std::array<pollfd, 3> watched{pollfd{m_timer, POLLIN, 0}, pollfd{m_laterTimer, POLLIN, 0},
                                pollfd{socket, POLLRDHUP, 0}};
  while (true) {
    if (poll(watched.data(), watched.size(), -1) < 0) continue;
    if (watched[2].revents != 0) _exit(EXIT_SUCCESS);
    std::uint64_t expirations = 0;
    if (read(m_timer, &expirations, sizeof(expirations)) == sizeof(expirations)) endIfTooLarge();
    if (read(m_laterTimer, &expirations, sizeof(expirations)) == sizeof(expirations)) {
      endIfLeftLarge(socket);
    }
  }
}

void ScriptWatch::endIfTooLarge() const {
  if (residentMemory() > mostMemory) _exit(EXIT_FAILURE);
}

// A script that has come in the meantime is run.
void ScriptWatch::endIfLeftLarge(int socket) const {
  pollfd request{socket, POLLIN, 0};
  if (isLeftLarge() && poll(&request, 1, 0) == 0) _exit(EXIT_FAILURE);
}

unsigned long long ScriptWatch::residentMemory() const {
  std::array<char, 128> account{};
  if (pread(m_memory, account.data(), account.size() - 1, 0) <= 0) _exit(EXIT_FAILURE);
  // In pages: the size of the address space, then what is resident.
  char* rest = nullptr;
  std::strtoull(account.data(), &rest, 10);
  const unsigned long long pages = std::strtoull(rest, nullptr, 10);
  return pages * static_cast<unsigned long long>(sysconf(_SC_PAGESIZE));
}

}  // namespace zarvy
