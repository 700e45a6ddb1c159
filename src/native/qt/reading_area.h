#pragma once

#include "native/control.h"
#include "native/qt/content.h"
#include "native/qt/owned.h"
#include "native/qt/view/text_view.h"

namespace quorvel::qt {

/// A text field of many lines that the user only reads.
class ReadingArea final : public native::TextField {
 public:
  ReadingArea(Content& content, const native::TextFieldState& state,
              native::TextFieldListener& listener);
  /// The view may be deleted later, and shows no bytes any more.
  ~ReadingArea() override;
  ReadingArea(const ReadingArea&) = delete;
  ReadingArea& operator=(const ReadingArea&) = delete;
  void Update(const native::TextFieldState& state) override;
  void Refresh() override;
  void ShowText(std::string_view text, size_t kept) override;

 private:
  Owned<TextView> widget;
};

}  // namespace quorvel::qt
