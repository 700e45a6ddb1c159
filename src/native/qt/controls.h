#pragma once

#include <QPushButton>

#include "native/control.h"
#include "native/event_loop.h"
#include "native/qt/content.h"
#include "native/qt/link_label.h"
#include "native/qt/owned.h"

namespace quorvel::qt {

class Label final : public native::Label {
 public:
  Label(Content& content, const native::LabelState& state);
  void Update(const native::LabelState& state) override;
  void Refresh() override;

 private:
  Owned<LinkLabel> widget;
};

class Button final : public native::Button {
 public:
  Button(Content& content, const native::ButtonState& state, native::Callback pressed);
  void Update(const native::ButtonState& state) override;
  void Refresh() override;

 private:
  Owned<QPushButton> widget;
  QObject receiver;  // the connection's context: no press arrives after the receiver's destruction
};

}  // namespace quorvel::qt
