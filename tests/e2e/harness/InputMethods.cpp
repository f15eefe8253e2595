#include "e2e/harness/InputMethods.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QScopeGuard>

#include "e2e/harness/WaitUntil.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto deadline = std::chrono::seconds(30);

// The first method of the group is what fcitx5 calls inactive.
constexpr auto fcitxProfile = R"([Groups/0]
Name=Default
Default Layout=us
DefaultIM=pinyin

[Groups/0/Items/0]
Name=keyboard-us
Layout=

[Groups/0/Items/1]
Name=pinyin
Layout=

[GroupOrder]
0=Default
)";

QString askFcitx(const Environment& environment, const QString& question,
                 const QVariantList& arguments = {}) {
  const QString name = u"zarvy-e2e-fcitx"_s;
  const auto disconnect = qScopeGuard([&] { QDBusConnection::disconnectFromBus(name); });
  const QDBusConnection bus = QDBusConnection::connectToBus(
      QString::fromStdString(environment.at("DBUS_SESSION_BUS_ADDRESS")), name);
  auto message = QDBusMessage::createMethodCall(u"org.fcitx.Fcitx5"_s, u"/controller"_s,
                                                u"org.fcitx.Fcitx.Controller1"_s, question);
  message.setAutoStartService(false);
  message.setArguments(arguments);
  return bus.call(message).arguments().value(0).toString();
}

}  // namespace

Fcitx5Daemon::Fcitx5Daemon(Environment environment, const std::string& folder)
    : m_environment(std::move(environment)) {
  m_environment["GTK_IM_MODULE"] = "fcitx";
  Environment own = m_environment;
  own["XDG_CONFIG_HOME"] = folder;
  std::filesystem::create_directories(folder + "/fcitx5");
  std::ofstream(folder + "/fcitx5/profile") << fcitxProfile;
  m_process.emplace(ProcessSpecification{.program = "fcitx5",
                                         .arguments = {"--disable=wayland"},
                                         .environment = own,
                                         .errorFile = folder + "/fcitx5.log",
                                         .descriptors = {}});
  const auto knowsPinyin = [this] {
    return !askFcitx(m_environment, u"CurrentInputMethodGroup"_s).isEmpty() &&
           askFcitx(m_environment, u"AddonForIM"_s, {u"pinyin"_s}) == u"pinyin";
  };
  if (!waitUntil(knowsPinyin, deadline)) throw std::runtime_error("fcitx5 did not come up");
}

void Fcitx5Daemon::setEngineOn(bool isOn) {
  const QString wanted = isOn ? u"pinyin"_s : u"keyboard-us"_s;
  const auto hasIt = [&] {
    static_cast<void>(askFcitx(m_environment, u"SetCurrentIM"_s, {wanted}));
    return askFcitx(m_environment, u"CurrentInputMethod"_s) == wanted &&
           askFcitx(m_environment, u"DebugInfo"_s).contains(u" focus:1");
  };
  if (!waitUntil(hasIt, deadline)) throw std::runtime_error("fcitx5 does not switch");
}

IBusDaemon::IBusDaemon(Environment environment, const std::string& folder)
    : m_environment(std::move(environment)) {
  m_environment["GTK_IM_MODULE"] = "ibus";
  m_environment["IBUS_ADDRESS_FILE"] = folder + "/address";
  m_process.emplace(
      ProcessSpecification{.program = "ibus-daemon",
                           .arguments = {"--panel", "disable", "--emoji-extension", "disable"},
                           .environment = m_environment,
                           .errorFile = folder + "/ibus.log",
                           .descriptors = {}});
  const auto hasCome = [&] { return std::filesystem::exists(m_environment["IBUS_ADDRESS_FILE"]); };
  if (!waitUntil(hasCome, deadline)) throw std::runtime_error("ibus did not come up");
  setEngineOn(false);
}

void IBusDaemon::setEngineOn(bool isOn) {
  const std::string wanted = isOn ? "libpinyin" : "xkb:us::eng";
  const auto hasIt = [&] {
    ChildProcess set({.program = "ibus",
                      .arguments = {"engine", wanted},
                      .environment = m_environment,
                      .errorFile = {},
                      .descriptors = {}});
    // It complains of engines that take their time to start.
    if (!set.waitForExit(deadline)) return false;
    const ChildProcess asked({.program = "ibus",
                              .arguments = {"engine"},
                              .environment = m_environment,
                              .errorFile = {},
                              .descriptors = {}});
    return asked.waitForLine([&](const std::string& line) { return line == wanted; }, deadline);
  };
  if (!waitUntil(hasIt, deadline)) throw std::runtime_error("ibus does not switch");
}

}  // namespace zarvy::e2e
