#pragma once

#include "native/control.h"
#include "native/qt/content.h"
#include "native/qt/owned.h"

namespace quorvel::qt {

class Picture;

class Canvas final : public native::Canvas {
 public:
  Canvas(Content& content, const native::CanvasState& state);
  ~Canvas() override;
  void Update(const native::CanvasState& state) override;
  void Refresh() override;

 private:
  Owned<Picture> widget;
};

}  // namespace quorvel::qt
