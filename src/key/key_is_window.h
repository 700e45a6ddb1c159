#pragma once

#include "platform/values/object.h"
#include "ui/text_window.h"

namespace quorvel {

namespace key_is_window {

/// Shows the key that the program used at the opening of the window.
class wKeyIs : public TextWindow {
 public:
  static constexpr const char* kClassName = "wKeyIs.wKeyIs";

  [[nodiscard]] Text _ClassName() const override { return kClassName; }
  void Event_Open() override;
  /// Applies the shared font and text size.
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

/// The window; opens the window when none is open.
[[nodiscard]] Ref<key_is_window::wKeyIs> wKeyIs();

}  // namespace quorvel
