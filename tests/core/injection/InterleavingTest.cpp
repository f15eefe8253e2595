#include <barrier>

#include <gtest/gtest.h>

#include "base/ThreadQueues.h"
#include "core/injection/TextInjector.h"
#include "fakes/FakeInputMethod.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualScheduler.h"
#include "fakes/RecordingKeyEventPoster.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

// Ends a pause only when the other injection has come to its own, so that the two go step by step.
class MeetingSleeper final : public Sleeper {
 public:
  void sleepFor(std::chrono::microseconds) override { m_meeting.arrive_and_wait(); }

 private:
  std::barrier<> m_meeting{2};
};

TEST(TextInjectorThreads, TwoInjectionsRunBesideEachOther) {
  Journal journal;
  RecordingKeyEventPoster poster(journal);
  MeetingSleeper sleeper;
  FakeWorkspace workspace(journal);
  FakeInputMethod inputMethod;
  workspace.setFrontmost(RunningApplication{10, u"editor"_s, u"Editor"_s, 1});
  ManualScheduler scheduler;
  ThreadWorkerPool workers("injections");
  const auto injector =
      TextInjector::make(poster, workspace, inputMethod, sleeper, workers, scheduler);
  int completed = 0;
  injector->onInjectionComplete = [&completed] { ++completed; };

  // Were the second to wait for the first, neither would ever get past its first pause.
  injector->inject(u"aaaaaaaaaaaaaaaaaaaaAAAAA"_s, 1, {}, {});
  injector->inject(u"bbbbbbbbbbbbbbbbbbbbBBBBB"_s, 1, {}, {});
  workers.drain();

  QStringList entries = journal.takeEntries();
  EXPECT_EQ(entries.count(u"key 51"_s), 2);
  EXPECT_EQ(entries.count(u"end"_s), 2);
  const auto firstOf = [&entries](const QString& entry) { return entries.indexOf(entry); };
  EXPECT_LT(firstOf(u"text 'aaaaaaaaaaaaaaaaaaaa'"_s), firstOf(u"text 'BBBBB'"_s));
  EXPECT_LT(firstOf(u"text 'bbbbbbbbbbbbbbbbbbbb'"_s), firstOf(u"text 'AAAAA'"_s));

  EXPECT_EQ(completed, 0);
  scheduler.runPending();
  EXPECT_EQ(completed, 2);
}

// An injector let go of while its injections run, over and over, for the sanitizers to watch.
TEST(TextInjectorThreads, LettingGoOfTheInjectorWhileItTypesIsSafe) {
  Journal journal;
  RecordingKeyEventPoster poster(journal);
  FakeWorkspace workspace(journal);
  FakeInputMethod inputMethod;
  workspace.setFrontmost(RunningApplication{10, u"editor"_s, u"Editor"_s, 1});
  ManualScheduler scheduler;
  ThreadWorkerPool workers("injections");
  class NoSleep final : public Sleeper {
    void sleepFor(std::chrono::microseconds) override {}
  } sleeper;

  for (int round = 0; round < 200; ++round) {
    auto injector = TextInjector::make(poster, workspace, inputMethod, sleeper, workers, scheduler);
    injector->onInjectionComplete = [] {};
    for (int i = 0; i < 3; ++i) injector->inject(u"some text to be typed"_s, 2, {}, 1);
    if (round % 2 == 0) injector->cutShort();
    injector.reset();
    scheduler.runPending();
  }
  workers.drain();
  scheduler.runPending();
  const QStringList entries = journal.entries();
  EXPECT_EQ(entries.filter(u"begin"_s).size(), entries.count(u"end"_s));
}

}  // namespace
}  // namespace zarvy
