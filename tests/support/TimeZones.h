#pragma once

#include <ctime>
#include <vector>

#include <QByteArray>
#include <QFile>
#include <QString>

// Instants and time zones, and what the C library makes of them: the same as all other programs of
// the machine show.
namespace zarvy::timezones {

// In seconds from 1970 on: all through two centuries, and hour by hour through a year.
[[nodiscard]] inline std::vector<qint64> manyInstants() {
  constexpr qint64 hour = 3600;
  std::vector<qint64> instants;
  for (qint64 instant = -2'145'000'000; instant < 4'400'000'000; instant += 2441 * hour + 61) {
    instants.push_back(instant);
  }
  constexpr qint64 beginOf2026 = 1'767'225'600;
  for (qint64 past = 0; past < 366 * 24; past += 11) {
    instants.push_back(beginOf2026 + past * hour + 59);
  }
  return instants;
}

// As TZ takes them: places whose clocks are set by new rules since 2022, clocks that are odd in
// some way, and all the ways of writing.
[[nodiscard]] inline std::vector<QByteArray> manyZones() {
  return {"America/Mexico_City",
          "Africa/Cairo",
          "America/Asuncion",
          "America/Ciudad_Juarez",
          "Asia/Almaty",
          "America/Nuuk",
          "Europe/Berlin",
          "Europe/Dublin",
          "Africa/Casablanca",
          "Asia/Kathmandu",
          "Asia/Kolkata",
          "Australia/Lord_Howe",
          "America/St_Johns",
          "Pacific/Apia",
          "Pacific/Kiritimati",
          "Etc/UTC",
          "Etc/GMT+12",
          "UTC",
          "",
          "EST5EDT",
          "EST5EDT,M3.2.0,M11.1.0",
          "<-03>3",
          "<+0545>-5:45",
          "AEST-10AEDT,M10.1.0,M4.1.0/3",
          "JST-9",
          ":Asia/Tokyo",
          ":/usr/share/zoneinfo/Asia/Tokyo",
          "/usr/share/zoneinfo/America/Mexico_City",
          "posix/Europe/Berlin",
          ":/usr/share/zoneinfo/posix/America/New_York",
          "Nowhere/Land",
          ":nothing",
          "/no/such/file"};
}

// "2026-07-01 06:00:00", by what TZ says now.
[[nodiscard]] inline QString shownByTheSystem(qint64 instant) {
  const std::time_t time = instant;
  std::tm fields{};
  tzset();
  localtime_r(&time, &fields);
  char text[40];
  strftime(text, sizeof(text), "%Y-%m-%d %H:%M:%S", &fields);
  return QString::fromLatin1(text);
}

// Newer systems keep some spellings in a package of its own, which is mostly not there.
[[nodiscard]] inline bool isOfThisSystem(const char* zone) {
  const QString name = QString::fromLatin1(zone);
  const bool isSpecial = name.startsWith(u"posix/") || name.startsWith(u"right/");
  return !isSpecial || QFile::exists(QStringLiteral("/usr/share/zoneinfo/") + name);
}

struct KnownTime {
  const char* zone;
  const char* instant;  // in UTC
  const char* shown;
};

// By the rules of today, which no library that was made in 2022 knows.
inline constexpr KnownTime knownTimes[] = {
    {"America/Mexico_City", "2026-07-01T12:00:00Z", "2026-07-01 06:00:00"},
    {"America/Mexico_City", "2026-01-15T12:00:00Z", "2026-01-15 06:00:00"},
    {"Africa/Cairo", "2026-07-01T12:00:00Z", "2026-07-01 15:00:00"},
    {"Africa/Cairo", "2026-01-15T12:00:00Z", "2026-01-15 14:00:00"},
    {"America/Asuncion", "2026-07-01T12:00:00Z", "2026-07-01 09:00:00"},
    {"America/Asuncion", "2026-01-15T12:00:00Z", "2026-01-15 09:00:00"},
    {"America/Ciudad_Juarez", "2026-07-01T12:00:00Z", "2026-07-01 06:00:00"},
    {"America/Ciudad_Juarez", "2026-01-15T12:00:00Z", "2026-01-15 05:00:00"},
    {"Asia/Almaty", "2026-07-01T12:00:00Z", "2026-07-01 17:00:00"},
    {"America/Nuuk", "2026-07-01T12:00:00Z", "2026-07-01 11:00:00"},
    {"America/Nuuk", "2026-01-15T12:00:00Z", "2026-01-15 10:00:00"},
    {"EST5EDT,M3.2.0,M11.1.0", "2026-07-01T12:00:00Z", "2026-07-01 08:00:00"},
    {"<-03>3", "2026-07-01T12:00:00Z", "2026-07-01 09:00:00"},
    {":/usr/share/zoneinfo/Asia/Tokyo", "2026-07-01T12:00:00Z", "2026-07-01 21:00:00"},
    {"posix/Europe/Berlin", "2026-07-01T12:00:00Z", "2026-07-01 14:00:00"},
    {"right/Europe/Berlin", "2026-07-01T12:00:00Z", "2026-07-01 14:00:00"},
};

}  // namespace zarvy::timezones
