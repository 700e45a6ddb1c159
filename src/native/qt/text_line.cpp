#include "native/qt/text_line.h"

#include <QStyleOptionFrame>
#include <algorithm>
#include <limits>

#include "native/qt/field_look.h"
#include "native/qt/font.h"
#include "native/qt/show_control.h"
#include "native/qt/strings.h"

namespace quorvel::qt {

namespace {

// The distance that the toolkit keeps between the frame of a line and the text, at either end.
constexpr QSize kMargins(2, 1);

bool IsLineEnd(QChar character) {
  const char16_t code = character.unicode();
  return (code >= u'\n' && code <= u'\r') || code == 0x85 || code == 0x2028 || code == 0x2029;
}

bool IsPair(const QString& text, qsizetype low) {
  return low > 0 && text[low].isLowSurrogate() && text[low - 1].isHighSurrogate();
}

qsizetype Characters(const QString& text) {
  qsizetype count = text.size();
  for (qsizetype i = 1; i < text.size(); ++i) count -= IsPair(text, i) ? 1 : 0;
  return count;
}

QFont FontInLine(QLineEdit& line, const native::TextFieldState& state) {
  QStyleOptionFrame option;
  option.initFrom(&line);
  option.rect = QRect(0, 0, state.Width, state.Height);
  option.lineWidth =
      state.Border ? line.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &line) : 0;
  const QRect inside = line.style()->subElementRect(QStyle::SE_LineEditContents, &option, &line);
  const QString sample = FromUtf8(state.Hint.empty() ? "X" : state.Hint);
  return Fitting(FontOf(state), line, sample, inside.size() - 2 * kMargins);
}

}  // namespace

void EntryRules::NoteText(const QString& text) {
  held_characters = Characters(text);
  held_line_ends = std::ranges::count_if(text, IsLineEnd);
}

bool EntryRules::Apply(QString& text, int& cursor) {
  const bool had_line_ends = DropLineEnds(text, cursor);
  const bool had_surplus = DropSurplus(text, cursor);
  NoteText(text);
  return had_line_ends || had_surplus;
}

bool EntryRules::DropLineEnds(QString& text, int& cursor) const {
  qsizetype entered = std::ranges::count_if(text, IsLineEnd) - held_line_ends;
  const bool any = entered > 0;
  for (int i = cursor - 1; i >= 0 && entered > 0; --i) {
    if (!IsLineEnd(text[i])) continue;
    text.remove(i, 1);
    --cursor;
    --entered;
  }
  return any;
}

bool EntryRules::DropSurplus(QString& text, int& cursor) const {
  if (limit == 0) return false;
  const qsizetype excess = Characters(text) - std::max(limit, held_characters);
  int start = cursor;
  for (qsizetype i = excess; i > 0 && start > 0; --i) start -= IsPair(text, start - 1) ? 2 : 1;
  text.remove(start, cursor - start);
  cursor = start;
  return excess > 0;
}

TextLine::TextLine(Content& content, const native::TextFieldState& state,
                   native::TextFieldListener& the_listener)
    : listener(the_listener), widget(new QLineEdit(&content)) {
  widget->setMaxLength(std::numeric_limits<int>::max());
  content.Add(*widget, Content::Mouse::KeptByControl);
  QObject::connect(&*widget, &QLineEdit::textEdited, &receiver, [this] { OnEdited(); });
  Update(state);
}

void TextLine::Update(const native::TextFieldState& state) {
  if (!widget) return;
  widget->setReadOnly(state.ReadOnly);
  widget->setFrame(state.Border);
  widget->setEchoMode(state.Password ? QLineEdit::Password : QLineEdit::Normal);
  widget->setPalette(TextFieldColors(state));
  widget->setPlaceholderText(FromUtf8(state.Hint));
  widget->setFont(FontInLine(*widget, state));
  widget->setAttribute(Qt::WA_MacShowFocusRect, state.UseFocusRing);
  rules.SetLimit(state.LimitText);
  ShowControl(*widget, state, QString());
}

void TextLine::Refresh() {
  if (widget) widget->repaint();
}

void TextLine::ShowText(std::string_view text, size_t) {
  if (!widget) return;
  const int cursor = widget->cursorPosition();
  widget->setText(FromBytes(text));
  if (widget->hasFocus()) widget->setCursorPosition(cursor);
  rules.NoteText(widget->text());
}

// Setting the text also clears the undo history, which would bring the dropped characters back.
void TextLine::OnEdited() {
  QString text = widget->text();
  int cursor = widget->cursorPosition();
  if (rules.Apply(text, cursor)) {
    widget->setText(text);
    widget->setCursorPosition(cursor);
  }
  listener.OnEdited(ToUtf8(text));
}

}  // namespace quorvel::qt
