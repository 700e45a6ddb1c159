#pragma once

#include <QObject>
#include <QPointer>
#include <string>

#include "native/native.h"
#include "native/qt/text_box.h"

namespace quorvel::qt {

/// Shows its text in a widget that is made when it is known whether it has one line or many. What
/// is added is collected, and shown once in a turn of the event loop.
class TextField final : public QObject, public native::TextField {
 public:
  TextField(Content& the_content, native::TextFieldListener& the_listener);
  void Update(const native::ControlState& state) override;
  void Refresh() override;
  void SetText(std::string_view text) override;
  void AppendText(std::string_view text) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeBox(bool many_lines);
  void ShowAdded();
  void OnEdited(const QString& text);

  QPointer<Content> content;
  native::TextFieldListener& listener;
  std::unique_ptr<TextBox> box;
  bool multiline = false;
  std::string added;  // not shown yet
};

}  // namespace quorvel::qt
