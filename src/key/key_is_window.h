#pragma once

#include "platform/values/object.h"
#include "ui/text_window.h"

namespace quorvel {

namespace key_is_window {

/// Tells which key the program uses, as it was when the window opened.
class wKeyIs : public TextWindow {
 public:
  static constexpr const char* kClassName = "wKeyIs.wKeyIs";

  [[nodiscard]] Text _ClassName() const override { return kClassName; }
  void Event_Open() override;
  virtual void mAppearanceUpdate();

 protected:
  void Layout() override;
  void CreateControls() override;
  [[nodiscard]] Ref<editFieldExtras> _TextField() const override { return editFieldExtras1(); }
  [[nodiscard]] Text _SuggestedName() const override { return "KeyInfo.txt"; }

 private:
  [[nodiscard]] Ref<editFieldExtras> editFieldExtras1() const;
};

}  // namespace key_is_window

/// The window; opened if there is none.
[[nodiscard]] Ref<key_is_window::wKeyIs> wKeyIs();

}  // namespace quorvel
