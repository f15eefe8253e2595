#include <gtest/gtest.h>

#include "fuzz/Corpus.h"
#include "fuzz/DocumentTargets.h"

namespace zarvy::fuzz {
namespace {

TEST(DocumentCorpus, IsReadAsEachDocument) {
  EXPECT_GE(replay("readDocuments", readDocuments), 20);
}

}  // namespace
}  // namespace zarvy::fuzz
