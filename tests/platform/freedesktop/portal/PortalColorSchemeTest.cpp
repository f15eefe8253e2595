// On a bus of its own, with a portal that is part of the test.

#include <functional>
#include <optional>

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>
#include <QList>

#include <gtest/gtest.h>

#include "platform/freedesktop/PortalColorScheme.h"
#include "platform/freedesktop/accessibility/BusDaemon.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

const QString path = u"/org/freedesktop/portal/desktop"_s;
const QString settings = u"org.freedesktop.portal.Settings"_s;
const QString appearance = u"org.freedesktop.appearance"_s;
const QString colorScheme = u"color-scheme"_s;

QVariant wrapped(const QVariant& value) {
  return QVariant::fromValue(QDBusVariant(value));
}

class FakePortal final : public QDBusVirtualObject {
 public:
  // Refuses to answer without a `scheme`.
  FakePortal(const QString& address, std::optional<uint> scheme)
      : m_scheme(scheme), m_bus(address) {
    EXPECT_TRUE(m_bus.get().registerVirtualObject(path, this));
    EXPECT_TRUE(m_bus.get().registerService(u"org.freedesktop.portal.Desktop"_s));
  }

  void tell(const QString& space, const QString& key, const QVariant& value) {
    auto signal = QDBusMessage::createSignal(path, settings, u"SettingChanged"_s);
    signal << space << key << wrapped(value);
    EXPECT_TRUE(m_bus.get().send(signal));
  }

  [[nodiscard]] int questionCount() const { return m_questionCount; }

  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (message.member() != u"Read") return false;
    ++m_questionCount;
    EXPECT_EQ(message.arguments(), (QVariantList{appearance, colorScheme}));
    if (!m_scheme) return connection.send(message.createErrorReply(u"org.x.NotFound"_s, u""_s));
    // A variant in a variant, as portals have it.
    return connection.send(message.createReply(wrapped(wrapped(*m_scheme))));
  }

 private:
  const std::optional<uint> m_scheme;
  int m_questionCount = 0;
  BusConnection m_bus;
};

class PortalColorSchemes : public testing::Test {
 protected:
  [[nodiscard]] static bool waitUntil(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(std::chrono::seconds(20));
    while (!condition() && !deadline.hasExpired()) {
      QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return condition();
  }

  void listen() {
    m_listener = std::make_unique<PortalColorScheme>(
        m_client.get(), [this](ColorScheme scheme) { m_heard.append(scheme); },
        [this] { ++m_answers; });
  }

  int m_count = 0;
  char* m_arguments[1] = {};
  QCoreApplication m_application{m_count, m_arguments};
  BusDaemon m_bus;
  BusConnection m_client{m_bus.address()};
  QList<ColorScheme> m_heard;
  int m_answers = 0;
  std::unique_ptr<PortalColorScheme> m_listener;
};

TEST_F(PortalColorSchemes, AreToldAtTheBeginning) {
  using enum ColorScheme;
  for (const auto& [number, scheme] : {std::pair(0U, unstated), std::pair(1U, dark),
                                       std::pair(2U, light), std::pair(7U, unstated)}) {
    m_heard.clear();
    const FakePortal portal(m_bus.address(), number);
    listen();
    EXPECT_TRUE(waitUntil([this] { return !m_heard.isEmpty(); }));
    EXPECT_EQ(m_heard, QList{scheme}) << number;
  }
  EXPECT_TRUE(waitUntil([this] { return m_answers == 4; }));
}

TEST_F(PortalColorSchemes, AreToldAsTheyChange) {
  using enum ColorScheme;
  FakePortal portal(m_bus.address(), 2);
  listen();
  ASSERT_TRUE(waitUntil([this] { return m_heard == QList{light}; }));
  portal.tell(appearance, u"accent-color"_s, 1U);
  portal.tell(u"org.kde.kdeglobals.General"_s, colorScheme, 1U);
  portal.tell(appearance, colorScheme, 1U);
  portal.tell(appearance, colorScheme, wrapped(0U));
  EXPECT_TRUE(waitUntil([this] { return m_heard == QList{light, dark, unstated}; }));
}

TEST_F(PortalColorSchemes, StayUnheardWhereThePortalKnowsNone) {
  FakePortal portal(m_bus.address(), std::nullopt);
  listen();
  ASSERT_TRUE(waitUntil([this] { return m_answers == 1; }));
  EXPECT_EQ(portal.questionCount(), 1);
  portal.tell(appearance, colorScheme, 1U);
  EXPECT_TRUE(waitUntil([this] { return !m_heard.isEmpty(); }));
  EXPECT_EQ(m_heard, QList{ColorScheme::dark});
}

// Not before: the portal comes when a program asks for it, or with the desktop.
TEST_F(PortalColorSchemes, AreHeardOfAPortalThatComesLater) {
  listen();
  FakePortal portal(m_bus.address(), 0);
  EXPECT_TRUE(waitUntil([&] {
    portal.tell(appearance, colorScheme, 1U);
    return !m_heard.isEmpty();
  }));
  EXPECT_EQ(m_heard.first(), ColorScheme::dark);
}

TEST_F(PortalColorSchemes, DoWithoutABus) {
  const PortalColorScheme listener(
      QDBusConnection(QString()), [this](ColorScheme scheme) { m_heard.append(scheme); },
      [this] { ++m_answers; });
  EXPECT_EQ(m_answers, 1);
  QCoreApplication::processEvents();
  EXPECT_EQ(m_heard, QList<ColorScheme>());
}

}  // namespace
}  // namespace zarvy
