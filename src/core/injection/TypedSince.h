#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include <QString>

namespace zarvy {

// What the user has typed since a moment, as long as all of it stands right before the caret: the
// letters that go ahead of the first backspace of an expansion, on a busy machine, or ahead of a
// form. Overwritten in memory at its end. Any thread.
class TypedSince {
 public:
  TypedSince();
  ~TypedSince();
  TypedSince(const TypedSince&) = delete;
  TypedSince& operator=(const TypedSince&) = delete;

  // The next keys, in their order: a user-perceived character, or a backspace.
  void append(QStringView character);
  void removeLast();

  // What is typed from now on goes elsewhere; what was typed so far stays where it is.
  void end();

  // The caret has moved: nothing is known any more.
  void lose();

  // Empty where nothing is known. Copies, which are the caller's to overwrite.
  struct Text {
    QString all;
    QString rest;  // what no form has taken
  };
  [[nodiscard]] Text text() const;

  // All of it, which belongs to a form from then on.
  [[nodiscard]] QString takeForForm();

 private:
  void chop(qsizetype units);

  mutable std::mutex m_lock;
  QString m_text;
  qsizetype m_taken = 0;  // UTF-16 units of it that a form has
  bool m_hasEnded = false;
};

// Tells each key to the TypedSince objects that are still held. One thread at a time.
class TypedSinceNow {
 public:
  // One that begins now.
  [[nodiscard]] std::shared_ptr<TypedSince> begin();

  void append(QStringView character);
  void removeLast();
  void end();
  void lose();

 private:
  template <typename Tell>
  void tellAll(const Tell& tell);

  std::vector<std::weak_ptr<TypedSince>> m_listening;
};

}  // namespace zarvy
