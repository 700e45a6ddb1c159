#include "platform/windows/system.h"

#include "native/native.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

bool _SystemClass::Gestalt(const Text& selector, int32_t& value) const {
  const auto answer = Native().Desktop().Gestalt(selector.Bytes());
  if (answer) value = *answer;
  return answer.has_value();
}

Ref<_SystemClass> System() {
  static const Ref<_SystemClass> system = New<_SystemClass>();
  return system;
}

void MsgBox(const Text& text) {
  Nested([&] { Native().Dialogs().Message(NativeText(text)); });
}

void ShowURL(const Text& url) { Native().Desktop().OpenUrl(NativeText(url)); }

}  // namespace quorvel
