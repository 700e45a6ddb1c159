#pragma once

#include <gmock/gmock.h>

#include "platform/runtime/runtime.h"
#include "support/side.h"

namespace quorvel {

/// A runtime on a side without a screen, from before the members of the test until after them.
class Running : public testing::Test {
 protected:
  Running() { RuntimeInit(mSide); }
  explicit Running(SocketCalls& real) : mSide(real) { RuntimeInit(mSide); }
  ~Running() override { static_cast<void>(RuntimeExit()); }

  test::Side mSide;
};

}  // namespace quorvel
