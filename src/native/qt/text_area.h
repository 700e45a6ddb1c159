#pragma once

#include <QString>
#include <string>

#include "native/control.h"
#include "native/qt/content.h"
#include "native/qt/owned.h"
#include "native/qt/text_view.h"

namespace quorvel::qt {

/// A text field of many lines. Added text is collected, and shown once in a turn of the event loop.
class TextArea final : public native::TextField {
 public:
  TextArea(Content& content, const native::TextFieldState& state,
           native::TextFieldListener& the_listener);
  void Update(const native::TextFieldState& state) override;
  void Refresh() override;
  void SetText(std::string_view text) override;
  void AppendText(std::string_view text) override;

 private:
  /// The user's selection and the position of the scroll bars.
  struct View {
    int cursor = 0;
    int anchor = 0;
    int across = 0;
    int down = 0;
  };

  void ShowReadOnly(bool read_only);
  void ShowFrame(const native::TextFieldState& state);
  void ShowPending();
  [[nodiscard]] View CurrentView() const;
  void RestoreView(const View& view);
  void OnEdited();

  native::TextFieldListener& listener;
  Owned<TextView> widget;
  bool keeps_view = false;      // over a new text, which is the old text continued
  bool ends_in_return = false;  // a line feed to come is the second half of a line end
  std::string pending;          // added, and not shown yet
  QObject receiver;             // the context of connections and calls: none arrives afterwards
};

}  // namespace quorvel::qt
