#include "platform/x11/KeyboardDesk.h"

#include <stdexcept>

#include "e2e/harness/InputDevices.h"
#include "e2e/harness/WaitUntil.h"
#include "platform/KeyEventPoster.h"
#include "platform/KeyEventSource.h"
#include "platform/SyntheticEvent.h"
#include "platform/VirtualKey.h"
#include "platform/Workspace.h"
#include "platform/x11/XkbTools.h"
#include "platform/x11/windows/WindowOwner.h"

namespace zarvy::x11 {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto deadline = 10s;

e2e::Environment environmentFor(const QTemporaryDir& folder, const std::string& display) {
  e2e::Environment environment = e2e::environmentWithHome(folder.path().toStdString());
  environment["DISPLAY"] = display;
  return environment;
}

}  // namespace

KeyboardDesk::KeyboardDesk(const e2e::KeyboardLayout& layout,
                           const std::vector<std::string>& serverArguments)
    : m_server(m_folder.path().toStdString(), serverArguments),
      m_environment(environmentFor(m_folder, m_server.display())),
      m_connection(m_server.display()),
      m_person(m_connection),
      m_witness(m_server.display()) {
  qputenv("DISPLAY", m_server.display().c_str());
  qputenv("LC_ALL", "en_US.UTF-8");
  e2e::setKeyboardLayout(layout, m_environment);
  openSession();
}

KeyboardDesk::~KeyboardDesk() = default;

void KeyboardDesk::openSession() {
  QString reason;
  const auto isOwnWindow = [this](quint32 window) {
    xcb_connection_t* const client = m_ownClient;
    return client && isMadeOn(client, window);
  };
  const auto tellFocusMove = [this] {
    ++m_focusMoves;
    const std::scoped_lock passed(m_readingGate);
  };
  m_session = X11Session::open(m_scheduler, m_output,
                               {.ownBundleIdentifier = u"zarvy-test"_s,
                                .isOwnWindow = isOwnWindow,
                                .mustNotBeHeard = [this] { return m_isSecret.load(); },
                                .onFocusMoved = [tellFocusMove](qint64) { tellFocusMove(); },
                                .onConnectionLost = [this] { m_connectionLost = true; }},
                               &reason);
  if (!m_session) throw std::runtime_error(reason.toStdString());
  const auto token = m_session->keyEventSource().addGlobalMonitor(
      [this](const KeyEvent& event) { m_heard.push_back(event); },
      [this] {
        m_heard.push_back({forgetting, 0, std::nullopt, 0.0});
      });
  if (!token) throw std::runtime_error("the adapters do not hear");
}

void KeyboardDesk::changeLayout(const e2e::KeyboardLayout& layout) {
  e2e::setKeyboardLayout(layout, m_environment);
}

void KeyboardDesk::changePersonsLayout(const std::string& layout) {
  setLayoutOfKeyboard(e2e::serverKeyboardId(m_connection), layout, m_environment);
}

void KeyboardDesk::changeKeymap(const std::vector<Replacement>& replacements) {
  std::string keymap = mapping().keyboard;
  for (const auto& [part, by] : replacements) {
    const std::size_t at = keymap.find(part);
    if (at == std::string::npos) throw std::runtime_error("the keymap has no " + part);
    keymap.replace(at, part.size(), by);
  }
  loadKeymap(keymap, m_environment);
}

e2e::MappingDump KeyboardDesk::mapping() const {
  return e2e::dumpMapping(m_connection, m_environment);
}

void KeyboardDesk::type(const QString& text) {
  {
    const auto typing = m_session->keyEventPoster().beginTyping(text);
    for (qsizetype at = 0; at < text.size(); at += 20)
      typing->pressText(QStringView(text).mid(at, 20));
  }
  // Its answer shows that the server has carried out what was sent before.
  static_cast<void>(m_session->workspace().frontmostApplication());
}

std::vector<KeyEvent> KeyboardDesk::heard(std::size_t count) {
  const bool all = e2e::waitUntil(
      [&] {
        m_scheduler.runPending();
        return m_heard.size() >= count;
      },
      deadline);
  if (!all) throw std::runtime_error("only " + std::to_string(m_heard.size()) + " presses heard");
  return m_heard;
}

QString KeyboardDesk::heardText(std::size_t count) {
  QString text;
  for (const KeyEvent& event : heard(count)) {
    if (!isSyntheticLocation(event.locationX)) {
      text += event.charactersIgnoringModifiers.value_or(QString());
    }
  }
  return text;
}

// A key press that everything before it must have preceded.
void KeyboardDesk::letAdaptersCatchUp(e2e::Body body) {
  constexpr quint16 end = 119;
  const auto isMarker = [](const KeyEvent& event) { return event.keyCode == end; };
  m_person.tap(XKB_KEY_End, {.body = body});
  const bool seen = e2e::waitUntil(
      [&] {
        m_scheduler.runPending();
        return std::any_of(m_heard.begin(), m_heard.end(), isMarker);
      },
      deadline);
  if (!seen) throw std::runtime_error("the adapters do not catch up");
  std::erase_if(m_heard, isMarker);
}

bool KeyboardDesk::connectionLost() {
  return e2e::waitUntil(
      [&] {
        m_scheduler.runPending();
        return m_connectionLost;
      },
      deadline);
}

}  // namespace zarvy::x11
