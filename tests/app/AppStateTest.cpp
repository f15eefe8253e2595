#include <string>

#include <gtest/gtest.h>

#include "app/AppStateFixture.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

const char* const startedLine = "print KeyboardMonitor: Started (NSEvent global monitoring)";
const char* const stoppedLine = "print KeyboardMonitor: Stopped";

class AppStateTest : public AppStateFixture {};

TEST_F(AppStateTest, BeginsWithNothingAndTheDefaultSettings) {
  EXPECT_TRUE(state().library().snippets().isEmpty());
  EXPECT_TRUE(state().library().folders().isEmpty());
  EXPECT_TRUE(state().library().globalVariables().isEmpty());
  EXPECT_EQ(state().library().settings().toJson(), Settings().toJson());
  EXPECT_FALSE(state().expansion().isPaused());
  EXPECT_EQ(state().coordinator().pendingMatchLength(), 0);
  EXPECT_EQ(m_harness.takeJournal(), "");
}

TEST_F(AppStateTest, ReadsThePermissionOnceWhenItIsMade) {
  EXPECT_TRUE(state().expansion().hasAccessibilityPermission());
  m_harness.permission.setTrusted(false);
  EXPECT_TRUE(state().expansion().hasAccessibilityPermission());
}

TEST_F(AppStateTest, StartsExpansionOnceTheLibraryIsThere) {
  Settings settings;
  settings.quickSearchKeyCode = 12;
  settings.quickSearchModifiers = 0xA0000;
  const QDateTime noon = m_harness.clock.now();
  const GlobalVariable variable{QUuid::createUuid(), u"Name"_s, u"Ada"_s, noon, noon};
  const Folder folder{QUuid::createUuid(), u"Email"_s, FolderColor::red, 0};
  const LoadedLibrary library{
      {m_harness.snippet(u";ty"_s, u"abc"_s)}, {folder}, settings, {variable}};
  m_harness.load(library);

  EXPECT_EQ(state().library().snippets(), library.snippets);
  EXPECT_EQ(state().library().folders(), library.folders);
  EXPECT_EQ(state().library().globalVariables(), library.globalVariables);
  EXPECT_EQ(state().library().settings().toJson(), settings.toJson());
  EXPECT_EQ(m_harness.engine.snippets(), library.snippets);
  EXPECT_EQ(m_harness.engine.globalVariables(), library.globalVariables);
  EXPECT_EQ(m_harness.monitor.quickSearchKeyCode, 12);
  EXPECT_EQ(m_harness.monitor.quickSearchModifiers, 0xA0000U);
  EXPECT_EQ(m_harness.source.handlerCount(), 1U);
  EXPECT_EQ(m_harness.takeJournal(), startedLine);
}

TEST_F(AppStateTest, PreparesTheCharactersOfTheLibraryAwayFromTheMainThread) {
  m_harness.load({{m_harness.snippet(u";ty"_s, u"äbä\n"_s)}, {}, {}, {}});
  EXPECT_EQ(m_harness.takeJournal(), startedLine);
  m_harness.workers.drain();
  EXPECT_EQ(m_harness.takeJournal(), "prepare 'äb'");
}

TEST_F(AppStateTest, PausingStopsTheMonitorAndUnpausingStartsIt) {
  startWith(u";ty"_s, u"x"_s);
  state().expansion().togglePause();
  EXPECT_TRUE(state().expansion().isPaused());
  EXPECT_EQ(m_harness.source.handlerCount(), 0U);
  EXPECT_EQ(m_harness.takeJournal(), stoppedLine);
  m_harness.type(u";ty"_s);
  m_harness.finish();
  EXPECT_EQ(m_harness.takeJournal(), "");

  state().expansion().togglePause();
  EXPECT_FALSE(state().expansion().isPaused());
  EXPECT_EQ(m_harness.source.handlerCount(), 1U);
  EXPECT_EQ(m_harness.takeJournal(), startedLine);
  m_harness.workers.drain();
  (void)m_harness.takeJournal();
  m_harness.type(u";ty"_s);
  EXPECT_EQ(m_harness.takeJournal(), "print EXPANDING to: 'x...'");
}

TEST_F(AppStateTest, ListensForAChangedHotKeyAtOnce) {
  startWith(u";ty"_s, u"x"_s);
  Settings settings;
  settings.quickSearchKeyCode = 12;
  settings.quickSearchModifiers = 0xA0000;
  state().changeSettings(settings);
  EXPECT_EQ(m_harness.monitor.quickSearchKeyCode, 12);
  EXPECT_EQ(m_harness.monitor.quickSearchModifiers, 0xA0000U);
}

TEST_F(AppStateTest, PassesOverAnOfferThatArrivesAfterThePause) {
  startWith(u";ty"_s, u"x"_s);
  state().expansion().togglePause();
  (void)m_harness.takeJournal();
  state().expansion().handlePotentialTrigger(u";ty"_s);
  m_harness.finish();
  EXPECT_EQ(m_harness.takeJournal(), "");
  EXPECT_EQ(state().coordinator().pendingMatchLength(), 0);
}

