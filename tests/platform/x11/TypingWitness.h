#pragma once

#include <QString>

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

#include "e2e/harness/XConnection.h"

namespace zarvy::x11 {

// A window with the input focus that writes down what an application would read from its keys. It
// follows the keymap event by event and lags behind as an application may. One thread.
class TypingWitness {
 public:
  explicit TypingWitness(const std::string& display);
  ~TypingWitness();
  TypingWitness(const TypingWitness&) = delete;
  TypingWitness& operator=(const TypingWitness&) = delete;

  // Everything that had reached the window when this was called. BackSpace takes a character away,
  // Return and Tab are control characters, every other key without text is left out. What arrives
  // under Control, Alt or Super is a shortcut to an application and stands in angle brackets.
  [[nodiscard]] QString text();

  // How often the mapping had changed when this was called, as clients were told.
  [[nodiscard]] int mappingChanges();

 private:
  void readEvents();
  void handle(const xcb_generic_event_t& event);
  void handleKey(const xcb_key_press_event_t& event);
  void reloadKeymap();

  e2e::XConnection m_connection;
  xkb_context* m_context;
  xkb_keymap* m_keymap = nullptr;
  xkb_state* m_state = nullptr;
  uint8_t m_xkbEventBase = 0;
  QString m_text;
  int m_mappingChanges = 0;
};

}  // namespace zarvy::x11
