#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

#include <QTemporaryDir>

#include "e2e/harness/KeyboardLayout.h"
#include "e2e/harness/Person.h"
#include "e2e/harness/PrivateXServer.h"
#include "fakes/ManualScheduler.h"
#include "fakes/RecordingLineOutput.h"
#include "platform/KeyEventSource.h"
#include "platform/x11/TypingWitness.h"
#include "platform/x11/X11Session.h"

namespace zarvy::x11 {

// An X server with a person at its keyboard, a window in front, and the adapters under test.
class KeyboardDesk {
 public:
  // `serverArguments` go to the X server.
  explicit KeyboardDesk(const e2e::KeyboardLayout& layout,
                        const std::vector<std::string>& serverArguments = {});
  ~KeyboardDesk();
  KeyboardDesk(const KeyboardDesk&) = delete;
  KeyboardDesk& operator=(const KeyboardDesk&) = delete;

  [[nodiscard]] e2e::PrivateXServer& server() { return m_server; }
  [[nodiscard]] const e2e::XConnection& connection() const { return m_connection; }
  [[nodiscard]] e2e::Person& person() { return m_person; }
  [[nodiscard]] TypingWitness& witness() { return m_witness; }
  [[nodiscard]] X11Session& session() { return *m_session; }
  [[nodiscard]] RecordingLineOutput& output() { return m_output; }

  void changeLayout(const e2e::KeyboardLayout& layout);

  // The person's own keyboard gets a layout that the keyboard for faked keys does not have.
  void changePersonsLayout(const std::string& layout);

  // Replaces each `part` of the keymap's text form, for every keyboard.
  struct Replacement {
    std::string part;
    std::string by;
  };
  void changeKeymap(const std::vector<Replacement>& replacements);
  [[nodiscard]] e2e::MappingDump mapping() const;
  [[nodiscard]] e2e::KeyboardState keyboard() const { return e2e::keyboardState(m_connection); }

  // Drops the adapters, as the end of the program does.
  void closeSession() { m_session.reset(); }
  void openSession();

  // Types through the adapters under test.
  void type(const QString& text);

  // Among what was heard, in place of what the listeners are to forget at.
  static constexpr quint16 forgetting = 0xFFFF;

  // What the adapters have heard so far; waits until `count` presses have come, not long.
  [[nodiscard]] std::vector<KeyEvent> heard(std::size_t count);

  // The texts that the person's keys typed among heard(count), one after another.
  [[nodiscard]] QString heardText(std::size_t count);

  // Waits until the adapters have noticed what happened on the server so far; has the person press
  // a key of no consequence for that.
  void letAdaptersCatchUp(e2e::Body body = e2e::Body::xtest);

  // Whether the adapters are told that they must not hear what is typed.
  void setSecret(bool isSecret) { m_isSecret = isSecret; }

  // Has the adapters take the windows of `client`, which outlives them, for the program's own.
  void setOwnClient(const e2e::XConnection& client) { m_ownClient = client.get(); }

  // The adapters read no event more once they have told of the next move of the focus, until what
  // this returns is unlocked.
  [[nodiscard]] std::unique_lock<std::mutex> stopReadingAtFocusMove() {
    return std::unique_lock(m_readingGate);
  }

  // How often the adapters have told that the keyboard went to another window.
  [[nodiscard]] int focusMoves() const { return m_focusMoves; }

  [[nodiscard]] bool connectionLost();

 private:
  QTemporaryDir m_folder;
  e2e::PrivateXServer m_server;
  e2e::Environment m_environment;
  e2e::XConnection m_connection;
  e2e::Person m_person;
  ManualScheduler m_scheduler;
  RecordingLineOutput m_output;
  std::vector<KeyEvent> m_heard;
  bool m_connectionLost = false;
  std::atomic<bool> m_isSecret = false;
  std::mutex m_readingGate;
  std::atomic<xcb_connection_t*> m_ownClient = nullptr;
  std::atomic<int> m_focusMoves = 0;
  TypingWitness m_witness;
  std::unique_ptr<X11Session> m_session;
};

}  // namespace zarvy::x11
