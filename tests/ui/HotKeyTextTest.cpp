#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/HotKeyText.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

TEST(HotKeyText, NamesTheKeyAndWhatIsHeldWithIt) {
  struct Row {
    HotKey key;
    QString text;
  };
  for (const Row& row : {
           Row{{49, 0x80000}, u"Alt+Space"_s},
           Row{{49, 0x40000}, u"Ctrl+Space"_s},
           Row{{49, 0x20000}, u"Shift+Space"_s},
           Row{{49, 0x100000}, u"Super+Space"_s},
           Row{{49, 0x1E0000}, u"Ctrl+Alt+Shift+Super+Space"_s},
           Row{{49, 0x1F0000}, u"Ctrl+Alt+Shift+Super+Space"_s},  // Caps Lock
           Row{{0, 0x40000}, u"Ctrl+A"_s},
           Row{{12, 0x40000}, u"Ctrl+Q"_s},
           Row{{22, 0x40000}, u"Ctrl+6"_s},
           Row{{23, 0x40000}, u"Ctrl+5"_s},
           Row{{42, 0x40000}, u"Ctrl+\\"_s},
           Row{{47, 0x40000}, u"Ctrl+."_s},
           Row{{50, 0}, u"`"_s},
           Row{{10, 0x40000}, u"Ctrl+Key10"_s},
           Row{{36, 0x100000}, u"Super+Key36"_s},
       }) {
    EXPECT_EQ(hotKeyText(row.key), row.text);
  }
}

}  // namespace
}  // namespace zarvy
