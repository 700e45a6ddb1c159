#include "platform/windows/printing.h"

#include <utility>

#include "native/native.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

bool PrinterSetup::PageSetupDialog(const Ref<Window>&) {
  auto chosen = Nested([] { return Native().Dialogs().AskPageSetup(); });
  const bool accepted = chosen != nullptr;
  if (accepted) mChosen = std::move(chosen);
  return accepted;
}

Graphics::~Graphics() {
  if (std::uncaught_exceptions() > mExceptions) mJob->CallOff();
}

void Graphics::DrawString(const Text& text, int32_t x, int32_t y, int32_t, bool) {
  if (!mJob->Cancelled()) mJob->DrawString(NativeText(text), x, y, mFont);
}

void Graphics::NextPage() {
  if (!mJob->Cancelled()) Nested([this] { mJob->NextPage(); });
}

void StyledTextPrinter::DrawBlock(int32_t x, int32_t y, int32_t height) {
  if (!EOF_()) mLayout->DrawBlock(x, y, height);
}

Ref<Graphics> OpenPrinterDialog(const Ref<PrinterSetup>& setup, const Ref<Window>&) {
  native::PageSetup* const chosen = setup ? setup->mChosen.get() : nullptr;
  auto job = Nested([&] { return Native().Dialogs().AskPrint(chosen); });
  return job ? New<Graphics>(std::move(job)) : Nil;
}

}  // namespace quorvel
