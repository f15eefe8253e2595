#include <unistd.h>

#include <gtest/gtest.h>

#include "platform/freedesktop/accessibility/BusDaemon.h"
#include "platform/freedesktop/accessibility/DBusProbe.h"
#include "platform/freedesktop/accessibility/FakeBus.h"
#include "support/QtPrinters.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using Manner = FakeBus::Manner;

// For a bus that answers; one that does not is given no more than a moment.
constexpr auto longTime = 10s;
constexpr auto moment = 20ms;

std::optional<QString> probe(const QString& address, std::chrono::milliseconds limit = longTime) {
  return partThatAnswers(address, limit);
}

QString addressOf(const FakeBus& bus) {
  return u"unix:path="_s + bus.path();
}

TEST(DBusProbe, findsABusThatAnswers) {
  const FakeBus bus(Manner::answers);
  EXPECT_EQ(probe(addressOf(bus)), addressOf(bus));
}

TEST(DBusProbe, findsARealBus) {
  const BusDaemon bus;
  EXPECT_EQ(probe(bus.address()), bus.address()) << "with its guid";
}

TEST(DBusProbe, saysWhoAsks) {
  FakeBus bus(Manner::answers);
  ASSERT_TRUE(probe(addressOf(bus)).has_value());
  const QByteArray user = QByteArray::number(::getuid()).toHex();
  EXPECT_EQ(bus.firstLine(), std::string(1, '\0') + "AUTH EXTERNAL " + user.toStdString());
}

TEST(DBusProbe, findsNoBusThatIsSilent) {
  const FakeBus bus(Manner::isSilent);
  EXPECT_EQ(probe(addressOf(bus), moment), std::nullopt);
}

TEST(DBusProbe, findsNoBusThatRefusesClosesOrBabbles) {
  for (const Manner manner : {Manner::refuses, Manner::closes, Manner::babbles}) {
    const FakeBus bus(manner);
    EXPECT_EQ(probe(addressOf(bus)), std::nullopt) << static_cast<int>(manner);
  }
}

TEST(DBusProbe, findsNoBusAtAnAddressThatIsNone) {
  const QString longPath = u"unix:path=/"_s + QString(200, u'x');
  for (const QString& address :
       {u""_s, u";"_s, u"garbage"_s, u"unix:"_s, u"unix:path"_s, u"unix:path="_s,
        u"unix:abstract="_s, u"unix:guid=1"_s, u"unix:path=%"_s, u"unix:path=/no/such/file"_s,
        u"tcp:host=localhost,port=1"_s, u"unixexec:path=/bin/true"_s, longPath}) {
    EXPECT_EQ(probe(address), std::nullopt) << address.toStdString();
  }
}

TEST(DBusProbe, findsAnAbstractSocket) {
  const FakeBus bus(Manner::answers, u"zarvy-"_s, true);
  const QString address = u"unix:guid=77,abstract="_s + bus.path();
  EXPECT_EQ(probe(address), address);
}

TEST(DBusProbe, readsEscapes) {
  const FakeBus bus(Manner::answers, u"ä bus,;="_s);
  QString path = bus.path();
  path.replace(u"ä bus,;="_s, u"%c3%A4%20bus%2c%3b%3d"_s);
  EXPECT_EQ(probe(u"unix:path="_s + path), u"unix:path="_s + path);
}

TEST(DBusProbe, triesOnePartAfterTheOther) {
  const FakeBus silent(Manner::isSilent);
  const FakeBus closes(Manner::closes);
  const FakeBus bus(Manner::answers);
  const FakeBus other(Manner::answers);
  const QStringList parts = {u"tcp:port=1"_s, addressOf(closes), addressOf(bus), addressOf(other)};
  EXPECT_EQ(probe(parts.join(u';')), addressOf(bus));
  const QString anyway = addressOf(silent) + u';' + addressOf(closes);
  EXPECT_EQ(probe(anyway, moment), std::nullopt);
}

}  // namespace
}  // namespace zarvy
