#include "platform/windows/component.h"

#include <utility>

#include "platform/values/exceptions.h"

namespace quorvel {

void Component::_AssignProperties(PropertySet properties) {
  for (const Property& property : properties) {
    if (!AssignProperty(property) && !IsWithoutEffect(property.name)) {
      RaiseUnknownProperty(property.name);
    }
  }
  PropertiesAssigned();
}

void Component::_Install(std::string_view event, InstanceEventHandler handler) {
  if (!HasEvent(event)) {
    throw RuntimeException(Text("There is no such event: ") + Text::FromBytes(event));
  }
  mHandlers.insert_or_assign(std::string(event), std::move(handler));
  EventInstalled(event);
}

bool Component::_Fire(std::string_view event, int32_t x, int32_t y) {
  const auto found = mHandlers.find(std::string(event));
  if (found == mHandlers.end()) return false;
  // The handler may close the window, and the window's end destroys the stored handler.
  const InstanceEventHandler handler = found->second;
  return handler(x, y);
}

void _InstallInstanceEventHandler(const Ref<Object>& object, std::string_view event,
                                  InstanceEventHandler handler) {
  Cast<Component>(object)->_Install(event, std::move(handler));
}

}  // namespace quorvel
