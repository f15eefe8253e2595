// Runs a test program of the windows on a private X server with a window manager, where a window
// has to be given the keyboard and a key has to go the whole way:
//
//   zarvy_ui_on_desktop <program> [<argument>...]
//
// Its exit status is that of the program.

#include <chrono>
#include <iostream>

#include "e2e/harness/ChildProcess.h"
#include "ui/desktop/PrivateDesktop.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "usage: zarvy_ui_on_desktop <program> [<argument>...]\n";
    return 2;
  }
  try {
    const zarvy::PrivateDesktop desktop;
    zarvy::e2e::Environment environment = desktop.environment();
    environment.emplace("ZARVY_TEST_DISPLAY", "1");
    zarvy::e2e::ChildProcess program({.program = argv[1],
                                      .arguments = {argv + 2, argv + argc},
                                      .environment = environment,
                                      .errorFile = "/dev/stderr",
                                      .descriptors = {}});
    const auto exit = program.waitForExit(std::chrono::minutes(5));
    for (const std::string& line : program.outputLines()) std::cout << line << "\n";
    if (!exit) std::cerr << "It did not end.\n";
    return exit && exit->signal == 0 ? exit->exitCode : 1;
  } catch (const std::exception& error) {
    std::cerr << "No desktop: " << error.what() << "\n";
    return 1;
  }
}
