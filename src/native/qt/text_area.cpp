#include "native/qt/text_area.h"

#include <QScrollBar>
#include <QSignalBlocker>
#include <utility>

#include "native/qt/font.h"
#include "native/qt/show_control.h"
#include "native/qt/strings.h"
#include "native/qt/text_colors.h"

namespace quorvel::qt {

namespace {

// Every kind of line end starts a new line, and a symbol stands for a NUL.
QString Shown(QString text) {
  text.replace("\r\n", "\n");
  text.replace('\r', '\n');
  return WithVisibleNulls(std::move(text));
}

Qt::ScrollBarPolicy ScrollBarPolicy(bool wanted) {
  return wanted ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
}

}  // namespace

TextArea::TextArea(Content& content, const native::TextFieldState& state,
                   native::TextFieldListener& the_listener)
    : listener(the_listener), widget(new TextView(&content)) {
  content.Add(*widget, Content::Mouse::KeptByControl);
  QObject::connect(&*widget, &QPlainTextEdit::textChanged, &receiver, [this] { OnEdited(); });
  Update(state);
}

void TextArea::Update(const native::TextFieldState& state) {
  if (!widget) return;
  const QSignalBlocker no_edit(&*widget);
  if (widget->isReadOnly() != state.ReadOnly) ShowReadOnly(state.ReadOnly);
  ShowFrame(state);
  widget->setTabChangesFocus(!state.AcceptTabs);
  widget->setPalette(TextFieldColors(state));
  widget->setFont(FontOf(state));
  widget->setAttribute(Qt::WA_MacShowFocusRect, state.UseFocusRing);
  widget->ShowFocus(state.UseFocusRing);
  widget->FollowEnd(state.FollowsEnd);
  keeps_view = state.FollowsEnd;
  ShowControl(*widget, state, QString());
}

void TextArea::ShowReadOnly(bool read_only) {
  const QString text = widget->Text();
  widget->setReadOnly(read_only);
  if (read_only) {
    widget->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  }
  widget->setUndoRedoEnabled(!read_only);
  widget->ShowText(text);
}

void TextArea::ShowFrame(const native::TextFieldState& state) {
  widget->setFrameShape(state.Border ? QFrame::StyledPanel : QFrame::NoFrame);
  widget->setVerticalScrollBarPolicy(ScrollBarPolicy(state.ScrollbarVertical));
  widget->setHorizontalScrollBarPolicy(ScrollBarPolicy(state.ScrollbarHorizontal));
  widget->setLineWrapMode(state.ScrollbarHorizontal ? QPlainTextEdit::NoWrap
                                                    : QPlainTextEdit::WidgetWidth);
}

void TextArea::Refresh() {
  ShowPending();
  if (widget) widget->viewport()->repaint();
}

void TextArea::SetText(std::string_view text) {
  pending.clear();
  if (!widget) return;
  const QSignalBlocker no_edit(&*widget);
  const View view = keeps_view ? CurrentView() : View();
  widget->ShowText(Shown(FromUtf8(text)));
  RestoreView(view);
  ends_in_return = text.ends_with('\r');
}

void TextArea::AppendText(std::string_view text) {
  if (pending.empty()) {
    QMetaObject::invokeMethod(
        &receiver, [this] { ShowPending(); }, Qt::QueuedConnection);
  }
  pending += text;
}

void TextArea::ShowPending() {
  const std::string added = std::exchange(pending, {});
  if (!widget || added.empty()) return;
  const QSignalBlocker no_edit(&*widget);
  const bool second_half = ends_in_return && added.starts_with('\n');
  const View view = CurrentView();
  widget->ShowAdded(Shown(FromUtf8(std::string_view(added).substr(second_half ? 1 : 0))));
  RestoreView(view);
  ends_in_return = added.ends_with('\r');
}

TextArea::View TextArea::CurrentView() const {
  const QTextCursor cursor = widget->textCursor();
  return {cursor.position(), cursor.anchor(), widget->horizontalScrollBar()->value(),
          widget->verticalScrollBar()->value()};
}

// A cursor at the end moves with the added text, and setting a cursor scrolls to the cursor: the
// scroll bars come last.
void TextArea::RestoreView(const View& view) {
  const QTextCursor now = widget->textCursor();
  if (now.position() != view.cursor || now.anchor() != view.anchor) {
    const int last = widget->document()->characterCount() - 1;
    QTextCursor cursor(widget->document());
    cursor.setPosition(qMin(view.anchor, last));
    cursor.setPosition(qMin(view.cursor, last), QTextCursor::KeepAnchor);
    widget->setTextCursor(cursor);
  }
  QScrollBar& down = *widget->verticalScrollBar();
  down.setValue(widget->KeepsEnd() ? down.maximum() : view.down);
  widget->horizontalScrollBar()->setValue(view.across);
}

void TextArea::OnEdited() {
  ends_in_return = false;
  listener.OnEdited(ToUtf8(widget->Text()) + pending);
}

}  // namespace quorvel::qt
