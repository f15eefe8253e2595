#include "e2e/harness/ReportingTarget.h"

namespace zarvy::e2e {

ProcessSpecification XtermTarget::program() {
  return {.program = "xterm",
          .arguments = {"-u8", "-fa", "DejaVu Sans Mono", "-fs", "9", "-geometry", "100x40", "-e",
                        m_probeProgram, channelPath()},
          .environment = setting().environment,
          .errorFile = setting().folder + "/error.log",
          .descriptors = {}};
}

ProcessSpecification Qt6EditorTarget::program() {
  return {.program = m_editorProgram,
          .arguments = {channelPath()},
          .environment = setting().environment,
          .errorFile = setting().folder + "/error.log",
          .descriptors = {}};
}

}  // namespace zarvy::e2e
