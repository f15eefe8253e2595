#pragma once

#include <optional>

#include <QStringView>

#include "core/model/SyncMetadata.h"

namespace zarvy {

// Which side of a sync is ahead.
enum class SyncVerdict { inStep, cloudNewer, localNewer, conflict };

// By generation, whatever the clocks say: a device that saved often beats one that saved seldom.
// Two devices that made the same generation are a conflict.
[[nodiscard]] SyncVerdict compare(const std::optional<SyncMetadata>& local,
                                  const std::optional<SyncMetadata>& cloud);

struct SettledConflict {
  SyncVerdict verdict = SyncVerdict::localNewer;  // or cloudNewer
  QStringView line;                               // to be printed
};

// By the clock; local wins a tie, and where one side has nothing to compare.
[[nodiscard]] SettledConflict settleConflict(const std::optional<SyncMetadata>& local,
                                             const std::optional<SyncMetadata>& cloud);

}  // namespace zarvy
