#pragma once

#include "platform/values/object.h"
#include "platform/windows/application.h"

namespace quorvel {

namespace app {

/// The application object: leads from the start of the process to the first window, and out.
class App : public Application {
 public:
  void Event_Open() override;
  /// Leaves the group.
  void Event_Close() override;
  void Event_EnableMenuItems() override;

  virtual bool _HelpAbout_Action();
  virtual bool _HelpHelp_Action();
  virtual bool _HelpKeyInformation_Action();

  /// Kept beside its twin for the day when the program runs on Windows; nothing calls it.
  virtual bool mWindowsSystemRequirementMet();
  virtual void mSetGlobals();
  /// False, after a message, on a macOS older than 10.4.
  virtual bool mMacSystemRequirementMet();
  virtual void mSetFont();
  /// Reads the key file (`docs/key-file.md`), says what is wrong with it, and shows the first
  /// window.
  virtual void mReadPrefFile();
};

}  // namespace app

/// The registered application object.
[[nodiscard]] Ref<app::App> App();

}  // namespace quorvel
