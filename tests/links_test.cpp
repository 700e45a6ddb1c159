// How a socket follows the network interfaces, without a network: joins, sends, second copies.

#include <unistd.h>

#include <cerrno>
#include <set>

#include "support/running.h"
#include "support/station.h"

namespace quorvel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr Ipv4Address kGroup = 0xE1020304, kPrivate = 0x0A000001, kPublic = 0x08080808;

NetworkInterface Card(InterfaceIndex index, Ipv4Address address = kPrivate) {
  return test::ScriptedLinks::Card(index, address);
}
/// A card with a fact turned to its opposite.
NetworkInterface Card(InterfaceIndex index, bool NetworkInterface::*fact) {
  auto card = Card(index);
  card.*fact = !(card.*fact);
  return card;
}
NetworkInterface WithoutAddress(InterfaceIndex index) {
  auto card = Card(index);
  card.addresses.clear();
  return card;
}
NetworkInterface Tunnel(InterfaceIndex index) {
  return Card(index, &NetworkInterface::point_to_point);
}
NetworkInterface Loopback() {
  auto loopback = Card(1, &NetworkInterface::loopback);
  loopback.multicast = false;
  return loopback;
}

class Links : public Running {
 protected:
  Links() { mSocket->Bind(5563); }

  void Listen() { mSocket->Register("225.2.3.4"); }
  /// The interfaces on which the group is joined once the socket has had time for a look.
  std::set<InterfaceIndex> JoinedOn(const std::vector<NetworkInterface>& interfaces) {
    mSide.links.interfaces = interfaces;
    mSide.loop.Advance(2s);
    std::set<InterfaceIndex> joined;
    for (const auto& [group, interface] : mNet.memberships) joined.insert(interface);
    return joined;
  }
  InterfaceIndex SendsBy(const std::vector<NetworkInterface>& interfaces) {
    JoinedOn(interfaces);
    mSocket->SendMessageToGroup("225.2.3.4", 1, "x");
    return mNet.sent.empty() ? 0 : mNet.sent.back().by;
  }
  /// What comes of a packet from `from` to `to` by `interface`.
  std::vector<std::string> Arrives(Ipv4Address to, InterfaceIndex interface, bool broadcast = false,
                                   Ipv4Address from = 0x0A000063) {
    mNet.arrival.to = to;
    mNet.arrival.interface = interface;
    mNet.arrival.broadcast = broadcast;
    mNet.arriving.emplace_back(from, std::string("\0\0\0\x9\0\0\0\1x", 9));
    mSocket->Poll();
    return std::exchange(mSocket->heard, {});
  }
  size_t Rejoins(std::chrono::seconds time) {
    const size_t before = mNet.joined.size();
    mSide.loop.Advance(time);
    return mNet.joined.size() - before;
  }

  test::ScriptedSockets& mNet = mSide.sockets;
  Ref<Station> mSocket = New<Station>();
};

TEST_F(Links, AGroupIsJoinedOnEveryFitInterfaceAsInterfacesComeAndGo) {
  mSide.links.interfaces = {};
  Listen();
  EXPECT_THAT(mSocket->errors, ElementsAre(ENODEV));
  EXPECT_THAT(JoinedOn({Loopback()}), ElementsAre(1));
  EXPECT_THAT(JoinedOn({Loopback(), WithoutAddress(2), Card(3, &NetworkInterface::up),
                        Card(4, &NetworkInterface::multicast)}),
              ElementsAre(1));
  EXPECT_THAT(JoinedOn({Loopback(), Card(2), Card(3, &NetworkInterface::running), Tunnel(4)}),
              ElementsAre(2, 3, 4));
  mSide.faults.Arrange("Interfaces", 1, ENOMEM);
  EXPECT_THAT(JoinedOn({}), ElementsAre(2, 3, 4));
  EXPECT_THAT(JoinedOn({Loopback(), Card(7), Tunnel(4)}), ElementsAre(4, 7));
  mSocket->Unregister("225.2.3.4");
  EXPECT_THAT(mNet.memberships, IsEmpty());
  EXPECT_THAT(JoinedOn({Card(2)}), IsEmpty());
}

