#pragma once

#include <cstdint>

#include "platform/values/object.h"
#include "ui/text_window.h"

namespace quorvel {

namespace help_window {

/// The user's guide: captions on the left as links to topics, a field with the text of the chosen
/// topic, and a link to the product's web page.
class wHelp : public TextWindow {
 public:
  static constexpr const char* kClassName = "wHelp.wHelp";

  [[nodiscard]] Text _ClassName() const override { return kClassName; }
  void Event_Open() override;
  void Event_Close() override;
  /// Applies the shared font and text size.
  virtual void mAppearanceUpdate();

 protected:
  void Layout() override;
  void CreateControls() override;
  [[nodiscard]] Ref<editFieldExtras> _TextField() const override { return EditField1(); }
  [[nodiscard]] Text _SuggestedName() const override { return "Help with Quorvel"; }

 private:
  [[nodiscard]] Ref<editFieldExtras> EditField1() const;
  /// Makes a link with the shared rows and the rows of `table`. `chosen` runs for each click on the
  /// link.
  void CreateLink(const Text& name, PropertySet table, const std::function<void()>& chosen);
  void ShowTopic(const Text& text);
};

}  // namespace help_window

/// The window; opens the window when none is open.
[[nodiscard]] Ref<help_window::wHelp> wHelp();

}  // namespace quorvel
