#pragma once

#include <QPushButton>

#include "native/qt/content.h"
#include "native/qt/link_label.h"
#include "native/qt/owned.h"

namespace quorvel::qt {

class Label final : public native::Control {
 public:
  explicit Label(Content& content);
  void Update(const native::ControlState& state) override;
  void Refresh() override;

 private:
  Owned<LinkLabel> widget;
};

class Button final : public native::Control {
 public:
  Button(Content& content, native::Callback pressed);
  void Update(const native::ControlState& state) override;
  void Refresh() override;

 private:
  Owned<QPushButton> widget;
  QObject receiver;  // no press arrives without it
};

}  // namespace quorvel::qt
