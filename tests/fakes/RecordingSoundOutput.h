#pragma once

#include "fakes/Journal.h"
#include "platform/SoundOutput.h"

namespace zarvy {

// Writes down each sound as "sound". Main thread.
class RecordingSoundOutput final : public SoundOutput {
 public:
  explicit RecordingSoundOutput(Journal& journal) : m_journal(journal) {}

  void playExpansionSound() override { m_journal.add(QStringLiteral("sound")); }

 private:
  Journal& m_journal;
};

}  // namespace zarvy
