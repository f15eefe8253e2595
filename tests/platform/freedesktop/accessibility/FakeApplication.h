#pragma once

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QList>
#include <QMap>

#include "platform/freedesktop/accessibility/BusDaemon.h"

namespace zarvy {

// An application on the accessibility bus, whose fields are named by their paths.
class FakeApplication final : public QDBusVirtualObject {
 public:
  explicit FakeApplication(const QString& accessibilityAddress);

  // What a field answers when it is asked for its role; a number where it knows the protocol.
  void setRole(const QString& field, const QVariant& role) { m_roles[field] = role; }

  // The field that has the keyboard, by what it answers when asked.
  void setFocused(const QString& field) { m_focused = field; }

  // What it says that its windows are made with.
  void setToolkit(const QString& name) { m_toolkit = name; }

  // Whether its window is in front.
  void setActive(bool isActive) { m_isActive = isActive; }

  // What the registry gives others to find it by.
  [[nodiscard]] const QString& name() const { return m_name; }

  // Whether it leaves questions unanswered until it is asked to answer them.
  void setHanging(bool isHanging) { m_isHanging = isHanging; }
  void setHangingAtRoles() { m_isHangingAtRoles = true; }
  // Those that were left, and at once all that come from now on.
  void answerAll();

  // Number of questions that have come.
  [[nodiscard]] int questionCount() const { return m_questionCount; }

  // The fields that were asked for their roles, in order.
  [[nodiscard]] const QStringList& rolesAsked() const { return m_rolesAsked; }

  // How often it was asked for the attributes of its window.
  [[nodiscard]] int attributesAsked() const { return m_attributesAsked; }

  // What it tells of its own accord.
  void tellFocus(const QString& field, bool isFocused);
  void tellDeactivatedWindow();
  void tellActivatedWindow();
  void tellNewRole(const QString& field);
  // An event whose arguments are not what the protocol says.
  void tellNonsense(const QString& field);

  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  void tell(const QString& path, const QString& interface, const QString& name,
            const QVariantList& arguments);
  [[nodiscard]] QDBusMessage answerTo(const QDBusMessage& question) const;
  [[nodiscard]] uint statesOf(const QString& path) const;
  [[nodiscard]] QStringList childrenOf(const QString& path) const;

  QMap<QString, QVariant> m_roles;
  QString m_focused;
  QString m_toolkit;
  bool m_isActive = false;
  bool m_isHanging = false;
  bool m_isHangingAtRoles = false;
  int m_questionCount = 0;
  QStringList m_rolesAsked;
  int m_attributesAsked = 0;
  QList<QDBusMessage> m_unanswered;
  BusConnection m_bus;
  const QString m_name;
};

}  // namespace zarvy
