#include "native/qt/controls.h"

#include <utility>

#include "native/qt/control_widget.h"
#include "native/qt/strings.h"

namespace quorvel::qt {

namespace {

Qt::Alignment AlignmentOf(int32_t alignment) {
  if (alignment == 1) return Qt::AlignHCenter | Qt::AlignTop;
  return (alignment == 2 ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignTop;
}

// A label stands on the colour of its own window, so its text keeps its colour on a dark desktop.
QPalette TextColors(const std::string& color) {
  QPalette colors;
  colors.setColor(QPalette::WindowText, QColor(FromUtf8(color)));
  return colors;
}

}  // namespace

Label::Label(Content& content) : widget(new LinkLabel(content)) { content.Add(*widget, true); }

void Label::Update(const native::ControlState& state) {
  if (!widget) return;
  widget->setText(FromUtf8(state.Caption));
  widget->setAlignment(AlignmentOf(state.Alignment));
  widget->setWordWrap(state.Multiline);
  widget->setPalette(TextColors(state.TextColor));
  widget->SetLink(state.Link);
  ShowControl(*widget, state);
}

void Label::Refresh() {
  if (widget) widget->repaint();
}

Button::Button(Content& content, native::Callback pressed) : widget(new QPushButton(&content)) {
  content.Add(*widget, false);
  QObject::connect(&*widget, &QPushButton::clicked, &receiver,
                   [callback = std::move(pressed)] { callback(); });
}

void Button::Update(const native::ControlState& state) {
  if (!widget) return;
  // A lone "&" would be taken for the mark of a mnemonic.
  widget->setText(FromUtf8(state.Caption).replace('&', "&&"));
  ShowControl(*widget, state);
}

void Button::Refresh() {
  if (widget) widget->repaint();
}

}  // namespace quorvel::qt
