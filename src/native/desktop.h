#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

namespace quorvel::native {

/// Facts of the machine and the user, and small services of the desktop. No function waits for the
/// user or calls the program back. A failure has no effect.
class Desktop {
 public:
  virtual ~Desktop() = default;

  /// The user's documents folder, absolute; the folder need not exist. Asked for anew at each use.
  [[nodiscard]] virtual std::filesystem::path DocumentsFolder() = 0;

  /// The folder with the program's texts, pictures and sounds (`TEXT`, `PICT`, `snd`); read only.
  [[nodiscard]] virtual std::filesystem::path ResourcesFolder() = 0;

  /// The time of day, for names of files and for reports. The user may set the clock back.
  [[nodiscard]] virtual std::chrono::system_clock::time_point Now() = 0;

  /// The system's answer to a selector of four characters; nothing when the system knows none.
  /// "sysv" is the version of macOS in binary-coded decimal: 0x1049 is 10.4.9. No other system
  /// answers "sysv".
  [[nodiscard]] virtual std::optional<int32_t> Gestalt(std::string_view selector) = 0;

  /// Hands the address (a whole URL, in UTF-8) to the user's browser and returns.
  virtual void OpenUrl(std::string_view url) = 0;

  /// Starts to play a WAV file and returns. Sounds that still play end with this object.
  virtual void PlaySound(const std::filesystem::path& file) = 0;

  /// Writes `line` (UTF-8, without its end) to standard error, or drops the line when standard
  /// error takes no more or has no reader. Never waits, never ends the program. The runtime calls
  /// `ReportError` for unhandled exceptions, and decides how many of them to report.
  virtual void ReportError(std::string_view line) = 0;
};

}  // namespace quorvel::native
