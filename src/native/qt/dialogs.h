#pragma once

#include <QString>

#include "native/native.h"
#include "native/qt/printing.h"

namespace quorvel::qt {

/// Dialogs that hold up the program's windows, but neither its sockets nor its timers.
class Dialogs final : public native::Dialogs {
 public:
  void Message(std::string_view text) override;
  [[nodiscard]] bool AskPageSetup() override { return printing.AskPageSetup(); }
  [[nodiscard]] std::unique_ptr<native::PrintJob> AskPrint() override {
    return printing.AskPrint();
  }
  [[nodiscard]] std::optional<std::filesystem::path> AskSaveFile(
      const native::SaveQuestion& question) override;

 private:
  Printing printing;
  QString last_folder;  // empty until the user has chosen one
};

}  // namespace quorvel::qt
