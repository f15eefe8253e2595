// The whole program at work on a private desktop, typing into real applications: how fast, at what
// cost, and how soon after the key that asks for it. Prints a line of JSON for each figure.
//
//   typing_benchmark [posting|reaction|keys|windows|start|rest]...   only these parts

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <string>

#include <QCoreApplication>

#include "e2e/programs/ProgramPath.h"
#include "typing/KeyBenchmark.h"
#include "typing/PostingBenchmark.h"
#include "typing/ReactionBenchmark.h"
#include "typing/RestBenchmark.h"
#include "typing/WindowBenchmark.h"

namespace {

using Part = std::function<void(const std::string& program)>;

const std::vector<std::pair<std::string, Part>>& parts() {
  using namespace zarvy::benchmarks;
  static const std::vector<std::pair<std::string, Part>> all = {
      {"posting", &measurePosting}, {"reaction", &measureReaction}, {"keys", &measureKeys},
      {"windows", &measureWindows}, {"start", &measureStart},       {"rest", &measureRest},
  };
  return all;
}

// Other work on the machine shows in every figure, so that whoever reads them ought to know of it.
void printLoad(const std::string& when) {
  double load = 0;
  if (::getloadavg(&load, 1) == 1) std::cout << "load " << when << ": " << load << std::endl;
}

// Options are those of other benchmarks, and mean nothing to this one.
std::vector<std::string> namedParts(int argc, char** argv) {
  std::vector<std::string> names(argv + 1, argv + argc);
  std::erase_if(names, [](const std::string& name) { return name.starts_with("-"); });
  return names;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const std::string program = zarvy::e2e::programPath();
  const std::vector<std::string> names = namedParts(argc, argv);
  try {
    for (const auto& [name, measure] : parts()) {
      if (!names.empty() && std::find(names.begin(), names.end(), name) == names.end()) continue;
      printLoad("before " + name);
      measure(program);
    }
    printLoad("at the end");
  } catch (const std::exception& error) {
    std::cerr << "The measuring failed: " << error.what() << "\n";
    return 1;
  }
  return 0;
}
