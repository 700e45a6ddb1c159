// Waiting for a reply: what becomes of the messages before, during and after it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

#include "platform/runtime/runtime.h"
#include "platform/values/exceptions.h"
#include "platform/windows/application.h"
#include "support/easy_udp_socket_door.h"
#include "support/scripted_sockets.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HearingSocket : public EasyUDPSocket {
 public:
  std::vector<std::string> heard;

 protected:
  void Event_ReceivedMessage(const Text&, int32_t, const Text& data) override {
    heard.emplace_back(data.Bytes());
  }
};

class Waiting : public testing::Test {
 protected:
  Waiting() {
    RuntimeInit(mSide);
    _RuntimeRegisterAppObject(New<Application>());
    mSocket->Constructor();
    mSocket->Bind(5563);
  }
  ~Waiting() override {
    mSocket = Nil;
    static_cast<void>(RuntimeExit());
  }

  void Arrives(int32_t command, const std::string& data) {
    mSender->Constructor();
    mSender->SendOnly(true);
    mSender->Bind(5563);
    mSender->SendMessageToIndividual("10.0.0.9", command, Text::FromBytes(data));
    mSide.sockets.arriving.emplace_back(0x0A000009, mSide.sockets.sent.back().bytes);
  }
  void Later(const std::function<void()>& step) { mSide.loop.Post(step); }
  std::string WaitFor(int32_t command) {
    return std::string(mSocket->WaitForMessage(command, mFrom).Bytes());
  }

  OfflineSide mSide;
  Ref<HearingSocket> mSocket = New<HearingSocket>();
  Ref<EasyUDPSocket> mSender = New<EasyUDPSocket>();
  Text mFrom = "untouched";
};

TEST_F(Waiting, EndsWithTheAwaitedMessageAndDropsTheOthers) {
  Arrives(7, "before");
  mSocket->Poll();
  Later([&] {
    Arrives(6, "dropped");
    Arrives(7, "");
  });
  Later([&] { Arrives(7, "reply"); });
  EXPECT_EQ(WaitFor(7), "reply");
  EXPECT_EQ(mFrom.Bytes(), "10.0.0.9");
  Arrives(7, "after");
  mSocket->Poll();
  EXPECT_THAT(mSocket->heard, ElementsAre("before", "after"));
}

TEST_F(Waiting, NeedsABoundSocket) {
  mSocket->Close();
  EXPECT_EQ(WaitFor(7), "");
  EXPECT_EQ(mFrom.Bytes(), "untouched");
  mSocket->Bind(5563);
  Arrives(7, "heard");
  mSocket->Poll();
  EXPECT_THAT(mSocket->heard, ElementsAre("heard"));
}

TEST_F(Waiting, AfterAFailureMessagesStayDivertedUntilAWaitSucceeds) {
  Later([&] { mSide.sockets.failure = ENOMEM; });
  EXPECT_EQ(WaitFor(7), "");
  EXPECT_EQ(mSocket->LastErrorCode(), ENOMEM);
  EXPECT_EQ(mFrom.Bytes(), "untouched");
  Arrives(8, "diverted");
  mSocket->Poll();
  EXPECT_THAT(mSocket->heard, IsEmpty());
  Arrives(7, "reply");
  EXPECT_EQ(WaitFor(7), "reply");
  Arrives(8, "heard");
  mSocket->Poll();
  EXPECT_THAT(mSocket->heard, ElementsAre("heard"));
}

TEST_F(Waiting, ANestedWaitsResponseEndsTheOuterOneToo) {
  std::string inner;
  Later([&] {
    Arrives(2, "inner");
    inner = std::string(mSocket->WaitForMessage(2, mFrom).Bytes());
  });
  EXPECT_EQ(WaitFor(1), "inner");
  EXPECT_EQ(inner, "inner");
}

TEST_F(Waiting, ForMinusOneDivertsNothingAndEndsWithAnError) {
  Later([&] { Arrives(-1, "heard"); });
  Later([&] { mSide.sockets.failure = EIO; });
  EXPECT_EQ(WaitFor(-1), "");
  EXPECT_THAT(mSocket->heard, ElementsAre("heard"));
}

TEST_F(Waiting, IsLeftWhenTheProgramQuits) {
  bool behind = false;
  Later([] { Dispatch([] { Quit(0); }); });
  Dispatch([&] {
    static_cast<void>(WaitFor(7));
    behind = true;
  });
  EXPECT_FALSE(behind);
  EXPECT_TRUE(mSide.loop.Stopped());
}

}  // namespace
}  // namespace quorvel
