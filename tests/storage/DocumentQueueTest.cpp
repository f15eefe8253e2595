#include <optional>

#include <gtest/gtest.h>

#include "fakes/ManualQueue.h"
#include "storage/DataFolder.h"
#include "storage/DocumentQueue.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class DocumentQueueTest : public DataFolder {};

TEST_F(DocumentQueueTest, WaitsAtItsEndForTheWorkThatWasHandedOver) {
  ManualSerialQueue thread;
  auto documents = std::make_optional<DocumentQueue>(m_store, thread);
  documents->post([](const DataStore& store) { store.saveCounters({{u"a"_s, 1}}); });
  EXPECT_EQ(files(), QStringList());
  documents.reset();
  EXPECT_EQ(files(), QStringList{u"counters.json"_s});
}

}  // namespace
}  // namespace zarvy
