#include "native/qt/text_box.h"

#include "native/qt/strings.h"

namespace quorvel::qt {

QPalette TextBoxColors(const native::ControlState& state) {
  QPalette colors;
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    colors.setColor(group, QPalette::Base, QColor(FromUtf8(state.BackColor)));
    colors.setColor(group, QPalette::Text, QColor(FromUtf8(state.TextColor)));
  }
  return colors;
}

}  // namespace quorvel::qt
