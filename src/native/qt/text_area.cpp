#include "native/qt/text_area.h"

#include <QSignalBlocker>

#include "native/qt/field_look.h"
#include "native/qt/font.h"
#include "native/qt/show_control.h"
#include "native/qt/strings.h"
#include "native/qt/view/paint.h"

namespace quorvel::qt {

// The deferred deletion deletes the widget.
bool TextArea::Editor::event(QEvent* event) {
  if (event->type() == QEvent::DeferredDelete) return QPlainTextEdit::event(event);
  const bool handled = QPlainTextEdit::event(event);
  if (shows_focus) ShowFocusFrame(*this, *event);
  return handled;
}

TextArea::TextArea(Content& content, const native::TextFieldState& state,
                   native::TextFieldListener& the_listener)
    : listener(the_listener), widget(new Editor(&content)) {
  content.Add(*widget, Content::Mouse::KeptByControl);
  QObject::connect(&*widget, &QPlainTextEdit::textChanged, &receiver,
                   [this] { listener.OnEdited(ToUtf8(widget->toPlainText())); });
  Update(state);
}

void TextArea::Update(const native::TextFieldState& state) {
  if (!widget) return;
  const QSignalBlocker no_edit(&*widget);
  ShowScrolling(*widget, state);
  widget->setLineWrapMode(state.ScrollbarHorizontal ? QPlainTextEdit::NoWrap
                                                    : QPlainTextEdit::WidgetWidth);
  widget->setTabChangesFocus(!state.AcceptTabs);
  widget->setPalette(TextFieldColors(state));
  widget->setFont(FontOf(state));
  widget->setAttribute(Qt::WA_MacShowFocusRect, state.UseFocusRing);
  widget->shows_focus = state.UseFocusRing;
  ShowControl(*widget, state, QString());
}

void TextArea::Refresh() {
  if (widget) widget->viewport()->repaint();
}

void TextArea::ShowText(std::string_view text, size_t) {
  if (!widget) return;
  const QSignalBlocker no_edit(&*widget);
  widget->setPlainText(WithVisibleNulls(FromBytes(text)));
}

}  // namespace quorvel::qt
