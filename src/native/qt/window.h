#pragma once

#include "native/native.h"
#include "native/qt/frame.h"
#include "native/qt/owned.h"

namespace quorvel::qt {

class Window final : public native::Window {
 public:
  explicit Window(Frame* the_frame) : frame(the_frame) {}
  ~Window() override;
  void Update(const native::WindowState& state) override;
  void Show() override;
  void Refresh() override;
  [[nodiscard]] std::unique_ptr<native::TextField> AddTextField(
      native::TextFieldListener& listener) override;
  [[nodiscard]] std::unique_ptr<native::Control> AddLabel() override;
  [[nodiscard]] std::unique_ptr<native::Control> AddButton(native::Callback pressed) override;
  [[nodiscard]] std::unique_ptr<native::Control> AddCanvas() override;

 private:
  Owned<Frame> frame;
};

}  // namespace quorvel::qt
