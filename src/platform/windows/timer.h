#pragma once

#include <cstdint>
#include <memory>

#include "native/event_loop.h"
#include "platform/windows/component.h"

namespace quorvel {

/// Lets an object that is no control belong to a window.
class _PaneChild {
 public:
  virtual ~_PaneChild() = default;
  /// The window closes. Other references may keep the object for longer.
  virtual void _WindowCloses() = 0;
};

/// Fires "Action" every `Period` milliseconds while `Mode` is 2, until the timer's window closes or
/// its last reference goes.
class Timer : public Component, public _PaneChild {
 public:
  static constexpr int32_t kModeMultiple = 2;

  [[nodiscard]] int32_t Mode() const { return mSettings.Mode; }
  void Mode(int32_t mode);
  [[nodiscard]] int32_t Period() const { return mSettings.Period; }
  void Period(int32_t milliseconds);

  void _WindowCloses() override { mRunning.reset(); }

 protected:
  [[nodiscard]] bool AssignProperty(const Property& property) override;
  void PropertiesAssigned() override { Restart(); }
  [[nodiscard]] bool HasEvent(std::string_view event) const override { return event == "Action"; }

 private:
  struct Settings {
    int32_t Mode = 0;
    int32_t Period = 1000;
  };
  void Restart();

  Settings mSettings;
  std::unique_ptr<native::Subscription> mRunning;
};

}  // namespace quorvel
