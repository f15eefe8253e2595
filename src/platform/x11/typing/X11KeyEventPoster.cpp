#include "platform/x11/typing/X11KeyEventPoster.h"

#include <algorithm>
#include <span>
#include <vector>

#include "platform/VirtualKey.h"
#include "platform/x11/typing/TypedText.h"
#include "platform/x11/typing/Typist.h"

namespace zarvy::x11 {

namespace {

// UTF-16 units; typing them takes most of a minute. What comes behind is not looked at ahead: a
// text of some hundred megabytes would hold up the end of the program.
constexpr qsizetype mostAnnounced = qsizetype{1024} * 1024;

class Session final : public TypingSession {
 public:
  Session(Typist& typist, const QString& text)
      : m_typist(typist),
        m_upcoming(charactersToType(QStringView(text).first(std::min(text.size(), mostAnnounced)))),
        m_unitsToCome(text.size() - text.count(u'\n')) {
    m_typist.beginSession();
  }

  // A text that was cut short does not end in half a character.
  ~Session() override {
    if (m_unitsToCome <= 0) type(m_text.finish());
    m_typist.endSession();
  }

  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  bool pressKey(quint16 virtualKeyCode) override {
    const bool complete = type(m_text.finish(virtualKeyCode == virtualkey::returnKey));
    return m_typist.typeKey(virtualKeyCode) && complete;
  }

  bool pressText(QStringView run) override {
    m_unitsToCome -= run.size();
    return type(m_text.feed(run));
  }

  bool pressTextAgain(QStringView run) override {
    const std::vector<char32_t> characters = charactersToType(run.toString());
    return m_typist.typeCharacters(characters, characters, true);
  }

  [[nodiscard]] bool mustWait() const override { return m_typist.mustWait(); }

 private:
  // What is still to come of the announced text, where that begins with `characters`. What was not
  // announced comes by itself.
  [[nodiscard]] bool areAnnounced(std::span<const char32_t> characters) const {
    const auto announced = std::span(m_upcoming).subspan(m_typed);
    return announced.size() >= characters.size() &&
           std::equal(characters.begin(), characters.end(), announced.begin());
  }

  bool type(const std::vector<TypedText::Piece>& pieces) {
    bool complete = true;
    std::vector<char32_t> characters;
    const auto typeCharacters = [&] {
      if (characters.empty()) return;
      const bool isAnnounced = areAnnounced(characters);
      const auto upcoming = isAnnounced ? std::span<const char32_t>(m_upcoming).subspan(m_typed)
                                        : std::span<const char32_t>(characters);
      complete = m_typist.typeCharacters(characters, upcoming, false) && complete;
      if (isAnnounced) m_typed += characters.size();
      characters.clear();
    };
    for (const TypedText::Piece& piece : pieces) {
      if (!piece.virtualKey) {
        characters.push_back(piece.character);
        continue;
      }
      typeCharacters();
      complete = m_typist.typeKey(*piece.virtualKey) && complete;
    }
    typeCharacters();
    return complete;
  }

  Typist& m_typist;
  TypedText m_text;
  std::vector<char32_t> m_upcoming;
  std::size_t m_typed = 0;
  qsizetype m_unitsToCome;  // of the text, line feeds left out: those come as keys
};

}  // namespace

std::unique_ptr<TypingSession> X11KeyEventPoster::beginTyping(const QString& text) {
  return std::make_unique<Session>(m_typist, text);
}

void X11KeyEventPoster::prepare(const QString& characters) {
  m_typist.prepare(charactersToType(characters));
}

}  // namespace zarvy::x11
