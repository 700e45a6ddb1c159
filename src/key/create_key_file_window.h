#pragma once

#include "platform/object.h"
#include "ui/app_window.h"

namespace quorvel {

namespace create_key_file_window {

/// The window of a first start. Closing it without a key ends the program.
class wCreateKeyFile : public AppWindow {
 public:
  static constexpr const char* kClassName = "wCreateKeyFile.wCreateKeyFile";

  [[nodiscard]] Text _ClassName() const override { return kClassName; }
  void Event_Close() override;

 protected:
  void Layout() override;
};

}  // namespace create_key_file_window

/// The window; opened if there is none.
[[nodiscard]] Ref<create_key_file_window::wCreateKeyFile> wCreateKeyFile();

}  // namespace quorvel
