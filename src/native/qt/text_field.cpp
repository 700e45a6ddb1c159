#include "native/qt/text_field.h"

#include "native/qt/strings.h"

namespace quorvel::qt {

TextField::TextField(Content& the_content, native::TextFieldListener& the_listener)
    : content(&the_content), listener(the_listener) {
  content->installEventFilter(this);
}

void TextField::Update(const native::ControlState& state) {
  if (!content) return;
  if (!box || multiline != state.Multiline) MakeBox(state.Multiline);
  box->Update(state);
  ShowAdded();
}

void TextField::MakeBox(bool many_lines) {
  const QString text = box ? box->Text() : QString();
  const auto edited = [this](const QString& new_text) { OnEdited(new_text); };
  box = many_lines ? MakeTextArea(*content, edited) : MakeTextLine(*content, edited);
  box->SetText(text);
  multiline = many_lines;
}

void TextField::Refresh() {
  ShowAdded();
  if (box) box->Refresh();
}

void TextField::SetText(std::string_view text) {
  added.clear();
  if (box) {
    box->SetText(FromUtf8(text));
  } else {
    added = text;
  }
}

void TextField::AppendText(std::string_view text) {
  if (added.empty()) {
    QMetaObject::invokeMethod(
        this, [this] { ShowAdded(); }, Qt::QueuedConnection);
  }
  added += text;
}

void TextField::ShowAdded() {
  if (!box || added.empty()) return;
  box->AppendText(FromUtf8(added));
  added.clear();
}

// What is not shown yet belongs to the text all the same.
void TextField::OnEdited(const QString& text) { listener.OnEdited(ToUtf8(text) + added); }

bool TextField::eventFilter(QObject*, QEvent* event) {
  if (event->type() == kShowWaiting) ShowAdded();
  return false;
}

}  // namespace quorvel::qt
