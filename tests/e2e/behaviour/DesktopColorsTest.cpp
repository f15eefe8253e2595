// Windows that are open while the desktop turns dark, and light again.

#include <filesystem>
#include <fstream>
#include <ios>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QUuid>

#include "e2e/behaviour/BehaviourTest.h"
#include "e2e/harness/Windows.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto deadline = std::chrono::seconds(20);
constexpr unsigned controlAndAlt = 786432;

// Tells of changed settings on the session bus, as a desktop does.
class SettingsPortal {
 public:
  explicit SettingsPortal(const std::string& session)
      : m_bus(QDBusConnection::connectToBus(QString::fromStdString(session),
                                            QUuid::createUuid().toString())) {
    EXPECT_TRUE(m_bus.registerService(u"org.freedesktop.portal.Desktop"_s));
  }
  ~SettingsPortal() { QDBusConnection::disconnectFromBus(m_bus.name()); }
  SettingsPortal(const SettingsPortal&) = delete;
  SettingsPortal& operator=(const SettingsPortal&) = delete;

  void tell(const QString& space, const QString& key, const QVariant& value) {
    auto signal =
        QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_s,
                                   u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s);
    signal << space << key << QVariant::fromValue(QDBusVariant(value));
    EXPECT_TRUE(m_bus.send(signal));
  }

 private:
  QDBusConnection m_bus;
};

class DesktopColors : public BehaviourTest {
 protected:
  // The program, run with these besides, shows quick search above an editor.
  void openPanel(ProgramUnderTest& program) {
    program.writeLibrary({{u";ok"_s, u"Ok"_s}});
    program.writeSettings({.quickSearchModifiers = controlAndAlt});
    program.start();
    stage().startTarget(TargetKind::qt6);
    const xcb_window_t application = activeWindow(stage().connection());
    person().press(XKB_KEY_Control_L);
    person().press(XKB_KEY_Alt_L);
    person().tap(XKB_KEY_space);
    person().release(XKB_KEY_Alt_L);
    person().release(XKB_KEY_Control_L);
    ASSERT_TRUE(waitUntil(
        [&] {
          m_panel = activeWindow(stage().connection());
          return m_panel != application && m_panel != XCB_WINDOW_NONE;
        },
        deadline));
  }

  // Comes to be the colour of the panel beside its texts.
  void expectColor(unsigned expected) {
    unsigned seen = 0;
    EXPECT_TRUE(waitUntil(
        [&] {
          seen = colorOfPanel();
          return seen == expected;
        },
        deadline))
        << std::hex << seen << " is not " << expected;
  }

 private:
  // As 0xRRGGBB.
  [[nodiscard]] unsigned colorOfPanel() {
    const auto image = owned(
        xcb_get_image_reply(stage().connection().get(),
                            xcb_get_image(stage().connection().get(), XCB_IMAGE_FORMAT_Z_PIXMAP,
                                          m_panel, 20, 12, 1, 1, 0xFFFFFF),
                            nullptr));
    if (!image) return 0;
    const std::uint8_t* const bytes = xcb_get_image_data(image.get());
    return unsigned{bytes[2]} << 16U | unsigned{bytes[1]} << 8U | bytes[0];
  }

  xcb_window_t m_panel = XCB_WINDOW_NONE;
};

constexpr unsigned plainLight = 0xEFEFEF;
constexpr unsigned plainDark = 0x323232;
constexpr unsigned breezeLight = 0xEFF0F1;
constexpr unsigned breezeDark = 0x2A2E32;

TEST_F(DesktopColors, areThoseThatThePortalTellsWhereTheDesktopHasNoneOfItsOwn) {
  SettingsPortal portal(stage().bus().address());
  openPanel(stage().makeProgram(programPath()));
  expectColor(plainLight);
  const auto tell = [&portal](uint scheme) {
    portal.tell(u"org.freedesktop.appearance"_s, u"color-scheme"_s, scheme);
  };
  tell(1);
  expectColor(plainDark);
  tell(2);
  expectColor(plainLight);
  tell(1);
  expectColor(plainDark);
  tell(0);
  expectColor(plainLight);
}

TEST_F(DesktopColors, areThoseOfThePlasmaDesktopAsTheyChange) {
  SettingsPortal portal(stage().bus().address());
  Environment environment = stage().environment();
  environment.insert({"XDG_CURRENT_DESKTOP", "KDE"});
  environment.insert({"KDE_FULL_SESSION", "true"});
  environment.insert({"KDE_SESSION_VERSION", "5"});
  ProgramUnderTest program({.program = programPath(),
                            .environment = environment,
                            .homeFolder = stage().makeFolder("plasma")});
  const std::filesystem::path folder = std::filesystem::path(program.homeFolder()) / ".config";
  const auto choose = [&folder](const std::string& window, const std::string& text) {
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "kdeglobals")
        << "[Colors:Window]\nBackgroundNormal=" << window << "\nForegroundNormal=" << text
        << "\n[Colors:View]\nBackgroundNormal=" << window << "\nForegroundNormal=" << text
        << "\n[Colors:Button]\nBackgroundNormal=" << window << "\nForegroundNormal=" << text
        << "\n[Colors:Selection]\nBackgroundNormal=61,174,233\nForegroundNormal=255,255,255\n";
  };
  choose("239,240,241", "35,38,41");
  openPanel(program);
  expectColor(breezeLight);
  const auto tell = [&portal](const QString& name) {
    portal.tell(u"org.kde.kdeglobals.General"_s, u"ColorScheme"_s, name);
    portal.tell(u"org.freedesktop.appearance"_s, u"color-scheme"_s, 0U);
  };
  choose("42,46,50", "252,252,252");
  tell(u"BreezeDark"_s);
  expectColor(breezeDark);
  choose("239,240,241", "35,38,41");
  tell(u"BreezeLight"_s);
  expectColor(breezeLight);
}

}  // namespace
}  // namespace zarvy::e2e
