#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QEvent>
#include <QStringView>

class QWidget;

namespace zarvy {

// The keys of a user who types on while a form comes up: kept from when the form has the keyboard
// until its first field has. Main thread.
class EarlyKeys {
 public:
  void begin() { m_isKeeping = true; }

  // Whether `event`, which has come to the form, was kept and is done with. Chords and Escape go
  // their own way.
  [[nodiscard]] bool keeps(QEvent& event);

  // Has `text` handed on as if it had been typed ahead of what was kept.
  void putAhead(QStringView text);

  // Gives what was kept to whatever has the keyboard in `form`, key by key, as Tab moves it on.
  // `onReturn` is called for a Return that it does not want for itself, and is the end: it may
  // close the form. Keeps nothing from then on.
  void handOn(QWidget& form, const std::function<void()>& onReturn);

 private:
  bool m_isKeeping = false;
  std::vector<std::unique_ptr<QEvent>> m_events;
};

}  // namespace zarvy
