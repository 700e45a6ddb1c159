#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "native/long_work.h"
#include "native/printing.h"

namespace quorvel::native {

/// What a save dialog starts from.
struct SaveQuestion {
  std::string default_name;      ///< the file name that the dialog offers
  std::string type_name;         ///< the kind of file, for the user to read
  std::string extension;         ///< of that kind, with its point; empty for files of every kind
  std::filesystem::path folder;  ///< where to begin; need not exist
};

/// The dialogs of the desktop. Each call returns when the user has answered. Until then sockets and
/// timers go on delivering events, but the program's windows take no input. `EventLoop::Stop` ends
/// an open dialog, and the call returns as if the user had cancelled.
class Dialogs {
 public:
  virtual ~Dialogs() = default;
  /// Shows a plain text, with one button to dismiss it.
  virtual void Message(std::string_view text) = 0;
  /// Asks for the page setup of one print, beginning at the defaults of the desktop's printer: what
  /// was chosen for an earlier print is not kept. Null when the user cancels.
  [[nodiscard]] virtual std::unique_ptr<PageSetup> AskPageSetup() = 0;
  /// Asks for a printer, or a file, and the pages to print; offers the printer that was chosen
  /// last. `setup` comes from `AskPageSetup` and takes up what the user changes of it in this
  /// dialog; null stands for the defaults. The job does not need `setup` to outlive the call. Null
  /// when the user cancels, the printer cannot be opened, or another job still uses `setup`.
  [[nodiscard]] virtual std::unique_ptr<PrintJob> AskPrint(PageSetup* setup) = 0;
  /// Asks where to save a file. Returns the path as the user gave it, whether a file exists there
  /// or not; the dialog itself has asked before it returns the path of an existing file. Later
  /// dialogs begin in the folder chosen last instead of the folder of the question. Nothing when
  /// the user cancels.
  [[nodiscard]] virtual std::optional<std::filesystem::path> AskSaveFile(
      const SaveQuestion& question) = 0;
  /// Does the work in a thread of its own, and returns when the work has ended. Until then events
  /// are delivered, but what the user does waits for the first half second; after that, a box tells
  /// how far the work is, and lets the user cancel it. Work that ends at once delivers no events.
  ///
  /// False when cancelled work does not end within a few seconds: the thread then goes on alone.
  /// The calls of files and folders outlive such a thread.
  [[nodiscard]] virtual bool Await(const LongWork& work) = 0;
};

}  // namespace quorvel::native
