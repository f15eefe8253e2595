#pragma once

#include <memory>

#include <QString>

#include "base/TaskQueue.h"
#include "platform/SoundOutput.h"

namespace zarvy {

// Plays a sound as the desktop's own event sounds are played, through libcanberra. Playing happens
// on a thread of `workers`, since a sound server may take its time to answer; while it does,
// further sounds are left out. Without a sound card, a server or the sound itself nothing is heard
// and nothing said.
class CanberraSoundOutput final : public SoundOutput {
 public:
  // `file` is the path of a WAV file.
  CanberraSoundOutput(WorkerPool& workers, const QString& file);

  void playExpansionSound() override;

 private:
  class Player;

  WorkerPool& m_workers;
  std::shared_ptr<Player> m_player;
};

}  // namespace zarvy
