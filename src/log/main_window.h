#pragma once

#include <cstdint>

#include "platform/values/object.h"
#include "platform/windows/timer.h"
#include "ui/text_window.h"

namespace quorvel {

namespace main_window {

/// The main window, with the log. Opening the window starts the listening; closing the window ends
/// the program.
class wMain : public TextWindow {
 public:
  static constexpr const char* kClassName = "wMain.wMain";

  /// Sends test messages when `bTest` is True.
  class tmrUDPCheck : public Timer {};

  [[nodiscard]] Ref<editFieldExtras> efLog() const {
    return ControlOf<editFieldExtras>(*this, "efLog");
  }

  [[nodiscard]] Text _ClassName() const override { return kClassName; }
  void Event_Open() override;
  void Event_Close() override;
  void Event_EnableMenuItems() override;
  void Event_Resized() override;
  void Event_Resizing() override;

  virtual void tmrUDPCheck_Action();
  virtual bool _FontLarger_Action();
  virtual bool _FontSmaller_Action();

 protected:
  void Layout() override;
  void CreateControls() override;
  void AddMenuHandlers() override;
  [[nodiscard]] Ref<editFieldExtras> _TextField() const override { return efLog(); }
  /// A name with the date and time.
  [[nodiscard]] Text _SuggestedName() const override;
  [[nodiscard]] PageNumbers _PageNumbers() const override { return PageNumbers::On; }

 private:
  virtual void _CreateControls0();
  void FitLog();

  /// The number in the next test message.
  int32_t iLoopCounter = 0;
};

}  // namespace main_window

/// The main window; opens the window when none is open.
[[nodiscard]] inline Ref<main_window::wMain> wMain() {
  return ImplicitWindow<main_window::wMain>();
}

}  // namespace quorvel
