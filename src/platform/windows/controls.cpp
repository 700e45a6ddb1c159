#include "platform/windows/controls.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/runtime/runtime.h"
#include "platform/windows/printing.h"

namespace quorvel {

namespace {

template <class State, size_t kCount>
using Bindings = std::array<PropertyBinding<State>, kCount>;

constexpr Bindings<native::ControlState, 9> kControl = {{
    {"Name", &native::ControlState::Name},
    {"AccessibleName", &native::ControlState::AccessibleName},
    {"Left", &native::ControlState::Left},
    {"Top", &native::ControlState::Top},
    {"Width", &native::ControlState::Width},
    {"Height", &native::ControlState::Height},
    {"TabIndex", &native::ControlState::TabIndex},
    {"Enabled", &native::ControlState::Enabled},
    {"Visible", &native::ControlState::Visible},
}};

constexpr Bindings<native::TextState, 5> kText = {{
    {"TextFont", &native::TextState::TextFont},
    {"TextSize", &native::TextState::TextSize},
    {"Bold", &native::TextState::Bold},
    {"Italic", &native::TextState::Italic},
    {"Underline", &native::TextState::Underline},
}};

constexpr Bindings<native::TextFieldState, 16> kField = {{
    {"TextColor", &native::TextFieldState::TextColor},
    {"BackColor", &native::TextFieldState::BackColor},
    {"Hint", &native::TextFieldState::Hint},
    {"Multiline", &native::TextFieldState::Multiline},
    {"ScrollbarVertical", &native::TextFieldState::ScrollbarVertical},
    {"ScrollbarHorizontal", &native::TextFieldState::ScrollbarHorizontal},
    {"Password", &native::TextFieldState::Password},
    {"ReadOnly", &native::TextFieldState::ReadOnly},
    {"Border", &native::TextFieldState::Border},
    {"UseFocusRing", &native::TextFieldState::UseFocusRing},
    {"AcceptTabs", &native::TextFieldState::AcceptTabs},
    {"FollowsEnd", &native::TextFieldState::FollowsEnd},
    {"LimitText", &native::TextFieldState::LimitText},
    {"Alignment", {}},
    {"TextAlign", {}},
    {"Styled", {}},
}};

constexpr Bindings<native::LabelState, 4> kLabel = {{
    {"TextColor", &native::LabelState::TextColor},
    {"Alignment", &native::LabelState::Alignment},
    {"TextAlign", &native::LabelState::Alignment},
    {"Multiline", &native::LabelState::Multiline},
}};

constexpr Bindings<native::ButtonState, 6> kButton = {{
    {"Caption", &native::ButtonState::Caption},
    {"Default", {}},
    {"Cancel", {}},
    {"TextColor", {}},
    {"Alignment", {}},
    {"TextAlign", {}},
}};

constexpr Bindings<native::CanvasState, 4> kCanvas = {{
    {"AcceptFocus", &native::CanvasState::AcceptFocus},
    {"AcceptTabs", {}},
    {"EraseBackground", {}},
    {"UseFocusRing", {}},
}};

// The texts of controls are no members of type std::string: the control keeps them byte for byte.
Text TextOf(const Property& property) {
  return Text::FromBytes(std::get<std::string_view>(property.value), Encodings::UTF8);
}

}  // namespace

void Control::Close() {
  ForgetHandlers();
  ReleaseNative();
  mWindow = nullptr;
}

void Control::PropertiesAssigned() {
  if (NativeControl() != nullptr) {
    UpdateNative();
  } else if (mWindow != nullptr) {
    MakeNative(*mWindow);
  }
}

bool RectControl::AssignProperty(const Property& property) {
  return AssignBound(State(), kControl, property);
}

bool RectControl::HasEvent(std::string_view event) const {
  static constexpr std::array<std::string_view, 4> kEvents = {"MouseEnter", "MouseExit",
                                                              "MouseDown", "MouseUp"};
  return std::ranges::find(kEvents, event) != kEvents.end();
}

void RectControl::MouseCursor(const Ref<quorvel::MouseCursor>& cursor) {
  Change(State().FingerPointer, cursor == System()->Cursors()->FingerPointer());
}

void RectControl::Refresh(bool) {
  if (auto* const control = NativeControl()) control->Refresh();
}

bool RectControl::_Contains(native::Point point) const {
  const int32_t dx = point.x - Left();
  const int32_t dy = point.y - Top();
  return dx >= 0 && dy >= 0 && dx <= Width() && dy <= Height();
}

void RectControl::_TrackMouse(native::Point point) {
  const bool inside = _Contains(point);
  if (std::exchange(mMouseInside, inside) == inside) return;
  _Fire(inside ? "MouseEnter" : "MouseExit");
}

bool TextControl::AssignProperty(const Property& property) {
  return AssignBound(State(), kText, property) || RectControl::AssignProperty(property);
}

Text TextControl::TextFont() const {
  return quorvel::Text::FromBytes(State().TextFont, Encodings::UTF8);
}

void TextControl::TextFont(const quorvel::Text& font) {
  Change(State().TextFont, std::string(font.Bytes()));
}

bool EditField::AssignProperty(const Property& property) {
  if (property.name == "Text") {
    Text(TextOf(property));
    return true;
  }
  return AssignBound(mState, kField, property) || TextControl::AssignProperty(property);
}

void EditField::Text(const quorvel::Text& text) {
  const quorvel::Text old = std::exchange(mText, text);
  if (mNative) mNative->ShowText(text.Bytes(), text.Extends(old) ? old.Bytes().size() : 0);
}

Ref<StyledTextPrinter> EditField::styledTextPrinter(const Ref<Graphics>& graphics,
                                                    int32_t width) const {
  const native::PrintFont font{.family = mState.TextFont,
                               .size = mState.TextSize,
                               .bold = mState.Bold,
                               .italic = mState.Italic,
                               .underline = mState.Underline};
  return New<StyledTextPrinter>(graphics, graphics->_Job().LayOut(NativeText(mText), font, width));
}

void EditField::MakeNative(native::Window& window) {
  mNative = window.AddTextField(mState, *this);
  if (!mText.IsEmpty()) mNative->ShowText(mText.Bytes(), 0);
}

void EditField::OnEdited(std::string_view text) {
  Dispatch([self = Self(*this), typed = quorvel::Text::FromBytes(text, Encodings::UTF8)] {
    self->mText = typed;
  });
}

bool StaticText::AssignProperty(const Property& property) {
  if (property.name == "Text") {
    Text(TextOf(property));
    return true;
  }
  return AssignBound(mState, kLabel, property) || TextControl::AssignProperty(property);
}

void StaticText::Text(const quorvel::Text& text) {
  mText = text;
  Change(mState.Text, NativeText(text));
}

void StaticText::EventInstalled(std::string_view event) {
  if (event == "MouseUp") Change(mState.Link, true);
}

bool PushButton::AssignProperty(const Property& property) {
  return AssignBound(mState, kButton, property) || TextControl::AssignProperty(property);
}

bool PushButton::HasEvent(std::string_view event) const {
  return event == "Action" || TextControl::HasEvent(event);
}

void PushButton::MakeNative(native::Window& window) {
  const auto press = [](PushButton& button) { button._Fire("Action"); };
  mNative = window.AddButton(mState, WhileAlive(*this, press));
}

bool Canvas::AssignProperty(const Property& property) {
  return AssignBound(mState, kCanvas, property) || RectControl::AssignProperty(property);
}

void Canvas::Backdrop(const Ref<Picture>& picture) {
  mBackdrop = picture;
  Change(mState.Backdrop, picture ? picture->File() : std::filesystem::path());
}

}  // namespace quorvel
