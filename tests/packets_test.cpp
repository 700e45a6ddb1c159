#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/runtime/runtime.h"
#include "platform/values/exceptions.h"
#include "support/easy_udp_socket_door.h"
#include "support/scripted_sockets.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr Ipv4Address kAnna = 0x0A000001;
constexpr Ipv4Address kBert = 0x0A000002;
constexpr Ipv4Address kCleo = 0x0A000003;

std::string BigEndian(int32_t value) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) {
    bytes += static_cast<char>(static_cast<uint32_t>(value) >> shift);
  }
  return bytes;
}

std::string Header(int32_t length, int32_t command) {
  return BigEndian(length) + BigEndian(command);
}

std::string Packet(const std::string& payload, int32_t command = 1) {
  return Header(8 + static_cast<int32_t>(payload.size()), command) + payload;
}

class RecordingSocket : public EasyUDPSocket {
 public:
  std::vector<std::string> messages;

 protected:
  void Event_ReceivedMessage(const Text& from, int32_t command, const Text& data) override {
    const Text line = from + " " + Str(command) + " " + data;
    messages.emplace_back(line.Bytes());
  }
};

class Packets : public testing::Test {
 protected:
  Packets() {
    RuntimeInit(mSide);
    mSocket->Constructor();
    mSocket->Bind(5563);
  }
  ~Packets() override {
    mSocket = Nil;
    static_cast<void>(RuntimeExit());
  }

  void Arrives(Ipv4Address from, const std::string& bytes) {
    mSide.sockets.arriving.emplace_back(from, bytes);
  }
  /// All that has arrived goes through the socket; the messages that come of it.
  std::vector<std::string> Delivered() {
    mSocket->messages.clear();
    mSocket->Poll();
    return mSocket->messages;
  }
  std::string Held(const char* sender) {
    return std::string(EasyUDPSocketDoor::Held(*mSocket, sender).Bytes());
  }

  OfflineSide mSide;
  Ref<RecordingSocket> mSocket = New<RecordingSocket>();
};

TEST_F(Packets, GoOutAsOneDatagramEach) {
  mSocket->SendMessageToIndividual("10.0.0.1", 510, "ok");
  mSocket->SendMessageToGroup("Quiz Night", -2, "");
  ASSERT_EQ(mSide.sockets.sent.size(), 2U);
  EXPECT_EQ(mSide.sockets.sent[0].bytes, std::string("\0\0\0\x0A\0\0\x01\xFEok", 10));
  EXPECT_EQ(mSide.sockets.sent[0].to, kAnna);
  EXPECT_EQ(mSide.sockets.sent[0].port, 5563);
  EXPECT_EQ(mSide.sockets.sent[1].bytes, Packet("", -2));
  EXPECT_EQ(mSide.sockets.sent[1].to, 0xE565531AU);
}

TEST_F(Packets, MayShareADatagramOrBeSpreadOverSeveral) {
  Arrives(kAnna, Packet("one", 7) + Packet("", -9));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 7 one", "10.0.0.1 -9 "));
  const std::string split = Packet("split");
  for (const size_t at : {1U, 3U, 4U, 7U, 8U, 12U}) {
    Arrives(kAnna, split.substr(0, at));
    EXPECT_THAT(Delivered(), IsEmpty()) << at;
    Arrives(kAnna, split.substr(at) + Packet("next").substr(0, 2));
    EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 1 split")) << at;
    Arrives(kAnna, Packet("next").substr(2));
    EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 1 next")) << at;
  }
  EXPECT_EQ(Held("10.0.0.1"), "");
}

TEST_F(Packets, OfSeveralSendersTakeTurnsAndDoNotMix) {
  Arrives(kCleo, Packet("c1") + Packet("c2"));
  Arrives(kAnna, Packet("a1").substr(0, 5));
  Arrives(kBert, Packet("b1") + Packet("b2"));
  Arrives(kAnna, Packet("a1").substr(5) + Packet("a2"));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.3 1 c1", "10.0.0.1 1 a1", "10.0.0.2 1 b1",
                                       "10.0.0.3 1 c2", "10.0.0.1 1 a2", "10.0.0.2 1 b2"));
}

