#include "native/headless/event_loop.h"

#include <poll.h>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "native/quit_signals.h"

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

class EventLoop::QuitHolder : public native::Subscription {
 public:
  QuitHolder(EventLoop& loop, native::Callback asked)
      : mWatch(loop.Watch(mSignals.Descriptor(), [this, asked = std::move(asked)] {
          // The descriptor stays readable.
          mWatch.reset();
          asked();
        })) {}

 private:
  QuitSignals mSignals;
  std::unique_ptr<native::Subscription> mWatch;
};

namespace {

// Runs a copy: a callback may end the subscription, which holds the original.
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
  return Add(mTimers, {.period = period, .due = mClock() + period, .callback = std::move(fired)});
}

std::unique_ptr<native::Subscription> EventLoop::WatchQuit(native::Callback asked) {
  return std::make_unique<QuitHolder>(*this, std::move(asked));
}

void EventLoop::Run() {
  mStopped = false;
  while (!TakeStop()) Deliver(-1);
}

void EventLoop::Turn(int32_t most_ms) { Deliver(std::max(most_ms, 0)); }

bool EventLoop::Deliver(int32_t most_ms) {
  const bool stepped = TakeStep();
  const bool read = DeliverReadable(stepped ? 0 : TimeToWait(most_ms));
  const bool fired = FireDue();
  return stepped || read || fired;
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

std::shared_ptr<EventLoop::Source> EventLoop::NextTimer() const {
  if (mTimers.empty()) return nullptr;
  return *std::ranges::min_element(mTimers, {}, [](const auto& timer) { return timer->due; });
}

std::optional<EventLoop::Time> EventLoop::NextDue() const {
  const auto next = NextTimer();
  return next ? std::optional(next->due) : std::nullopt;
}

int32_t EventLoop::TimeToWait(int32_t most_ms) const {
  const auto due = NextDue();
  if (!due) return most_ms;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*due - mClock()).count();
  const auto most = most_ms < 0 ? std::numeric_limits<int32_t>::max() : most_ms;
  return static_cast<int32_t>(std::clamp<int64_t>(left, 0, most));
}

bool EventLoop::FireDue() {
  const Time now = mClock();
  bool fired = false;
  for (auto next = NextTimer(); next && next->due <= now; next = NextTimer()) {
    next->due += next->period;
    if (next->due <= now) next->due = now + next->period;
    Call(next->callback);
    fired = true;
  }
  return fired;
}

}  // namespace quorvel::headless
