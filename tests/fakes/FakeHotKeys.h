#pragma once

#include <QList>

#include "platform/HotKeys.h"

namespace zarvy {

// Keys that the test has other programs take.
class FakeHotKeys final : public HotKeys {
 public:
  QList<HotKey> taken;

  [[nodiscard]] bool isTakenByAnother(const HotKey& key) const override {
    return taken.contains(key);
  }
};

}  // namespace zarvy
