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
  /// True, and the value, when the system knows the four-character selector. "sysv" is the version
  /// of macOS, in binary-coded decimal; no other system knows it.
  [[nodiscard]] bool Gestalt(const Text& selector, int32_t& value) const;

 private:
  Ref<_Cursors> mCursors = New<_Cursors>();
};

/// The one system object.
[[nodiscard]] Ref<_SystemClass> System();

/// A modal box with the text and one button; returns when the user has dismissed it.
void MsgBox(const Text& text);

/// Hands the address to the desktop's browser and returns at once.
void ShowURL(const Text& url);

}  // namespace quorvel
