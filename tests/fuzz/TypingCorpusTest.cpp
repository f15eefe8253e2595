#include <gtest/gtest.h>

#include "fuzz/Corpus.h"
#include "fuzz/TypingTargets.h"

namespace zarvy::fuzz {
namespace {

TEST(TypingCorpus, OfInjectionPlanPasses) {
  EXPECT_GE(replay("injectionPlan", injectionPlan), 5);
}

TEST(TypingCorpus, OfTypedTextPasses) {
  EXPECT_GE(replay("typedText", typedText), 5);
}

}  // namespace
}  // namespace zarvy::fuzz
