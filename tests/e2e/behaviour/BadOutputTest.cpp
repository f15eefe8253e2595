// A program whose standard output takes nothing, and one that has none.

#include <array>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <unistd.h>

#include "e2e/behaviour/BehaviourTest.h"
#include "e2e/harness/FileDescriptor.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto deadline = std::chrono::seconds(30);

class BadOutput : public BehaviourTest {
 protected:
  [[nodiscard]] ProgramUnderTest::Setting setting() {
    return {.program = programPath(),
            .environment = stage().environment(),
            .homeFolder = stage().makeFolder("program")};
  }

  // Nothing tells when it has come to listening, so the trigger is typed until it does.
  [[nodiscard]] bool comesToExpanding() {
    const auto hasExpanded = [this] { return target().state().text == u"Ωk"_s; };
    const auto begin = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - begin < deadline) {
      target().clear();
      person().type(u";ok"_s);
      if (waitUntil(hasExpanded, std::chrono::seconds(1))) return true;
    }
    return false;
  }
};

// A pipe that the test reads only for as long as it wants to.
class Pipe {
 public:
  Pipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) return;
    m_out.reset(ends[0]);
    m_in.reset(ends[1]);
  }

  [[nodiscard]] int in() const { return m_in.get(); }

  [[nodiscard]] bool waitFor(const std::string& wanted) const {
    std::string read;
    std::array<char, 4096> bytes{};
    pollfd readable{.fd = m_out.get(), .events = POLLIN, .revents = 0};
    const int patience = static_cast<int>(std::chrono::milliseconds(deadline).count());
    while (read.find(wanted) == std::string::npos && ::poll(&readable, 1, patience) == 1) {
      const ssize_t count = ::read(m_out.get(), bytes.data(), bytes.size());
      if (count <= 0) return false;
      read.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return read.find(wanted) != std::string::npos;
  }

  // Until nothing more goes in. Through a description of its own: the flag is not the program's.
  void fill() const {
    const std::string path = "/proc/self/fd/" + std::to_string(m_in.get());
    const FileDescriptor in(::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    const std::string bytes(4096, '.');
    while (::write(in.get(), bytes.data(), bytes.size()) > 0) {
    }
    while (::write(in.get(), ".", 1) > 0) {
    }
  }

 private:
  FileDescriptor m_out;
  FileDescriptor m_in;
};

TEST_F(BadOutput, thatBlocksStopsNeitherExpansionNorTheEnd) {
  const Pipe pipe;
  ProgramUnderTest::Setting intoThePipe = setting();
  intoThePipe.descriptors = {{.ours = pipe.in(), .theirs = STDOUT_FILENO}};
  ProgramUnderTest program(intoThePipe);
  program.writeLibrary({{u";ok"_s, u"Ωk"_s}});
  program.launch();
  ASSERT_TRUE(pipe.waitFor("KeyboardMonitor: Started")) << program.errorOutput();
  stage().startTarget(TargetKind::qt6);
  pipe.fill();
  for (const QString& expected : {u"Ωk"_s, u"Ωk Ωk"_s, u"Ωk Ωk Ωk"_s}) {
    person().type(u";ok"_s);
    expectText(expected);
    person().type(u" "_s);
  }
  EXPECT_EQ(program.terminate(), ExitStatus{});
}

TEST_F(BadOutput, thatWasNeverOpenedLeavesTheProgramAtWork) {
  ProgramUnderTest::Setting withoutAny = setting();
  withoutAny.program = "/bin/sh";
  withoutAny.environment["LD_PRELOAD"] = ZARVY_E2E_READABLE_MEMORY;  // with what it has open
  withoutAny.arguments = {"-c", R"(exec "$0" <&- >&- 2>&-)", programPath()};
  ProgramUnderTest program(withoutAny);
  program.writeLibrary({{u";ok"_s, u"Ωk"_s}});
  program.launch();
  stage().startTarget(TargetKind::qt6);
  EXPECT_TRUE(comesToExpanding());
  EXPECT_TRUE(program.process().isRunning());
  for (const int descriptor : {0, 1, 2}) {
    const std::string path =
        "/proc/" + std::to_string(program.process().pid()) + "/fd/" + std::to_string(descriptor);
    std::array<char, 64> link{};
    static_cast<void>(::readlink(path.c_str(), link.data(), link.size() - 1));
    EXPECT_STREQ(link.data(), "/dev/null") << descriptor;
  }
  EXPECT_EQ(program.terminate(), ExitStatus{});
}

}  // namespace
}  // namespace zarvy::e2e
