#include "native/qt/view/new_lines_mark.h"

#include <QApplication>
#include <QLocale>
#include <algorithm>

namespace quorvel::qt {

namespace {

constexpr int kDistance = 6;

QString Words(size_t lines) {
  if (lines == 1) return QString::fromUtf8("1 new line \u2193");
  return QString::fromUtf8("%1 new lines \u2193").arg(QLocale().toString(qulonglong{lines}));
}

}  // namespace

NewLinesMark::NewLinesMark(QWidget* viewport) : QPushButton(viewport) {
  setObjectName("newLines");
  setFont(QApplication::font());
  setCursor(Qt::ArrowCursor);
  setAutoDefault(true);
  hide();
  // Screen readers are told in the next turn of the event loop, as of names (`Name`).
  const auto tell = [this] {
    if (text().isEmpty()) setText("New lines");
    setAccessibleDescription("Shows the end of the text");
  };
  QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

void NewLinesMark::Count(std::string_view text, bool away) {
  if (!away || counted_to > text.size()) {
    counted_to = text.size();
    lines = 0;
  }
  const std::string_view added = text.substr(counted_to);
  counted_to = text.size();
  if (added.empty() && isVisibleTo(parentWidget()) == (lines > 0)) return;
  lines += static_cast<size_t>(std::ranges::count(added, '\n'));
  setVisible(lines > 0);
  if (lines == 0) return;
  setText(Words(lines));
  MoveToCorner();
}

void NewLinesMark::MoveToCorner() {
  if (isHidden()) return;
  const QSize around = parentWidget()->size();
  resize(sizeHint());
  move(around.width() - width() - kDistance, around.height() - height() - kDistance);
}

}  // namespace quorvel::qt
