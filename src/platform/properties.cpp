#include "platform/properties.h"

#include <algorithm>
#include <array>

#include "platform/controls.h"
#include "platform/exceptions.h"
#include "platform/window.h"

namespace quorvel {

void _SetProperties(Window& window, PropertySet properties) {
  window._AssignProperties(properties);
}

void _SetProperties(const Ref<Object>& component, PropertySet properties) {
  Cast<Component>(component)->_AssignProperties(properties);
}

void RaiseUnknownProperty(std::string_view name) {
  throw RuntimeException(Text("There is no such property: ") + Text::FromBytes(name));
}

bool IsWithoutEffect(std::string_view name) {
  static constexpr std::array<std::string_view, 14> kNames = {
      "Index",         "LockLeft",  "LockTop",        "LockRight",  "LockBottom",
      "TabPanelIndex", "HelpTag",   "AutoDeactivate", "Format",     "Mask",
      "DataSource",    "DataField", "InitialParent",  "BalloonHelp"};
  return std::ranges::find(kNames, name) != kNames.end();
}

}  // namespace quorvel
