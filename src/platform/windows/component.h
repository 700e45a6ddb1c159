#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>

#include "platform/values/object.h"
#include "platform/windows/properties.h"

namespace quorvel {

/// A handler of one object's event. Events without a point pass 0, 0. Only "MouseDown" looks at the
/// result: True claims the click.
using InstanceEventHandler = std::function<bool(int32_t x, int32_t y)>;

/// A thing that a window holds under a name: set up from a layout table, and a source of events.
///
/// Names of properties and events are texts. A name that the kind does not have is a mistake in the
/// program and raises `RuntimeException` at once.
class Component : public Object {
 public:
  virtual void Constructor() {}
  void _AssignProperties(PropertySet properties);
  void _Install(std::string_view event, InstanceEventHandler handler);
  /// Runs the event's handler. The result is the handler's, or False when there is no handler.
  bool _Fire(std::string_view event, int32_t x = 0, int32_t y = 0);

 protected:
  /// Assigns the row; False when the kind does not have the property.
  [[nodiscard]] virtual bool AssignProperty(const Property& property) = 0;
  /// Follows the last row of a layout table.
  virtual void PropertiesAssigned() = 0;
  [[nodiscard]] virtual bool HasEvent(std::string_view event) const = 0;
  virtual void EventInstalled(std::string_view) {}
  void ForgetHandlers() { mHandlers.clear(); }

 private:
  std::unordered_map<std::string, InstanceEventHandler> mHandlers;
};

/// Assigns every row of a layout table to a control or timer.
inline void _SetProperties(const Ref<Object>& component, PropertySet properties) {
  Cast<Component>(component)->_AssignProperties(properties);
}

/// Routes that event of that one object to `handler`. The events are "MouseEnter", "MouseExit",
/// "MouseDown" and "MouseUp" of every control with a rectangle, and "Action" of buttons and timers.
void _InstallInstanceEventHandler(const Ref<Object>& object, std::string_view event,
                                  InstanceEventHandler handler);

/// Makes an instance event handler of a window's method: the method runs on the window (self),
/// while the object that fired (me) is the one that it is installed on. Does nothing once the
/// window has gone.
template <class W, class Result, class... Places>
[[nodiscard]] InstanceEventHandler RuntimeSwapSelfAndMe(W& self, Result (W::*method)(Places...)) {
  return [window = Self(self).Shared()->weak_from_this(), method]([[maybe_unused]] int32_t x,
                                                                  [[maybe_unused]] int32_t y) {
    const auto alive = std::static_pointer_cast<W>(window.lock());
    if (!alive) return false;
    const auto call = [&](auto... places) { return ((*alive).*method)(places...); };
    if constexpr (sizeof...(Places) == 0 && std::is_void_v<Result>) {
      return call(), true;
    } else if constexpr (std::is_void_v<Result>) {
      return call(x, y), true;
    } else {
      return call(x, y);
    }
  };
}

}  // namespace quorvel
