#pragma once

#include <QPainter>
#include <QPrinter>
#include <memory>

#include "native/printing.h"
#include "native/qt/progress.h"

namespace quorvel::qt {

/// Draws in the printer's own dots: a scaled painter would round the widths of letters twice.
class PrintJob final : public native::PrintJob {
 public:
  explicit PrintJob(std::shared_ptr<QPrinter> the_printer);

  /// False when the printer could not be opened; the job must then not be used.
  [[nodiscard]] bool Begun() const { return begun; }
  [[nodiscard]] std::pair<int32_t, int32_t> PageRange() const override;
  [[nodiscard]] int32_t Width() const override;
  [[nodiscard]] int32_t Height() const override;
  void DrawString(std::string_view text, int32_t x, int32_t y,
                  const native::PrintFont& font) override;
  void NextPage() override;
  [[nodiscard]] bool Cancelled() const override { return called_off; }
  void CallOff() override;
  [[nodiscard]] std::unique_ptr<native::PrintLayout> LayOut(std::string_view text,
                                                            const native::PrintFont& font,
                                                            int32_t width) override;

 private:
  [[nodiscard]] qreal DotsPerUnit() const;

  const std::shared_ptr<QPrinter> printer;
  QPainter painter;  // goes before the printer
  const bool begun;
  bool called_off = false;
  int page;
  Progress progress;
};

}  // namespace quorvel::qt
