// The seeds of the fuzzers, and what they have found, in every run of the tests.

#include <gtest/gtest.h>

#include "fuzz/Corpus.h"
#include "fuzz/PlaceholderTargets.h"

namespace zarvy::fuzz {
namespace {

TEST(PlaceholderCorpus, OfThePipelinePasses) {
  EXPECT_GE(replay("pipeline", pipeline), 10);
}

TEST(PlaceholderCorpus, OfParseFillInFieldsPasses) {
  EXPECT_GE(replay("parseFillInFields", parseFillInFields), 10);
}

TEST(PlaceholderCorpus, OfApplyFillInValuesPasses) {
  EXPECT_GE(replay("applyFillInValues", applyFillInValues), 10);
}

}  // namespace
}  // namespace zarvy::fuzz
