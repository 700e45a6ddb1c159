#pragma once

#include <cstdint>
#include <exception>
#include <memory>

#include "native/printing.h"
#include "platform/values/object.h"
#include "platform/values/text.h"

namespace quorvel {

class Graphics;
class Window;

/// The page setup (paper, orientation, margins) of a print to come; at first the default of the
/// desktop's printer.
class PrinterSetup : public Object {
 public:
  /// Asks the user for the page setup, beginning at the default. False when the user cancels, and
  /// then nothing changes.
  [[nodiscard]] bool PageSetupDialog(const Ref<Window>& parent);

 private:
  friend Ref<Graphics> OpenPrinterDialog(const Ref<PrinterSetup>& setup, const Ref<Window>& parent);

  std::unique_ptr<native::PageSetup> mChosen;  // null for the default
};

/// The pages of a print job, drawn one after the other. Lengths are in units of 1/72 inch; the
/// origin is the top left corner of the printable area. The job goes to the printer with the last
/// reference. A job that is left by an exception is called off.
class Graphics : public Object {
 public:
  explicit Graphics(std::unique_ptr<native::PrintJob> job) : mJob(std::move(job)) {}
  ~Graphics() override;

  /// The pages that the user asked for; 1 and 9999 for all pages.
  [[nodiscard]] int32_t FirstPage() const { return mJob->PageRange().first; }
  [[nodiscard]] int32_t LastPage() const { return mJob->PageRange().second; }
  /// The size of the printable area.
  [[nodiscard]] int32_t Width() const { return mJob->Width(); }
  [[nodiscard]] int32_t Height() const { return mJob->Height(); }
  /// The family and the size, in points, of the strings drawn from then on.
  void TextFont(const Text& family) { mFont.family = NativeText(family); }
  void TextSize(int32_t size) { mFont.size = size; }
  /// Draws one line from `x` on with its baseline at `y`. There is no wrapping (`wrap_width` 0) and
  /// no condensing.
  void DrawString(const Text& text, int32_t x, int32_t y, int32_t wrap_width, bool condense);
  /// Ends the page and begins the next. Delivers events, so that the user can call the job off.
  /// Once the user has done so, or the printer has failed, this and all drawing do nothing.
  void NextPage();
  [[nodiscard]] native::PrintJob& _Job() const { return *mJob; }

 private:
  const int mExceptions = std::uncaught_exceptions();
  std::unique_ptr<native::PrintJob> mJob;
  native::PrintFont mFont{.family = "System"};
};

/// A field's text, laid out to a width for a print job and drawn block by block.
class StyledTextPrinter : public Object {
 public:
  StyledTextPrinter(Ref<Graphics> graphics, std::unique_ptr<native::PrintLayout> layout)
      : mGraphics(std::move(graphics)), mLayout(std::move(layout)) {}

  /// Draws the next lines of the text on the current page, from the point down: as many as fit
  /// whole into `height`, but at least one.
  void DrawBlock(int32_t x, int32_t y, int32_t height);
  /// True once all the text has been drawn, or the job has been called off. (The plain name is a
  /// macro of the C library.)
  [[nodiscard]] bool EOF_() const { return mGraphics->_Job().Cancelled() || mLayout->AtEnd(); }

 private:
  Ref<Graphics> mGraphics;
  std::unique_ptr<native::PrintLayout> mLayout;  // goes before its job
};

/// Asks the user which pages to print, and where. Nil when the user cancels or the printer cannot
/// be opened. With a `setup` that is Nil the page setup is the default.
[[nodiscard]] Ref<Graphics> OpenPrinterDialog(const Ref<PrinterSetup>& setup,
                                              const Ref<Window>& parent);

}  // namespace quorvel