TEST_F(AppStateTest, PassesOverAnOfferThatWasOnItsWayWhenThePauseCame) {
  startWith(u";ty"_s, u"x"_s);
  m_harness.type(u";t"_s);
  m_harness.source.type(u"y"_s);
  state().expansion().togglePause();
  (void)m_harness.takeJournal();
  m_harness.finish();
  EXPECT_EQ(m_harness.takeJournal(), "");
}

TEST_F(AppStateTest, AnInjectionInFlightGoesOnAfterAPauseButWithoutTheSound) {
  startWith(u";ty"_s, u"x"_s);
  m_harness.type(u";ty"_s);
  state().expansion().togglePause();
  (void)m_harness.takeJournal();
  m_harness.finish();
  EXPECT_EQ(m_harness.takeJournal(),
            "begin 'x'; key 51; sleep 2000; key 51; sleep 2000; key 51; sleep 2000; sleep 10000; "
            "text 'x'; sleep 1000; end");
}

TEST_F(AppStateTest, StoppingClearsEveryCallback) {
  startWith(u";ty"_s, u"x"_s);
  m_harness.engine.onNeedsFillIn = [](const Snippet&, const QList<FillInField>&) {};
  m_harness.engine.onExpand = [](const Snippet&, const QString&, qint64) {};
  m_harness.monitor.onQuickSearchTriggered = [] {};
  state().expansion().stopExpansion();
  EXPECT_FALSE(m_harness.engine.onNeedsFillIn);
  EXPECT_FALSE(m_harness.engine.onExpand);
  EXPECT_FALSE(m_harness.monitor.onQuickSearchTriggered);
  EXPECT_FALSE(m_harness.monitor.onPotentialTrigger);
  EXPECT_FALSE(m_harness.injector->onInjectionComplete);
}

TEST_F(AppStateTest, StartingWhilePausedIsSilentAndDoesNothing) {
  startWith(u";ty"_s, u"x"_s);
  state().expansion().togglePause();
  (void)m_harness.takeJournal();
  state().expansion().startExpansion();
  m_harness.finish();
  EXPECT_EQ(m_harness.takeJournal(), "");
  EXPECT_EQ(m_harness.source.handlerCount(), 0U);
}

TEST_F(AppStateTest, ALibraryThatArrivesWhilePausedReachesTheEngineButStartsNothing) {
  state().expansion().togglePause();
  (void)m_harness.takeJournal();
  m_harness.load({{m_harness.snippet(u";ty"_s, u"x"_s)}, {}, {}, {}});
  m_harness.finish();
  EXPECT_EQ(m_harness.engine.snippets().size(), 1);
  EXPECT_EQ(m_harness.takeJournal(), "");
}

TEST_F(AppStateTest, StartingTwiceInstallsOneMonitor) {
  startWith(u";ty"_s, u"x"_s);
  state().expansion().startExpansion();
  EXPECT_EQ(m_harness.source.handlerCount(), 1U);
  EXPECT_EQ(m_harness.takeJournal(), "");
}

TEST_F(AppStateTest, RaisesASignalOnlyWhenAValueHasReallyChanged) {
  const LoadedLibrary library{{m_harness.snippet(u";ty"_s, u"x"_s)},
                              {Folder{QUuid::createUuid(), u"Email"_s, FolderColor::red, 0}},
                              {},
                              {GlobalVariable{QUuid::createUuid(), u"Name"_s, u"Ada"_s, {}, {}}}};
  const auto snippets = count(state().library(), &Library::snippetsChanged);
  const auto folders = count(state().library(), &Library::foldersChanged);
  const auto variables = count(state().library(), &Library::globalVariablesChanged);
  const auto settings = count(state().library(), &Library::settingsChanged);
  const auto paused = count(state().expansion(), &ExpansionService::isPausedChanged);
  const auto length =
      count(state().coordinator(), &ExpansionCoordinator::pendingMatchLengthChanged);

  m_harness.load(library);
  m_harness.load(library);  // which does nothing
  state().operations().setFolders(library.folders);
  EXPECT_EQ(*snippets, 1);
  EXPECT_EQ(*folders, 1);
  EXPECT_EQ(*variables, 1);
  EXPECT_EQ(*settings, 0);

  Settings loud;
  loud.hideDockIcon = true;
  state().changeSettings(loud);
  state().changeSettings(loud);
  EXPECT_EQ(*settings, 1);

  state().expansion().handlePotentialTrigger(u";ty"_s);
  state().expansion().handlePotentialTrigger(u";ty"_s);
  EXPECT_EQ(*length, 1);

  state().expansion().togglePause();
  state().expansion().togglePause();
  EXPECT_EQ(*paused, 2);
}

