#pragma once

#include <QByteArray>
#include <QString>

namespace zarvy {

// Which customs dates follow.
struct RegionalSettings {
  QByteArray locale;  // as ICU names it, such as "de_DE"
  QString timeZone;   // as the tz database names it, such as "Europe/Berlin"; empty: the machine's

  // The user's: the environment's language for dates, and the machine's time zone.
  [[nodiscard]] static RegionalSettings ofUser();
};

}  // namespace zarvy
