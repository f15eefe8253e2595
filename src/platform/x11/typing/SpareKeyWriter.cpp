#include "platform/x11/typing/SpareKeyWriter.h"

#include <algorithm>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/hearing/KeyHearing.h"
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
  const auto table = KeySymbolTable::read(m_connection);
  const ModifierKeys& modifiers = m_hearing.keymap()->modifiers();
  return table ? table->slotType(modifiers.usableLevelThree()).levels : 0;
}

bool SpareKeyWriter::write(const std::map<uint8_t, SpareKeySymbols>& keys) {
  std::map<uint8_t, SpareKeySymbols> record = readRecord();
  for (const auto& [keycode, symbols] : keys) record[keycode] = symbols;
  const ModifierKeys& modifiers = m_hearing.keymap()->modifiers();
  const ServerGrab grab(m_connection);
  auto table = KeySymbolTable::read(m_connection);
  if (!table) return false;
  const auto type = table->slotType(modifiers.usableLevelThree());
  for (const auto& [keycode, symbols] : keys) {
    table->setSymbols(keycode, type, {symbols.begin(), symbols.begin() + type.levels});
  }
  // Record and mapping leave in one packet: a crash sends both or neither.
  writeRecord(record);
  return table->write(m_connection, m_hearing);
}

void SpareKeyWriter::giveBack() {
  const std::map<uint8_t, SpareKeySymbols> record = readRecord();
  if (!record.empty()) {
    const ServerGrab grab(m_connection);
    auto table = KeySymbolTable::read(m_connection);
    if (!table) return;
    for (const auto& [keycode, symbols] : record) {
      if (holds(table->symbols(keycode), symbols)) table->setSymbols(keycode, {}, {});
    }
    if (!table->write(m_connection, m_hearing)) return;
  }
  xcb_delete_property(m_connection.xcb(), m_connection.root(), m_connection.atoms().zarvySpareKeys);
  m_connection.synchronize();
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
