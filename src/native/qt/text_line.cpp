#include <QLineEdit>
#include <limits>
#include <utility>

#include "native/qt/control_widget.h"
#include "native/qt/input_limit.h"
#include "native/qt/owned.h"
#include "native/qt/text_box.h"

namespace quorvel::qt {

namespace {

/// A text field of a single line.
class TextLine final : public TextBox {
 public:
  TextLine(Content& content, Edited the_edited)
      : edited(std::move(the_edited)), widget(new QLineEdit(&content)) {
    widget->setMaxLength(std::numeric_limits<int>::max());
    content.Add(*widget, false);
    QObject::connect(&*widget, &QLineEdit::textEdited, &receiver, [this] { OnEdited(); });
  }

  void Update(const native::ControlState& state) override {
    if (!widget) return;
    widget->setReadOnly(state.ReadOnly);
    widget->setFrame(state.Border);
    widget->setEchoMode(state.Password ? QLineEdit::Password : QLineEdit::Normal);
    widget->setPalette(TextBoxColors(state));
    ShowControl(*widget, state);
    limit.Set(state.LimitText);
    limit.Put(widget->text());
  }

  [[nodiscard]] QString Text() const override { return widget ? widget->text() : QString(); }

  void SetText(const QString& text) override {
    if (!widget || widget->text() == text) return;
    const int cursor = widget->cursorPosition();
    widget->setText(text);
    if (widget->hasFocus()) widget->setCursorPosition(cursor);
    limit.Put(text);
  }

  void AppendText(const QString& text) override { SetText(Text() + text); }

  void Refresh() override {
    if (widget) widget->repaint();
  }

 private:
  void OnEdited() {
    Trim(limit.Surplus(widget->text(), widget->cursorPosition()));
    const Edited tell = edited;
    tell(widget->text());
  }

  // Setting the text also makes an end to undoing, which would bring the surplus back.
  void Trim(int surplus) {
    if (surplus == 0) return;
    const int start = widget->cursorPosition() - surplus;
    widget->setText(widget->text().remove(start, surplus));
    widget->setCursorPosition(start);
  }

  const Edited edited;
  Owned<QLineEdit> widget;
  InputLimit limit;
  QObject receiver;  // no edit arrives without it
};

}  // namespace

std::unique_ptr<TextBox> MakeTextLine(Content& content, Edited edited) {
  return std::make_unique<TextLine>(content, std::move(edited));
}

}  // namespace quorvel::qt
