#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "native/native.h"

namespace quorvel::test {

/// A sheet of paper.
struct Sheet {
  std::vector<std::string> lines;    ///< of the text block
  std::string block;                 ///< the size and the corner of the text block
  std::vector<std::string> strings;  ///< drawn beside the text block, with their positions
};

/// What came of a print job.
struct Print {
  std::vector<Sheet> sheets;
  bool finished = false;  ///< the job has gone to the printer
};

/// What the user answers to a print dialog.
struct PrintAnswer {
  int32_t first_page = 1;
  int32_t last_page = 9999;
  int32_t width = 612;
  int32_t height = 792;
  int32_t cancel_after = 9999;  ///< sheets
  /// What happens while a page ends.
  std::function<void()> between_pages = {};
};

/// A job on a printer with one font, of which each character is 6 wide and each line 12 high.
[[nodiscard]] std::unique_ptr<native::PrintJob> StartPrint(const PrintAnswer& answer, Print& print);

}  // namespace quorvel::test
