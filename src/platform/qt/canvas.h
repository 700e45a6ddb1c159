#pragma once

#include "platform/native.h"
#include "platform/qt/content.h"
#include "platform/qt/owned.h"

namespace quorvel::qt {

class Picture;

class Canvas final : public native::Control {
 public:
  explicit Canvas(Content& content);
  ~Canvas() override;
  void Update(const native::ControlState& state) override;
  void Refresh() override;

 private:
  Owned<Picture> widget;
};

}  // namespace quorvel::qt
