#pragma once

#include <cstdint>

#include "log/edit_field_extras.h"
#include "platform/object.h"
#include "ui/app_window.h"

namespace quorvel {

namespace help_window {

/// The user's guide: captions on the left, each a link to the text that the field then shows, and
/// a link to the product's web page.
class wHelp : public AppWindow {
 public:
  static constexpr const char* kClassName = "wHelp.wHelp";

  [[nodiscard]] Text _ClassName() const override { return kClassName; }
  void Event_Open() override;
  void Event_Close() override;
  void Event_EnableMenuItems() override;
  virtual void mAppearanceUpdate();
  virtual bool _FilePrint_Action();
  virtual bool _FileSave_Action();

 protected:
  void Layout() override;
  void CreateControls() override;
  void AddMenuHandlers() override;

 private:
  [[nodiscard]] Ref<editFieldExtras> EditField1() const;
  void CreateLink(const Text& name, PropertySet table, PropertySet shared,
                  const std::function<void()>& chosen);
  void ShowTopic(const Text& text);
};

}  // namespace help_window

/// The window; opened if there is none.
[[nodiscard]] Ref<help_window::wHelp> wHelp();

}  // namespace quorvel
