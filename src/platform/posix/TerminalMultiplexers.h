#pragma once

#include <sys/types.h>
#include <vector>

namespace zarvy {

// The programs that show other terminals within one: what is typed into the terminal goes to their
// servers, which are no children of it.
class TerminalMultiplexers {
 public:
  // The servers whose clients run in that terminal. Of one user all servers count where there is a
  // client of theirs, since it is not told which client belongs to which. Reads /proc; some
  // milliseconds where a client has come or gone. One thread at a time.
  [[nodiscard]] std::vector<pid_t> serversBehind(pid_t terminal);

 private:
  std::vector<pid_t> m_clients;
  std::vector<pid_t> m_servers;  // those of m_clients
};

}  // namespace zarvy
