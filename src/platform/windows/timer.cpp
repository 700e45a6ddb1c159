#include "platform/windows/timer.h"

#include <array>
#include <chrono>

#include "native/native.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

void Timer::Mode(int32_t mode) {
  mSettings.Mode = mode;
  Restart();
}

void Timer::Period(int32_t milliseconds) {
  mSettings.Period = milliseconds;
  Restart();
}

void Timer::_AssignProperties(PropertySet properties) {
  static constexpr std::array<PropertyBinding<Settings>, 5> kBindings = {{
      {"Name", &Settings::Name},
      {"Mode", &Settings::Mode},
      {"Period", &Settings::Period},
      {"Left", &Settings::Left},
      {"Top", &Settings::Top},
  }};
  for (const auto& property : properties) AssignProperty<Settings>(mSettings, kBindings, property);
  Restart();
}

void Timer::Restart() {
  mRunning.reset();
  if (mSettings.Mode != kModeMultiple) return;
  const auto fire = [weak = weak_from_this()] {
    if (const auto timer = std::static_pointer_cast<Timer>(weak.lock())) {
      Dispatch([&] { timer->_Fire("Action"); });
    }
  };
  mRunning = Native().Loop().Repeat(std::chrono::milliseconds(mSettings.Period), fire);
}

}  // namespace quorvel
