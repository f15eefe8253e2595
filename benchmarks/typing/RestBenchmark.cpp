#include "typing/RestBenchmark.h"

#include <filesystem>
#include <stdexcept>
#include <thread>

#include "e2e/harness/Stage.h"
#include "e2e/harness/WaitUntil.h"
#include "typing/Figure.h"
#include "typing/ProcessUsage.h"

namespace zarvy::benchmarks {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int snippetCount = 10'000;
constexpr int startCount = 9;

std::vector<e2e::TestSnippet> largeLibrary() {
  const QString replacement =
      u"Dear Sir or Madam, thank you for your letter of the day before yesterday (no. %1). "
      u"Grüße, привет, καλημέρα – we shall come back to it within the week."_s;
  std::vector<e2e::TestSnippet> snippets;
  for (int number = 0; number < snippetCount; ++number) {
    snippets.push_back(
        {u";"_s + QString::number(number, 36).rightJustified(4, u'x'), replacement.arg(number)});
  }
  return snippets;
}

// As many sets of the documents as the program keeps.
void writeBackups(const std::string& dataFolder) {
  namespace fs = std::filesystem;
  for (int day = 10; day < 20; ++day) {
    const fs::path set = fs::path(dataFolder) / "Backups" / ("2026-01-" + std::to_string(day));
    fs::create_directories(set);
    for (const auto& file : fs::directory_iterator(dataFolder)) {
      if (file.path().extension() == ".json") fs::copy(file.path(), set);
    }
  }
}

// Returns once the process uses next to no CPU time over `aWhile`. Throws where it does not come to
// that.
void awaitRest(pid_t process, std::chrono::milliseconds aWhile) {
  const auto isAtRest = [&] {
    constexpr Milliseconds nextToNothing(1);
    const Milliseconds before = cpuTime(process);
    std::this_thread::sleep_for(aWhile);
    return cpuTime(process) - before < nextToNothing;
  };
  if (!e2e::waitUntil(isAtRest, std::chrono::seconds(30))) {
    throw std::runtime_error("a process does not come to rest");
  }
}

}  // namespace

void measureStart(const std::string& program) {
  e2e::Stage stage({.layouts = "us"});
  // The first start fills caches of the system's that later ones find.
  e2e::ProgramUnderTest& started = stage.startProgram(program, largeLibrary());
  writeBackups(started.dataFolder());
  std::vector<double> times;
  for (int count = 0; count < startCount; ++count) {
    if (started.terminate() != e2e::ExitStatus{}) {
      throw std::runtime_error("the program does not end as asked");
    }
    // The end has given keys back, and the desktop takes its time over a changed mapping.
    awaitRest(stage.server().pid(), std::chrono::milliseconds(300));
    const auto before = std::chrono::steady_clock::now();
    started.start();
    times.push_back(Milliseconds(std::chrono::steady_clock::now() - before).count());
  }
  print({"program start to listening, 10,000 snippets and ten backups", median(times), "ms", 300});
}

void measureRest(const std::string& program) {
  constexpr auto observed = std::chrono::seconds(10);
  e2e::Stage stage({.layouts = "us"});
  const pid_t process = stage.startProgramWithFirstRunLibrary(program).process().pid();
  awaitRest(process, std::chrono::seconds(1));
  print({"private memory at rest, first-run library", privateMemory(process), "MiB", 60});
  const std::uint64_t before = contextSwitches(process);
  std::this_thread::sleep_for(observed);
  const auto switches = static_cast<double>(contextSwitches(process) - before);
  // Nothing but the watch, twice a second, has a reason to wake it.
  print({"wake-ups at rest", switches / static_cast<double>(observed.count()), "/s", 2});
}

}  // namespace zarvy::benchmarks
