#include "ui/style/DesktopColors.h"

#include <algorithm>
#include <array>

#include <QApplication>
#include <QEvent>
#include <QStyle>
#include <QWidget>

#include "ui/style/Tones.h"

namespace zarvy {
namespace {

// On an input as well as on a window.
QColor placeholderColor(const QPalette& desktop) {
  const QColor text = activeColor(desktop, QPalette::Text);
  const QColor onInput = tertiaryColor(desktop, activeColor(desktop, QPalette::Base));
  return legible(onInput, activeColor(desktop, QPalette::Window), text);
}

// Moved away from its text, which is what a desktop has that cannot be read: white on its accent.
QColor selectionColor(const QPalette& desktop) {
  const QColor text = activeColor(desktop, QPalette::HighlightedText);
  const bool isLightText = contrastBetween(Qt::black, text) > contrastBetween(Qt::white, text);
  return legible(activeColor(desktop, QPalette::Highlight), text,
                 isLightText ? Qt::black : Qt::white);
}

constexpr QRgb accent = 0xFF308CC6;

bool isSame(const QPalette& one, const QPalette& other) {
  constexpr std::array roles = {QPalette::Window, QPalette::WindowText, QPalette::Base,
                                QPalette::Text,   QPalette::Button,     QPalette::Highlight};
  return std::all_of(roles.begin(), roles.end(), [&](QPalette::ColorRole role) {
    return activeColor(one, role) == activeColor(other, role);
  });
}

// For a style that has the other one only.
QPalette plainPalette(bool dark) {
  const QColor window = dark ? QColor(0x32, 0x32, 0x32) : QColor(0xEF, 0xEF, 0xEF);
  const QColor text = dark ? QColor(0xF0, 0xF0, 0xF0) : QColor(Qt::black);
  QPalette palette(window, window);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, blended(window, text, 0.4));
  }
  palette.setColor(QPalette::Base, dark ? QColor(0x24, 0x24, 0x24) : QColor(Qt::white));
  palette.setColor(QPalette::AlternateBase, blended(window, text, 0.05));
  palette.setColor(QPalette::Highlight, QColor::fromRgb(accent));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::ToolTipBase, dark ? window : QColor(0xFF, 0xFF, 0xDC));
  palette.setColor(QPalette::ToolTipText, text);
  return palette;
}

}  // namespace

QPalette legibleRoles(const QPalette& desktop) {
  QPalette mended;
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    mended.setColor(group, QPalette::PlaceholderText, placeholderColor(desktop));
    mended.setColor(group, QPalette::Highlight, selectionColor(desktop));
    mended.setColor(group, QPalette::HighlightedText,
                    activeColor(desktop, QPalette::HighlightedText));
  }
  return mended;
}

DesktopColors::DesktopColors()
    : m_isOfStyle(isSame(QApplication::palette(), QApplication::style()->standardPalette())) {
  apply();
  qApp->installEventFilter(this);
}

void DesktopColors::setColorScheme(ColorScheme scheme) {
  m_scheme = scheme;
  apply();
}

// A theme changes unheard while no window is open; whatever opens then looks again.
bool DesktopColors::eventFilter(QObject* watched, QEvent* event) {
  const auto type = event->type();
  const bool isOpening = m_isOfStyle && type == QEvent::Show && watched->isWidgetType() &&
                         static_cast<QWidget*>(watched)->isWindow();
  const bool isChange =
      type == QEvent::ThemeChange || (type == QEvent::ApplicationPaletteChange && watched == qApp);
  if (isOpening || isChange) apply();
  return false;
}

// What is set here comes back as a change of its own.
void DesktopColors::apply() {
  if (m_isApplying) return;
  m_isApplying = true;
  if (m_isOfStyle) {
    const QPalette wanted = stylePalette();
    const QPalette mended = legibleRoles(wanted).resolve(wanted);
    if (mended != QApplication::palette()) QApplication::setPalette(mended);
  } else {
    QApplication::setPalette(QPalette());  // what the desktop has, without what was mended of it
    QApplication::setPalette(legibleRoles(QApplication::palette()));
  }
  m_isApplying = false;
}

QPalette DesktopColors::stylePalette() const {
  const QPalette standard = QApplication::style()->standardPalette();
  const bool wantsOther = (m_scheme == ColorScheme::dark && !isDark(standard)) ||
                          (m_scheme == ColorScheme::light && isDark(standard));
  return wantsOther ? plainPalette(m_scheme == ColorScheme::dark) : standard;
}

}  // namespace zarvy
