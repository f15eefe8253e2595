#include "ui/symbols/SymbolIcon.h"

#include <memory>

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>

#include "ui/symbols/SymbolPicture.h"

namespace zarvy {
namespace {

QColor colorOf(const Ink& ink, QIcon::Mode mode) {
  const QPalette palette = QGuiApplication::palette();
  if (mode == QIcon::Disabled) return palette.color(QPalette::Disabled, QPalette::WindowText);
  if (mode == QIcon::Selected) return activeColor(palette, QPalette::HighlightedText);
  return inkOn(ink, palette, activeColor(palette, QPalette::Window), lineContrast);
}

class SymbolIconEngine final : public QIconEngine {
 public:
  SymbolIconEngine(Symbol symbol, const Ink& ink) : m_symbol(symbol), m_ink(ink) {}

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
  const Ink m_ink;
};

}  // namespace

QIcon symbolIcon(Symbol symbol, const Ink& ink) {
  return QIcon(std::make_unique<SymbolIconEngine>(symbol, ink).release());
}

}  // namespace zarvy
