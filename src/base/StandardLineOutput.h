#pragma once

#include "base/LineOutput.h"

namespace zarvy {

// Lines on standard output in UTF-8. Each goes out in one write, so that lines of several threads
// do not mix and a reader at the other end of a pipe sees a line as soon as it is printed. An
// output that nobody reads any more loses its lines; that ends nothing, as long as the process
// ignores SIGPIPE.
class StandardLineOutput final : public LineOutput {
 public:
  void print(const QString& line) override;
};

}  // namespace zarvy
