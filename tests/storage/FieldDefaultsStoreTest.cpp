#include <gtest/gtest.h>

#include "storage/FieldDefaultsStore.h"
#include "storage/StoreHarness.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace zarvy {
namespace {

using TextMap = QMap<QString, QString>;

class FieldDefaultsStoreTest : public StoreHarness {
 protected:
  [[nodiscard]] bool isSaved() const { return files().contains(u"field_defaults.json"_s); }

  FieldDefaultsStore m_defaults{m_documents, m_scheduler};
};

TEST_F(FieldDefaultsStoreTest, RemembersByTheExactName) {
  m_defaults.setValue(u"Name"_s, u"Ada"_s);
  EXPECT_EQ(m_defaults.value(u"Name"_s), u"Ada"_s);
  EXPECT_EQ(m_defaults.value(u"name"_s), std::nullopt);
  EXPECT_EQ(m_defaults.value(u"Name "_s), std::nullopt);
  m_defaults.setValue(u"Name"_s, u"Grace"_s);
  EXPECT_EQ(m_defaults.value(u"Name"_s), u"Grace"_s);
}

TEST_F(FieldDefaultsStoreTest, RemembersAnEmptyTextAlsoThroughTheFile) {
  m_defaults.setValue(u"Name"_s, u""_s);
  EXPECT_EQ(m_defaults.value(u"Name"_s), u""_s);
  finish();
  EXPECT_EQ(content(u"field_defaults.json"_s), QByteArray("{\n  \"Name\" : \"\"\n}"));
  FieldDefaultsStore restarted(m_documents, m_scheduler);
  restarted.replaceAll(m_store.loadFieldDefaults());
  EXPECT_EQ(restarted.value(u"Name"_s), u""_s);
}

TEST_F(FieldDefaultsStoreTest, ForgetsWhatIsRemoved) {
  m_defaults.setValue(u"Name"_s, u"Ada"_s);
  m_defaults.setValue(u"City"_s, u"Bern"_s);
  finish();
  m_defaults.removeValue(u"Name"_s);
  EXPECT_EQ(m_defaults.value(u"Name"_s), std::nullopt);
  finish();
  EXPECT_EQ(m_store.loadFieldDefaults(), (TextMap{{u"City"_s, u"Bern"_s}}));
}

TEST_F(FieldDefaultsStoreTest, WritesNothingForTheRemovalOfWhatIsNotThere) {
  m_defaults.removeValue(u"Name"_s);
  m_defaults.replaceAll({{u"Name"_s, u"Ada"_s}});
  m_defaults.removeValue(u"name"_s);
  EXPECT_EQ(m_scheduler.pendingCount(), 0U);
  finish();
  EXPECT_FALSE(isSaved());
}

TEST_F(FieldDefaultsStoreTest, LetsAWaitingSaveGoOnThroughSuchARemoval) {
  m_defaults.setValue(u"Name"_s, u"Ada"_s);
  m_scheduler.advance(60ms);
  m_defaults.removeValue(u"City"_s);
  m_scheduler.advance(40ms);
  EXPECT_EQ(waitingSaves(), 1U);
}

TEST_F(FieldDefaultsStoreTest, WritesABurstOnceATenthOfASecondAfterItsEnd) {
  for (int number = 0; number < 10; ++number) {
    m_defaults.setValue(u"Name"_s, QString::number(number));
    m_scheduler.advance(5ms);
  }
  m_defaults.removeValue(u"Name"_s);
  m_defaults.setValue(u"Name"_s, u"last"_s);
  m_scheduler.advance(99ms);
  EXPECT_EQ(waitingSaves(), 0U);
  m_scheduler.advance(1ms);
  EXPECT_EQ(waitingSaves(), 1U);
  EXPECT_FALSE(isSaved());
  finish();
  EXPECT_EQ(m_store.loadFieldDefaults(), (TextMap{{u"Name"_s, u"last"_s}}));
}

TEST_F(FieldDefaultsStoreTest, WritesTheStateOfTheLatestChange) {
  m_defaults.setValue(u"Name"_s, u"Ada"_s);
  m_defaults.replaceAll({{u"City"_s, u"Bern"_s}});
  finish();
  EXPECT_EQ(m_store.loadFieldDefaults(), (TextMap{{u"Name"_s, u"Ada"_s}}));
  EXPECT_EQ(m_defaults.value(u"City"_s), u"Bern"_s);
}

TEST_F(FieldDefaultsStoreTest, TakesWhatWasReadWithoutWritingIt) {
  m_defaults.replaceAll({{u"Name"_s, u"Ada"_s}});
  EXPECT_EQ(m_defaults.value(u"Name"_s), u"Ada"_s);
  finish();
  EXPECT_FALSE(isSaved());
}

}  // namespace
}  // namespace zarvy