TEST_F(Links, TheMostUsefulInterfacesGetTheMembershipsOfASmallSystem) {
  mNet.most_memberships = 3;
  mSide.links.interfaces = {Card(2, &NetworkInterface::running), Card(3, kPublic), Card(4),
                            Card(5, kPublic)};
  Listen();
  EXPECT_THAT(JoinedOn(mSide.links.interfaces), ElementsAre(3, 4, 5));
  auto more = mSide.links.interfaces;
  more.push_back(Card(6));
  EXPECT_THAT(JoinedOn(more), ElementsAre(3, 4, 6));
}

TEST_F(Links, ANetworkThatMayHaveForgottenTheSocketIsJoinedAnew) {
  // The system kept a membership of an interface that was deleted and made anew unseen.
  mNet.memberships = {{kGroup, 2}};
  Listen();
  EXPECT_THAT(mNet.left, ElementsAre(kGroup));
  JoinedOn({Card(2)});
  EXPECT_EQ(Rejoins(100s), 0U);
  auto& card = mSide.links.interfaces.front();
  card.link_changes = 2;
  EXPECT_EQ(Rejoins(2s), 1U);
  card.addresses.push_back(kPublic);
  EXPECT_EQ(Rejoins(2s), 1U);
  card.running = false;
  EXPECT_EQ(Rejoins(2s), 0U);
  card.running = true;
  EXPECT_EQ(Rejoins(2s), 1U);
}

TEST(LinkChanges, ComeFromNoticesWhereTheInterfacesLookAlike) {
  const Interfaces cards = {Card(2), Card(3)};
  const auto made_anew = CompareLooks(cards, cards, {.complete = true, .renewed = {3}});
  EXPECT_THAT(made_anew.lost, ElementsAre(3));
  EXPECT_THAT(made_anew.renewed, ElementsAre(3));
  const auto unknown = CompareLooks(cards, cards, {.complete = false, .renewed = {}});
  EXPECT_THAT(unknown.lost, IsEmpty());
  EXPECT_THAT(unknown.renewed, ElementsAre(2, 3));
}

TEST_F(Links, AQuietNetworkIsJoinedAnewEveryTwoMinutes) {
  Listen();
  JoinedOn({Card(2, kPrivate)});
  EXPECT_EQ(Rejoins(240s), 2U);
  mSide.loop.Advance(100s);
  EXPECT_THAT(Arrives(kGroup, 2), SizeIs(1));
  EXPECT_EQ(Rejoins(100s), 0U);
  // The host's own datagrams tell nothing of the network.
  EXPECT_THAT(Arrives(kGroup, 2, false, kPrivate), SizeIs(1));
  EXPECT_EQ(Rejoins(20s), 1U);
}

TEST_F(Links, OnlyTheOwnGroupsAndThisHostAreHeardAndEachDatagramOnce) {
  Listen();
  EXPECT_THAT(Arrives(kGroup, 2), SizeIs(1));
  EXPECT_THAT(Arrives(kGroup, 3), IsEmpty());
  EXPECT_THAT(Arrives(kGroup, 2), SizeIs(1));
  EXPECT_THAT(Arrives(kGroup, 3, false, kPublic), SizeIs(1));
  EXPECT_THAT(Arrives(kPrivate, 3), SizeIs(1));
  EXPECT_THAT(Arrives(kGroup + 1, 2), IsEmpty());
  EXPECT_THAT(Arrives(0x0A0000FF, 2, true), IsEmpty());
  EXPECT_EQ(mSocket->Drops().doubles, 1U);
  EXPECT_EQ(mSocket->Drops().foreign, 2U);
  // The pinned interface has gone: its senders are heard by the other interface at once.
  JoinedOn({Card(3)});
  EXPECT_THAT(Arrives(kGroup, 3), SizeIs(1));
}

