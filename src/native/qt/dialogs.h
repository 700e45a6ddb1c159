#pragma once

#include <QString>

#include "native/native.h"

class QPrinter;

namespace quorvel::qt {

/// Dialogs that hold up the program's windows, but neither its sockets nor its timers.
class Dialogs final : public native::Dialogs {
 public:
  void Message(std::string_view text) override;
  [[nodiscard]] std::unique_ptr<native::PageSetup> AskPageSetup() override;
  [[nodiscard]] std::unique_ptr<native::PrintJob> AskPrint(native::PageSetup* given) override;
  [[nodiscard]] std::optional<std::filesystem::path> AskSaveFile(
      const native::SaveQuestion& question) override;
  [[nodiscard]] bool Await(const native::LongWork& work) override;

 private:
  /// The printer that the user chose last, or else the desktop's, with default page setup.
  [[nodiscard]] std::shared_ptr<QPrinter> NewPrinter() const;

  // What the user chose last; empty until then.
  QString last_folder;
  QString last_printer;
  QString last_print_file;
};

}  // namespace quorvel::qt
