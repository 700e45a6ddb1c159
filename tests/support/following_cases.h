#pragma once

#include <string>
#include <vector>

namespace quorvel {

/// What happens to a view of a text that has grown beyond the view's height.
enum class Scroll {
  WheelUp,
  WheelToEnd,
  BarUp,
  BarToEnd,
  ControlHome,
  PageDownToEnd,
  ControlEnd,
  OtherFont,
  Narrower,
  Lower,
  Higher,
  HiddenAndShown
};

/// Whether a view with `FollowsEnd` keeps the end in sight after these steps, whatever widget shows
/// the text.
struct FollowingCase {
  std::string name;
  std::vector<Scroll> steps;
  bool follows;
};

inline std::vector<FollowingCase> FollowingCases() {
  using enum Scroll;
  return {{"a fresh view", {}, true},
          {"the wheel leaves the end", {WheelUp}, false},
          {"the wheel comes back", {WheelUp, WheelToEnd}, true},
          {"the bar leaves the end", {BarUp}, false},
          {"the bar comes back", {BarUp, BarToEnd}, true},
          {"the keys leave the end", {ControlEnd, ControlHome}, false},
          {"pages down", {ControlHome, PageDownToEnd}, true},
          {"Control+End", {WheelUp, ControlEnd}, true},
          {"another font", {OtherFont}, true},
          {"a narrower view", {Narrower}, true},
          {"a lower view", {Lower}, true},
          {"hidden and shown", {OtherFont, HiddenAndShown}, true},
          {"a higher view brings the end into sight", {WheelUp, Higher}, false}};
}

}  // namespace quorvel
