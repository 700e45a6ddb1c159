#pragma once

#include "log/edit_field_extras.h"
#include "platform/object.h"
#include "ui/app_window.h"

namespace quorvel {

namespace key_is_window {

/// Tells which key the program uses, as it was when the window opened.
class wKeyIs : public AppWindow {
 public:
  static constexpr const char* kClassName = "wKeyIs.wKeyIs";

  [[nodiscard]] Text _ClassName() const override { return kClassName; }
  void Event_Open() override;
  void Event_EnableMenuItems() override;
  virtual void mAppearanceUpdate();
  virtual bool _FilePrint_Action();
  virtual bool _FileSave_Action();

 protected:
  void Layout() override;
  void CreateControls() override;
  void AddMenuHandlers() override;

 private:
  [[nodiscard]] Ref<editFieldExtras> editFieldExtras1() const;
};

}  // namespace key_is_window

/// The window; opened if there is none.
[[nodiscard]] Ref<key_is_window::wKeyIs> wKeyIs();

}  // namespace quorvel
