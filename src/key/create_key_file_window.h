#pragma once

#include "platform/values/object.h"
#include "ui/text_window.h"

namespace quorvel {

namespace create_key_file_window {

/// The window of a first start: shows the instructions, takes the key, writes the key file
/// (`docs/key-file.md`) and hands over to the main window. Closing the window without a key ends
/// the program.
class wCreateKeyFile : public TextWindow {
 public:
  static constexpr const char* kClassName = "wCreateKeyFile.wCreateKeyFile";

  [[nodiscard]] Ref<editFieldExtras> efHelp() const;
  [[nodiscard]] Ref<EditField> efKey() const;

  [[nodiscard]] Text _ClassName() const override { return kClassName; }
  void Event_Open() override;
  void Event_Close() override;

  virtual void pbGenerate_Action();

 protected:
  void Layout() override;
  void CreateControls() override;
  [[nodiscard]] Ref<editFieldExtras> _TextField() const override { return efHelp(); }
  [[nodiscard]] Text _SuggestedName() const override { return "Setting up Quorvel"; }
};

}  // namespace create_key_file_window

/// The window; opens the window when none is open.
[[nodiscard]] Ref<create_key_file_window::wCreateKeyFile> wCreateKeyFile();

}  // namespace quorvel
