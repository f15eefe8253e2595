#pragma once

#include <QString>

namespace zarvy {

// A stretch of the preview in one style.
struct PreviewRun {
  enum class Kind {
    plain,     // as the snippet has it
    regular,   // stands for something that is still to be worked out, or was filled in
    required,  // the same, of a field that may not stay blank
  };

  Kind kind = Kind::plain;
  QString text;

  bool operator==(const PreviewRun&) const = default;
};

}  // namespace zarvy
