#include "base/zone/SystemLocalTime.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <mutex>
#include <string_view>
#include <unistd.h>

namespace zarvy {
namespace {

constexpr std::int64_t quarterOfAYear = 91LL * 24 * 3600;

struct Shown {
  std::int32_t offset = 0;
  bool isMarkedAsSaving = false;
};

Shown shownAt(std::int64_t instant) {
  const std::time_t time = instant;
  std::tm fields{};
  if (!localtime_r(&time, &fields)) return {};
  return {static_cast<std::int32_t>(fields.tm_gmtoff), fields.tm_isdst > 0};
}

std::string target(const char* link) {
  std::array<char, 4096> path{};
  const ssize_t length = readlink(link, path.data(), path.size());
  return {path.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

// "Europe/Berlin" of "/usr/share/zoneinfo/posix/Europe/Berlin"
std::string nameIn(std::string_view path) {
  constexpr std::string_view database = "/zoneinfo/";
  const std::size_t place = path.rfind(database);
  if (place != std::string_view::npos) path.remove_prefix(place + database.size());
  for (const std::string_view variant : {"posix/", "right/"}) {
    if (path.starts_with(variant)) path.remove_prefix(variant.size());
  }
  return std::string(path);
}

}  // namespace

// The C library has a lock of its own for this, which ThreadSanitizer does not see.
SystemLocalTime::SystemLocalTime() {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  tzset();
}

std::int32_t SystemLocalTime::offsetAt(std::int64_t instant) const {
  return shownAt(instant).offset;
}

// The database marks the odd time of the year: for most countries the summer, for Ireland the
// winter, whose clocks are behind then. Saved is what the clocks are ahead of the other time.
std::int32_t SystemLocalTime::savingAt(std::int64_t instant) const {
  const Shown shown = shownAt(instant);
  std::int32_t saving = 0;
  for (const int quarters : {-2, -1, 1, 2}) {
    const Shown other = shownAt(instant + quarters * quarterOfAYear);
    if (other.isMarkedAsSaving == shown.isMarkedAsSaving) continue;
    saving = std::max(saving, shown.offset - other.offset);
  }
  return saving;
}

std::string SystemLocalTime::zoneName() {
  constexpr const char* machines = "/etc/localtime";
  const char* const variable = std::getenv("TZ");
  std::string_view zone = variable ? variable : machines;
  if (zone.starts_with(':')) zone.remove_prefix(1);
  if (zone.empty()) return "UTC";  // so the C library reads it
  return nameIn(zone == machines ? target(machines) : std::string(zone));
}

}  // namespace zarvy
