#pragma once

#include <QByteArray>

namespace zarvy {

// Which customs dates follow. Their time of day is always that of the machine's clocks.
struct RegionalSettings {
  QByteArray locale;  // as ICU names it, such as "de_DE"

  // The user's: the environment's language for dates.
  [[nodiscard]] static RegionalSettings ofUser();
};

}  // namespace zarvy
