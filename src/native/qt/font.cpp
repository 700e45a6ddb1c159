#include "native/qt/font.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>
#include <QWidget>

#include "native/qt/strings.h"

namespace quorvel::qt {

namespace {

constexpr int kSmallestSize = 6;

QString FamilyName(const std::string& text) {
  QString name = FromUtf8(text);
  while (!name.isEmpty() && name.back().category() == QChar::Other_Control) name.chop(1);
  return name;
}

void SetGeneric(QFont& font, const QString& family, QFont::StyleHint hint) {
  font.setFamilies({family});
  font.setStyleHint(hint);
}

void SetFamily(QFont& font, const QString& name) {
  if (QFontDatabase::hasFamily(name)) {
    font.setFamilies({name});
  } else if (name == "Times") {
    SetGeneric(font, "Serif", QFont::Serif);
  } else if (name == "Geneva") {
    SetGeneric(font, "Sans Serif", QFont::SansSerif);
  }
}

QFont UnsizedFont(const std::string& family, bool bold, bool italic, bool underline) {
  QFont font = QApplication::font();
  SetFamily(font, FamilyName(family));
  font.setBold(bold);
  font.setItalic(italic);
  font.setUnderline(underline);
  return font;
}

}  // namespace

// The windows are laid out for one pixel a unit. At 16 pixels, the size of 12 points on most
// screens, captions run out of their labels; at 12 pixels, the usual size of a desktop's text,
// captions fit.
QFont FontOf(const native::TextState& state) {
  QFont font = UnsizedFont(state.TextFont, state.Bold, state.Italic, state.Underline);
  if (state.TextSize > 0) font.setPixelSize(state.TextSize);
  return font;
}

// A desktop may give the size of its own font in pixels, which are tiny on a printer.
QFont PaperFontOf(const native::PrintFont& look) {
  QFont font = UnsizedFont(look.family, look.bold, look.italic, look.underline);
  font.setPointSizeF(look.size > 0 ? look.size : QFontInfo(QApplication::font()).pointSizeF());
  return font;
}

QFont Fitting(const QFont& font, QWidget& widget, const QString& text, QSize room, int flags) {
  QFont fitting = font;
  for (int size = QFontInfo(font).pixelSize() - 1; size >= kSmallestSize; --size) {
    const QFontMetrics metrics(fitting, &widget);
    const QSize used = metrics.boundingRect(QRect(QPoint(), room), flags, text).size();
    if (used.width() <= room.width() && used.height() <= room.height()) break;
    fitting.setPixelSize(size);
  }
  return fitting;
}

}  // namespace quorvel::qt
