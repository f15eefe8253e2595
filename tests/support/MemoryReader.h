#pragma once

#include <array>
#include <fcntl.h>
#include <linux/capability.h>
#include <string>
#include <sys/syscall.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zarvy {

// This process can do no more than an ordinary user's can, from now on. False where it could not be
// had.
inline bool dropPrivileges() {
  __user_cap_header_struct header{.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
  const std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> none{};
  return ::syscall(SYS_capset, &header, none.data()) == 0;
}

enum class MemoryAccess { open, denied, unknown };

// Whether another process of the same user without any privilege can open the memory of `process`,
// which has none either.
inline MemoryAccess memoryAccess(pid_t process) {
  const std::string path = "/proc/" + std::to_string(process) + "/mem";
  const pid_t reader = ::fork();
  if (reader == 0) {
    if (!dropPrivileges()) ::_exit(2);
    ::_exit(::open(path.c_str(), O_RDONLY | O_CLOEXEC) >= 0 ? 1 : 0);
  }
  int status = 0;
  if (::waitpid(reader, &status, 0) != reader || !WIFEXITED(status)) return MemoryAccess::unknown;
  if (WEXITSTATUS(status) == 0) return MemoryAccess::denied;
  return WEXITSTATUS(status) == 1 ? MemoryAccess::open : MemoryAccess::unknown;
}

}  // namespace zarvy
