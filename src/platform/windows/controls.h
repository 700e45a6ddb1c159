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

/// A thing with a native counterpart in a window. Holds the whole state; the native object shows
/// it, from `_Realise` until `Close`.
class Control : public Component {
 public:
  /// Makes the native counterpart; called by the window that the control is added to.
  virtual void _Realise(native::Window& window) = 0;
  /// Drops the native counterpart and the handlers. The window's close calls it.
  virtual void Close();
  void _AssignProperties(PropertySet properties) override;

 protected:
  [[nodiscard]] virtual native::Control* NativeControl() const = 0;
  virtual void ReleaseNative() = 0;
  void UpdateNative();

  native::ControlState mState;
};

/// A control with a rectangle, in pixels relative to the window's content, and a mouse cursor.
class RectControl : public Control {
 public:
  [[nodiscard]] int32_t Left() const { return mState.Left; }
  [[nodiscard]] int32_t Top() const { return mState.Top; }
  [[nodiscard]] int32_t Width() const { return mState.Width; }
  [[nodiscard]] int32_t Height() const { return mState.Height; }
  void Width(int32_t width);
  void Height(int32_t height);
  /// The cursor that shows while the mouse is over the control.
  void MouseCursor(const Ref<quorvel::MouseCursor>& cursor);
  /// Draws the control at once.
  void Refresh(bool erase_first);

  /// Whether the place lies in the control; its right and bottom edges count as inside.
  [[nodiscard]] bool _Contains(native::Point place) const;
  /// Fires "MouseEnter" and "MouseExit" when the place is the first one inside or outside.
  void _TrackMouse(native::Point place);

 protected:
  /// A property with a getter and a setter: stores the value and shows it.
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
  [[nodiscard]] int32_t TextSize() const { return mState.TextSize; }
  void TextSize(int32_t size) { Change(mState.TextSize, size); }
};

/// Editable or read-only text.
class EditField : public TextControl, private native::TextFieldListener {
 public:
  /// What was last set or typed, byte for byte.
  [[nodiscard]] const quorvel::Text& Text() const { return mText; }
  /// Replaces the whole text. A text that extends the old one costs what it adds.
  void Text(const quorvel::Text& text);

  /// The text as it is now, laid out to `width` for printing.
  [[nodiscard]] Ref<StyledTextPrinter> styledTextPrinter(const Ref<Graphics>& graphics,
                                                         int32_t width) const;

  void _Realise(native::Window& window) override;

 protected:
  [[nodiscard]] native::Control* NativeControl() const override { return mNative.get(); }
  void ReleaseNative() override { mNative.reset(); }

 private:
  void OnEdited(std::string_view text) override;
  void ShowText() const;

  quorvel::Text mText;
  std::unique_ptr<native::TextField> mNative;
};

/// A control whose native counterpart needs nothing but the state.
template <class Base>
class PlainControl : public Base {
 protected:
  [[nodiscard]] native::Control* NativeControl() const override { return mNative.get(); }
  void ReleaseNative() override { mNative.reset(); }

  std::unique_ptr<native::Control> mNative;
};

/// A label; also a link, with mouse handlers.
class StaticText : public PlainControl<TextControl> {
 public:
  [[nodiscard]] quorvel::Text Text() const;
  void Text(const quorvel::Text& text);
  /// A handler of "MouseUp" makes the label a link, which the keyboard reaches as well.
  void _Install(std::string_view event, InstanceEventHandler handler) override;
  void _Realise(native::Window& window) override;
};

/// A button; fires "Action" when it is pressed.
class PushButton : public PlainControl<TextControl> {
 public:
  void _Realise(native::Window& window) override;
};

/// A surface for a picture.
class Canvas : public PlainControl<RectControl> {
 public:
  [[nodiscard]] const Ref<Picture>& Backdrop() const { return mBackdrop; }
  /// Nil shows none.
  void Backdrop(const Ref<Picture>& picture);
  void _Realise(native::Window& window) override;

 private:
  Ref<Picture> mBackdrop;
};

}  // namespace quorvel
