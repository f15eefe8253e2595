#include "platform/x11/clipboard/X11Pasteboard.h"

#include <memory>

#include "platform/x11/clipboard/SelectionReader.h"
#include "platform/x11/connection/Atoms.h"

namespace zarvy::x11 {
namespace {

constexpr qsizetype mostBytes = qsizetype{64} * 1024 * 1024;

struct Disconnect {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

QString fromUtf8(const QByteArray& bytes) {
  return QString::fromUtf8(bytes);
}

QString fromLatin1(const QByteArray& bytes) {
  return QString::fromLatin1(bytes);
}

// What text goes by, best first.
struct TextTarget {
  const char* name;
  QString (*decode)(const QByteArray& bytes);
};

constexpr TextTarget textTargets[] = {
    {"UTF8_STRING", fromUtf8}, {"text/plain;charset=utf-8", fromUtf8}, {"STRING", fromLatin1}};

}  // namespace

QString X11Pasteboard::text() const {
  const QDeadlineTimer deadline(m_limit);
  const std::unique_ptr<xcb_connection_t, Disconnect> connection(xcb_connect(nullptr, nullptr));
  if (xcb_connection_has_error(connection.get()) != 0) return {};
  SelectionReader reader(connection.get(), internAtom(connection.get(), "CLIPBOARD"), deadline);
  for (const TextTarget& target : textTargets) {
    if (!reader.canAsk()) return {};
    const auto bytes = reader.read(internAtom(connection.get(), target.name), mostBytes);
    if (bytes) return target.decode(*bytes);
  }
  return {};
}

}  // namespace zarvy::x11
