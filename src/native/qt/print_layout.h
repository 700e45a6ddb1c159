#pragma once

#include <QPainter>
#include <QTextLayout>
#include <string>

#include "native/printing.h"

namespace quorvel::qt {

/// Breaks a text into lines as they are drawn, a piece of the text at a time: a page costs the same
/// whatever the length of the text or of a paragraph.
class PrintLayout final : public native::PrintLayout {
 public:
  /// `the_painter` outlives this object. `scale` is the number of its dots in a unit.
  PrintLayout(QPainter& the_painter, qreal scale, std::string_view the_text, const QFont& font,
              int32_t the_width);
  void DrawBlock(int32_t x, int32_t y, int32_t height) override;
  [[nodiscard]] bool AtEnd() const override { return next == ready && at == text.size(); }

 private:
  [[nodiscard]] bool LineReady();
  void LayNext();
  void Lay(std::string_view part);
  [[nodiscard]] size_t BytesAbove(int line) const;

  QPainter& painter;
  const qreal dots_per_unit;
  const std::string text;
  const qreal width;          // in dots
  size_t at = 0;              // where in the text the lines that are laid out end
  bool in_paragraph = false;  // whether `at` is inside a paragraph
  QString piece;              // the text that was laid out last
  QTextLayout lines;          // of `piece`
  int next = 0;               // the line to be drawn next
  int ready = 0;              // how many lines can be drawn: the last may still go on
};

}  // namespace quorvel::qt
