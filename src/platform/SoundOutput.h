#pragma once

namespace zarvy {

// The desktop's own event sounds. Main thread.
class SoundOutput {
 public:
  virtual ~SoundOutput() = default;

  // Plays the sound of a finished expansion; returns at once, silent if there is none.
  virtual void playExpansionSound() = 0;
};

}  // namespace zarvy
