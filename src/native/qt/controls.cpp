#include "native/qt/controls.h"

#include <QStyle>
#include <utility>

#include "native/qt/font.h"
#include "native/qt/show_control.h"
#include "native/qt/strings.h"

namespace quorvel::qt {

namespace {

Qt::Alignment AlignmentOf(int32_t alignment) {
  if (alignment == 1) return Qt::AlignHCenter | Qt::AlignTop;
  return (alignment == 2 ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignTop;
}

// Windows with labels have a background colour of their own, so a label's text keeps the given
// colour on a dark desktop.
QPalette TextColors(const std::string& color) {
  QPalette colors;
  colors.setColor(QPalette::WindowText, QColor(FromUtf8(color)));
  return colors;
}

// The toolkit tells screen readers of each text that is set, of the same text too.
template <class Widget>
void ShowText(Widget& widget, const QString& text) {
  if (widget.text() != text) widget.setText(text);
}

}  // namespace

Label::Label(Content& content, const native::LabelState& state) : widget(new LinkLabel(content)) {
  content.Add(*widget, Content::Mouse::Reported);
  Update(state);
}

void Label::Update(const native::LabelState& state) {
  if (!widget) return;
  ShowText(*widget, FromUtf8(state.Text));
  widget->setAlignment(AlignmentOf(state.Alignment));
  widget->setWordWrap(state.Multiline);
  widget->setPalette(TextColors(state.TextColor));
  const int wrapping = state.Multiline ? Qt::TextWordWrap : Qt::TextSingleLine;
  const QSize room(state.Width, state.Height);
  widget->setFont(Fitting(FontOf(state), *widget, widget->text(), room, wrapping));
  widget->SetLink(state.Link);
  ShowControl(*widget, state, widget->text());
}

void Label::Refresh() {
  if (widget) widget->repaint();
}

Button::Button(Content& content, const native::ButtonState& state, native::Callback pressed)
    : widget(new QPushButton(&content)) {
  // Return presses the button that has the keyboard, and no other button.
  widget->setAutoDefault(true);
  content.Add(*widget, Content::Mouse::KeptByControl);
  QObject::connect(&*widget, &QPushButton::clicked, &receiver,
                   [callback = std::move(pressed)] { callback(); });
  Update(state);
}

void Button::Update(const native::ButtonState& state) {
  if (!widget) return;
  const QString caption = FromUtf8(state.Caption);
  // The toolkit takes a lone "&" for the mark of a mnemonic.
  ShowText(*widget, QString(caption).replace('&', "&&"));
  const int margin = widget->style()->pixelMetric(QStyle::PM_ButtonMargin, nullptr, &*widget);
  const QSize room(state.Width - margin, state.Height);
  widget->setFont(Fitting(FontOf(state), *widget, caption, room));
  ShowControl(*widget, state, caption);
}

void Button::Refresh() {
  if (widget) widget->repaint();
}

}  // namespace quorvel::qt
