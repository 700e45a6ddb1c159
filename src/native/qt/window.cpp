#include "native/qt/window.h"

#include <utility>

#include "native/qt/canvas.h"
#include "native/qt/controls.h"
#include "native/qt/text_field.h"

namespace quorvel::qt {

Window::~Window() {
  if (frame) frame->Forget();
}

void Window::Update(const native::WindowState& state) { frame->Update(state); }

void Window::Show() { frame->ComeToFront(); }

void Window::Refresh() { frame->PaintNow(); }

std::unique_ptr<native::TextField> Window::AddTextField(native::TextFieldListener& listener) {
  return std::make_unique<TextField>(frame->Inside(), listener);
}

std::unique_ptr<native::Control> Window::AddLabel() {
  return std::make_unique<Label>(frame->Inside());
}

std::unique_ptr<native::Control> Window::AddButton(native::Callback pressed) {
  return std::make_unique<Button>(frame->Inside(), std::move(pressed));
}

std::unique_ptr<native::Control> Window::AddCanvas() {
  return std::make_unique<Canvas>(frame->Inside());
}

}  // namespace quorvel::qt
