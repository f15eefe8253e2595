#include "ZarvyApp.h"

#include <utility>

#include <QDBusConnection>
#include <QGuiApplication>

#include "base/posix/OwnProcess.h"
#include "platform/desktop/ProgramStart.h"
#include "ui/Scenes.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// For a display that does not answer, or a text that takes long to be looked through.
constexpr std::chrono::seconds patienceWithTyping{2};
constexpr std::chrono::seconds patienceWithDisks{4};
constexpr std::chrono::milliseconds patienceWithSounds{500};

// A portal that is only being started wants to look at this program by then.
constexpr std::chrono::seconds patienceWithPortal{2};

// As that of Qt, which may be the first to notice.
constexpr int statusWithoutDisplay = 1;

// The program's own sound, where builds and packages put it.
QString soundFile() {
  return QCoreApplication::applicationDirPath() + u"/../share/zarvy/tink.wav"_s;
}

// Without a display there is no colour to follow.
QDBusConnection sessionOfWindows() {
  const bool hasWindows = QGuiApplication::platformName() != u"offscreen";
  return hasWindows ? QDBusConnection::sessionBus() : QDBusConnection(QString());
}

// Scripts write dates as the placeholders do.
ScriptWorkerCommand scriptWorkerFor(const RegionalSettings& region) {
  ScriptWorkerCommand command = ScriptWorkerCommand::besideThisProgram();
  command.locale = region.locale;
  return command;
}

}  // namespace

ZarvyApp::ZarvyApp(LineOutput& output)
    : m_output(output),
      m_mainThread(m_scheduler),
      m_desktop(makeDesktop(m_scheduler, m_output, m_userDefaults,
                            [] { QCoreApplication::exit(statusWithoutDisplay); })),
      m_parts(m_desktop->parts()),
      m_store(m_output),
      m_keyboardProcessing("com.zarvy.keyboardprocessing"),
      m_storageQueue("zarvy-storage"),
      m_documents(m_store, m_storageQueue),
      m_counters(m_documents, m_scheduler),
      m_fieldDefaults(m_documents, m_scheduler),
      m_stats(m_documents, m_scheduler, m_clock),
      m_syncQueue("zarvy-sync"),
      m_cloudDrive(m_userDefaults),
      m_cloudSync(m_cloudDrive, m_userDefaults, m_clock, m_scheduler, m_syncQueue, m_output),
      m_workers("zarvy-worker"),
      m_soundWorkers("zarvy-sound"),
      m_sound(m_soundWorkers, soundFile()),
      m_region(RegionalSettings::ofUser()),
      m_dates(m_region),
      m_pasteboard(m_desktop->othersClipboard()),
      m_shell(m_childReaper),
      m_javaScript(m_output, m_childReaper, scriptWorkerFor(m_region)),
      m_engine(m_output, m_matchingClock, placeholderServices()),
      m_monitor(m_parts.keyEventSource, *m_desktop, m_scheduler, m_keyboardProcessing, m_output),
      m_injector(TextInjector::make(m_parts.keyEventPoster, m_parts.workspace,
                                    m_desktop->inputMethod(), m_sleeper, m_workers, m_scheduler)),
      m_secureInputWatch(m_parts.secureInput, m_parts.workspace, m_scheduler),
      m_loginItem(QCoreApplication::applicationFilePath()),
      m_colorScheme(
          sessionOfWindows(), [this](ColorScheme scheme) { m_colors.setColorScheme(scheme); },
          &keepMemoryPrivate),
      m_ownWindows([this](quint64 window) { m_parts.activationPolicy.windowOpened(window); },
                   [this](quint64 window) { m_parts.activationPolicy.windowClosed(window); }),
      m_fillInWindow(fillInServices()),
      m_quickSearchWindow(quickSearchServices()),
      m_state(libraryServices(), coordinatorServices(), expansionServices(), presenceServices()),
      m_windows(m_state, m_parts.workspace),
      m_menu(
          m_state.library(), m_state.selection(), m_state.expansion(),
          [this](Scene scene) { m_windows.comeForwardWith(scene); }, &QCoreApplication::quit),
      m_trayIcon(m_state.library(), m_state.expansion(), m_menu) {}

ZarvyApp::~ZarvyApp() {
  static_cast<void>(end());
}

bool ZarvyApp::end() {
  if (std::exchange(m_hasEnded, true)) return m_hasEndedInOrder;
  m_monitor.stop();
  m_secureInputWatch.stop();
  m_mainThread.close();
  m_injector->cutShort();
  m_desktop->abandonTyping();
  const auto start = std::chrono::steady_clock::now();
  const bool isTyped = m_workers.drainUntil(start + patienceWithTyping) &&
                       m_keyboardProcessing.drainUntil(start + patienceWithTyping);
  const bool isSaved = finishSaves(start + patienceWithDisks);
  if (!isTyped) return false;
  m_desktop->close();
  const auto soundsEnd = std::chrono::steady_clock::now() + patienceWithSounds;
  m_hasEndedInOrder = m_soundWorkers.drainUntil(soundsEnd) && isSaved;
  return m_hasEndedInOrder;
}

void ZarvyApp::start() {
  m_scheduler.postAfter(patienceWithPortal, &keepMemoryPrivate);
  m_trayIcon.show();
  if (!m_desktop->isTrusted()) m_output.print(m_desktop->reasonForMissing());
  m_state.loadData();
}

void ZarvyApp::openManageSnippets() {
  m_windows.comeForwardWith(Scene::manageSnippets);
}

// A save that has begun goes from the documents to the shared file and back.
bool ZarvyApp::finishSaves(std::chrono::steady_clock::time_point deadline) {
  return m_storageQueue.drainUntil(deadline) && m_syncQueue.drainUntil(deadline) &&
         m_storageQueue.drainUntil(deadline);
}

PlaceholderServices ZarvyApp::placeholderServices() {
  return {m_clock,    m_dates,         m_pasteboard, m_mainThread,
          m_counters, m_fieldDefaults, m_shell,      m_javaScript};
}

CoordinatorServices ZarvyApp::coordinatorServices() {
  return {m_monitor,           m_engine,    *m_injector, m_parts.workspace, m_stats, m_fillInWindow,
          m_quickSearchWindow, m_scheduler, m_output};
}

ExpansionServices ZarvyApp::expansionServices() {
  return {m_monitor,
          m_engine,
          *m_injector,
          m_parts.keyEventPoster,
          m_sound,
          m_workers,
          m_secureInputWatch,
          *m_desktop,
          m_quickSearchWindow,
          m_parts.hotKeys,
          m_scheduler,
          m_output};
}

LibraryServices ZarvyApp::libraryServices() {
  return {
      m_documents, {m_counters, m_stats, m_fieldDefaults}, m_cloudSync, m_clock, m_region.locale};
}

FillInServices ZarvyApp::fillInServices() {
  return {m_engine, m_fieldDefaults, m_dates, m_clock, m_scheduler, m_parts.workspace};
}

QuickSearchServices ZarvyApp::quickSearchServices() {
  return {m_scheduler, m_parts.workspace, [this] { return m_desktop->hasCompositor(); },
          [this](quint64 window) { m_parts.activationPolicy.leaveOut(window); }};
}

PresenceServices ZarvyApp::presenceServices() {
  return {m_parts.activationPolicy, m_loginItem, m_ownWindows, m_scheduler, m_output};
}

}  // namespace zarvy
