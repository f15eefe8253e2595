#include "ui/HotKeyText.h"

#include <array>

#include "platform/ModifierFlags.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

struct Name {
  quint16 keyCode = 0;
  QStringView text;
};

constexpr std::array names{
    Name{0, u"A"},   Name{1, u"S"},      Name{2, u"D"},  Name{3, u"F"},  Name{4, u"H"},
    Name{5, u"G"},   Name{6, u"Z"},      Name{7, u"X"},  Name{8, u"C"},  Name{9, u"V"},
    Name{11, u"B"},  Name{12, u"Q"},     Name{13, u"W"}, Name{14, u"E"}, Name{15, u"R"},
    Name{16, u"Y"},  Name{17, u"T"},     Name{18, u"1"}, Name{19, u"2"}, Name{20, u"3"},
    Name{21, u"4"},  Name{22, u"6"},     Name{23, u"5"}, Name{24, u"="}, Name{25, u"9"},
    Name{26, u"7"},  Name{27, u"-"},     Name{28, u"8"}, Name{29, u"0"}, Name{30, u"]"},
    Name{31, u"O"},  Name{32, u"U"},     Name{33, u"["}, Name{34, u"I"}, Name{35, u"P"},
    Name{37, u"L"},  Name{38, u"J"},     Name{39, u"'"}, Name{40, u"K"}, Name{41, u";"},
    Name{42, u"\\"}, Name{43, u","},     Name{44, u"/"}, Name{45, u"N"}, Name{46, u"M"},
    Name{47, u"."},  Name{49, u"Space"}, Name{50, u"`"},
};

QString nameOf(quint16 keyCode) {
  for (const Name& name : names) {
    if (name.keyCode == keyCode) return name.text.toString();
  }
  return u"Key"_s + QString::number(keyCode);
}

}  // namespace

QString hotKeyText(const HotKey& key) {
  QString text;
  if (key.modifiers & modifier::control) text += u"Ctrl+";
  if (key.modifiers & modifier::option) text += u"Alt+";
  if (key.modifiers & modifier::shift) text += u"Shift+";
  if (key.modifiers & modifier::command) text += u"Super+";
  return text + nameOf(key.keyCode);
}

}  // namespace zarvy
