#include "platform/windows/printing.h"

#include "native/native.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

bool PrinterSetup::PageSetupDialog(const Ref<Window>&) {
  return Nested([] { return Native().Dialogs().AskPageSetup(); });
}

void Graphics::DrawString(const Text& text, int32_t x, int32_t y, int32_t, bool) {
  mJob->DrawString(NativeText(text), x, y, NativeText(mFont), mSize);
}

void Graphics::NextPage() {
  Nested([this] { mJob->NextPage(); });
}

Ref<Graphics> OpenPrinterDialog(const Ref<PrinterSetup>&, const Ref<Window>&) {
  auto job = Nested([] { return Native().Dialogs().AskPrint(); });
  return job ? New<Graphics>(std::move(job)) : Nil;
}

}  // namespace quorvel
