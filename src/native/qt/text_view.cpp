#include "native/qt/text_view.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <algorithm>
#include <utility>

namespace quorvel::qt {

namespace {

constexpr qsizetype kLongRun = 1000;
constexpr QChar kMark(0x200B);
constexpr QChar kJoiner(0x200D);

bool EndsRun(QChar character) { return character.isSpace() || character == kMark; }

// A break must not fall inside of a character as the reader sees characters.
bool MayBreak(const QString& text, qsizetype at) {
  const QChar next = text[at];
  if (next.isLowSurrogate() || next.isMark() || next == kJoiner) return false;
  return at == 0 || text[at - 1] != kJoiner;
}

// The toolkit's layout knows one alignment for all paragraphs. A paragraph's lines take up their
// alignment when they are drawn, so the alignment can follow each paragraph's own direction.
class AlignedLayout final : public QPlainTextDocumentLayout {
 public:
  using QPlainTextDocumentLayout::QPlainTextDocumentLayout;

  [[nodiscard]] QRectF blockBoundingRect(const QTextBlock& block) const override {
    const QRectF bounds = QPlainTextDocumentLayout::blockBoundingRect(block);
    if (block.isValid() && block.textDirection() == Qt::RightToLeft) AlignRight(*block.layout());
    return bounds;
  }

 private:
  static void AlignRight(QTextLayout& paragraph) {
    QTextOption option = paragraph.textOption();
    if (option.alignment() == Qt::AlignRight) return;
    option.setAlignment(Qt::AlignRight);
    paragraph.setTextOption(option);
  }
};

bool Scrolls(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
      return true;
    default:
      return false;
  }
}

}  // namespace

QString BreakMarks::Put(const QString& text) {
  QString shown;
  qsizetype done = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (EndsRun(text[i])) {
      run = 0;
    } else if (++run > kLongRun && MayBreak(text, i)) {
      shown += text.sliced(done, i - done);
      marks.push_back(length + shown.size());
      shown += kMark;
      done = i;
      run = 1;
    }
  }
  shown += text.sliced(done);
  length += shown.size();
  return shown;
}

QString BreakMarks::Without(const QString& shown, qsizetype start) const {
  QString text;
  qsizetype done = 0;
  for (auto mark = std::ranges::lower_bound(marks, start); mark != marks.end(); ++mark) {
    const qsizetype at = *mark - start;
    if (at >= shown.size()) break;
    text += shown.sliced(done, at - done);
    done = at + 1;
  }
  return text + shown.sliced(done);
}

TextView::TextView(QWidget* parent) : QPlainTextEdit(parent) {
  auto* aligned = new QTextDocument(this);
  aligned->setDocumentLayout(new AlignedLayout(aligned));
  setDocument(aligned);
  connect(verticalScrollBar(), &QScrollBar::actionTriggered, this, [this] { NoteUserScroll(); });
}

void TextView::ShowText(const QString& text) {
  marks = {};
  setPlainText(isReadOnly() ? marks.Put(text) : text);
}

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

QString TextView::Text() const {
  QTextCursor whole(document());
  whole.select(QTextCursor::Document);
  return TextIn(whole);
}

// The toolkit's own way copies no-break spaces as plain spaces.
QMimeData* TextView::createMimeDataFromSelection() const {
  auto* copy = new QMimeData;
  copy->setText(TextIn(textCursor()));
  return copy;
}

void TextView::FollowEnd(bool wanted) {
  following.Want(wanted);
  KeepEnd();
}

void TextView::KeepEnd() {
  if (KeepsEnd()) verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

// After a change of font or width the toolkit goes on with the old heights of paragraphs that are
// out of sight, and with the old range of the bar. Laying out the last page, and a resize to the
// same size, make both right.
void TextView::KeepEndAfterLayout() {
  if (!KeepsEnd()) return;
  qreal height = 0;
  for (QTextBlock block = document()->lastBlock(); block.isValid() && height < viewport()->height();
       block = block.previous()) {
    height += blockBoundingRect(block).height();
  }
  QResizeEvent same_size(viewport()->size(), viewport()->size());
  QPlainTextEdit::resizeEvent(&same_size);
  KeepEnd();
}

void TextView::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  KeepEndAfterLayout();
}

// A text that ends in a line end has an empty last line, which Control+End leaves out of sight: one
// step before its maximum, the bar has the last line of text in sight already. The bar tells of an
// action of the user's when its new position is known and its value is still the old one.
void TextView::NoteUserScroll() {
  const QScrollBar& bar = *verticalScrollBar();
  following.UserScrolled(bar.sliderPosition() >= bar.maximum() - 1);
}

void TextView::wheelEvent(QWheelEvent* event) {
  QPlainTextEdit::wheelEvent(event);
  NoteUserScroll();
}

void TextView::keyPressEvent(QKeyEvent* event) {
  const bool scrolls = Scrolls(*event);
  QPlainTextEdit::keyPressEvent(event);
  if (scrolls) NoteUserScroll();
}

void TextView::mouseMoveEvent(QMouseEvent* event) {
  const int before = verticalScrollBar()->value();
  QPlainTextEdit::mouseMoveEvent(event);
  if (verticalScrollBar()->value() != before) NoteUserScroll();
}

// The toolkit scrolls by a timer while the user drags a selection beyond the edge.
void TextView::timerEvent(QTimerEvent* event) {
  const int before = verticalScrollBar()->value();
  QPlainTextEdit::timerEvent(event);
  if (verticalScrollBar()->value() != before) NoteUserScroll();
}

bool TextView::event(QEvent* event) {
  const bool handled = QPlainTextEdit::event(event);
  switch (event->type()) {
    case QEvent::Paint:
      if (shows_focus && hasFocus()) PaintFocus();
      break;
    case QEvent::FocusIn:
    case QEvent::FocusOut:
      update();
      break;
    case QEvent::FontChange:
    case QEvent::Show:
      KeepEndAfterLayout();
      break;
    default:
      break;
  }
  return handled;
}

void TextView::PaintFocus() {
  QPainter painter(this);
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2 * frameWidth()));
  painter.drawRect(rect());
}

}  // namespace quorvel::qt
