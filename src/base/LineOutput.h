#pragma once

#include <QString>

namespace zarvy {

// The program's diagnostics: plain lines without level or time stamp. Any thread.
class LineOutput {
 public:
  virtual ~LineOutput() = default;

  // Writes `line` and a line feed, at once.
  virtual void print(const QString& line) = 0;
};

}  // namespace zarvy
