#include "platform/posix/FocusClaims.h"

#include "platform/posix/ProcessFamily.h"

namespace zarvy {

bool FocusClaims::isCredible(pid_t process) {
  const pid_t owner = m_keyboardOwner();
  if (process == 0 || owner == 0) return true;
  if (process == owner) {
    m_speakers.insert(process);
    return true;
  }
  return !m_speakers.contains(owner) || descendsFrom(process, owner) ||
         descendsFrom(owner, process);
}

}  // namespace zarvy
