#pragma once

#include <QPainter>
#include <QPrinter>
#include <QScopedValueRollback>
#include <exception>

#include "native/native.h"
#include "native/qt/print_progress.h"

namespace quorvel::qt {

/// Draws in the printer's own dots: a scaled painter would round the widths of letters twice.
class PrintJob final : public native::PrintJob {
 public:
  /// `in_use` is true for as long as this object is there; both outlive it.
  PrintJob(QPrinter& the_printer, bool& in_use);
  /// A job that is left by an exception is called off.
  ~PrintJob() override;
  PrintJob(const PrintJob&) = delete;
  PrintJob& operator=(const PrintJob&) = delete;

  /// False when the printer could not be opened.
  [[nodiscard]] bool Begun() const { return begun; }
  [[nodiscard]] std::pair<int32_t, int32_t> PageRange() const override;
  [[nodiscard]] int32_t Width() const override;
  [[nodiscard]] int32_t Height() const override;
  void DrawString(std::string_view text, int32_t x, int32_t y, std::string_view font,
                  int32_t size) override;
  void NextPage() override;
  [[nodiscard]] bool Cancelled() const override { return called_off; }
  [[nodiscard]] std::unique_ptr<native::PrintLayout> LayOut(std::string_view text,
                                                            const native::TextState& look,
                                                            int32_t width) override;

  [[nodiscard]] QPainter& Painter() { return painter; }
  /// How many of the printer's dots a length has.
  [[nodiscard]] qreal Dots(int32_t units) const;

 private:
  void CallOff();

  const QScopedValueRollback<bool> use;
  const int exceptions = std::uncaught_exceptions();
  QPrinter& printer;
  QPainter painter;
  const bool begun;
  bool called_off = false;
  int page;
  PrintProgress progress;
};

}  // namespace quorvel::qt
