#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "e2e/harness/EditorState.h"
#include "e2e/harness/FileDescriptor.h"

namespace zarvy::e2e {

// The listening end of a local socket on which a program of ours tells its text and caret after
// each change. A line is the number of times that it was emptied from here, the caret, and the
// UTF-16 units of the text in hexadecimal, four digits each. The other way goes "clear".
class StateChannel {
 public:
  explicit StateChannel(const std::string& path);
  StateChannel(const StateChannel&) = delete;
  StateChannel& operator=(const StateChannel&) = delete;
  ~StateChannel();

  [[nodiscard]] const std::string& path() const { return m_path; }

  // Takes the program's connection and waits for its first report. Throws std::runtime_error at the
  // deadline.
  void accept(std::chrono::milliseconds deadline);

  // The latest report.
  [[nodiscard]] EditorState state() const;
  [[nodiscard]] bool waitForState(const EditorState& wanted,
                                  std::chrono::milliseconds deadline) const;

  // Has the program empty its text, and returns when it has: what is typed from then on stays.
  // Throws std::runtime_error at the deadline.
  void clear(std::chrono::milliseconds deadline);

 private:
  void readReports();
  void takeReport(const std::string& line);

  std::string m_path;
  FileDescriptor m_listener;
  FileDescriptor m_connection;
  mutable std::mutex m_mutex;
  mutable std::condition_variable m_changed;
  EditorState m_state;    // under m_mutex
  int m_clearCount = 0;   // under m_mutex
  int m_reportCount = 0;  // under m_mutex
  int m_clearsAsked = 0;
  std::thread m_reader;
};

}  // namespace zarvy::e2e
