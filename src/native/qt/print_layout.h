#pragma once

#include <QTextLayout>
#include <string>

#include "native/qt/print_job.h"

namespace quorvel::qt {

/// Breaks a text into lines as they are drawn, a piece of it at a time, so that neither its length
/// nor that of a paragraph counts.
class PrintLayout final : public native::PrintLayout {
 public:
  /// `width` is in dots.
  PrintLayout(PrintJob& the_job, std::string_view the_text, const QFont& font, qreal the_width);
  void DrawBlock(int32_t x, int32_t y, int32_t height) override;
  [[nodiscard]] bool AtEnd() const override;

 private:
  [[nodiscard]] bool LineReady();
  void LayNext();
  void Lay(std::string_view part);
  [[nodiscard]] size_t BytesAbove(int line) const;

  PrintJob& job;
  const std::string text;
  const qreal width;
  size_t at = 0;              // where the lines that are laid out end
  bool in_paragraph = false;  // that is inside of a paragraph
  QString piece;              // what the lines show
  QTextLayout lines;
  int next = 0;   // of the lines, the one to be drawn next
  int ready = 0;  // how many of them can be drawn
};

}  // namespace quorvel::qt
