#pragma once

#include <utility>

#include "platform/CloudDrive.h"

namespace zarvy {

// A drive that the test takes away in each of the ways that there are.
class FakeCloudDrive final : public CloudDrive {
 public:
  // Lies at `place` and is signed in.
  FakeCloudDrive(QString home, const QString& place) : m_home(std::move(home)), m_places{place} {}

  void setSignedIn(bool isSignedIn) { m_isSignedIn = isSignedIn; }
  void setHome(std::optional<QString> home) { m_home = std::move(home); }
  void setPlaces(QStringList places) { m_places = std::move(places); }

  [[nodiscard]] bool isSignedIn() const override { return m_isSignedIn; }
  [[nodiscard]] std::optional<QString> homeDirectory() const override { return m_home; }
  [[nodiscard]] QStringList places(const QString& /*homeDirectory*/) const override {
    return m_places;
  }

 private:
  bool m_isSignedIn = true;
  std::optional<QString> m_home;
  QStringList m_places;
};

}  // namespace zarvy
