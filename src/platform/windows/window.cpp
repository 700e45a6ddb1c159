#include "platform/windows/window.h"

#include <algorithm>
#include <array>
#include <exception>
#include <functional>

#include "native/native.h"
#include "platform/runtime/runtime.h"
#include "platform/values/exceptions.h"
#include "platform/windows/timer.h"

namespace quorvel {

namespace {

using State = native::WindowState;

constexpr std::array<PropertyBinding<State>, 24> kBindings = {{
    {"Title", &State::Title},
    {"AccessibleName", &State::AccessibleName},
    {"Width", &State::Width},
    {"Height", &State::Height},
    {"MinWidth", &State::MinWidth},
    {"MinHeight", &State::MinHeight},
    {"MaxWidth", &State::MaxWidth},
    {"MaxHeight", &State::MaxHeight},
    {"Placement", &State::Placement},
    {"Frame", {}},
    {"MacProcID", {}},
    {"Visible", &State::Visible},
    {"Resizeable", &State::Resizeable},
    {"CloseButton", &State::CloseButton},
    {"ClosesOnEscape", &State::ClosesOnEscape},
    {"MinimizeButton", &State::MinimizeButton},
    {"MaximizeButton", &State::MaximizeButton},
    {"MenuBarVisible", &State::MenuBarVisible},
    {"FullScreen", &State::FullScreen},
    {"LiveResize", {}},
    {"Composite", {}},
    {"BalloonHelp", {}},
    {"HasBackColor", &State::HasBackColor},
    {"BackColor", &State::BackColor},
}};

std::vector<Ref<Window>>& OpenWindows() {
  static std::vector<Ref<Window>> windows;
  return windows;
}

auto Listed(const Window& window) {
  return std::ranges::find_if(OpenWindows(), [&](const auto& open) { return &*open == &window; });
}

}  // namespace

void Window::Constructor() {
  mNative = Native().Windows().Create(*this);
  _WindowSupport::Add(Self(*this));
  try {
    Make();
  } catch (...) {
    LeaveScreen();
    throw;
  }
  Event_Open();
}

void Window::Make() {
  Layout();
  CreateControls();
  _mInitialControlsCreated = true;
  AddMenuHandlers();
  if (mState.Visible) Show();
}

void Window::Show() {
  _WindowSupport::BringToFront(*this);
  if (!mNative) return;
  mState.Visible = true;
  UpdateNative();
  mNative->Show();
}

void Window::UpdateNative() {
  if (!mNative) return;
  native::WindowState shown = mState;
  shown.Visible = mState.Visible && _mInitialControlsCreated;
  mNative->Update(shown);
}

void Window::Close() { _UnifiedClose(false); }

void Window::Refresh(bool) {
  if (mNative) mNative->Refresh();
}

Text Window::Title() const { return Text::FromBytes(mState.Title, Encodings::UTF8); }

void Window::Title(const Text& title) {
  mState.Title = NativeText(title);
  UpdateNative();
}

void Window::_AddMenuHandler(const Text& item_name, MenuHandler handler) {
  mMenuHandlers.Add(*mMenuBar, item_name, std::move(handler));
}

void Window::_EnableMenuItems(const std::vector<Ref<MenuItem>>& items) {
  Event_EnableMenuItems();
  mMenuHandlers.EnableItems(items);
}

bool Window::_HandleMenuCommand(const Text&) { return false; }
bool Window::Event_CancelClose(bool) { return false; }

void Window::_AssignProperties(PropertySet properties) {
  for (const Property& property : properties) {
    if (!AssignBound(mState, kBindings, property) && !IsWithoutEffect(property.name)) {
      RaiseUnknownProperty(property.name);
    }
  }
  UpdateNative();
}

void Window::_AddControl(const Text& name, const Ref<Object>& object) {
  const auto control = Ref<Control>(std::dynamic_pointer_cast<Control>(object.Shared()));
  if (!control && dynamic_cast<_PaneChild*>(&*object) == nullptr) detail::RaiseIllegalCast();
  _mControls.emplace_back(name, object);
  if (!control) return;
  _mControlList.push_back(control);
  control->_Attach(*mNative);
}

void Window::ReleaseControls() {
  for (const auto& control : std::exchange(_mControlList, {})) control->Close();
  for (const auto& [name, object] : _mControls) {
    if (auto* const child = dynamic_cast<_PaneChild*>(&*object)) child->_WindowCloses();
  }
  _mControls.clear();
  mClickClaimedBy = Nil;
}

void Window::LeaveScreen() {
  ReleaseControls();
  _WindowSupport::Remove(*this);
  mNative.reset();
}

bool Window::_UnifiedClose(bool application_quits) {
  const auto keep = Self(*this);
  if (!mNative || mClosing) return true;
  if (Event_CancelClose(application_quits)) return false;
  mClosing = true;
  std::exception_ptr raised;
  try {
    Event_Close();
  } catch (...) {
    raised = std::current_exception();
  }
  LeaveScreen();
  if (raised) std::rethrow_exception(raised);
  return true;
}

void Window::OnCloseRequested() {
  Dispatch([self = Self(*this)] { self->Close(); });
}

void Window::OnActivated() {
  Dispatch([self = Self(*this)] { _WindowSupport::BringToFront(*self); });
}

void Window::OnResized(int32_t width, int32_t height, bool dragging) {
  Dispatch([=, self = Self(*this)] {
    self->mState.Width = width;
    self->mState.Height = height;
    dragging ? self->Event_Resizing() : self->Event_Resized();
  });
}

void Window::TrackMouse(native::Point point) {
  const auto controls = _mControlList;
  for (const auto& control : controls) {
    if (const auto rect = std::dynamic_pointer_cast<RectControl>(control.Shared())) {
      rect->_TrackMouse(point);
    }
  }
}

void Window::OnMouseMoved(native::Point point) {
  Dispatch([=, self = Self(*this)] { self->TrackMouse(point); });
}

void Window::OnMousePressed(native::Point point) {
  Dispatch([=, self = Self(*this)] {
    // The claim of a press whose release was lost must not outlive the new press.
    self->mClickClaimedBy = Nil;
    const auto controls = self->_mControlList;
    for (const auto& control : controls) {
      const auto rect = Ref<RectControl>(std::dynamic_pointer_cast<RectControl>(control.Shared()));
      if (!rect || !rect->_Contains(point)) continue;
      const bool claimed = rect->_Fire("MouseDown", point.x - rect->Left(), point.y - rect->Top());
      if (!claimed) continue;
      self->mClickClaimedBy = rect;
      return;
    }
  });
}

void Window::OnMouseReleased(native::Point point) {
  Dispatch([=, self = Self(*this)] {
    const auto rect = std::exchange(self->mClickClaimedBy, Nil);
    if (rect) rect->_Fire("MouseUp", point.x - rect->Left(), point.y - rect->Top());
  });
}

namespace _WindowSupport {

std::vector<Ref<Window>> Windows() { return OpenWindows(); }
Ref<Window> Front() { return OpenWindows().empty() ? Nil : OpenWindows().front(); }

void Add(const Ref<Window>& window) {
  OpenWindows().insert(OpenWindows().begin(), window);
  const Text class_name = window->_ClassName();
  if (_GetImplicitWindow(class_name.Bytes())) return;
  detail::_mImplicitWindowList.emplace_back(class_name.Bytes(), window);
}

void BringToFront(const Window& window) {
  const auto listed = Listed(window);
  if (listed != OpenWindows().end()) std::rotate(OpenWindows().begin(), listed, listed + 1);
}

void Remove(const Window& window) {
  const auto listed = Listed(window);
  if (listed != OpenWindows().end()) OpenWindows().erase(listed);
  std::erase_if(detail::_mImplicitWindowList,
                [&](const auto& implicit) { return &*implicit.second == &window; });
}

void ReleaseAll() {
  OpenWindows().clear();
  detail::_mImplicitWindowList.clear();
}

}  // namespace _WindowSupport

}  // namespace quorvel
