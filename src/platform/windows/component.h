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

/// A handler of an object's event. `x` and `y` are the point of the event in pixels from the top
/// left of the object; events without a point pass 0, 0. Only the result of "MouseDown" has an
/// effect: True claims the click, so that the object gets the "MouseUp".
using InstanceEventHandler = std::function<bool(int32_t x, int32_t y)>;

/// A control or timer, held by a window under a name: set up from a layout table, and a source of
/// events.
///
/// Properties and events are found by name. A name unknown to the class of the component is a
/// mistake in the program and raises `RuntimeException` at once.
class Component : public Object {
 public:
  virtual void Constructor() {}
  /// Assigns the rows in their order.
  void _AssignProperties(PropertySet properties);
  /// Makes `handler` the event's only handler.
  void _Install(std::string_view event, InstanceEventHandler handler);
  /// Runs the event's handler and returns the handler's result; False without a handler.
  bool _Fire(std::string_view event, int32_t x = 0, int32_t y = 0);

 protected:
  /// Assigns the row; False when the class does not have the property.
  [[nodiscard]] virtual bool AssignProperty(const Property& property) = 0;
  /// Called after the last row of a layout table.
  virtual void PropertiesAssigned() = 0;
  [[nodiscard]] virtual bool HasEvent(std::string_view event) const = 0;
  /// Called after a handler has been installed.
  virtual void EventInstalled(std::string_view) {}
  void ForgetHandlers() { mHandlers.clear(); }

 private:
  std::unordered_map<std::string, InstanceEventHandler> mHandlers;
};

/// Assigns every row of a layout table to a control or timer.
inline void _SetProperties(const Ref<Object>& component, PropertySet properties) {
  Cast<Component>(component)->_AssignProperties(properties);
}

/// Makes `handler` the handler of an event of `object`. The events are "MouseEnter", "MouseExit",
/// "MouseDown" and "MouseUp" of every control with a rectangle, and "Action" of buttons and timers.
void _InstallInstanceEventHandler(const Ref<Object>& object, std::string_view event,
                                  InstanceEventHandler handler);

/// Makes an instance event handler from a window's method. The object with the handler (me) fires
/// the event, and the method runs on the window (self) with the point, or without arguments. The
/// handler does nothing once the window has gone.
template <class W, class Result, class... Point>
[[nodiscard]] InstanceEventHandler RuntimeSwapSelfAndMe(W& self, Result (W::*method)(Point...)) {
  return [window = Self(self).Shared()->weak_from_this(), method]([[maybe_unused]] int32_t x,
                                                                  [[maybe_unused]] int32_t y) {
    const auto alive = std::static_pointer_cast<W>(window.lock());
    if (!alive) return false;
    const auto call = [&](auto... point) { return ((*alive).*method)(point...); };
    if constexpr (sizeof...(Point) == 0 && std::is_void_v<Result>) {
      return call(), true;
    } else if constexpr (std::is_void_v<Result>) {
      return call(x, y), true;
    } else {
      return call(x, y);
    }
  };
}

}  // namespace quorvel
