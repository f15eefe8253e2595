#pragma once

#include <functional>
#include <optional>
#include <string>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QString>

namespace zarvy::e2e {

// What the applications of a desktop show, as a screen reader finds it on the accessibility bus.
// One thread.
class AccessibleTree {
 public:
  struct Object {
    QString bus;
    QString path;
  };

  // A look at an object. The states are those of the accessibility bus, by their numbers.
  struct Look {
    QString role;
    QString name;
    quint32 states = 0;

    [[nodiscard]] bool is(int state) const { return ((states >> state) & 1U) != 0; }
  };
  static constexpr int editable = 7;
  static constexpr int enabled = 8;
  static constexpr int focused = 12;

  // Connects to the bus at `address`; throws std::runtime_error where that fails.
  explicit AccessibleTree(const std::string& address);
  AccessibleTree(const AccessibleTree&) = delete;
  AccessibleTree& operator=(const AccessibleTree&) = delete;
  ~AccessibleTree();

  // Absent while the process shows nothing.
  [[nodiscard]] std::optional<Object> applicationOf(qint64 processIdentifier) const;

  [[nodiscard]] QList<Object> childrenOf(const Object& object) const;

  // Empty where the object has gone.
  [[nodiscard]] Look lookAt(const Object& object) const;

  // The first at or below `object`, in the tree's order, that satisfies `wanted`.
  using ObjectTest = std::function<bool(const Object&)>;
  [[nodiscard]] std::optional<Object> find(const Object& object, const ObjectTest& wanted) const;

  // What the object answers; throws std::runtime_error where it does not.
  [[nodiscard]] QVariant ask(const Object& object, const QString& interface, const QString& member,
                             const QVariantList& arguments = {}) const;
  [[nodiscard]] QVariant property(const Object& object, const QString& interface,
                                  const QString& name) const;

 private:
  [[nodiscard]] QDBusMessage call(const Object& object, const QString& interface,
                                  const QString& member, const QVariantList& arguments = {}) const;
  [[nodiscard]] std::optional<Object> findBelow(const Object& object, const ObjectTest& wanted,
                                                int depth) const;

  QString m_connectionName;
  QDBusConnection m_bus;
};

}  // namespace zarvy::e2e
