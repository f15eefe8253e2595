#include "platform/x11/typing/TypingRecord.h"

#include <array>
#include <unistd.h>

#include <QByteArray>
#include <QFile>
#include <QString>

#include "platform/x11/capture/OwnPosts.h"
#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/keyboard/HeldKeys.h"
#include "platform/x11/keyboard/KeymapSnapshot.h"
#include "platform/x11/typing/KeySender.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy::x11 {

namespace {

void releaseAll(KeySender& sender, uint16_t keyboard, const KeycodeSet& keys) {
  for (std::size_t keycode = 0; keycode < keys.size(); ++keycode) {
    if (keys[keycode]) sender.release(keyboard, static_cast<uint8_t>(keycode));
  }
}

void releaseRecorded(Connection& connection, KeySender& sender, const TypingRecord::Entry& entry) {
  const HeldKeys held(connection);
  releaseAll(sender, entry.keyboard, held.on(entry.keyboard));
  if (const auto fake = held.ownFakeKeyboard()) releaseAll(sender, *fake, held.on(*fake));
  xcb_delete_property(connection.xcb(), connection.roots().front(),
                      connection.atoms().zarvyTypesOn);
  connection.synchronize();
}

// Whether that process lives and has this program's name: numbers of processes are used again.
bool isAnotherRun(pid_t process) {
  const auto nameOf = [](const QString& folder) {
    QFile file(u"/proc/%1/comm"_s.arg(folder));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  };
  const QByteArray name = nameOf(QString::number(process));
  return process != ::getpid() && !name.isEmpty() && name == nameOf(QString::number(::getpid()));
}

KeycodeSet modifierKeys(Connection& connection) {
  const auto keymap =
      KeymapSnapshot::read(connection, static_cast<uint16_t>(connection.coreKeyboard()));
  return keymap ? keymap->modifiers().momentary : KeycodeSet{};
}

}  // namespace

void TypingRecord::write(uint16_t keyboard) {
  if (m_keyboard == keyboard) return;
  m_keyboard = keyboard;
  const std::array<uint32_t, 2> words{keyboard, static_cast<uint32_t>(::getpid())};
  xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, m_connection.roots().front(),
                      m_connection.atoms().zarvyTypesOn, XCB_ATOM_CARDINAL, 32,
                      static_cast<uint32_t>(words.size()), words.data());
}

void TypingRecord::erase() {
  if (!m_keyboard) return;
  m_keyboard.reset();
  xcb_delete_property(m_connection.xcb(), m_connection.roots().front(),
                      m_connection.atoms().zarvyTypesOn);
}

std::optional<TypingRecord::Entry> TypingRecord::read(Connection& connection) {
  const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(
      connection.xcb(),
      xcb_get_property(connection.xcb(), 0, connection.roots().front(),
                       connection.atoms().zarvyTypesOn, XCB_ATOM_CARDINAL, 0, 2),
      nullptr));
  if (!reply || reply->format != 32 || reply->value_len != 2) return std::nullopt;
  const auto* words = static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
  return Entry{.keyboard = static_cast<uint16_t>(words[0]),
               .process = static_cast<pid_t>(words[1])};
}

void releaseKeysLeftDown(Connection& connection, KeySender& sender) {
  if (const auto entry = TypingRecord::read(connection)) {
    if (!isAnotherRun(entry->process)) releaseRecorded(connection, sender, *entry);
    return;
  }
  const HeldKeys held(connection);
  const std::optional<uint16_t> fake = held.ownFakeKeyboard();
  if (fake) releaseAll(sender, *fake, held.on(*fake) & modifierKeys(connection));
  sender.flush();
}

void releaseKeysOfDeadProcess(pid_t process) {
  QString reason;
  const auto connection = Connection::open(&reason);
  if (!connection) return;
  const auto entry = TypingRecord::read(*connection);
  if (!entry || entry->process != process) return;
  OwnPosts posts;
  KeySender sender(*connection, posts);
  releaseRecorded(*connection, sender, *entry);
}

}  // namespace zarvy::x11
