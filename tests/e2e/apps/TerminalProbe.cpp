// Runs in a terminal, takes what is typed there byte by byte as a line editor would, and tells its
// text and caret over a local socket after each read.

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <termios.h>
#include <unistd.h>

#include "e2e/apps/LineEditor.h"
#include "e2e/apps/StateReport.h"

namespace {

int connectTo(const char* path) {
  const int channel = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path, sizeof(address.sun_path) - 1);
  const auto* generic = reinterpret_cast<const sockaddr*>(&address);
  return ::connect(channel, generic, sizeof(address)) == 0 ? channel : -1;
}

bool makeRaw(int terminal) {
  termios mode{};
  if (::tcgetattr(terminal, &mode) != 0) return false;
  ::cfmakeraw(&mode);
  return ::tcsetattr(terminal, TCSANOW, &mode) == 0;
}

bool writeAll(int descriptor, const std::string& bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t count = ::write(descriptor, bytes.data() + done, bytes.size() - done);
    if (count <= 0) return false;
    done += static_cast<std::size_t>(count);
  }
  return true;
}

std::string readSome(int descriptor) {
  std::array<char, 4096> bytes{};
  const ssize_t count = ::read(descriptor, bytes.data(), bytes.size());
  return count > 0 ? std::string(bytes.data(), static_cast<std::size_t>(count)) : std::string();
}

}  // namespace

int main() {
  const char* path = std::getenv("ZARVY_E2E_CHANNEL");
  if (path == nullptr || !makeRaw(STDIN_FILENO)) return 1;
  const int channel = connectTo(path);
  if (channel < 0) return 1;

  zarvy::e2e::LineEditor editor;
  std::ptrdiff_t clearCount = 0;
  while (writeAll(channel, zarvy::e2e::stateReport(static_cast<int>(clearCount), editor.text(),
                                                   editor.caret())) &&
         writeAll(STDOUT_FILENO, editor.takeEcho())) {
    std::array<pollfd, 2> waiting = {{{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0},
                                      {.fd = channel, .events = POLLIN, .revents = 0}}};
    if (::poll(waiting.data(), waiting.size(), -1) < 0) return 1;
    if (waiting[0].revents != 0) {
      const std::string typed = readSome(STDIN_FILENO);
      if (typed.empty()) return 0;
      editor.take(typed);
    }
    if (waiting[1].revents != 0) {
      const std::string commands = readSome(channel);
      if (commands.empty()) return 0;
      clearCount += std::count(commands.begin(), commands.end(), '\n');
      editor.clear();
    }
  }
  return 0;
}