class Pins : public testing::Test {
 protected:
  struct Copy {
    InterfaceIndex interface;
    std::chrono::milliseconds at;
    const char* text = "x";
    Ipv4Address from = kPrivate;
    uint16_t port = 1;
  };
  /// The texts that are let through.
  std::string Arrive(const std::vector<Copy>& copies) {
    for (const auto& copy : copies) {
      Arrival arrival;
      arrival.head.from = copy.from;
      arrival.head.from_port = copy.port;
      arrival.head.interface = copy.interface;
      arrival.at = SteadyTime(copy.at);
      arrival.head.stamp = copy.at;
      arrival.data = copy.text;
      const auto verdict = mPins.Judge(arrival, mDeliver);
      if (verdict == SenderPins::Verdict::Original) mDeliver(std::move(arrival));
    }
    return std::exchange(mDelivered, {});
  }
  std::string Lost(InterfaceIndex interface) {
    mPins.Unpin(interface, mDeliver);
    return std::exchange(mDelivered, {});
  }

  SenderPins mPins;
  std::string mDelivered;
  SenderPins::Deliver mDeliver = [this](Arrival&& arrival) { mDelivered += arrival.data.Bytes(); };
};

TEST_F(Pins, HoldASenderForASecondAndAreForgottenInTheEnd) {
  EXPECT_EQ(Arrive({{2, 0ms}}), "x");
  EXPECT_EQ(Arrive({{3, 1000ms}}), "");
  EXPECT_EQ(Arrive({{3, 1000ms, "x", kPrivate, 2}}), "x");
  EXPECT_EQ(Arrive({{3, 1400ms}}), "x");
  EXPECT_EQ(Arrive({{2, 1401ms}}), "");
  EXPECT_EQ(Arrive({{3, 1500ms}}), "x");
  EXPECT_EQ(Arrive({{2, 2400ms}}), "");
  // Forged senders push out the sender heard longest ago, and no other.
  for (uint32_t i = 0; i < SenderPins::kMostPins - 1; ++i) {
    EXPECT_EQ(Arrive({{2, 2400ms, "x", 0xC0000000 + i}}), "x");
  }
  EXPECT_EQ(Arrive({{3, 2400ms, "x", 0xC0000000}}), "");
  EXPECT_EQ(Arrive({{2, 2400ms}}), "");
  EXPECT_EQ(Arrive({{2, 2400ms, "x", kPublic}}), "x");
  EXPECT_EQ(Arrive({{2, 2400ms}}), "x");
}

// The interfaces 2 and 3 bring in the same stream; 2 is pinned and lost later.
TEST_F(Pins, WhatComesBetweenALossAndItsNoticeIsDeliveredOnceAndInOrder) {
  EXPECT_EQ(Arrive({{2, 10ms, "a"}, {3, 11ms, "a"}, {2, 20ms, "b"}, {3, 21ms, "b"}}), "ab");
  EXPECT_EQ(Arrive({{4, 21ms, "b"}, {3, 30ms, "c"}, {4, 31ms, "c"}, {3, 40ms, "d"}}), "");
  EXPECT_EQ(Lost(2), "cd");
  EXPECT_EQ(Arrive({{3, 50ms, "e"}}), "e");
  // The copies of the faster wire come first.
  EXPECT_EQ(Arrive({{2, 59ms, "f"}, {3, 60ms, "f"}, {2, 69ms, "g"}, {3, 70ms, "g"}}), "fg");
  // A loss without a notice shows after a second.
  EXPECT_EQ(Arrive({{2, 80ms, "h"}, {2, 500ms, "i"}, {2, 1070ms, "j"}}), "");
  EXPECT_EQ(Arrive({{2, 1071ms, "k"}}), "hijk");
  // The loss of the other interface changes nothing.
  EXPECT_EQ(Arrive({{3, 1072ms, "k"}, {3, 1080ms, "l"}}), "");
  EXPECT_EQ(Lost(3), "");
  EXPECT_EQ(Arrive({{2, 1090ms, "m"}}), "m");
}

