#include "support/scripted_loop.h"

namespace quorvel::test {

void ScriptedLoop::Run() {
  while (!TakeStop() && Deliver(0)) {
  }
}

void ScriptedLoop::Stop() {
  mStopped = true;
  EventLoop::Stop();
}

void ScriptedLoop::Advance(std::chrono::milliseconds time) {
  const Time until = mNow + time;
  for (auto due = NextDue(); due && *due <= until; due = NextDue()) {
    mNow = *due;
    FireDue();
  }
  mNow = until;
}

void ScriptedLoop::Settle() {
  while (Deliver(0)) {
  }
}

}  // namespace quorvel::test
