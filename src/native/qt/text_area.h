#pragma once

#include <QPlainTextEdit>

#include "native/control.h"
#include "native/qt/content.h"
#include "native/qt/owned.h"

namespace quorvel::qt {

/// A text field of many lines that the user edits.
class TextArea final : public native::TextField {
 public:
  TextArea(Content& content, const native::TextFieldState& state,
           native::TextFieldListener& the_listener);
  void Update(const native::TextFieldState& state) override;
  void Refresh() override;
  void ShowText(std::string_view text, size_t kept) override;

 private:
  /// Shows a frame while the editor has the keyboard.
  class Editor final : public QPlainTextEdit {
   public:
    using QPlainTextEdit::QPlainTextEdit;
    bool shows_focus = false;

   protected:
    bool event(QEvent* event) override;
  };

  native::TextFieldListener& listener;
  Owned<Editor> widget;
  QObject receiver;  // the context of the connections: no signal arrives after its destruction
};

}  // namespace quorvel::qt
