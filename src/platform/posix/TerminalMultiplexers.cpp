#include "platform/posix/TerminalMultiplexers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/PseudoTerminals.h"

namespace zarvy {

namespace {

// As the processes call themselves; of one both sides have the same name.
constexpr std::array<std::string_view, 2> clientNames = {"tmux: client", "screen"};
constexpr std::array<std::string_view, 2> serverNames = {"tmux: server", "screen"};

// A terminal has shells, and these have programs; a client is not far down.
constexpr int mostGenerations = 6;

std::filesystem::path folderOf(pid_t process) {
  return "/proc/" + std::to_string(process);
}

template <typename Names>
bool isCalled(pid_t process, const Names& names) {
  std::string name;
  std::ifstream file(folderOf(process) / "comm");
  std::getline(file, name);
  return std::find(names.begin(), names.end(), name) != names.end();
}

std::vector<pid_t> childrenOf(pid_t process) {
  std::vector<pid_t> children;
  std::error_code error;
  std::filesystem::directory_iterator threads(folderOf(process) / "task", error);
  for (; !error && threads != std::filesystem::directory_iterator(); threads.increment(error)) {
    std::ifstream file(threads->path() / "children");
    for (pid_t child = 0; file >> child;) children.push_back(child);
  }
  return children;
}

void addClients(std::vector<pid_t>& clients, pid_t process, int generations) {
  for (const pid_t child : childrenOf(process)) {
    if (isCalled(child, clientNames)) clients.push_back(child);
    if (generations > 1) addClients(clients, child, generations - 1);
  }
}

bool isOfThisUser(const std::filesystem::path& processFolder) {
  struct stat status {};
  return ::stat(processFolder.c_str(), &status) == 0 && status.st_uid == ::getuid();
}

std::vector<pid_t> findServers() {
  std::vector<pid_t> servers;
  std::error_code error;
  std::filesystem::directory_iterator processes("/proc", error);
  for (; !error && processes != std::filesystem::directory_iterator(); processes.increment(error)) {
    const std::string name = processes->path().filename();
    pid_t process = 0;
    const auto [end, wrong] = std::from_chars(name.data(), name.data() + name.size(), process);
    const bool isNumber = wrong == std::errc() && end == name.data() + name.size();
    if (isNumber && isOfThisUser(processes->path()) && isCalled(process, serverNames)) {
      servers.push_back(process);
    }
  }
  return servers;
}

bool isAlive(pid_t server) {
  return isCalled(server, serverNames);
}

}  // namespace

std::vector<pid_t> TerminalMultiplexers::serversBehind(pid_t terminal) {
  std::vector<pid_t> clients;
  addClients(clients, terminal, mostGenerations);
  const bool isKnown =
      clients == m_clients && std::all_of(m_servers.begin(), m_servers.end(), &isAlive);
  if (!isKnown) {
    m_servers = clients.empty() ? std::vector<pid_t>() : findServers();
    m_clients = std::move(clients);
  }
  return m_servers;
}

}  // namespace zarvy
