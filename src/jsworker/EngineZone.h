#pragma once

#include <map>
#include <memory>
#include <string>

#include "base/zone/LocalTime.h"
#include "jsworker/Channel.h"
#include "jsworker/wire/ScriptWire.h"

namespace zarvy {

// The clocks of the machine, as the program at the other end of the socket tells them, which is
// asked while a script runs. Remembers the answers. One thread, that of the scripts.
class ProgramsLocalTime final : public LocalTime {
 public:
  explicit ProgramsLocalTime(const Channel& channel) : m_channel(channel) {}

  // Ahead of each script: the machine may have travelled since the last one.
  void forget() { m_answers.clear(); }

  [[nodiscard]] std::int32_t offsetAt(std::int64_t instant) const override;
  [[nodiscard]] std::int32_t savingAt(std::int64_t instant) const override;

 private:
  [[nodiscard]] const scriptwire::ClockAnswer& answerFor(std::int64_t instant) const;

  const Channel& m_channel;
  mutable std::map<std::int64_t, scriptwire::ClockAnswer> m_answers;  // by their ends
};

// Which time zone the engine, and all else that asks ICU's C interface in this process, takes for
// the machine's own: the clocks of `time`, under `name` where ICU knows it. The engine looks again
// at the beginning of each script. The thread of the scripts.
void setEngineZone(std::shared_ptr<const LocalTime> time, const std::string& name);

}  // namespace zarvy
