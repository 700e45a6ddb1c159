#include "platform/windows/printing.h"

#include "native/native.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

bool PrinterSetup::PageSetupDialog(const Ref<Window>&) {
  const bool accepted = Native().Dialogs().AskPageSetup();
  UnwindIfQuitting();
  return accepted;
}

void Graphics::DrawString(const Text& text, int32_t x, int32_t y, int32_t, bool) {
  mJob->DrawString(NativeText(text), x, y, NativeText(mFont), mSize);
}

void Graphics::NextPage() {
  mJob->NextPage();
  UnwindIfQuitting();
}

Ref<Graphics> OpenPrinterDialog(const Ref<PrinterSetup>&, const Ref<Window>&) {
  auto job = Native().Dialogs().AskPrint();
  UnwindIfQuitting();
  return job ? New<Graphics>(std::move(job)) : Nil;
}

}  // namespace quorvel
