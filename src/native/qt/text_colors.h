#pragma once

#include <QPalette>

#include "native/control.h"
#include "native/qt/strings.h"

namespace quorvel::qt {

/// The colours of a text field. A disabled field keeps the desktop's colours.
inline QPalette TextFieldColors(const native::TextFieldState& state) {
  QPalette colors;
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    colors.setColor(group, QPalette::Base, QColor(FromUtf8(state.BackColor)));
    colors.setColor(group, QPalette::Text, QColor(FromUtf8(state.TextColor)));
  }
  return colors;
}

}  // namespace quorvel::qt
