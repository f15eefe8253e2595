#pragma once

#include <QMap>

#include "platform/UserDefaults.h"

namespace zarvy {

// Defaults in memory. One thread at a time.
class FakeUserDefaults final : public UserDefaults {
 public:
  [[nodiscard]] std::optional<QString> string(const QString& key) const override {
    const auto found = m_texts.find(key);
    if (found == m_texts.end()) return std::nullopt;
    return *found;
  }

  void setString(const QString& key, const QString& value) override { m_texts.insert(key, value); }

  [[nodiscard]] const QMap<QString, QString>& texts() const { return m_texts; }

 private:
  QMap<QString, QString> m_texts;
};

}  // namespace zarvy
