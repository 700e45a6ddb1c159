#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "native/printing.h"

namespace quorvel::native {

struct SaveQuestion {
  std::string default_name;
  std::string type_name;
  std::string extension;  ///< with its point; empty for none
  std::filesystem::path folder;
};

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  virtual void Message(std::string_view text) = 0;
  /// The page setup of the job to come; false when the user cancels.
  [[nodiscard]] virtual bool AskPageSetup() = 0;
  /// A job on the printer, or the PDF, that the user chose; null when the user cancels or the
  /// printer cannot be opened.
  [[nodiscard]] virtual std::unique_ptr<PrintJob> AskPrint() = 0;
  /// The chosen file, or nothing when the user cancels. Asks itself before a file is replaced.
  [[nodiscard]] virtual std::optional<std::filesystem::path> AskSaveFile(
      const SaveQuestion& question) = 0;
};

}  // namespace quorvel::native