TEST_F(AppStateTest, CallbacksDoNothingOnceItIsGone) {
  startWith(u";ty"_s, u"x"_s);
  m_harness.type(u";ty;t"_s);
  (void)m_harness.takeJournal();
  m_harness.state.reset();
  m_harness.source.type(u"y"_s);
  m_harness.finish();
  EXPECT_EQ(m_harness.journal.takeEntries().last().toStdString(), "end");
}

TEST(AppStateWithoutPermission, SaysWhyItCannotStart) {
  ExpansionHarness harness(false);
  EXPECT_FALSE(harness.state->expansion().hasAccessibilityPermission());
  harness.state->expansion().startExpansion();
  harness.finish();
  EXPECT_EQ(harness.takeJournal(), "print Cannot start expansion: no accessibility permission");
  EXPECT_EQ(harness.source.addCount(), 0);
}

TEST(AppStateWithoutPermission, TakesTheLibraryOverSilently) {
  ExpansionHarness harness(false);
  harness.load({{harness.snippet(u";ty"_s, u"x"_s)}, {}, {}, {}});
  harness.finish();
  EXPECT_EQ(harness.takeJournal(), "");
  EXPECT_EQ(harness.engine.snippets().size(), 1);
}

TEST(AppStateWithoutPermission, PausingWinsOverTheMissingPermission) {
  ExpansionHarness harness(false);
  harness.state->expansion().togglePause();
  (void)harness.takeJournal();
  harness.state->expansion().startExpansion();
  EXPECT_EQ(harness.takeJournal(), "");
  harness.state->expansion().togglePause();
  EXPECT_EQ(harness.takeJournal(), "print Cannot start expansion: no accessibility permission");
}

TEST_F(AppStateTest, WatchesForSecureInputWhileExpansionRuns) {
  const auto changes = count(state().expansion(), &ExpansionService::secureInputAppNameChanged);
  m_harness.secureInput.isEnabled = true;
  startWith(u";ty"_s, u"x"_s);
  EXPECT_EQ(state().expansion().secureInputAppName(), u"editor"_s);
  state().expansion().togglePause();
  EXPECT_EQ(state().expansion().secureInputAppName(), std::nullopt);
  state().expansion().togglePause();
  EXPECT_EQ(state().expansion().secureInputAppName(), u"editor"_s);
  EXPECT_EQ(*changes, 3);
}

TEST_F(AppStateTest, StartsExpansionWhenThePermissionIsFound) {
  m_harness.permission.setTrusted(false);
  m_harness.makeState();
  const auto changes =
      count(state().expansion(), &ExpansionService::hasAccessibilityPermissionChanged);
  m_harness.load({{m_harness.snippet(u";ty"_s, u"x"_s)}, {}, {}, {}});
  state().expansion().refreshAccessibilityPermission();
  EXPECT_EQ(m_harness.takeJournal(), "");
  m_harness.permission.setTrusted(true);
  state().expansion().refreshAccessibilityPermission();
  EXPECT_EQ(m_harness.takeJournal(), startedLine);
  EXPECT_TRUE(state().expansion().hasAccessibilityPermission());
  EXPECT_EQ(*changes, 1);
}

TEST_F(AppStateTest, LooksForThePermissionAgainWhenToldTo) {
  m_harness.permission.setTrusted(false);
  m_harness.makeState();
  m_harness.load({{m_harness.snippet(u";ty"_s, u"x"_s)}, {}, {}, {}});
  m_harness.permission.comesAtNextLook = true;
  EXPECT_FALSE(state().expansion().hasAccessibilityPermission());
  state().expansion().refreshAccessibilityPermission();
  EXPECT_TRUE(state().expansion().hasAccessibilityPermission());
  EXPECT_EQ(m_harness.takeJournal(), startedLine);
}

TEST_F(AppStateTest, DoesNotStartExpansionByALookAtThePermissionWhilePaused) {
  startWith(u";ty"_s, u"x"_s);
  state().expansion().togglePause();
  (void)m_harness.takeJournal();
  state().expansion().refreshAccessibilityPermission();
  EXPECT_EQ(m_harness.takeJournal(), "");
  EXPECT_EQ(m_harness.source.handlerCount(), 0U);
}

TEST_F(AppStateTest, AsksForThePermissionOnlyWhereItIsMissingAndThenOpensThePlaceToGrantIt) {
  state().expansion().requestAccessibilityPermission();
  EXPECT_EQ(m_harness.permission.calls, QStringList());
  m_harness.permission.setTrusted(false);
  state().expansion().requestAccessibilityPermission();
  EXPECT_EQ(m_harness.permission.calls, QStringList{u"ask"_s});
  m_harness.scheduler.advance(std::chrono::milliseconds(500));
  EXPECT_EQ(m_harness.permission.calls, (QStringList{u"ask"_s, u"settings"_s, u"settings"_s}));
}

}  // namespace
}  // namespace zarvy
