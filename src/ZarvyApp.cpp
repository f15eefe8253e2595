#include "ZarvyApp.h"

#include <utility>

#include <QCoreApplication>

namespace zarvy {

namespace {

// As that of Qt, which may be the first to notice.
constexpr int statusWithoutDisplay = 1;

// Scripts write dates as the placeholders do.
ScriptWorkerCommand scriptWorkerFor(const RegionalSettings& region) {
  ScriptWorkerCommand command = ScriptWorkerCommand::besideThisProgram();
  command.locale = region.locale;
  command.timeZone = region.timeZone.toUtf8();
  return command;
}

}  // namespace

ZarvyApp::ZarvyApp(LineOutput& output)
    : m_output(output),
      m_mainThread(m_scheduler),
      m_desktop(m_scheduler, m_output, [] { QCoreApplication::exit(statusWithoutDisplay); }),
      m_store(m_output),
      m_keyboardProcessing("com.zarvy.keyboardprocessing"),
      m_storageQueue("zarvy-storage"),
      m_documents(m_store, m_storageQueue),
      m_counters(m_documents, m_scheduler),
      m_fieldDefaults(m_documents, m_scheduler),
      m_stats(m_documents, m_scheduler, m_clock),
      m_workers("zarvy-worker"),
      m_soundWorkers("zarvy-sound"),
      m_sound(m_soundWorkers),
      m_region(RegionalSettings::ofUser()),
      m_dates(m_region),
      m_shell(m_childReaper),
      m_javaScript(m_output, m_childReaper, scriptWorkerFor(m_region)),
      m_engine(m_output, placeholderServices()),
      m_monitor(m_desktop.keyEventSource(), m_desktop, m_scheduler, m_keyboardProcessing, m_output),
      m_injector(TextInjector::make(m_desktop.keyEventPoster(), m_desktop.workspace(), m_sleeper,
                                    m_workers, m_scheduler)),
      m_secureInputWatch(m_desktop.secureInput(), m_desktop.workspace(), m_scheduler),
      m_state(expansionServices(), m_desktop),
      m_loader(m_documents, {m_counters, m_stats, m_fieldDefaults}, m_scheduler, m_clock),
      m_windows(m_state),
      m_menu(
          m_state, [this](const QString& id) { m_windows.open(id); }, &QCoreApplication::quit),
      m_trayIcon(m_state, m_menu) {}

ZarvyApp::~ZarvyApp() {
  end();
}

void ZarvyApp::end() {
  if (std::exchange(m_hasEnded, true)) return;
  m_monitor.stop();
  m_secureInputWatch.stop();
  m_mainThread.close();
  m_injector->cutShort();
  m_desktop.abandonTyping();
  m_workers.drain();
  m_keyboardProcessing.drain();
  m_desktop.close();
  m_storageQueue.drain();
}

void ZarvyApp::start() {
  m_trayIcon.show();
  if (!m_desktop.isTrusted()) m_output.print(m_desktop.reasonForMissing());
  m_loader.load([this](const Library& library) { m_state.adoptLibrary(library); });
}

PlaceholderServices ZarvyApp::placeholderServices() {
  return {m_clock,    m_dates,         m_pasteboard, m_mainThread,
          m_counters, m_fieldDefaults, m_shell,      m_javaScript};
}

ExpansionServices ZarvyApp::expansionServices() {
  return {m_monitor,   m_engine,  *m_injector, m_desktop.keyEventPoster(),
          m_sound,     m_workers, m_stats,     m_secureInputWatch,
          m_scheduler, m_output};
}

}  // namespace zarvy
