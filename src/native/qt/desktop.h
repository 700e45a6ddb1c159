#pragma once

#include <QObject>

#include "native/native.h"

namespace quorvel::qt {

class Desktop final : public native::Desktop {
 public:
  [[nodiscard]] std::filesystem::path DocumentsFolder() override;
  [[nodiscard]] std::filesystem::path ResourcesFolder() override;
  [[nodiscard]] std::chrono::system_clock::time_point Now() override;
  [[nodiscard]] std::optional<int32_t> Gestalt(std::string_view selector) override;
  void OpenUrl(std::string_view url) override;
  void PlaySound(const std::filesystem::path& file) override;
  void ReportError(std::string_view line) override;

 private:
  QObject sounds;  // the parent of the sounds that still play
};

}  // namespace quorvel::qt
