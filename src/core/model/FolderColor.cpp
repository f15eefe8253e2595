#include "core/model/FolderColor.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

QString rawText(FolderColor color) {
  switch (color) {
    case FolderColor::red:
      return u"red"_s;
    case FolderColor::orange:
      return u"orange"_s;
    case FolderColor::yellow:
      return u"yellow"_s;
    case FolderColor::green:
      return u"green"_s;
    case FolderColor::blue:
      return u"blue"_s;
    case FolderColor::purple:
      return u"purple"_s;
    case FolderColor::pink:
      return u"pink"_s;
    case FolderColor::gray:
      return u"gray"_s;
  }
  Q_UNREACHABLE();
}

std::optional<FolderColor> folderColorFromRawText(QStringView text) {
  const auto* const found =
      std::find_if(allFolderColors.begin(), allFolderColors.end(),
                   [text](FolderColor color) { return text == rawText(color); });
  if (found == allFolderColors.end()) return std::nullopt;
  return *found;
}

size_t qHash(FolderColor color, size_t seed) noexcept {
  return qHash(rawText(color), seed);
}

TextShade contrastingTextColor(std::optional<FolderColor> color) {
  if (!color) return TextShade::white;
  switch (*color) {
    case FolderColor::red:
    case FolderColor::blue:
    case FolderColor::purple:
    case FolderColor::gray:
      return TextShade::white;
    case FolderColor::orange:
    case FolderColor::yellow:
    case FolderColor::green:
    case FolderColor::pink:
      return TextShade::black;
  }
  return TextShade::white;
}

}  // namespace zarvy