TEST_F(Packets, TensOfThousandsInOneBufferNeedNoStack) {
  constexpr int kCount = 50000;
  const std::string all = [] {
    std::string bytes;
    for (int i = 0; i < kCount; ++i) bytes += Packet("");
    return bytes;
  }();
  const std::string incomplete = Header(static_cast<int32_t>(8 + all.size()), 1).substr(0, 3);
  for (size_t at = 0; at < all.size(); at += 60000) Arrives(kAnna, all.substr(at, 60000));
  EXPECT_EQ(Delivered().size(), static_cast<size_t>(kCount));
}

TEST_F(Packets, ALengthThatIsTooLargeWaitsForItsBytes) {
  Arrives(kAnna, Header(20, 5) + "abc");
  Arrives(kBert, Header(2147483647, 5) + Packet("lost behind it"));
  EXPECT_THAT(Delivered(), IsEmpty());
  Arrives(kAnna, Packet("xy"));
  Arrives(kBert, Packet("and this"));
  EXPECT_THAT(Delivered(), ElementsAre(testing::StartsWith("10.0.0.1 5 abc")));
  EXPECT_EQ(Held("10.0.0.1"), "y");
}

TEST_F(Packets, LengthsBelowTheHeader) {
  // 1 to 7 give an empty message and cut that many bytes.
  Arrives(kAnna, Header(6, 0) + std::string("\0\0\0\x09\0\0\0\x02z", 9).substr(2));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 0 ", "10.0.0.1 2 z"));
  // Four to seven bytes that claim no more have no command.
  Arrives(kBert, BigEndian(4));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.2 2147483647 "));
  // A negative length drops what that sender's buffer holds.
  for (const int32_t length : {-1, -2147483647 - 1}) {
    Arrives(kCleo, Header(length, 3) + Packet("dropped"));
    EXPECT_THAT(Delivered(), ElementsAre("10.0.0.3 3 "));
    EXPECT_EQ(Held("10.0.0.3"), "");
  }
}

TEST_F(Packets, ALengthOfZeroEndsInAnExceptionAfterTheOthersAreDelivered) {
  Arrives(kAnna, Header(0, 4));
  Arrives(kBert, Packet("b1") + Packet("b2") + Packet("b3"));
  EXPECT_THROW(Delivered(), StackOverflowException);
  EXPECT_THAT(mSocket->messages, testing::IsSupersetOf({"10.0.0.2 1 b1", "10.0.0.2 1 b2",
                                                        "10.0.0.2 1 b3", "10.0.0.1 4 "}));
  EXPECT_LE(mSocket->messages.size(), 3U + 5U);
  EXPECT_EQ(Held("10.0.0.2"), "");
}

TEST_F(Packets, EmptyDatagramsChangeNothing) {
  Arrives(kAnna, "");
  Arrives(kAnna, Packet("one"));
  Arrives(kAnna, "");
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 1 one"));
}

TEST_F(Packets, AreDivertedWhileAWaitIsOn) {
  EasyUDPSocketDoor::WaitFor(*mSocket, 42);
  Arrives(kAnna, Packet("other", 41) + Packet("first", 42));
  Arrives(kBert, Packet("1") + Packet("2") + Packet("last", 42));
  EXPECT_THAT(Delivered(), IsEmpty());
  EXPECT_EQ(EasyUDPSocketDoor::Response(*mSocket).Bytes(), "last");
  EXPECT_EQ(EasyUDPSocketDoor::Responder(*mSocket).Bytes(), "10.0.0.2");
  EasyUDPSocketDoor::WaitFor(*mSocket, -1);
  Arrives(kAnna, Packet("again", 42) + Packet("minus one", -1));
  EXPECT_THAT(Delivered(), ElementsAre("10.0.0.1 42 again", "10.0.0.1 -1 minus one"));
}

TEST_F(Packets, CannotBeReadOrWrittenPastTheClass) {
  const auto message = [](const auto& call) -> std::string {
    try {
      call();
    } catch (const RuntimeException& exception) {
      return exception.what();
    }
    return "nothing was raised";
  };
  EXPECT_EQ(message([&] { static_cast<void>(mSocket->Read(Nil)); }),
            "You cannot call Read on an EasyUDPSocket directly.");
  EXPECT_EQ(message([&] { mSocket->Write("10.0.0.1", "x"); }),
            "You cannot call Write on an EasyUDPSocket directly.");
  EXPECT_EQ(message([&] { mSocket->Write(New<Datagram>("10.0.0.1", "x")); }),
            "You cannot call Write on an EasyUDPSocket directly.");
  EXPECT_THROW(mSocket->Event_DataAvailable(), NilObjectException);
}

}  // namespace
}  // namespace quorvel
