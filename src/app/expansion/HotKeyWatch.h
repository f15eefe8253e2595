#pragma once

#include <optional>

#include <QList>
#include <QObject>

#include "platform/HotKeys.h"

namespace zarvy {

class Library;

// The key of the settings is another program's, and these are free to take its place.
struct TakenHotKey {
  HotKey key;
  QList<HotKey> free;  // the ones to be offered, best first

  bool operator==(const TakenHotKey&) const = default;
};

// Knows whether the key of quick search is another program's, which does something of its own when
// it is pressed. The desktop tells of no change, so it is asked when it matters. Main thread.
class HotKeyWatch final : public QObject {
  Q_OBJECT

 public:
  // Both outlive this object.
  HotKeyWatch(const Library& library, const HotKeys& hotKeys);

  // Looks again. True where the key is another program's.
  bool look();

  // As it was found last.
  [[nodiscard]] const std::optional<TakenHotKey>& takenHotKey() const { return m_takenHotKey; }

 Q_SIGNALS:
  void takenHotKeyChanged();

 private:
  [[nodiscard]] std::optional<TakenHotKey> found() const;

  const Library& m_library;
  const HotKeys& m_hotKeys;
  std::optional<TakenHotKey> m_takenHotKey;
};

}  // namespace zarvy
