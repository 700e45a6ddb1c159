#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

/// Printing. All lengths are in units of 1/72 inch. The origin is the top left corner of the
/// printable area of a page, x grows to the right, y grows downwards. Texts are valid UTF-8, drawn
/// in black.
///
/// A print is `Dialogs::AskPageSetup`, `Dialogs::AskPrint`, `PrintJob::LayOut`, then for each page
/// `PrintLayout::DrawBlock`, perhaps `PrintJob::DrawString`, and between two pages
/// `PrintJob::NextPage`. The layout is destroyed before its job.
namespace quorvel::native {

/// The look of a text on paper.
struct PrintFont {
  /// A family that is not installed is replaced as on the screen.
  std::string family;
  int32_t size = 0;  ///< in points; 0 for the size of the desktop's own font
  bool bold = false;
  bool italic = false;
  bool underline = false;
};

/// Paper, orientation and margins that the user chose for a print. Made by
/// `Dialogs::AskPageSetup`, looked into by `Dialogs::AskPrint` alone.
class PageSetup {
 public:
  virtual ~PageSetup() = default;
};

/// A text broken into lines for one print job, with a cursor in front of the line to be drawn next.
/// A tab advances to the next multiple of 80 units. A paragraph whose first letter belongs
/// to a right-to-left script is aligned to the right edge, any other to the left edge.
class PrintLayout {
 public:
  virtual ~PrintLayout() = default;
  /// Draws the next lines on the current page of the job, the top of the first line at `y`, their
  /// left edge at `x`: as many as fit whole into `height`, but at least one, however low the block,
  /// so that every print comes to an end. Called only while lines are left, once for each page.
  virtual void DrawBlock(int32_t x, int32_t y, int32_t height) = 0;
  /// Whether the last line has been drawn. True from the start for an empty text.
  [[nodiscard]] virtual bool AtEnd() const = 0;
};

/// A print job. It begins with an empty first page. The destruction of the job ends the last page
/// and sends the job to the printer, unless the job has been called off.
class PrintJob {
 public:
  virtual ~PrintJob() = default;
  /// The first and the last page that the user asked for; 1 and 9999 for all pages. The numbers
  /// count the sheets of this job: pages 3 to 5 are its first three sheets.
  [[nodiscard]] virtual std::pair<int32_t, int32_t> PageRange() const = 0;
  /// The size of the printable area, rounded down. The same for all pages.
  [[nodiscard]] virtual int32_t Width() const = 0;
  [[nodiscard]] virtual int32_t Height() const = 0;
  /// Draws one line of text, never broken, on the current page. The text begins at `x`, its
  /// baseline is at `y`.
  virtual void DrawString(std::string_view text, int32_t x, int32_t y, const PrintFont& font) = 0;
  /// Ends the current page and begins an empty one. Tells the user how far the job is, and delivers
  /// events, so that the user can call the job off; does itself call off a job whose printer fails.
  virtual void NextPage() = 0;
  /// Whether the job has been called off. Nothing more is then drawn, and no page begun.
  [[nodiscard]] virtual bool Cancelled() const = 0;
  /// Calls the job off, when an exception (a quit, for one) leaves it half drawn: as far as the
  /// printer allows nothing of it is printed, and a file that it was printed to is removed. Does
  /// nothing to a job that has been called off before.
  virtual void CallOff() = 0;
  /// Breaks `text` at its line ends, and wherever a line would be wider than `width`: between words
  /// where that can be, inside a word where not. The layout does not outlive the job, but `text`
  /// and `font` need not outlive the call.
  [[nodiscard]] virtual std::unique_ptr<PrintLayout> LayOut(std::string_view text,
                                                            const PrintFont& font,
                                                            int32_t width) = 0;
};

}  // namespace quorvel::native
