#include "native/qt/text_view.h"

#include <QMimeData>
#include <QTextCursor>

namespace quorvel::qt {

void TextView::ShowText(const QString& text) {
  marks = {};
  setPlainText(isReadOnly() ? marks.Put(text) : text);
}

// Undoing goes back no further than this, or it would take away what was not the user's.
void TextView::ShowAdded(const QString& text) {
  QTextCursor end(document());
  end.movePosition(QTextCursor::End);
  end.insertText(isReadOnly() ? marks.Put(text) : text);
  document()->clearUndoRedoStacks();
}

QString TextView::TextIn(const QTextCursor& selection) const {
  const QString shown = selection.selectedText().replace(QChar::ParagraphSeparator, '\n');
  return marks.Without(shown, selection.selectionStart());
}

QString TextView::TextBefore(int end) const {
  QTextCursor above(document());
  above.setPosition(end, QTextCursor::KeepAnchor);
  return TextIn(above);
}

QString TextView::Text() const { return TextBefore(document()->characterCount() - 1); }

// The toolkit's own way would make plain blanks of those that do not break.
QMimeData* TextView::createMimeDataFromSelection() const {
  auto* copy = new QMimeData;
  copy->setText(TextIn(textCursor()));
  return copy;
}

}  // namespace quorvel::qt
