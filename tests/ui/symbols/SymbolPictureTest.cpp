#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "ui/quicksearch/Symbol.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr int extent = 28;

QImage drawn(Symbol symbol, const QColor& color, double ratio = 1) {
  QImage image(QSize(extent, extent) * ratio, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  drawSymbol(painter, {0, 0, extent, extent}, symbol, color);
  return image;
}

// The opaque pixels of this colour, and all that are opaque.
std::pair<int, int> countOf(const QImage& image, const QColor& color) {
  int same = 0;
  int opaque = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor pixel = image.pixelColor(x, y);
      if (pixel.alpha() < 255) continue;
      ++opaque;
      same += pixel == color ? 1 : 0;
    }
  }
  return {same, opaque};
}

// A desktop of its own making, with one theme in it.
class Symbols : public testing::Test {
 protected:
  Symbols() : m_themeName(QIcon::themeName()), m_paths(QIcon::themeSearchPaths()) {
    QIcon::setThemeSearchPaths({m_folder.path()});
    QIcon::setThemeName(u"none"_s);
  }
  ~Symbols() override {
    QIcon::setThemeSearchPaths(m_paths);
    QIcon::setThemeName(m_themeName);
  }

  void addTheme(const QString& iconName, const std::function<void(QPainter&)>& paint) {
    const QString theme = u"own"_s;
    QDir(m_folder.path()).mkpath(theme + u"/actions"_s);
    QFile index(m_folder.filePath(theme + u"/index.theme"_s));
    ASSERT_TRUE(index.open(QFile::WriteOnly));
    index.write("[Icon Theme]\nName=own\nDirectories=actions\n[actions]\nSize=28\nType=Fixed\n");
    index.close();
    QImage image(extent, extent, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paint(painter);
    painter.end();
    ASSERT_TRUE(image.save(m_folder.filePath(theme + u"/actions/"_s + iconName + u".png"_s)));
    QIcon::setThemeName(theme);
  }

 private:
  const QTemporaryDir m_folder;
  const QString m_themeName;
  const QStringList m_paths;
};

TEST_F(Symbols, AreThereWithoutAnIconTheme) {
  const QColor color(10, 120, 230);
  for (const Symbol symbol : {Symbol::search, Symbol::nothingFound, Symbol::up, Symbol::down}) {
    for (const double ratio : {1.0, 1.5, 2.0}) {
      const auto [same, opaque] = countOf(drawn(symbol, color, ratio), color);
      EXPECT_GT(same, 10) << static_cast<int>(symbol) << " at " << ratio;
      EXPECT_EQ(same, opaque);
    }
  }
}

TEST_F(Symbols, AreThoseOfTheIconTheme) {
  addTheme(u"edit-find"_s, [](QPainter& painter) { painter.fillRect(4, 4, 8, 8, Qt::black); });
  const auto [same, opaque] = countOf(drawn(Symbol::search, Qt::green), Qt::green);
  EXPECT_EQ(opaque, 64);
  EXPECT_EQ(same, 64) << "as legible as text";
}

TEST_F(Symbols, AreOfOneColourHoweverFaintTheirEdges) {
  addTheme(u"edit-find"_s, [](QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(QColor(0x23, 0x26, 0x29));
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QPointF(14, 14), 9.3, 9.3);
  });
  const auto [same, opaque] = countOf(drawn(Symbol::search, Qt::green), Qt::green);
  EXPECT_GT(opaque, 150);
  EXPECT_EQ(same, opaque);
}

TEST_F(Symbols, KeepTheirColoursWhereTheyHaveSeveral) {
  addTheme(u"edit-find"_s, [](QPainter& painter) {
    painter.fillRect(4, 4, 8, 8, Qt::red);
    painter.fillRect(12, 4, 8, 8, Qt::blue);
  });
  const QImage image = drawn(Symbol::search, Qt::green);
  EXPECT_EQ(countOf(image, Qt::red).first, 64);
  EXPECT_EQ(countOf(image, Qt::blue).first, 64);
}

TEST_F(Symbols, PreferTheFormMeantForUseBesideText) {
  addTheme(u"go-up"_s, [](QPainter& painter) { painter.fillRect(0, 0, 2, 2, Qt::black); });
  addTheme(u"go-up-symbolic"_s, [](QPainter& painter) { painter.fillRect(0, 0, 5, 5, Qt::black); });
  EXPECT_EQ(countOf(drawn(Symbol::up, Qt::green), Qt::green).first, 25);
}

}  // namespace
}  // namespace zarvy
