#pragma once

#include <array>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>

#include "typing/EventReader.h"
#include "typing/KeyRecord.h"

namespace zarvy::benchmarks {

// Notes every key that goes down on the display, whoever pressed it, and when. The public
// functions belong to one thread. Throws std::runtime_error where the display cannot be listened
// to.
class KeyObserver {
 public:
  explicit KeyObserver(const std::string& display);
  KeyObserver(const KeyObserver&) = delete;
  KeyObserver& operator=(const KeyObserver&) = delete;
  ~KeyObserver();

  // The key that deletes the character before the caret.
  [[nodiscard]] std::uint8_t backspaceKey() const { return m_backspaceKey; }

  // Starts a new record.
  void forget();

  // The record as it is once `isComplete` holds of it; the reader's thread asks too.
  // Throws std::runtime_error where that does not come about for long.
  using RecordTest = std::function<bool(const KeyRecord&)>;
  [[nodiscard]] KeyRecord waitFor(const RecordTest& isComplete);

 private:
  void selectKeys() const;
  void readModifierKeys();
  void take(const xcb_generic_event_t& event, std::chrono::steady_clock::time_point arrival);
  [[nodiscard]] const e2e::XConnection& connection() const { return m_reader.connection(); }

  EventReader m_reader;
  std::uint8_t m_inputOpcode;
  std::uint8_t m_backspaceKey;
  std::array<bool, 256> m_isModifier{};
  std::mutex m_mutex;
  std::condition_variable m_completed;
  const RecordTest* m_awaited = nullptr;  // under m_mutex
  KeyRecord m_record;                     // under m_mutex
};

}  // namespace zarvy::benchmarks
