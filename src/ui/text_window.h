#pragma once

#include "ui/app_window.h"
#include "ui/edit_field_extras.h"

namespace quorvel {

/// A window around a text. The commands Print and Save print and save the text.
class TextWindow : public AppWindow {
 public:
  void Event_EnableMenuItems() override;
  virtual bool _FilePrint_Action();
  virtual bool _FileSave_Action();

 protected:
  void AddMenuHandlers() override;

  /// The field with the text.
  [[nodiscard]] virtual Ref<editFieldExtras> _TextField() const = 0;
  /// The name that the save dialog offers.
  [[nodiscard]] virtual Text _SuggestedName() const = 0;
  [[nodiscard]] virtual PageNumbers _PageNumbers() const { return PageNumbers::Off; }
};

}  // namespace quorvel
