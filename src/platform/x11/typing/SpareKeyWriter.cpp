#include "platform/x11/typing/SpareKeyWriter.h"

#include <algorithm>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/connection/XkbProtocol.h"
#include "platform/x11/hearing/KeyHearing.h"
#include "platform/x11/keyboard/HeldKeys.h"
#include "platform/x11/typing/KeySymbolTable.h"

namespace zarvy::x11 {

namespace {

constexpr std::size_t wordsPerKey = 1 + spareKeyLevels;  // the key code, then its symbols
constexpr uint32_t longestRecord = 256 * wordsPerKey;

// The mapping is read, changed and written back; nobody else may change it in between.
class ServerGrab {
 public:
  explicit ServerGrab(Connection& connection) : m_connection(connection) {
    xcb_grab_server(m_connection.xcb());
  }
  ~ServerGrab() {
    xcb_ungrab_server(m_connection.xcb());
    m_connection.flush();
  }
  ServerGrab(const ServerGrab&) = delete;
  ServerGrab& operator=(const ServerGrab&) = delete;

 private:
  Connection& m_connection;
};

bool isEmpty(const SpareKeySymbols& symbols) {
  return std::all_of(symbols.begin(), symbols.end(),
                     [](xkb_keysym_t symbol) { return symbol == XKB_KEY_NoSymbol; });
}

// A type with two levels shows the first two symbols of the four.
bool holds(const std::vector<xkb_keysym_t>& onKey, const SpareKeySymbols& written) {
  return !onKey.empty() && onKey.size() <= written.size() &&
         std::equal(onKey.begin(), onKey.end(), written.begin());
}

}  // namespace

SpareKeyWriter::SpareKeyWriter(Connection& connection, KeyHearing& hearing)
    : m_connection(connection), m_hearing(hearing) {}

int SpareKeyWriter::levels() const {
  const auto table = KeySymbolTable::read(m_connection, XCB_XKB_ID_USE_CORE_KBD);
  const auto keymap = m_hearing.keymap();
  if (!table || keymap->modifiers().shiftKeys.empty()) return table ? 1 : 0;
  return table->slotType(keymap->modifiers().usableLevelThree()).levels;
}

bool SpareKeyWriter::write(const std::map<uint8_t, SpareKeySymbols>& keys) {
  const std::map<uint8_t, SpareKeySymbols> before = readRecord();
  std::map<uint8_t, SpareKeySymbols> record = before;
  for (const auto& [keycode, symbols] : keys) record[keycode] = symbols;
  const auto keymap = m_hearing.keymap();
  const uint32_t levelThree = keymap->modifiers().usableLevelThree();
  const ServerGrab grab(m_connection);
  writeRecord(record);
  const bool written = editEveryKeyboard([&](KeySymbolTable& table) {
    const auto type = table.slotType(levelThree);
    for (const auto& [keycode, symbols] : keys) {
      table.setSymbols(keycode, type, {symbols.begin(), symbols.begin() + type.levels});
    }
  });
  if (!written) writeRecord(before);
  return written;
}

void SpareKeyWriter::giveBack() {
  const std::map<uint8_t, SpareKeySymbols> record = readRecord();
  if (!record.empty()) {
    const ServerGrab grab(m_connection);
    const bool givenBack = editEveryKeyboard([&](KeySymbolTable& table) {
      for (const auto& [keycode, symbols] : record) {
        if (holds(table.symbols(keycode), symbols)) table.setSymbols(keycode, {}, {});
      }
    });
    if (!givenBack) return;
  }
  xcb_delete_property(m_connection.xcb(), m_connection.root(), m_connection.atoms().zarvySpareKeys);
  m_connection.synchronize();
}

// The union of all keyboards takes over the mapping of whichever keyboard is used, so each has to
// have the spare keys; and each keeps whatever else is its own.
bool SpareKeyWriter::editEveryKeyboard(const Edit& edit) {
  std::vector<uint16_t> devices{static_cast<uint16_t>(m_connection.coreKeyboard())};
  const HeldKeys held(m_connection);
  for (const auto& keyboards : {held.physicalKeyboards(), held.fakeKeyboards()}) {
    devices.insert(devices.end(), keyboards.begin(), keyboards.end());
  }
  bool complete = true;
  for (const uint16_t device : devices) {
    auto table = KeySymbolTable::read(m_connection, device);
    if (!table) {
      complete = false;
      continue;
    }
    edit(*table);
    complete = table->write(m_connection, m_hearing) && complete;
  }
  return complete;
}

bool SpareKeyWriter::hasRecord() const {
  return !readRecord().empty();
}

std::map<uint8_t, SpareKeySymbols> SpareKeyWriter::readRecord() const {
  std::map<uint8_t, SpareKeySymbols> record;
  const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(
      m_connection.xcb(),
      xcb_get_property(m_connection.xcb(), 0, m_connection.root(),
                       m_connection.atoms().zarvySpareKeys, XCB_ATOM_CARDINAL, 0, longestRecord),
      nullptr));
  if (!reply || reply->format != 32) return record;
  const auto* words = static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
  for (uint32_t at = 0; at + wordsPerKey <= reply->value_len; at += wordsPerKey) {
    SpareKeySymbols& symbols = record[static_cast<uint8_t>(words[at])];
    std::copy_n(words + at + 1, symbols.size(), symbols.begin());
  }
  return record;
}

void SpareKeyWriter::writeRecord(const std::map<uint8_t, SpareKeySymbols>& keys) {
  std::vector<uint32_t> words;
  for (const auto& [keycode, symbols] : keys) {
    if (isEmpty(symbols)) continue;
    words.push_back(keycode);
    words.insert(words.end(), symbols.begin(), symbols.end());
  }
  xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, m_connection.root(),
                      m_connection.atoms().zarvySpareKeys, XCB_ATOM_CARDINAL, 32,
                      static_cast<uint32_t>(words.size()), words.data());
}

}  // namespace zarvy::x11
