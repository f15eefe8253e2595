#include <sys/prctl.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <QUuid>

#include <gtest/gtest.h>

#include "base/posix/FileDescriptor.h"
#include "base/posix/LocalSocketAddress.h"
#include "base/posix/Users.h"

namespace zarvy {
namespace {

using Kind = LocalSocketAddress::Kind;

// Whether it can be listened at, and only then be reached.
void expectToBeReached(const QByteArray& name, Kind kind) {
  const auto address = LocalSocketAddress::of(name, kind);
  ASSERT_TRUE(address);
  EXPECT_FALSE(connectTo(*address).isOpen());
  const FileDescriptor listening(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  ASSERT_EQ(::bind(listening.get(), address->get(), address->length()), 0);
  ASSERT_EQ(::listen(listening.get(), 1), 0);
  EXPECT_TRUE(connectTo(*address).isOpen());
}

TEST(LocalSockets, AreReachedByThePathOfAFile) {
  const QTemporaryDir folder;
  expectToBeReached(folder.filePath(QStringLiteral("socket")).toUtf8(), Kind::path);
}

TEST(LocalSockets, AreReachedByANameThatNoFileHas) {
  expectToBeReached(QUuid::createUuid().toByteArray(), Kind::abstract);
}

TEST(LocalSockets, HaveAnAddressOnlyWhereItIsNotTooLong) {
  const qsizetype longest = sizeof(sockaddr_un::sun_path) - 1;
  for (const Kind kind : {Kind::path, Kind::abstract}) {
    EXPECT_FALSE(LocalSocketAddress::of(QByteArray(), kind));
    EXPECT_FALSE(LocalSocketAddress::of(QByteArray(longest + 1, 'a'), kind));
  }
  EXPECT_TRUE(LocalSocketAddress::of(QByteArray(longest, 'a'), Kind::path));
  EXPECT_TRUE(LocalSocketAddress::of(QByteArray(longest - 1, 'a'), Kind::abstract));
  EXPECT_FALSE(connectTo(*LocalSocketAddress::of(QByteArray(longest, 'a'), Kind::path)).isOpen());
}

TEST(LocalSockets, TellWhoseTheOtherEndIs) {
  const auto sockets = makeSocketPair();
  ASSERT_TRUE(sockets);
  EXPECT_TRUE(isOfThisUser(sockets->own.get()));
}

TEST(LocalSockets, TellThatTheOtherEndIsAnotherUsers) {
  constexpr uid_t another = 65534;
  if (::geteuid() != 0) GTEST_SKIP() << "only root can be another user";
  ASSERT_EQ(::seteuid(another), 0);
  const auto sockets = makeSocketPair();
  ASSERT_EQ(::seteuid(0), 0);
  ::prctl(PR_SET_DUMPABLE, 1);  // as it was before the change of the user
  ASSERT_TRUE(sockets);
  EXPECT_FALSE(isOfThisUser(sockets->own.get()));
}

}  // namespace
}  // namespace zarvy
