#pragma once

#include <QAbstractScrollArea>
#include <QPalette>
#include <QScrollBar>

#include "native/control.h"
#include "native/qt/accessible.h"
#include "native/qt/strings.h"

namespace quorvel::qt {

/// Paler than the text, and dark enough to be read on the field's background.
inline QColor HintColor(const native::TextFieldState& state) {
  QColor color(FromUtf8(state.TextColor));
  color.setAlphaF(0.6F);
  return color;
}

/// The colours of a text field. A disabled field keeps the desktop's colours.
inline QPalette TextFieldColors(const native::TextFieldState& state) {
  QPalette colors;
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    colors.setColor(group, QPalette::Base, QColor(FromUtf8(state.BackColor)));
    colors.setColor(group, QPalette::Text, QColor(FromUtf8(state.TextColor)));
    colors.setColor(group, QPalette::PlaceholderText, HintColor(state));
  }
  return colors;
}

/// The frame and the scroll bars of a field of many lines.
inline void ShowScrolling(QAbstractScrollArea& area, const native::TextFieldState& state) {
  const auto shown = [](bool wanted) {
    return wanted ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
  };
  area.setFrameShape(state.Border ? QFrame::StyledPanel : QFrame::NoFrame);
  area.setVerticalScrollBarPolicy(shown(state.ScrollbarVertical));
  area.setHorizontalScrollBarPolicy(shown(state.ScrollbarHorizontal));
  Name(*area.verticalScrollBar(), "Vertical scroll bar");
  Name(*area.horizontalScrollBar(), "Horizontal scroll bar");
}

}  // namespace quorvel::qt
