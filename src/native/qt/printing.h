#pragma once

#include <QPrinter>
#include <memory>

#include "native/native.h"

namespace quorvel::qt {

/// The program's printer: its page setup, and what was chosen for the last job, stay for the next.
class Printing final {
 public:
  [[nodiscard]] bool AskPageSetup();
  [[nodiscard]] std::unique_ptr<native::PrintJob> AskPrint();

 private:
  QPrinter& Printer();

  std::unique_ptr<QPrinter> printer;  // made when first asked for: that looks for all printers
  bool in_use = false;                // by a job, of which there is one at a time
};

}  // namespace quorvel::qt
