#include <gtest/gtest.h>

#include "fuzz/Corpus.h"
#include "fuzz/FormTargets.h"

namespace zarvy::fuzz {
namespace {

TEST(FormCorpus, OfFillInsPasses) {
  EXPECT_GE(replay("fillIns", fillIns), 5);
}

TEST(FormCorpus, OfPreviewPasses) {
  EXPECT_GE(replay("preview", preview), 5);
}

}  // namespace
}  // namespace zarvy::fuzz
