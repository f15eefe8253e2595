#include "fuzz/ProtocolTargets.h"
#include "platform/freedesktop/accessibility/FieldSecrecy.h"
#include "platform/freedesktop/inputmethod/Fcitx5.h"
#include "platform/freedesktop/inputmethod/IBus.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy::fuzz {
namespace {

// By lines of text rather than bytes. A line of bytes that are no text is not judged.
QString addressByLines(const QByteArray& content) {
  for (const QString& line : QString::fromLatin1(content).split(u'\n')) {
    if (line.startsWith(u"IBUS_ADDRESS=")) return line.section(u'=', 1).trimmed();
  }
  return {};
}

// A field that has the keyboard, as it is told byte by byte.
class Field {
 public:
  explicit Field(FieldSecrecy& secrecy) : m_secrecy(secrecy) {
    m_secrecy.onSecret = [this] {
      require(m_secrecy.mustNotBeHeard() && m_secrecy.isPasswordField(), "a secret comes too late");
      ++m_begun;
    };
    m_secrecy.onSecretEnds = [this] {
      require(m_secrecy.mustNotBeHeard(), "a secret is told before it is over");
      ++m_ended;
    };
  }

  void hear(std::uint8_t byte) {
    switch (byte % 4) {
      case 0:
        m_secrecy.doubt();
        return require(m_secrecy.mustNotBeHeard(), "a field in doubt is heard");
      case 1:
        m_secrecy.setOpen();
        return require(!m_secrecy.mustNotBeHeard() && !m_secrecy.isPasswordField(),
                       "an open field is not heard");
      case 2:
        m_secrecy.setSecret();
        return require(m_secrecy.mustNotBeHeard() && m_secrecy.isPasswordField(),
                       "a password is heard");
      default:
        m_secrecy.setProcess(byte - 128);
        return require(
            m_secrecy.process() == (byte > 128 ? std::optional(byte - 128) : std::nullopt),
            "another process");
    }
  }

  void requireBalance() const {
    require(m_begun - m_ended == (m_secrecy.isPasswordField() ? 1 : 0),
            "a secret is told twice or never");
  }

 private:
  FieldSecrecy& m_secrecy;
  int m_begun = 0;
  int m_ended = 0;
};

}  // namespace

void inputMethods(Bytes bytes) {
  const QByteArray content(reinterpret_cast<const char*>(bytes.data()),
                           static_cast<qsizetype>(bytes.size()));
  const QString address = ibusAddressIn(content);
  require(!address.contains(u'\n') && address.trimmed() == address, "an address has line breaks");
  const QString expected = addressByLines(content);
  const bool isAscii = QString::fromLatin1(expected.toUtf8()) == expected;
  require(!isAscii || address == expected, "another address is read");

  for (const QString& text : textsOf(bytes)) {
    require(ibusEngineComposes(text) == (!text.isEmpty() && text.left(4) != u"xkb:"),
            "ibus is misunderstood");
    require(fcitx5MethodComposes(text) == (!text.isEmpty() && text.left(9) != u"keyboard-"),
            "fcitx5 is misunderstood");
    require(fcitx5IsUsed(text + u" focus:1"_s), "an application that uses fcitx5 is overlooked");
    require(fcitx5IsUsed(text) || text.contains(u" focus:"), "a strange text counts for something");
  }
}

void fieldSecrecy(Bytes bytes) {
  FieldSecrecy secrecy;
  Field field(secrecy);
  for (const std::uint8_t byte : bytes) {
    field.hear(byte);
    field.requireBalance();
  }
}

}  // namespace zarvy::fuzz
