#include <filesystem>
#include <iostream>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "base/posix/Processes.h"
#include "base/text/CalendarDays.h"
#include "base/text/DateFormatter.h"
#include "core/evaluation/JSEvaluator.h"
#include "fakes/RecordingLineOutput.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace processes;

constexpr int cannotTell = 77;

// An /etc of this process's own, in which a desktop's settings may choose the time zone.
class MachineThatTravels {
 public:
  // False where the kernel does not let a process have one.
  [[nodiscard]] bool begin() {
    qunsetenv("TZ");
    const std::string folder = m_folder.path().toStdString();
    return (unshare(CLONE_NEWNS) == 0 || unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0) &&
           mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount(folder.c_str(), "/etc", nullptr, MS_BIND, nullptr) == 0;
  }

  void arriveIn(const std::string& zone) {
    std::filesystem::create_symlink("/usr/share/zoneinfo/" + zone, "/etc/localtime.new");
    std::filesystem::rename("/etc/localtime.new", "/etc/localtime");
  }

 private:
  QTemporaryDir m_folder;
};

// The hour and the zone's name, as a placeholder, as a script and, the hour alone, as the
// statistics have them.
struct Shown {
  QString placeholder;
  QString script;
  int hour;

  friend bool operator==(const Shown&, const Shown&) = default;
  friend std::ostream& operator<<(std::ostream& out, const Shown& shown) {
    return out << shown.placeholder.toStdString() << ", " << shown.script.toStdString() << ", "
               << shown.hour;
  }
};

int travel() {
  MachineThatTravels machine;
  if (!machine.begin()) return cannotTell;
  RecordingLineOutput output;
  ChildReaper reaper;
  JSEvaluator evaluator(output, reaper, ScriptWorkerCommand::besideThisProgram(),
                        {patience, patience});
  const DateFormatter formatter(u"H VV"_s, {"en_US"});
  const QDateTime noon(QDate(2026, 7, 1), QTime(12, 0), utcZone);
  bool isRight = true;
  const auto expectIn = [&](const std::string& zone, const Shown& expected) {
    machine.arriveIn(zone);
    const Shown shown{formatter.format(noon),
                      evaluator.evaluate(u"new Date('2026-07-01T12:00:00Z').getHours() + ' ' + "
                                         u"Intl.DateTimeFormat().resolvedOptions().timeZone"_s),
                      CalendarDays().hour(noon)};
    if (shown == expected) return;
    std::cerr << zone << ": " << shown << " instead of " << expected << std::endl;
    isRight = false;
  };
  expectIn("Europe/Berlin", {u"14 Europe/Berlin"_s, u"14 Europe/Berlin"_s, 14});
  expectIn("America/Mexico_City", {u"6 America/Mexico_City"_s, u"6 America/Mexico_City"_s, 6});
  expectIn("Asia/Tokyo", {u"21 Asia/Tokyo"_s, u"21 Asia/Tokyo"_s, 21});
  return isRight ? EXIT_SUCCESS : EXIT_FAILURE;
}

// In a process of its own, which alone sees another /etc.
TEST(Travel, PlaceholdersScriptsAndStatisticsGoTogether) {
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) _exit(travel());
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  if (WEXITSTATUS(status) == cannotTell) GTEST_SKIP() << "The kernel allows no mounts here.";
  EXPECT_EQ(WEXITSTATUS(status), EXIT_SUCCESS);
}

}  // namespace
}  // namespace zarvy
