#pragma once

#include <chrono>
#include <cstddef>
#include <memory>

#include "base/LineOutput.h"

namespace zarvy {

// Lines on standard output in UTF-8, control characters in them as "\n" or "\x1b". Each goes out in
// one write, so that lines of several threads do not mix and a reader at the other end of a pipe
// sees a line as soon as it is printed. An output whose reader has gone loses its lines; the
// process goes on, as long as it ignores SIGPIPE.
//
// A terminal that was stopped with Ctrl+S and a pipe that is full let a writer wait without limit.
// No flag of the descriptor prevents that, for it would hold for all other programs on the same
// terminal; so a thread of its own does the writing. print() waits until the line is out, for
// `patience` at most. After one wait in vain it no longer waits until all lines are out again.
class StandardLineOutput final : public LineOutput {
 public:
  struct Limits {
    std::chrono::milliseconds patience{20};
    std::size_t lines = 1000;  // that wait to be written; what is printed beyond them is lost
  };

  StandardLineOutput();
  explicit StandardLineOutput(Limits limits);

  // As finish().
  ~StandardLineOutput() override;

  StandardLineOutput(const StandardLineOutput&) = delete;
  StandardLineOutput& operator=(const StandardLineOutput&) = delete;

  void print(const QString& line) override;

  // Waits, half a second at most, for what is still to be written. For the end of the process,
  // however it comes: what is not out by then is lost. Any thread.
  void finish();

 private:
  class Writer;
  std::shared_ptr<Writer> m_writer;  // with its thread, which may be stuck beyond the end
};

}  // namespace zarvy
