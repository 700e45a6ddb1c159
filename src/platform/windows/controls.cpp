#include "platform/windows/controls.h"

#include <array>
#include <utility>

#include "platform/runtime/runtime.h"
#include "platform/windows/printing.h"

namespace quorvel {

namespace {

using State = native::ControlState;

constexpr std::array<PropertyBinding<State>, 34> kBindings = {{
    {"Name", &State::Name},
    {"AccessibleName", &State::AccessibleName},
    {"Left", &State::Left},
    {"Top", &State::Top},
    {"Width", &State::Width},
    {"Height", &State::Height},
    {"TabIndex", &State::TabIndex},
    {"Enabled", &State::Enabled},
    {"Visible", &State::Visible},
    {"UseFocusRing", &State::UseFocusRing},
    {"AcceptTabs", &State::AcceptTabs},
    {"TextFont", &State::TextFont},
    {"TextSize", &State::TextSize},
    {"Bold", &State::Bold},
    {"Italic", &State::Italic},
    {"Underline", &State::Underline},
    {"TextColor", &State::TextColor},
    {"BackColor", &State::BackColor},
    {"Alignment", &State::Alignment},
    {"TextAlign", &State::Alignment},
    {"Caption", &State::Caption},
    {"Text", &State::Caption},
    {"Multiline", &State::Multiline},
    {"ScrollbarVertical", &State::ScrollbarVertical},
    {"ScrollbarHorizontal", &State::ScrollbarHorizontal},
    {"Styled", &State::Styled},
    {"Password", &State::Password},
    {"ReadOnly", &State::ReadOnly},
    {"Border", &State::Border},
    {"LimitText", &State::LimitText},
    {"Default", &State::Default},
    {"Cancel", &State::Cancel},
    {"AcceptFocus", &State::AcceptFocus},
    {"EraseBackground", &State::EraseBackground},
}};

bool EndsInAscii(const Text& text) {
  return text.IsEmpty() || static_cast<signed char>(text.Bytes().back()) >= 0;
}

}  // namespace

void Control::Close() {
  ForgetHandlers();
  ReleaseNative();
}

void Control::_AssignProperties(PropertySet properties) {
  for (const auto& property : properties) AssignProperty<State>(mState, kBindings, property);
  UpdateNative();
}

void Control::UpdateNative() {
  if (auto* const control = NativeControl()) control->Update(mState);
}

void RectControl::Width(int32_t width) { Change(mState.Width, width); }
void RectControl::Height(int32_t height) { Change(mState.Height, height); }

void RectControl::MouseCursor(const Ref<quorvel::MouseCursor>& cursor) {
  Change(mState.FingerPointer, cursor == System()->Cursors()->FingerPointer());
}

void RectControl::Refresh(bool) {
  if (auto* const control = NativeControl()) control->Refresh();
}

bool RectControl::_Contains(native::Point place) const {
  const int32_t dx = place.x - mState.Left;
  const int32_t dy = place.y - mState.Top;
  return dx >= 0 && dy >= 0 && dx <= mState.Width && dy <= mState.Height;
}

void RectControl::_TrackMouse(native::Point place) {
  const bool inside = _Contains(place);
  if (std::exchange(mMouseInside, inside) == inside) return;
  _Fire(inside ? "MouseEnter" : "MouseExit");
}

Text TextControl::TextFont() const { return quorvel::Text(mState.TextFont.c_str()); }
void TextControl::TextFont(const quorvel::Text& font) {
  Change(mState.TextFont, std::string(font.Bytes()));
}

void EditField::Text(const quorvel::Text& text) {
  const quorvel::Text old = std::exchange(mText, text);
  if (!mNative) return;
  if (!text.Extends(old) || !EndsInAscii(old)) return ShowText();
  const quorvel::Text added = MidB(text, LenB(old) + 1);
  if (!added.IsEmpty()) mNative->AppendText(NativeText(added));
}

void EditField::ShowText() const { mNative->SetText(NativeText(mText)); }

Ref<StyledTextPrinter> EditField::styledTextPrinter(const Ref<Graphics>& graphics,
                                                    int32_t width) const {
  return New<StyledTextPrinter>(graphics,
                                graphics->_Job().LayOut(NativeText(mText), mState, width));
}

void EditField::_Realise(native::Window& window) {
  mNative = window.AddTextField(*this);
  mNative->Update(mState);
  ShowText();
}

void EditField::OnEdited(std::string_view text) {
  Dispatch([self = Self(*this), typed = quorvel::Text::FromBytes(text, Encodings::UTF8)] {
    self->mText = typed;
  });
}

Text StaticText::Text() const { return quorvel::Text(mState.Caption.c_str()); }
void StaticText::Text(const quorvel::Text& text) { Change(mState.Caption, NativeText(text)); }

void StaticText::_Install(std::string_view event, InstanceEventHandler handler) {
  TextControl::_Install(event, std::move(handler));
  if (event == "MouseUp") Change(mState.Link, true);
}

void StaticText::_Realise(native::Window& window) {
  mNative = window.AddLabel();
  UpdateNative();
}

void PushButton::_Realise(native::Window& window) {
  mNative = window.AddButton([weak = weak_from_this()] {
    if (const auto button = std::static_pointer_cast<PushButton>(weak.lock())) {
      Dispatch([&] { button->_Fire("Action"); });
    }
  });
  UpdateNative();
}

void Canvas::Backdrop(const Ref<Picture>& picture) {
  mBackdrop = picture;
  Change(mState.Backdrop, picture ? picture->File() : std::filesystem::path());
}

void Canvas::_Realise(native::Window& window) {
  mNative = window.AddCanvas();
  UpdateNative();
}

}  // namespace quorvel
