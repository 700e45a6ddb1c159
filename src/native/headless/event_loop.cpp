#include "native/headless/event_loop.h"

#include <poll.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace quorvel::headless {

class EventLoop::Holder : public native::Subscription {
 public:
  Holder(Sources& sources, std::shared_ptr<Source> source)
      : mSources(sources), mSource(std::move(source)) {}
  ~Holder() override {
    mSource->callback = nullptr;
    mSources.remove(mSource);
  }

 private:
  Sources& mSources;
  std::shared_ptr<Source> mSource;
};

namespace {

// A callback may end its own subscription, so a copy is what runs.
void Call(const native::Callback& callback) {
  if (const native::Callback copy = callback) copy();
}

}  // namespace

std::unique_ptr<native::Subscription> EventLoop::Add(Sources& sources, Source source) {
  sources.push_back(std::make_shared<Source>(std::move(source)));
  return std::make_unique<Holder>(sources, sources.back());
}

std::unique_ptr<native::Subscription> EventLoop::Watch(int descriptor, native::Callback readable) {
  return Add(mWatches, {.descriptor = descriptor, .callback = std::move(readable)});
}

std::unique_ptr<native::Subscription> EventLoop::Repeat(std::chrono::milliseconds period,
                                                        native::Callback fired) {
  return Add(mTimers, {.period = period, .due = mNow + period, .callback = std::move(fired)});
}

void EventLoop::Run() {
  mStopped = false;
  while (!mStopped && (TakeStep() || DeliverReadable(0))) {
  }
}

void EventLoop::Turn(int32_t most_ms) {
  if (!TakeStep()) DeliverReadable(most_ms);
}

void EventLoop::Settle() {
  while (TakeStep() || DeliverReadable(0)) {
  }
}

bool EventLoop::TakeStep() {
  if (mSteps.empty()) return false;
  const native::Callback step = std::move(mSteps.front());
  mSteps.pop_front();
  step();
  return true;
}

bool EventLoop::DeliverReadable(int32_t most_ms) {
  const std::vector<std::shared_ptr<Source>> watches(mWatches.begin(), mWatches.end());
  std::vector<pollfd> descriptors;
  descriptors.reserve(watches.size());
  for (const auto& watch : watches) descriptors.push_back({watch->descriptor, POLLIN, 0});
  if (poll(descriptors.data(), static_cast<nfds_t>(descriptors.size()), most_ms) <= 0) return false;
  for (size_t i = 0; i < watches.size(); ++i) {
    if (descriptors[i].revents != 0) Call(watches[i]->callback);
  }
  return true;
}

void EventLoop::Advance(std::chrono::milliseconds time) {
  const auto until = mNow + time;
  while (!mTimers.empty()) {
    const auto next = *std::ranges::min_element(
        mTimers, {}, [](const std::shared_ptr<Source>& timer) { return timer->due; });
    if (next->due > until) break;
    mNow = next->due;
    next->due += next->period;
    Call(next->callback);
  }
  mNow = until;
}

}  // namespace quorvel::headless
