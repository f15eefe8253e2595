// Loaded into the program under test: it cannot keep its memory from other programs of the user, so
// that a test finds out what is in it.

#include <cstdarg>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

extern "C" int prctl(int option, ...) noexcept {
  if (option == PR_SET_DUMPABLE) return 0;
  std::va_list list;
  va_start(list, option);
  unsigned long arguments[4];
  for (unsigned long& argument : arguments) argument = va_arg(list, unsigned long);
  va_end(list);
  return static_cast<int>(
      ::syscall(SYS_prctl, option, arguments[0], arguments[1], arguments[2], arguments[3]));
}
