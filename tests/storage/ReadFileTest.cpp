#include <sys/stat.h>

#include <gtest/gtest.h>

#include "storage/DataFolder.h"
#include "storage/ReadFile.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr qint64 megabyte = qint64{1024} * 1024;

class ReadFile : public DataFolder {
 protected:
  [[nodiscard]] QString errorOf(const QString& place) const {
    const auto content = readFile(place, megabyte);
    return content ? u"none"_s : content.error().description();
  }
};

TEST_F(ReadFile, GivesAllOfAFile) {
  for (const qsizetype size : {qsizetype{0}, qsizetype{3}, qsizetype{megabyte}}) {
    const QByteArray text(size, 'x');
    write(u"a"_s, text);
    const auto content = readFile(path(u"a"_s), megabyte);
    ASSERT_TRUE(content);
    EXPECT_TRUE(content.value() == text) << size;
  }
}

TEST_F(ReadFile, RefusesMoreThanItMayRead) {
  write(u"a"_s, QByteArray(megabyte + 1, 'x'));
  EXPECT_EQ(errorOf(path(u"a"_s)), u"Larger than 1 MiB"_s);
}

TEST_F(ReadFile, JudgesASizeByWhatIsRead) {
  EXPECT_EQ(QFileInfo(u"/proc/self/pagemap"_s).size(), 0);
  EXPECT_EQ(errorOf(u"/proc/self/pagemap"_s), u"Larger than 1 MiB"_s);
  const auto content = readFile(u"/proc/self/maps"_s);
  ASSERT_TRUE(content);
  EXPECT_FALSE(content.value().isEmpty());
}

// A test that waits for a writer of the pipe does not end.
TEST_F(ReadFile, RefusesWhatIsNotAFile) {
  block(u"folder"_s);
  ASSERT_EQ(::mkfifo(QFile::encodeName(path(u"pipe"_s)).constData(), 0600), 0);
  EXPECT_EQ(errorOf(path(u"folder"_s)), u"Is a directory"_s);
  EXPECT_EQ(errorOf(path(u"pipe"_s)), u"Not a regular file"_s);
  EXPECT_EQ(errorOf(u"/dev/zero"_s), u"Not a regular file"_s);
  EXPECT_EQ(errorOf(path(u"absent"_s)), u"No such file or directory"_s);
}

}  // namespace
}  // namespace zarvy
