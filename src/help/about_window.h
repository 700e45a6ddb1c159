#pragma once

#include "platform/values/object.h"
#include "ui/app_window.h"

namespace quorvel {

namespace about_window {

/// Shows the program's pictures, version and copyright notice.
class wAbout : public AppWindow {
 public:
  static constexpr const char* kClassName = "wAbout.wAbout";

  [[nodiscard]] Text _ClassName() const override { return kClassName; }
  void Event_Open() override;
  void Event_Close() override;
  /// Applies the shared font and text size.
  virtual void mAppearanceUpdate();

 protected:
  void Layout() override;
  void CreateControls() override;
};

}  // namespace about_window

/// The window; opens the window when none is open.
[[nodiscard]] Ref<about_window::wAbout> wAbout();

}  // namespace quorvel
