// What another application has copied, on a private X server, from owners of every kind.

#include <chrono>
#include <string>

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "e2e/harness/PrivateXServer.h"
#include "platform/x11/ScriptedClipboardOwner.h"
#include "platform/x11/clipboard/X11Pasteboard.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"

namespace zarvy::x11 {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using Owner = ScriptedClipboardOwner;
using Request = Owner::Request;

class X11Clipboard : public testing::Test {
 protected:
  // For a machine that does much else.
  static constexpr std::chrono::milliseconds patience = 60s;

  static QString text(std::chrono::milliseconds limit = patience) {
    return X11Pasteboard(limit).text();
  }

  static std::chrono::milliseconds timeOf(const std::function<void()>& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                 start);
  }

  QTemporaryDir m_folder;
  e2e::PrivateXServer m_server{m_folder.path().toStdString()};
  const EnvironmentVariable m_display{"DISPLAY", m_server.display().c_str()};
};

TEST_F(X11Clipboard, IsEmptyWithoutAnOwner) {
  EXPECT_EQ(text(), QString());
}

TEST_F(X11Clipboard, IsEmptyWithoutADisplay) {
  const EnvironmentVariable nowhere("DISPLAY", ":not-a-display");
  EXPECT_EQ(text(), QString());
}

TEST_F(X11Clipboard, IsTheTextOfItsOwner) {
  for (const QString& copied : {u"plain"_s, u" two\r\nlines\t"_s, u"\u05D0 \U0001F600 e\u0301"_s,
                                QString(), u"x"_s.repeated(3'000'000)}) {
    Owner owner(m_server.display(), [&](Owner& self, const Request& request) {
      request.target == "UTF8_STRING" ? self.give(request, copied.toStdString())
                                      : self.refuse(request);
    });
    EXPECT_EQ(text(), copied);
    EXPECT_EQ(text(), copied);
  }
}

TEST_F(X11Clipboard, IsTakenInTheFormThatItsOwnerHas) {
  Owner latin(m_server.display(), [](Owner& self, const Request& request) {
    request.target == "STRING" ? self.give(request,
                                           "gr\xF6\xDF"
                                           "er")
                               : self.refuse(request);
  });
  EXPECT_EQ(text(), u"größer"_s);
  Owner mime(m_server.display(), [](Owner& self, const Request& request) {
    request.target == "text/plain;charset=utf-8" ? self.give(request, "漢字")
                                                 : self.refuse(request);
  });
  EXPECT_EQ(text(), u"漢字"_s);
}

TEST_F(X11Clipboard, IsEmptyWhereItsOwnerHasNoText) {
  Owner owner(m_server.display(),
              [](Owner& self, const Request& request) { self.refuse(request); });
  EXPECT_EQ(text(), QString());
  EXPECT_EQ(owner.requests(), 3);
}

TEST_F(X11Clipboard, ComesInPieces) {
  std::vector<std::string> pieces;
  std::string whole;
  for (int count = 0; count < 200; ++count) {
    pieces.push_back(
        std::string(static_cast<std::size_t>(1 + count * 37), static_cast<char>('a' + count % 26)));
    whole += pieces.back();
  }
  pieces.emplace_back();
  Owner owner(m_server.display(),
              [&](Owner& self, const Request& request) { self.giveInPieces(request, pieces); });
  EXPECT_EQ(text().toStdString(), whole);
}

TEST_F(X11Clipboard, ComesSlowlyInPieces) {
  const auto slowly = [](Owner& self, const Request& request) {
    self.giveInPieces(request, {"one, ", "two, ", "three", ""}, 60ms);
  };
  Owner owner(m_server.display(), slowly);
  EXPECT_EQ(text(), u"one, two, three"_s);
  EXPECT_EQ(text(120ms), QString());
}

// Of a text that ends in the middle nothing is taken.
TEST_F(X11Clipboard, IsEmptyWhereItsOwnerStopsInTheMiddle) {
  Owner owner(m_server.display(), [](Owner& self, const Request& request) {
    self.giveInPieces(request, {"one", "two"});
  });
  EXPECT_EQ(text(300ms), QString());
}

TEST_F(X11Clipboard, IsGivenUpAtOnceWhereItsOwnerEnds) {
  // The time that is left is most of the minute.
  Owner mute(m_server.display(), [](Owner& self, const Request&) { self.die(); });
  EXPECT_LT(timeOf([] { EXPECT_EQ(text(), QString()); }), patience / 2);
  Owner torn(m_server.display(), [](Owner& self, const Request& request) {
    self.giveInPieces(request, {"one", "two"});
    self.die();
  });
  EXPECT_LT(timeOf([] { EXPECT_EQ(text(), QString()); }), patience / 2);
}

TEST_F(X11Clipboard, WaitsForASecondAtMost) {
  Owner owner(m_server.display(), [](Owner&, const Request&) {});
  const auto time = timeOf([] { EXPECT_EQ(X11Pasteboard().text(), QString()); });
  EXPECT_GE(time, 1s);
  EXPECT_LT(time, 5s);  // the rest is a busy machine's
  EXPECT_EQ(owner.requests(), 1);
}

TEST_F(X11Clipboard, IsEmptyWhereItIsTooLargeForAnyText) {
  const std::string piece(16U * 1024 * 1024 - 1024, 'x');
  Owner owner(m_server.display(), [&](Owner& self, const Request& request) {
    self.giveInPieces(request, {piece, piece, piece, piece, piece, ""});
  });
  EXPECT_EQ(text(), QString());
  EXPECT_EQ(owner.requests(), 1);
}

}  // namespace
}  // namespace zarvy::x11
