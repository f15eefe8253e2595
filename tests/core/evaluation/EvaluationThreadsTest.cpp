#include <algorithm>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "base/posix/Processes.h"
#include "core/evaluation/JSEvaluator.h"
#include "core/evaluation/ShellEvaluator.h"
#include "fakes/RecordingLineOutput.h"
#include "support/QtPrinters.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace processes;

constexpr int threadCount = 4;

void onThreads(const std::function<void(int)>& work) {
  std::vector<std::thread> threads;
  for (int index = 0; index < threadCount; ++index) threads.emplace_back(work, index);
  for (std::thread& thread : threads) thread.join();
}

TEST(ShellEvaluatorOnThreads, KeepsTheTextsApart) {
  ChildReaper reaper;
  ShellEvaluator evaluator(reaper, {"/bin/sh"}, patience);
  onThreads([&](int index) {
    for (int round = 0; round < 10; ++round) {
      const QString text = u"%1-%2"_s.arg(index).arg(round);
      EXPECT_EQ(evaluator.evaluate(u"echo "_s + text), text);
    }
  });
  EXPECT_FALSE(hasChildren());
}

TEST(ShellEvaluatorOnThreads, LetsCommandsRunBesideEachOther) {
  // Each command waits for the other: it ends only if both run at a time.
  ChildReaper reaper;
  ShellEvaluator evaluator(reaper, {"/bin/sh"}, patience);
  const std::string folder = testing::TempDir() + "zarvy-beside-" + std::to_string(::getpid());
  std::filesystem::create_directory(folder);
  const auto command = [&](const char* own, const char* other) {
    return u"cd %1; touch %2; until [ -e %3 ]; do sleep 0.02; done; echo met"_s.arg(
        QString::fromStdString(folder), QString::fromLatin1(own), QString::fromLatin1(other));
  };
  QString first;
  std::thread beside([&] { first = evaluator.evaluate(command("a", "b")); });
  const QString second = evaluator.evaluate(command("b", "a"));
  beside.join();
  std::filesystem::remove_all(folder);
  EXPECT_EQ(first, u"met"_s);
  EXPECT_EQ(second, u"met"_s);
}

TEST(ShellEvaluatorOnThreads, LeavesLateCommandsToOneReaper) {
  ChildReaper reaper;
  ShellEvaluator evaluator(reaper, {"/bin/sh"}, std::chrono::milliseconds(20));
  onThreads([&](int) {
    for (int round = 0; round < 5; ++round) {
      EXPECT_EQ(evaluator.evaluate(u"exec sleep 1000"_s), u"[Shell Timeout]"_s);
    }
  });
  EXPECT_TRUE(eventually([] { return !hasChildren(); }));
}

TEST(JSEvaluatorOnThreads, RunsOneScriptAtATime) {
  RecordingLineOutput output;
  ChildReaper reaper;
  JSEvaluator evaluator(output, reaper, ScriptWorkerCommand::besideThisProgram(),
                        {patience, patience});
  std::mutex mutex;
  std::vector<int> seen;
  onThreads([&](int) {
    for (int round = 0; round < 25; ++round) {
      const int number = evaluator.evaluate(u"globalThis.n = (globalThis.n || 0) + 1"_s).toInt();
      const std::scoped_lock guard(mutex);
      seen.push_back(number);
    }
  });
  std::sort(seen.begin(), seen.end());
  ASSERT_EQ(seen.size(), 25U * threadCount);
  for (std::size_t i = 0; i < seen.size(); ++i) EXPECT_EQ(seen[i], static_cast<int>(i) + 1);
  EXPECT_EQ(output.lines(), QStringList());
}

TEST(JSEvaluatorOnThreads, GoesOnWhileScriptsDie) {
  RecordingLineOutput output;
  {
    ChildReaper reaper;
    JSEvaluator evaluator(output, reaper, ScriptWorkerCommand::besideThisProgram(),
                          {std::chrono::milliseconds(200), patience});
    onThreads([&](int index) {
      for (int round = 0; round < 3; ++round) {
        if (index == 0) {
          EXPECT_EQ(evaluator.evaluate(u"for (;1;) ;"_s), u"[JS Timeout]"_s);
        } else {
          const QString text = evaluator.evaluate(u"'%1'"_s.arg(index));
          // A machine that does much else may take its time for a sum as well.
          EXPECT_TRUE(text == QString::number(index) || text == u"[JS Timeout]"_s);
        }
      }
    });
    EXPECT_TRUE(eventually([] { return runningChildren().size() <= 1; }));
  }
  EXPECT_EQ(output.lines(), QStringList());
}

}  // namespace
}  // namespace zarvy
