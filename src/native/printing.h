#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "native/control.h"

namespace quorvel::native {

/// A text laid out to a width on the pages of a print job; goes before its job.
class PrintLayout {
 public:
  virtual ~PrintLayout() = default;
  /// Draws as many of the remaining lines as fit whole into `height`, from that point down.
  virtual void DrawBlock(int32_t x, int32_t y, int32_t height) = 0;
  /// Whether all has been drawn.
  [[nodiscard]] virtual bool AtEnd() const = 0;
};

/// A print job, on its first page. Lengths are in 1/72 inch, places count from the corner of the
/// printable area, colours are black on white. The job goes to the printer when this object goes.
class PrintJob {
 public:
  virtual ~PrintJob() = default;
  /// The pages that the user asked for; 1 to 9999 for all.
  [[nodiscard]] virtual std::pair<int32_t, int32_t> PageRange() const = 0;
  [[nodiscard]] virtual int32_t Width() const = 0;
  [[nodiscard]] virtual int32_t Height() const = 0;
  virtual void DrawString(std::string_view text, int32_t x, int32_t y, std::string_view font,
                          int32_t size) = 0;
  /// Ends the page and begins the next. Shows how far the job is, and delivers events.
  virtual void NextPage() = 0;
  /// Whether the user has called the job off: nothing more of it will be printed.
  [[nodiscard]] virtual bool Cancelled() const = 0;
  /// The text in the font of `look`.
  [[nodiscard]] virtual std::unique_ptr<PrintLayout> LayOut(std::string_view text,
                                                            const TextState& look,
                                                            int32_t width) = 0;
};

}  // namespace quorvel::native
