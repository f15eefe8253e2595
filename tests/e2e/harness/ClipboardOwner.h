#pragma once

#include <string>

#include "e2e/harness/ChildProcess.h"

namespace zarvy::e2e {

// Another application from which the user has copied a text. Its selection by the mouse, which is
// no clipboard, holds another one. Ends with the object. Throws std::runtime_error where it does
// not come up.
class ClipboardOwner {
 public:
  // `text` is UTF-8.
  ClipboardOwner(const Environment& environment, const std::string& text,
                 const std::string& logFolder);

 private:
  ChildProcess m_process;
};

}  // namespace zarvy::e2e
