#include <gtest/gtest.h>

#include "fuzz/Corpus.h"
#include "fuzz/MatchingTargets.h"

namespace zarvy::fuzz {
namespace {

TEST(MatchingCorpus, OfRequiredCharactersPasses) {
  EXPECT_GE(replay("requiredCharacters", requiredCharacters), 5);
}

TEST(MatchingCorpus, OfFindMatchPasses) {
  EXPECT_GE(replay("findMatch", findMatch), 5);
}

TEST(MatchingCorpus, OfRollingBufferPasses) {
  EXPECT_GE(replay("rollingBuffer", rollingBuffer), 5);
}

}  // namespace
}  // namespace zarvy::fuzz
