#pragma once

#include <cstdint>

#include "platform/values/object.h"
#include "ui/text_window.h"

namespace quorvel {

namespace help_window {

/// The user's guide: captions on the left, each a link to the text that the field then shows, and
/// a link to the product's web page.
class wHelp : public TextWindow {
 public:
  static constexpr const char* kClassName = "wHelp.wHelp";

  [[nodiscard]] Text _ClassName() const override { return kClassName; }
  void Event_Open() override;
  void Event_Close() override;
  virtual void mAppearanceUpdate();

 protected:
  void Layout() override;
  void CreateControls() override;
  [[nodiscard]] Ref<editFieldExtras> _TextField() const override { return EditField1(); }
  [[nodiscard]] Text _SuggestedName() const override { return "Help with Quorvel"; }

 private:
  [[nodiscard]] Ref<editFieldExtras> EditField1() const;
  /// Makes a link set up from `table`; `chosen` runs for each click on the link.
  void CreateLink(const Text& name, PropertySet table, const std::function<void()>& chosen);
  void ShowTopic(const Text& text);
};

}  // namespace help_window

/// The window; opened if there is none.
[[nodiscard]] Ref<help_window::wHelp> wHelp();

}  // namespace quorvel
