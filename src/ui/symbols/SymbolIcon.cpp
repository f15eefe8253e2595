#include "ui/symbols/SymbolIcon.h"

#include <memory>
#include <utility>
#include <variant>

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>

#include "ui/symbols/SymbolPicture.h"

namespace zarvy {
namespace {

using IconInk = std::variant<Ink, QColor>;

QColor colorOf(const IconInk& ink, QIcon::Mode mode) {
  const QPalette palette = QGuiApplication::palette();
  if (mode == QIcon::Disabled) return palette.color(QPalette::Disabled, QPalette::WindowText);
  if (mode == QIcon::Selected) return activeColor(palette, QPalette::HighlightedText);
  if (const auto* const color = std::get_if<QColor>(&ink)) return *color;
  return inkOn(std::get<Ink>(ink), palette, activeColor(palette, QPalette::Window), lineContrast);
}

class SymbolIconEngine final : public QIconEngine {
 public:
  SymbolIconEngine(Symbol symbol, IconInk ink) : m_symbol(symbol), m_ink(std::move(ink)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
             QIcon::State /*state*/) override {
    drawSymbol(*painter, rect, m_symbol, colorOf(m_ink, mode));
  }

  // `size` in pixels of the screen.
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override {
    return symbolPicture(m_symbol, colorOf(m_ink, mode), size, 1);
  }

  // A panel that draws a menu of the program looks for the icon in its own theme.
  QString iconName() override {
    const QString name = rowOf(m_symbol).themeName.toString();
    return !name.isEmpty() && QIcon::hasThemeIcon(name) ? name : QString();
  }

  [[nodiscard]] QIconEngine* clone() const override {
    return std::make_unique<SymbolIconEngine>(*this).release();  // Qt takes it over
  }

 private:
  const Symbol m_symbol;
  const IconInk m_ink;
};

}  // namespace

QIcon symbolIcon(Symbol symbol, const Ink& ink) {
  return QIcon(std::make_unique<SymbolIconEngine>(symbol, ink).release());
}

QIcon symbolIcon(Symbol symbol, const QColor& color) {
  return QIcon(std::make_unique<SymbolIconEngine>(symbol, color).release());
}

}  // namespace zarvy
