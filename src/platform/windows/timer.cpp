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

bool Timer::AssignProperty(const Property& property) {
  static constexpr std::array<PropertyBinding<Settings>, 5> kBindings = {{
      {"Name", {}},
      {"Mode", &Settings::Mode},
      {"Period", &Settings::Period},
      {"Left", {}},
      {"Top", {}},
  }};
  return AssignBound(mSettings, kBindings, property);
}

void Timer::Restart() {
  mRunning.reset();
  if (mSettings.Mode != kModeMultiple) return;
  const auto fire = [](Timer& timer) { timer._Fire("Action"); };
  mRunning = Native().Loop().Repeat(std::chrono::milliseconds(mSettings.Period),
                                    WhileAlive(*this, fire, Origin::Background));
}

}  // namespace quorvel
