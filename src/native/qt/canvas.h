#pragma once

#include "native/native.h"
#include "native/qt/content.h"
#include "native/qt/owned.h"

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
