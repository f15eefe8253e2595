#pragma once

#include <atomic>
#include <memory>

#include "fakes/Journal.h"
#include "platform/KeyEventPoster.h"

namespace zarvy {

// Writes down what it is asked to type, as "begin 'text'", "key 51", "text 'run'", "again 'run'",
// "end" and "prepare 'characters'". A unit that is no character of its own shows as its four
// hexadecimal digits in angle brackets, so that a surrogate pair cut in two can be read. Any
// thread.
class RecordingKeyEventPoster final : public KeyEventPoster {
 public:
  explicit RecordingKeyEventPoster(Journal& journal) : m_journal(journal) {}

  [[nodiscard]] std::unique_ptr<TypingSession> beginTyping(const QString& text) override {
    m_journal.add(QStringLiteral("begin '%1'").arg(text));
    return std::make_unique<Session>(*this);
  }

  void prepare(const QString& characters) override {
    m_journal.add(QStringLiteral("prepare '%1'").arg(characters));
  }

  // Whether keys can be pressed from now on. One that cannot is written down as "failed ...".
  void setCanPress(bool canPress) { m_canPress = canPress; }

  // Whether the user types with a modifier held.
  void setMustWait(bool mustWait) { m_mustWait = mustWait; }

 private:
  class Session final : public TypingSession {
   public:
    explicit Session(RecordingKeyEventPoster& poster) : m_poster(poster) {}
    ~Session() override { m_poster.m_journal.add(QStringLiteral("end")); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    bool pressKey(quint16 virtualKeyCode) override {
      return m_poster.record(QStringLiteral("key %1").arg(virtualKeyCode));
    }

    bool pressText(QStringView run) override {
      return m_poster.record(QStringLiteral("text '%1'").arg(readable(run)));
    }

    bool pressTextAgain(QStringView run) override {
      return m_poster.record(QStringLiteral("again '%1'").arg(readable(run)));
    }

    [[nodiscard]] bool mustWait() const override { return m_poster.m_mustWait; }

   private:
    RecordingKeyEventPoster& m_poster;
  };

  static QString readable(QStringView run) {
    QString result;
    for (qsizetype i = 0; i < run.size(); ++i) {
      const bool isPair =
          run[i].isHighSurrogate() && i + 1 < run.size() && run[i + 1].isLowSurrogate();
      if (isPair) {
        result += run[i];
        result += run[++i];
      } else if (run[i].isSurrogate() || run[i] < u' ') {
        result += QStringLiteral("<%1>").arg(int{run[i].unicode()}, 4, 16, QLatin1Char('0'));
      } else {
        result += run[i];
      }
    }
    return result;
  }

  bool record(const QString& entry) {
    m_journal.add(m_canPress ? entry : QStringLiteral("failed ") + entry);
    return m_canPress;
  }

  Journal& m_journal;
  std::atomic<bool> m_canPress = true;
  std::atomic<bool> m_mustWait = false;
};

}  // namespace zarvy
