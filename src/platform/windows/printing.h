#pragma once

#include <cstdint>
#include <memory>

#include "native/printing.h"
#include "platform/values/object.h"
#include "platform/values/text.h"

namespace quorvel {

class Window;

/// The page setup of a print job to come.
class PrinterSetup : public Object {
 public:
  /// Asks the user for it; false when the user cancels. There is one setup for all windows.
  [[nodiscard]] bool PageSetupDialog(const Ref<Window>& parent);
};

/// The pages of a print job, drawn one after the other. Lengths are in 1/72 inch, places count
/// from the corner of the printable area. The job goes to the printer with the last reference.
class Graphics : public Object {
 public:
  explicit Graphics(std::unique_ptr<native::PrintJob> job) : mJob(std::move(job)) {}

  [[nodiscard]] int32_t FirstPage() const { return mJob->PageRange().first; }
  [[nodiscard]] int32_t LastPage() const { return mJob->PageRange().second; }
  [[nodiscard]] int32_t Width() const { return mJob->Width(); }
  [[nodiscard]] int32_t Height() const { return mJob->Height(); }
  void TextFont(const Text& font) { mFont = font; }
  void TextSize(int32_t size) { mSize = size; }
  /// One line with its baseline at `y`. There is no wrapping (`wrap_width` 0) and no condensing.
  void DrawString(const Text& text, int32_t x, int32_t y, int32_t wrap_width, bool condense);
  /// Ends the page and begins the next.
  void NextPage();
  [[nodiscard]] native::PrintJob& _Job() const { return *mJob; }

 private:
  std::unique_ptr<native::PrintJob> mJob;
  Text mFont = "System";
  int32_t mSize = 0;
};

/// A field's text, laid out to a width for a print job and drawn block by block.
class StyledTextPrinter : public Object {
 public:
  StyledTextPrinter(Ref<Graphics> graphics, std::unique_ptr<native::PrintLayout> layout)
      : mGraphics(std::move(graphics)), mLayout(std::move(layout)) {}

  /// Draws as much of the remaining text as fits into `height`; no line is cut in two.
  void DrawBlock(int32_t x, int32_t y, int32_t height) { mLayout->DrawBlock(x, y, height); }
  /// True once all the text has been drawn, or the user has called the job off. (The plain name is
  /// a macro of the C library.)
  [[nodiscard]] bool EOF_() const { return mLayout->AtEnd() || mGraphics->_Job().Cancelled(); }

 private:
  Ref<Graphics> mGraphics;
  std::unique_ptr<native::PrintLayout> mLayout;
};

/// Asks the user where and what to print; Nil when the user cancels or the printer cannot be
/// opened.
[[nodiscard]] Ref<Graphics> OpenPrinterDialog(const Ref<PrinterSetup>& setup,
                                              const Ref<Window>& parent);

}  // namespace quorvel
