#include "platform/windows/properties.h"

#include <algorithm>
#include <array>

#include "platform/values/exceptions.h"

namespace quorvel {

void RaiseUnknownProperty(std::string_view name) {
  throw RuntimeException(Text("There is no such property: ") + Text::FromBytes(name));
}

bool IsWithoutEffect(std::string_view name) {
  static constexpr std::array<std::string_view, 13> kNames = {
      "Index",         "LockLeft",  "LockTop",        "LockRight", "LockBottom",
      "TabPanelIndex", "HelpTag",   "AutoDeactivate", "Format",    "Mask",
      "DataSource",    "DataField", "InitialParent"};
  return std::ranges::find(kNames, name) != kNames.end();
}

}  // namespace quorvel
