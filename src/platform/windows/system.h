#pragma once

#include <cstdint>

#include "platform/values/object.h"
#include "platform/values/text.h"

namespace quorvel {

/// An opaque cursor; the same object for the same shape.
class MouseCursor : public Object {};

class _Cursors : public Object {
 public:
  [[nodiscard]] const Ref<MouseCursor>& FingerPointer() const { return mFinger; }
  [[nodiscard]] const Ref<MouseCursor>& StandardPointer() const { return mStandard; }

 private:
  Ref<MouseCursor> mFinger = New<MouseCursor>();
  Ref<MouseCursor> mStandard = New<MouseCursor>();
};

class _SystemClass : public Object {
 public:
  [[nodiscard]] const Ref<_Cursors>& Cursors() const { return mCursors; }
  /// Sets `value` to the system's answer for a four-character selector. False, with `value`
  /// unchanged, for a selector that the system does not know. "sysv" is the version of macOS in
  /// binary-coded decimal; no other system knows "sysv".
  [[nodiscard]] bool Gestalt(const Text& selector, int32_t& value) const;

 private:
  Ref<_Cursors> mCursors = New<_Cursors>();
};

/// The system object, always the same.
[[nodiscard]] Ref<_SystemClass> System();

/// Shows a modal box with the text and a button; returns when the user has dismissed the box.
/// Raises `EndException` when a handler asked to quit in the meantime.
void MsgBox(const Text& text);

/// Hands the address to the desktop's browser and returns at once.
void ShowURL(const Text& url);

}  // namespace quorvel
