#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "native/window.h"
#include "platform/values/text.h"
#include "platform/windows/component.h"
#include "platform/windows/resources.h"
#include "platform/windows/system.h"

namespace quorvel {

class Graphics;
class StyledTextPrinter;

/// A thing with a native counterpart in a window. Holds the whole state; the native counterpart
/// shows the state, from the end of the first layout table until `Close`.
class Control : public Component {
 public:
  /// Called by the window that the control is added to: the window in which the native counterpart
  /// will be made.
  void _Attach(native::Window& window) { mWindow = &window; }
  /// Drops the native counterpart and the handlers. The window's close calls it.
  void Close();

 protected:
  /// Makes the native counterpart with the state as assigned, or shows the new state.
  void PropertiesAssigned() override;
  virtual void MakeNative(native::Window& window) = 0;
  /// Null before the making and after `Close`.
  [[nodiscard]] virtual native::Control* NativeControl() const = 0;
  virtual void ReleaseNative() = 0;
  virtual void UpdateNative() = 0;

 private:
  native::Window* mWindow = nullptr;
};

/// A control with a rectangle, in pixels relative to the window's content, and a mouse cursor.
class RectControl : public Control {
 public:
  [[nodiscard]] int32_t Left() const { return State().Left; }
  [[nodiscard]] int32_t Top() const { return State().Top; }
  [[nodiscard]] int32_t Width() const { return State().Width; }
  [[nodiscard]] int32_t Height() const { return State().Height; }
  void Width(int32_t width) { Change(State().Width, width); }
  void Height(int32_t height) { Change(State().Height, height); }
  /// The cursor that shows while the mouse is over the control.
  void MouseCursor(const Ref<quorvel::MouseCursor>& cursor);
  /// Draws the control at once.
  void Refresh(bool erase_first);

  /// Whether the point lies in the control; the right and bottom edges count as inside.
  [[nodiscard]] bool _Contains(native::Point point) const;
  /// Fires "MouseEnter" and "MouseExit" when the point is the first one inside or outside.
  void _TrackMouse(native::Point point);

 protected:
  [[nodiscard]] virtual native::ControlState& State() = 0;
  [[nodiscard]] virtual const native::ControlState& State() const = 0;
  [[nodiscard]] bool AssignProperty(const Property& property) override;
  [[nodiscard]] bool HasEvent(std::string_view event) const override;
  /// The setter of a property: stores the value and shows the value.
  template <class Value>
  void Change(Value& member, Value value) {
    member = std::move(value);
    UpdateNative();
  }

 private:
  bool mMouseInside = false;
};

/// A control that shows text, in one font.
class TextControl : public RectControl {
 public:
  [[nodiscard]] quorvel::Text TextFont() const;
  void TextFont(const quorvel::Text& font);
  [[nodiscard]] int32_t TextSize() const { return State().TextSize; }
  void TextSize(int32_t size) { Change(State().TextSize, size); }

 protected:
  [[nodiscard]] native::TextState& State() override = 0;
  [[nodiscard]] const native::TextState& State() const override = 0;
  [[nodiscard]] bool AssignProperty(const Property& property) override;
};

/// The part of a control that depends on the kind of the native counterpart.
template <class Base, class StateKind, class NativeKind>
class NativeBacked : public Base {
 protected:
  [[nodiscard]] StateKind& State() override { return mState; }
  [[nodiscard]] const StateKind& State() const override { return mState; }
  [[nodiscard]] native::Control* NativeControl() const override { return mNative.get(); }
  void ReleaseNative() override { mNative.reset(); }
  void UpdateNative() override {
    if (mNative) mNative->Update(mState);
  }

  StateKind mState;
  std::unique_ptr<NativeKind> mNative;
};

/// Editable or read-only text.
class EditField : public NativeBacked<TextControl, native::TextFieldState, native::TextField>,
                  private native::TextFieldListener {
 public:
  /// The text that was last set or typed, byte for byte.
  [[nodiscard]] const quorvel::Text& Text() const { return mText; }
  /// Replaces the whole text. A text that extends the old text costs the added bytes alone.
  void Text(const quorvel::Text& text);

  /// The text as it is now, laid out to `width` for printing.
  [[nodiscard]] Ref<StyledTextPrinter> styledTextPrinter(const Ref<Graphics>& graphics,
                                                         int32_t width) const;

 protected:
  [[nodiscard]] bool AssignProperty(const Property& property) override;
  void MakeNative(native::Window& window) override;

 private:
  void OnEdited(std::string_view text) override;
  [[nodiscard]] std::shared_ptr<const void> KeepText() override {
    return std::make_shared<const quorvel::Text>(mText);
  }

  quorvel::Text mText;
};

/// A label; also a link, with mouse handlers.
class StaticText : public NativeBacked<TextControl, native::LabelState, native::Label> {
 public:
  /// The text that was last set, byte for byte.
  [[nodiscard]] const quorvel::Text& Text() const { return mText; }
  void Text(const quorvel::Text& text);

 protected:
  [[nodiscard]] bool AssignProperty(const Property& property) override;
  void MakeNative(native::Window& window) override { mNative = window.AddLabel(mState); }
  /// A handler of "MouseUp" makes the label a link, which the keyboard reaches as well.
  void EventInstalled(std::string_view event) override;

 private:
  quorvel::Text mText;
};

/// A button; fires "Action" when the user presses the button.
class PushButton : public NativeBacked<TextControl, native::ButtonState, native::Button> {
 protected:
  [[nodiscard]] bool AssignProperty(const Property& property) override;
  [[nodiscard]] bool HasEvent(std::string_view event) const override;
  void MakeNative(native::Window& window) override;
};

/// A surface for a picture.
class Canvas : public NativeBacked<RectControl, native::CanvasState, native::Canvas> {
 public:
  [[nodiscard]] const Ref<Picture>& Backdrop() const { return mBackdrop; }
  /// Nil shows no picture.
  void Backdrop(const Ref<Picture>& picture);

 protected:
  [[nodiscard]] bool AssignProperty(const Property& property) override;
  void MakeNative(native::Window& window) override { mNative = window.AddCanvas(mState); }

 private:
  Ref<Picture> mBackdrop;
};

}  // namespace quorvel
