#include "native/qt/reading_area.h"

#include "native/qt/field_look.h"
#include "native/qt/font.h"
#include "native/qt/show_control.h"

namespace quorvel::qt {

ReadingArea::ReadingArea(Content& content, const native::TextFieldState& state,
                         native::TextFieldListener& listener)
    : widget(new TextView(&content, [&listener] { return listener.KeepText(); })) {
  content.Add(*widget, Content::Mouse::KeptByControl);
  Update(state);
}

ReadingArea::~ReadingArea() {
  if (widget) widget->ShowText({}, 0);
}

void ReadingArea::Update(const native::TextFieldState& state) {
  if (!widget) return;
  ShowScrolling(*widget, state);
  widget->SetWrapping(!state.ScrollbarHorizontal);
  widget->setPalette(TextFieldColors(state));
  widget->setFont(FontOf(state));
  widget->setAttribute(Qt::WA_MacShowFocusRect, state.UseFocusRing);
  widget->ShowFocus(state.UseFocusRing);
  widget->FollowEnd(state.FollowsEnd);
  ShowControl(*widget, state, QString());
}

void ReadingArea::Refresh() {
  if (widget) widget->ShowNow();
}

void ReadingArea::ShowText(std::string_view text, size_t kept) {
  if (widget) widget->ShowText(text, kept);
}

}  // namespace quorvel::qt
