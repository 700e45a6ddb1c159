// Real sockets. Groups are joined only in a private network; see scripts/test.sh.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>

#include <cerrno>
#include <cstdlib>
#include <string>

#include "platform/network/ip_address.h"
#include "platform/runtime/runtime.h"
#include "support/side.h"
#include "support/station.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int32_t kPort = 5563;

class Sockets : public testing::Test {
 protected:
  Sockets() { RuntimeInit(mSide); }
  ~Sockets() override { static_cast<void>(RuntimeExit()); }

  static Ref<Station> Bound(bool send_only = false) {
    auto station = New<Station>(send_only);
    station->Bind(kPort);
    return station;
  }

  test::Side mSide{PosixSocketCalls()};
};

class GroupSockets : public Sockets {
 protected:
  void SetUp() override {
    if (std::getenv("QUORVEL_PRIVATE_NETWORK") == nullptr) GTEST_SKIP() << "no private network";
  }
  static Ref<Station> Listener(const Text& group) {
    auto station = Bound();
    station->Register(group);
    return station;
  }
};

TEST_F(Sockets, ASenderLeavesTheListenersPortAlone) {
  const auto listener = Bound();
  const auto sender = Bound(true);
  const std::string largest(65499, 'z');
  sender->SendMessageToIndividual("127.0.0.1", 1, "hello");
  sender->SendMessageToIndividual("127.0.0.1", 2, Text::FromBytes(largest));
  EXPECT_EQ(sender->LastErrorCode(), 0);
  mSide.loop.Settle();
  EXPECT_THAT(listener->heard, ElementsAre("hello", largest));
  sender->SendMessageToIndividual("127.0.0.1", 2, Text::FromBytes(largest + "z"));
  EXPECT_EQ(sender->LastErrorCode(), EMSGSIZE);
}

TEST_F(Sockets, APortHeldAloneIsAnErrorAndNothingMore) {
  auto& calls = PosixSocketCalls();
  const int other = calls.Open(4096);
  ASSERT_TRUE(calls.Bind(other, kPort));
  const auto station = Bound();
  station->Register("Quiz Night");
  EXPECT_THAT(station->errors, ElementsAre(EADDRINUSE));
  EXPECT_FALSE(station->IsConnected());
  calls.Close(other);
}

TEST_F(Sockets, AFloodIsTakenInBoundedBatches) {
  const auto listener = Bound();
  const auto sender = Bound(true);
  for (int i = 0; i < 100; ++i) sender->SendMessageToIndividual("127.0.0.1", 1, Str(i));
  mSide.loop.Turn(1000);
  EXPECT_THAT(listener->heard, testing::SizeIs(testing::AllOf(testing::Ge(1U), testing::Lt(100U))));
  listener->Poll();
  ASSERT_EQ(listener->heard.size(), 100U);
  EXPECT_EQ(listener->heard.back(), "99");
}

TEST_F(GroupSockets, EachHearsItsOwnGroupOnOneSharedPortUntilItLeaves) {
  const auto quiz = Listener("Quiz Night");
  const auto maple = Listener("Maple-Room-7");
  const auto maple_too = Listener("maple-room-7");
  maple->SendMessageToGroup("Maple-Room-7", 1, "to maple");
  quiz->SendMessageToGroup("Quiz Night", 1, "to quiz");
  mSide.loop.Settle();
  maple->Unregister("Maple-Room-7");
  EXPECT_THAT(maple->errors, IsEmpty());
  quiz->SendMessageToGroup("Maple-Room-7", 1, "later");
  mSide.loop.Settle();
  EXPECT_THAT(maple->heard, ElementsAre("to maple"));
  EXPECT_THAT(maple_too->heard, ElementsAre("to maple", "later"));
  EXPECT_THAT(quiz->heard, ElementsAre("to quiz"));
  maple->Unregister("Maple-Room-7");
  EXPECT_THAT(maple->errors, ElementsAre(EADDRNOTAVAIL));
}

bool HearsItself() {
  test::Side side(PosixSocketCalls());
  RuntimeInit(side);
  const auto station = New<Station>();
  station->Bind(kPort);
  station->Register("Quiz Night");
  station->SendMessageToGroup("Quiz Night", 1, "self");
  side.loop.Turn(1000);
  return station->heard.size() == 1 && station->errors.empty();
}

TEST_F(GroupSockets, WorkWithoutARouteAndOnInterfacesThatTheSystemWouldNotChoose) {
  for (const char* const setup :
       {"ip link set lo up",
        "ip link set lo up; for i in 8 9; do ip link add a$i type veth peer name b$i &&"
        " ip addr add 10.7$i.0.1/24 dev a$i && ip link set a$i up && ip link set b$i up; done"}) {
    // In a process and a network of its own.
    const auto child = [&] {
      if (unshare(CLONE_NEWNET) != 0 || std::system(setup) != 0) std::_Exit(2);
      std::_Exit(HearsItself() ? 0 : 1);
    };
    EXPECT_EXIT(child(), testing::ExitedWithCode(0), "") << setup;
  }
}

TEST(Ipv4, OctetsAreDecimalAndNeverOctal) {
  EXPECT_EQ(FormatIpv4(ParseIpv4("224.008.009.010").value_or(0)).Bytes(), "224.8.9.10");
  for (const char* const refused : {"", "224...", "224.1.2", "1.2.3.4.5", "1.2.3.256", "1.2.3.4 ",
                                    " 1.2.3.4", "a.b.c.d", "1.2.3.99999999999"}) {
    EXPECT_EQ(ParseIpv4(refused), std::nullopt) << refused;
  }
}

}  // namespace
}  // namespace quorvel
