#pragma once

#include <optional>

#include <QStringView>

namespace zarvy {

// The argument of {{date:+1d:short}} or {{time:-30M}}: so many units from now, in some format.
struct RelativeDate {
  qint64 amount = 0;  // 0 also where the number does not fit into 64 bits
  char16_t unit = 0;
  std::optional<QStringView> format;
};

// Reads a sign or none, digits and one of `units`. Absent for an argument of any other kind.
[[nodiscard]] std::optional<RelativeDate> readRelativeTime(QStringView argument, QStringView units);

// The same with, if wanted, a colon and a format of at least one UTF-16 unit behind it.
[[nodiscard]] std::optional<RelativeDate> readRelativeDate(QStringView argument, QStringView units);

}  // namespace zarvy
