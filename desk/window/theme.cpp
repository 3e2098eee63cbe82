#include "desk/window/theme.h"

#include <QApplication>
#include <QPalette>
#include <QSettings>
#include <QStyle>
#include <array>

namespace desk {
namespace {

constexpr char kSetting[] = "window/theme";
constexpr std::array kNames{"desktop", "light", "dark"};  // as Theme counts

/// The style works the rest out of a button's color and a window's.
QPalette paletteOf(const QColor& window, const QColor& base, const QColor& text) {
  QPalette palette(window, window);
  const QColor faint((text.red() + window.red()) / 2, (text.green() + window.green()) / 2,
                     (text.blue() + window.blue()) / 2);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, faint);
  }
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::Disabled, QPalette::Base, window);
  palette.setColor(QPalette::AlternateBase,
                   QColor((base.red() + window.red()) / 2, (base.green() + window.green()) / 2,
                          (base.blue() + window.blue()) / 2));
  palette.setColor(QPalette::ToolTipBase, window);
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::PlaceholderText, faint);
  palette.setColor(QPalette::Highlight, QColor(48, 140, 198));
  palette.setColor(QPalette::Disabled, QPalette::Highlight, faint);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

void show(Theme theme) {
  if (theme == Theme::Desktop) {
    QApplication::setPalette(QPalette());
    return;
  }
  QApplication::setStyle("Fusion");  // the one that draws all in the palette's colors
  QApplication::setPalette(
      theme == Theme::Dark
          ? paletteOf(QColor(50, 50, 50), QColor(35, 35, 35), QColor(225, 225, 225))
          : paletteOf(QColor(239, 239, 239), Qt::white, Qt::black));
}

}  // namespace

void setTheme(Theme theme) {
  QSettings().setValue(kSetting, kNames[static_cast<std::size_t>(theme)]);
  show(theme);
}

Theme theme() {
  const QString name = QSettings().value(kSetting).toString();
  for (const Theme other : {Theme::Light, Theme::Dark}) {
    if (name == QLatin1String(kNames[static_cast<std::size_t>(other)])) return other;
  }
  return Theme::Desktop;
}

void restoreTheme() {
  if (theme() != Theme::Desktop) show(theme());
}

}  // namespace desk
