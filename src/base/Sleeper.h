#pragma once

#include <chrono>

namespace zarvy {

// Lets the calling thread rest. A pause of the program goes through here, so that tests read the
// pauses instead of waiting for them. Any thread but the main one.
class Sleeper {
 public:
  virtual ~Sleeper() = default;
  virtual void sleepFor(std::chrono::microseconds duration) = 0;
};

}  // namespace zarvy
