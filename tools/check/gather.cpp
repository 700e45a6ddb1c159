#include "tools/check/gather.h"

#include <algorithm>
#include <memory>

#include "messaging/channel.h"
#include "native/native.h"
#include "platform/runtime/runtime.h"
#include "platform/values/exceptions.h"
#include "tools/check/firewall.h"
#include "tools/check/listener.h"
#include "tools/check/path_filter.h"
#include "tools/check/port_users.h"

namespace quorvel::check {

namespace {

using std::chrono::steady_clock;

/// The time for a probe to come back.
constexpr std::chrono::milliseconds kShortest{300};
/// The time for the questions to the system, each of which can take long on a busy computer.
constexpr std::chrono::milliseconds kQuestions{1000};

class Program : public RuntimeClient {
 public:
  Program(Text key, std::chrono::seconds most, Facts& facts)
      : mKey(std::move(key)), mMost(most), mFacts(facts) {}

  void _Open() override {
    mListener->Start(mKey);
    const auto time = std::max<std::chrono::milliseconds>(mMost, kShortest);
    mTimer = Native().Loop().Repeat(time, WhileAlive(*this, [](Program&) { Quit(0); }));
    const auto deadline = steady_clock::now() + kQuestions;
    mFacts.port_users = FindPortUsers(kPort, deadline);
    mFacts.firewall = LookAtFirewall(kPort, deadline);
    if (!mListener->IsConnected()) Quit(0);
  }

  void _End() override {
    mTimer.reset();
    // The datagrams that have come so far are counted.
    RunAndReport([this] { mListener->Poll(); });
    mListener->Tell(mFacts);
    for (auto& each : mFacts.interfaces) {
      each.reverse_path_filter = ReversePathFilter(each.interface.name);
    }
    const auto listened = std::chrono::round<std::chrono::seconds>(steady_clock::now() - mStart);
    mFacts.seconds = static_cast<int32_t>(listened.count());
    mListener->Close();
  }

  // A packet with the length 0 raises an exception at each look; the facts tell of the packet.
  bool _Unhandled(const RuntimeException& exception) override {
    return dynamic_cast<const StackOverflowException*>(&exception) != nullptr;
  }

 private:
  Text mKey;
  std::chrono::seconds mMost;
  Facts& mFacts;
  steady_clock::time_point mStart = steady_clock::now();
  Ref<Listener> mListener = New<Listener>();
  std::unique_ptr<native::Subscription> mTimer;
};

}  // namespace

Facts Gather(const Text& key, std::chrono::seconds most) {
  Facts facts;
  _RuntimeRegisterAppObject(New<Program>(key, most, facts));
  _RuntimeRun();
  return facts;
}

}  // namespace quorvel::check