TEST_F(Links, SendsLeaveByTheBestNetworkUntilThatNetworkGoesAway) {
  mSide.links.default_routes = {4, 9, 3};
  EXPECT_EQ(SendsBy({Loopback(), Card(2), Card(3), Tunnel(4)}), 3U);
  mSide.links.default_routes = {2};
  EXPECT_EQ(SendsBy({Loopback(), Card(2), Card(3)}), 3U);
  EXPECT_EQ(SendsBy({Loopback(), Card(2), WithoutAddress(3)}), 2U);
  mSide.links.default_routes = {};
  EXPECT_EQ(SendsBy({Loopback(), Card(5), Card(6)}), 5U);
  EXPECT_EQ(SendsBy({Loopback()}), 1U);
  EXPECT_EQ(SendsBy({Loopback(), Card(6)}), 6U);
  mSocket->SendInterface("card8");
  mSocket->Bind(5563);
  EXPECT_EQ(SendsBy({Card(6), Card(8)}), 8U);
  SendsBy({Card(6)});
  EXPECT_EQ(mSocket->LastErrorCode(), ENODEV);
}

TEST_F(Links, AFailedCallOfTheSystemIsMadeGoodAsSoonAsTheSystemHeals) {
  for (const int error : {ENOBUFS, ENOMEM, EINVAL, EPERM, ENODEV, ENETDOWN, EADDRNOTAVAIL}) {
    for (const char* const call : {"ShareAddress", "SharePort", "Interfaces", "Join"}) {
      mSide.faults.Arrange(call, 1, error);
      mSocket->Bind(5563);
      Listen();
      EXPECT_THAT(JoinedOn({Card(2), Card(3)}), ElementsAre(2, 3)) << call << error;
      EXPECT_FALSE(mSide.faults.IsAhead(call)) << call;
      mSocket->Unregister("225.2.3.4");
    }
  }
  for (const char* const call : {"SetMulticastInterface", "Send"}) {
    mSide.faults.Arrange(call, 1, ENODEV);
    SendsBy({Card(20)});
    EXPECT_EQ(mSocket->LastErrorCode(), 0) << call;
    mSocket->Bind(5563);
  }
}

TEST_F(Links, AReceiveErrorIsToldOnceAndNoErrorOfAnotherCallEndsAWait) {
  for (const int harmless : {EAGAIN, EINTR, ECONNREFUSED}) {
    mSide.faults.Arrange("Receive", 1, harmless);
    mSocket->Poll();
    EXPECT_EQ(mSocket->LastErrorCode(), 0) << harmless;
  }
  mSide.faults.Arrange("Receive", 1, ENOMEM);
  mSocket->Poll();
  EXPECT_EQ(mSocket->LastErrorCode(), ENOMEM);
  EXPECT_THAT(mSocket->errors, ElementsAre(ENOMEM));
  EXPECT_THAT(Arrives(kPrivate, 2), SizeIs(1));
  EXPECT_EQ(mSocket->LastErrorCode(), 0);
  mSide.faults.Arrange("Send", 1, EPERM);
  mSocket->SendMessageToIndividual("10.0.0.1", 1, "x");
  EXPECT_EQ(mSocket->LastErrorCode(), EPERM);
  mSocket->Poll();
  EXPECT_EQ(mSocket->LastErrorCode(), 0);
  mSocket->Close();
  mSocket->Poll();
  EXPECT_EQ(mSocket->LastErrorCode(), ENOTCONN);
}

TEST_F(Links, AFloodIsDeliveredInBoundedBatches) {
  for (int i = 0; i < 600; ++i) {
    mNet.arriving.emplace_back(kPrivate, std::string("\0\0\0\x8\0\0\0\1", 8));
  }
  ASSERT_EQ(write(mNet.open.begin()->second, "x", 1), 1);
  mSide.loop.Turn(0);
  EXPECT_THAT(mSocket->heard, SizeIs(512));
  mSide.loop.Turn(0);
  EXPECT_THAT(mSocket->heard, SizeIs(600));
}

}  // namespace
}  // namespace quorvel
