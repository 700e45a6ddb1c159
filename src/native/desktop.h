#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

namespace quorvel::native {

class Desktop {
 public:
  virtual ~Desktop() = default;
  /// The user's documents folder.
  [[nodiscard]] virtual std::filesystem::path DocumentsFolder() = 0;
  /// The folder with the program's texts, pictures and sounds.
  [[nodiscard]] virtual std::filesystem::path ResourcesFolder() = 0;
  [[nodiscard]] virtual std::chrono::system_clock::time_point Now() = 0;
  /// What the system answers to a four-character selector; nothing when it knows none.
  [[nodiscard]] virtual std::optional<int32_t> Gestalt(std::string_view selector) = 0;
  virtual void OpenUrl(std::string_view url) = 0;
  /// Starts to play and returns.
  virtual void PlaySound(const std::filesystem::path& file) = 0;
  /// Where unhandled exceptions are reported: one line, without its end.
  virtual void ReportError(std::string_view line) = 0;
};

}  // namespace quorvel::native
